#pragma once

#include <chrono>
#include <cstddef>
#include <string>

/// The progress line at the bottom of a terminal, "[137/1000] a/b.prw". It appears only when a run
/// takes a while.
class tProgressLine {
 public:
  using tTime = std::chrono::steady_clock::time_point;
  static constexpr auto kSilence = std::chrono::seconds(1);
  static constexpr auto kPause = std::chrono::milliseconds(100);

  /// A line on the terminal `descriptor`, or none if that is -1.
  tProgressLine(int descriptor, std::size_t total, tTime start);

  /// Shows the line, unless the run is too young or the last line too recent.
  void show(std::size_t done, const std::string& name, tTime now);
  /// Removes the line, before something else is printed.
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
