#include "cli/inputtext.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

constexpr std::size_t kTooLong = 16 * 1024 * 1024;

}  // namespace

std::string readToEnd(int descriptor, const std::string& name, const char* what,
                      std::string& text) {
  char buffer[64 * 1024];
  for (;;) {
    const ssize_t length = read(descriptor, buffer, sizeof buffer);
    if (length < 0 && errno == EINTR) continue;
    if (length < 0) return name + ": " + std::strerror(errno);
    if (length == 0) return {};
    text.append(buffer, static_cast<std::size_t>(length));
    if (text.size() >= kTooLong) return name + ": " + what + " must be shorter than 16 MiB";
  }
}

std::string readFile(const std::string& name, const char* what, std::string& text) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(name.c_str(), "re"),
                                                             std::fclose);
  if (file == nullptr) return name + ": " + std::strerror(errno);
  return readToEnd(fileno(file.get()), name, what, text);
}
