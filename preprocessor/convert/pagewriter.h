#pragma once

#include <cstddef>
#include <string_view>

#include "lib_base/stringz.h"

/// How a page is converted to a function.
struct tPageForm {
  tString function;        // its name
  bool debugInfo = false;  // markers make the debugger skip lines that are only text
  bool httpSend = false;   // the text is sent piece by piece instead of being returned
};

/// Writes the function that a page is converted to, one line for each line of the page. The head of
/// the function is on the first line that is not a directive; its end is on the last line, or on a
/// line of its own if the last line is a directive.
class tPageWriter {
 public:
  explicit tPageWriter(const tPageForm& form) : form_(form) {}

  /// Writes text of the page, which may contain line ends.
  void text(std::string_view text);
  /// Begins a value of the page; the code up to endValue computes it.
  void beginValue();
  void endValue();
  /// The next call of code() begins a new statement.
  void beginStatement();
  /// Writes code unchanged; blanks before a statement are kept at the start of a line only.
  void code(std::string_view code);
  /// Makes the line a directive. Returns false if something else is on it already.
  bool beginDirective();
  bool onDirective();
  /// Ends the line. With `goesOn` set, a directive continues on the next one.
  void endLine(bool goesOn = false);
  /// Begins a new line if the last one is complete, as writing anything does.
  void openLine();

  bool hasHead() const { return headWritten_; }
  /// Adds a declaration to the head: a name, or a name with bounds and type.
  void declare(std::string_view declaration);
  /// The value that the function returns.
  std::string_view returned() const { return form_.httpSend ? "\"\"" : "__cPage"; }

  /// Completes the function and returns it.
  tString finish();
  /// The function has exceeded the limit for a text, and the result is unusable.
  bool tooLarge() const { return tooLarge_; }

 private:
  void flushLine();
  void writeHead();
  void endText();
  void addTerm(std::string_view term);
  void separate();
  void put(std::string_view text);

  const tPageForm form_;
  tString output_;
  bool tooLarge_ = false;
  bool headWritten_ = false;
  std::size_t headEnd_ = 0;  // within the line of the head, then within the output
  tString declared_;
  int lines_ = 0;                  // in the output
  bool lastWasGenerated_ = false;  // the last one of them

  // The line that is being written.
  tString line_;
  bool ended_ = false;
  bool goesOn_ = false;
  bool directive_ = false;
  bool holdsCode_ = false;
  bool holdsHead_ = false;
  bool newStatement_ = false;
  std::size_t textAt_ = 0;  // where the sum of the open text begins; 0 when none is open
};
