#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

#include "preprocessor/convert/pagecode.h"
#include "preprocessor/convert/pageprogress.h"

/// Converts the statements in the blocks of a page.
class tPageStatements {
 public:
  /// Both must outlive this object.
  tPageStatements(std::string_view page, tPageProgress& progress)
      : page_(page), progress_(progress), writer_(progress.writer()) {}

  /// Converts the block whose code begins at `at` and returns the index just past the block. Errors
  /// are recorded in the progress.
  std::size_t writeBlock(std::size_t at);
  /// Notes that something executable has been written: from now on a LOCAL needs converting.
  void setExecutable() { executable_ = true; }

 private:
  ePiece takePiece(tPageCode& code, ePiece piece);
  ePiece takeFirstWord(tPageCode& code);
  ePiece takeLocal(tPageCode& code);
  void noteLocals(tPageCode code);
  void takeDirective(tPageCode code);
  void takeLineEnd(const tPageCode& code);
  void copyCode(std::size_t end);

  const std::string_view page_;
  tPageProgress& progress_;
  tPageWriter& writer_;
  bool executable_ = false;
  std::set<std::string> locals_;  // declared so far, in upper case

  // The block.
  std::size_t copied_ = 0;       // its code has been written up to here
  std::size_t significant_ = 0;  // behind the last code of its line
  bool startsStatement_ = false;
  bool loneQuote_ = false;  // on its line
};
