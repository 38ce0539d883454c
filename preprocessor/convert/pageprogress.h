#pragma once

#include "preprocessor/convert/pagewriter.h"
#include "preprocessor/messages/messages.h"

/// What is wrong with a page.
struct tPageError {
  int line = 0;  // from 1; 0 when nothing is
  eMessage what{};
};

/// The state of a page's conversion: what has been written, the current line, the first error.
class tPageProgress {
 public:
  explicit tPageProgress(const tPageForm& form) : writer_(form) {}

  tPageWriter& writer() { return writer_; }
  /// The current line of the page, from 1.
  int line() const { return line_; }
  const tPageError& error() const { return error_; }
  bool failed() const { return error_.line != 0; }

  /// Ends the line, in the page and in the output.
  void endLine(bool goesOn = false) {
    writer_.endLine(goesOn);
    ++line_;
  }
  void endLines(int count) {
    for (; count > 0; --count) endLine();
  }
  /// Only the first error counts.
  void fail(int line, eMessage what) {
    if (!failed()) error_ = {line, what};
  }
  void fail(eMessage what) { fail(line_, what); }

 private:
  tPageWriter writer_;
  int line_ = 1;
  tPageError error_;
};
