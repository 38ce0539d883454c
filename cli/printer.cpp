#include "cli/printer.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <utility>

#include "cli/exitstatus.h"
#include "cli/sarif.h"
#include "cli/sourcequote.h"

namespace {

// False when writing to standard output failed with this errno value, after a complaint.
bool reportOutput(int error) {
  if (error == 0 || error == EPIPE) return true;
  complainAbout(std::string("cannot write messages: ") + std::strerror(error));
  return false;
}

}  // namespace

std::string tPrinter::freshMessages(const tSourceResult& result) {
  std::string fresh;
  std::size_t copied = 0;
  for (const tHeaderMessage& message : result.ofHeaders) {
    if (printed_.insert(message.key).second) continue;
    fresh += result.messages.substr(copied, message.begin - copied);
    copied = message.end;
  }
  return fresh + result.messages.substr(copied);
}

void tPrinter::print(const tSourceResult& result) {
  allDone_ = allDone_ && result.done;
  held_ += freshMessages(result);
  if (quiet_ && result.done) return;
  quiet_ = false;
  if (!sarif_) write(std::exchange(held_, {}));
  if (!result.complaint.empty()) complainAbout(result.complaint);
  if (result.outOfMemory) complainOfMemory();
}

void tPrinter::write(const std::string& text) {
  if (error_ == 0) error_ = writeAll(descriptor_, text);
}

bool tPrinter::finish() {
  if (sarif_) write(sarifDocument(std::exchange(held_, {}), allDone_));
  return reportOutput(error_);
}

int writeAll(int descriptor, const std::string& bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t written = ::write(descriptor, bytes.data() + done, bytes.size() - done);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    done += static_cast<std::size_t>(written);
  }
  return 0;
}

int printText(const std::string& text) {
  const int error = writeAll(STDOUT_FILENO, text);
  return reportOutput(error) ? kAllDone : kSomeFailed;
}

int finishPrinting(int status) {
  errno = 0;
  const bool flushed = std::fflush(stdout) == 0;
  if (flushed && std::ferror(stdout) == 0) return status;
  return reportOutput(errno != 0 ? errno : EIO) ? status : kSomeFailed;
}

void complainOfMemory() {
  std::fputs("krpre: out of memory\n", stderr);
}

void complainAbout(const std::string& text) {
  std::fprintf(stderr, "krpre: %s\n", printable(text).c_str());
}
