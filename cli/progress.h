#pragma once

#include <chrono>
#include <cstddef>
#include <string>

/// How progress is shown.
struct tProgressStyle {
  int descriptor = -1;     // -1: not at all
  bool isTerminal = true;  // one line that changes; otherwise one line after the other
  std::chrono::milliseconds silence{1000};  // at the start
};

/// What the command line asks for: `wanted` from the start and wherever standard error leads, or
/// else only on a terminal that can show it.
tProgressStyle progressStyle(bool wanted);

/// The progress line at the bottom of a terminal, "[137/1000] a/b.prw".
class tProgressLine {
 public:
  using tTime = std::chrono::steady_clock::time_point;
  static constexpr auto kPause = std::chrono::milliseconds(100);

  tProgressLine(const tProgressStyle& style, std::size_t total, tTime start);

  /// Shows the line, unless the run is too young or the last line too recent.
  void show(std::size_t done, const std::string& name, tTime now);
  /// Removes the line, before something else is printed.
  void erase();

 private:
  void print(const std::string& text) const;

  tProgressStyle style_;
  std::size_t total_;
  tTime next_;
  bool shown_ = false;
};
