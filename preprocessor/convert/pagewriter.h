#pragma once

#include <cstddef>
#include <string_view>

#include "lib_base/stringz.h"

/// How a page becomes a function.
struct tPageForm {
  tString function;        // its name
  bool debugInfo = false;  // markers make the debugger skip the lines that hold text only
  bool httpSend = false;   // the text is sent piece by piece instead of returned
};

/// Writes the function that a page becomes, line by line: each line of the page is one line of it.
/// The head of the function stands on the first line that holds no directive, its end on the last
/// line, or behind it when that is a directive's.
class tPageWriter {
 public:
  explicit tPageWriter(const tPageForm& form) : form_(form) {}

  /// Text of the page, with line ends among it, to be sent or collected.
  void text(std::string_view text);
  /// A value of the page: the code up to endValue computes it.
  void beginValue();
  void endValue();
  /// What code() puts next is a statement of its own.
  void beginStatement();
  /// Code as it stands; blanks in front of a statement are kept at the start of a line only.
  void code(std::string_view code);
  /// The line is a directive's from now on. False when it holds something else already.
  bool beginDirective();
  bool onDirective();
  /// The line is complete. A directive can go on in the next one.
  void endLine(bool goesOn = false);
  /// The page goes on in a new line, if the last one is complete; whatever is put does that too.
  void openLine();

  bool hasHead() const { return headWritten_; }
  /// Puts a declaration, a name or more than a name, into the head.
  void declare(std::string_view declaration);
  /// What a return from the function gives.
  std::string_view returned() const { return form_.httpSend ? "\"\"" : "__cPage"; }

  /// Completes the function and returns it.
  tString finish();
  /// The function would be larger than a text may be; it is then good for nothing.
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
