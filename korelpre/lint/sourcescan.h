#pragma once

#include <string_view>

#include "korelpre/lint/findings.h"

namespace precomp {

class tNameUse;
class tProgramFile;

/// Reads the code of one file that no conditional skips, strings and comments aside, and tells what
/// the scanner passes in silence: lines that begin with "#" and are no directives, bytes that
/// vanish, and what only looks like a marker in embedded SQL.
class tSourceScan {
 public:
  /// The file has just been compiled. `names` hears of the words of its statements; may be null.
  /// Of a file with an error, `readTo` is the line that the scanner has reached, otherwise 0.
  tSourceScan(tFindings& findings, tProgramFile& file, tNameUse* names, int readTo);

  void run();
  /// Whether one of the lines from `line` on holds something.
  bool isActive(int line, int lines) const;

 private:
  void takeLine(const char* start, const char* end);
  void takeHash(const char* start, const char* end);
  void takeWords(const char* start, const char* end);
  const char* takeWord(const char* word, const char* end);
  const char* takeDropped(const char* at, const char* start, const char* end);
  void takeSql(const char* start, const char* end);
  bool endsText(const char* at) const;
  tLintPlace placeOf(const char* at, std::size_t size) const;

  tFindings& findings_;
  tProgramFile& file_;
  tNameUse* names_;
  const char* text_;
  const char* end_;
  int readTo_;
  int line_ = 1;  // of what is being looked at
  bool inSql_ = false;
  bool inStatement_ = false;  // not in a directive
  bool begins_ = false;       // no word of the statement has been met
};

}  // namespace precomp
