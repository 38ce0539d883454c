#pragma once

#include <string>
#include <unordered_set>

#include "cli/sourcerun.h"

/// Prints the outcome of the sources.
class tPrinter {
 public:
  /// `quiet`: messages are held back until a source has failed. `messages` is a descriptor. With
  /// `sarif` the messages are results of one document, which is printed at the end.
  tPrinter(bool quiet, int messages, bool sarif)
      : quiet_(quiet), descriptor_(messages), sarif_(sarif) {}

  /// Prints the messages and the complaint of one source at once, unless they are held back. What
  /// was printed of a header for a source before it is left out.
  void print(const tSourceResult& result);
  /// To be called behind the last source. Whether everything was printed. A reader that has gone
  /// away is no failure; any other is reported on standard error.
  bool finish();

 private:
  std::string freshMessages(const tSourceResult& result);
  void write(const std::string& text);

  bool quiet_;
  int descriptor_;
  bool sarif_;
  bool allDone_ = true;
  std::string held_;
  std::unordered_set<std::string> printed_;  // keys of messages about headers
  int error_ = 0;                            // of the first write that failed
};

/// Writes all bytes. Returns 0 or an errno value.
int writeAll(int descriptor, const std::string& bytes);
/// Prints a text to standard output. Returns an exit status.
int printText(const std::string& text);
/// `status`, or if what was printed to standard output could not be written, kSomeFailed with a
/// complaint. A reader that has gone away is no failure.
int finishPrinting(int status);
/// Says on standard error that memory has run out, without any.
void complainOfMemory();
/// Prints a complaint of the program to standard error.
void complainAbout(const std::string& text);
