#include "cli/printer.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "cli/exitstatus.h"
#include "cli/sourcequote.h"
#include "cli/wholefile.h"

void tPrinter::print(const tSourceResult& result) {
  if (quiet_ && result.done) {
    held_ += result.messages;
    return;
  }
  quiet_ = false;
  write(held_ + result.messages);
  held_.clear();
  if (!result.complaint.empty()) complainAbout(result.complaint);
}

void tPrinter::write(const std::string& text) {
  if (error_ == 0) error_ = writeAll(descriptor_, text);
}

bool tPrinter::finish() const {
  if (error_ == 0 || error_ == EPIPE) return true;
  complainAbout(std::string("cannot write messages: ") + std::strerror(error_));
  return false;
}

int printText(const std::string& text) {
  const bool done = std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
  return done ? kAllDone : kSomeFailed;
}

void complainAbout(const std::string& text) {
  std::fprintf(stderr, "krpre: %s\n", printable(text).c_str());
}
