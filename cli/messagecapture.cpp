#include "cli/messagecapture.h"

#include <cerrno>
#include <cstddef>
#include <cstdio>

#include <sys/mman.h>
#include <unistd.h>

namespace {

void closeIfOpen(int& descriptor) {
  if (descriptor >= 0) close(descriptor);
  descriptor = -1;
}

void writeAll(const char* bytes, std::size_t length) {
  while (length > 0) {
    const ssize_t written = write(STDOUT_FILENO, bytes, length);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    bytes += written;
    length -= static_cast<std::size_t>(written);
  }
}

}  // namespace

tMessageCapture::tMessageCapture() {
  std::fflush(stdout);
  held_ = memfd_create("messages", MFD_CLOEXEC);
  if (held_ >= 0) output_ = dup(STDOUT_FILENO);
  if (output_ < 0 || dup2(held_, STDOUT_FILENO) < 0) {
    closeIfOpen(output_);
    closeIfOpen(held_);
  }
}

tMessageCapture::~tMessageCapture() {
  restore();
  closeIfOpen(held_);
}

void tMessageCapture::restore() {
  if (output_ < 0) return;
  std::fflush(stdout);
  dup2(output_, STDOUT_FILENO);
  closeIfOpen(output_);
}

void tMessageCapture::release() {
  restore();
  if (held_ < 0) return;
  lseek(held_, 0, SEEK_SET);
  char buffer[4096];
  for (;;) {
    const ssize_t length = read(held_, buffer, sizeof buffer);
    if (length < 0 && errno == EINTR) continue;
    if (length <= 0) return;
    writeAll(buffer, static_cast<std::size_t>(length));
  }
}
