#pragma once

#include <chrono>
#include <cstddef>
#include <string>

/// The line at the bottom of a terminal that tells how far a long run is, "[137/1000] a/b.prw". It
/// stays away from short runs.
class tProgressLine {
 public:
  using tTime = std::chrono::steady_clock::time_point;
  static constexpr auto kSilence = std::chrono::seconds(1);
  static constexpr auto kPause = std::chrono::milliseconds(100);

  /// A line on the terminal `descriptor`; -1: no line is ever shown.
  tProgressLine(int descriptor, std::size_t total, tTime start);

  /// Shows the line, unless it is too early for one or too soon after the last.
  void show(std::size_t done, const std::string& name, tTime now);
  /// Takes the line away, before something else is printed.
  void erase();

 private:
  void print(const std::string& text) const;

  int descriptor_;
  std::size_t total_;
  tTime next_;
  bool shown_ = false;
};

/// Standard error when it is a terminal that can show a progress line, otherwise -1.
int progressTerminal();
