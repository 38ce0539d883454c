#include "cli/progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

namespace {

constexpr auto kLinePause = std::chrono::seconds(1);
constexpr const char* kEraseLine = "\r\033[K";

std::size_t widthOf(int terminal) {
  constexpr std::size_t kUsual = 80;
  winsize size{};
  return ioctl(terminal, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsual;
}

bool isControl(char c) {
  return static_cast<unsigned char>(c) < ' ' || c == '\177';
}

}  // namespace

tProgressLine::tProgressLine(const tProgressStyle& style, std::size_t total, tTime start)
    : style_(style), total_(total), next_(start + style.silence) {}

void tProgressLine::show(std::size_t done, const std::string& name, tTime now) {
  if (style_.descriptor < 0 || now < next_) return;
  next_ = now + (style_.isTerminal ? kPause : kLinePause);
  std::string text = '[' + std::to_string(done) + '/' + std::to_string(total_) + "] " + name;
  for (char& c : text) {
    if (isControl(c)) c = '?';  // A name must not command the terminal.
  }
  if (!style_.isTerminal) return print(text + '\n');
  // A full line would wrap, and could then not be erased.
  const std::size_t width = widthOf(style_.descriptor);
  if (text.size() >= width) text.resize(width - 1);
  print(kEraseLine + text);
  shown_ = true;
}

void tProgressLine::erase() {
  if (shown_) print(kEraseLine);
  shown_ = false;
}

void tProgressLine::print(const std::string& text) const {
  // A terminal that cannot be written to is no reason to fail.
  if (write(style_.descriptor, text.data(), text.size()) < 0) return;
}

tProgressStyle progressStyle(bool wanted) {
  const char* terminal = std::getenv("TERM");
  const bool able = terminal != nullptr && *terminal != '\0' &&
                    std::strcmp(terminal, "dumb") != 0 && isatty(STDERR_FILENO) == 1;
  if (wanted) return {STDERR_FILENO, able, std::chrono::milliseconds(0)};
  return able ? tProgressStyle{.descriptor = STDERR_FILENO} : tProgressStyle();
}
