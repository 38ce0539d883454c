#pragma once

#include <cstdarg>
#include <string_view>

#include "lib_base/stringz.h"

/// A destination for messages. Each thread has at most one sink; without one, messages go to
/// standard output.
class tOutputSink {
 public:
  virtual ~tOutputSink() = default;
  virtual void write(std::string_view text) = 0;
};

/// Redirects the calling thread's messages to `sink` for the lifetime of this object, then restores
/// the previous sink. `sink` must outlive it.
class tOutputScope {
 public:
  explicit tOutputScope(tOutputSink& sink) noexcept;
  ~tOutputScope();
  tOutputScope(const tOutputScope&) = delete;
  tOutputScope& operator=(const tOutputScope&) = delete;

 private:
  tOutputSink* previous_;
};

/// `text`, which may come from anywhere, as messages show it: each control character but the tab as
/// a backslash, "x" and two hexadecimal digits, so that it cannot command a terminal.
tString visibleControls(std::string_view text);

/// Writes `text` to the calling thread's sink verbatim.
void writeOutput(std::string_view text);

/// printf-style output to the calling thread's sink, without a length limit.
void qdprintf(const char* pattern, ...) __attribute__((format(printf, 1, 2)));
