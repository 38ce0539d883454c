#pragma once

#include <cstdarg>
#include <cstddef>
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

/// The length of the control character at the start of `text`, which must not be empty: 0 if there
/// is none. The tab counts as none. In UTF-8, two bytes make one of the upper half.
std::size_t controlLength(std::string_view text);

/// Appends `text`, which may come from anywhere, as messages show it: each byte of a control
/// character as a backslash, "x" and two hexadecimal digits, so that it cannot command a terminal.
/// Needs no memory but what `output` takes.
template <class tOutput>
void appendVisibly(std::string_view text, tOutput& output) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  while (!text.empty()) {
    const std::size_t control = controlLength(text);
    for (const char c : text.substr(0, control)) {
      const auto byte = static_cast<unsigned char>(c);
      const char shown[] = {'\\', 'x', kDigits[byte / 16U], kDigits[byte % 16U]};
      output.append({shown, sizeof shown});
    }
    if (control == 0) output.append(text.substr(0, 1));
    text.remove_prefix(control == 0 ? 1 : control);
  }
}
tString visibleControls(std::string_view text);

/// Writes `text` to the calling thread's sink verbatim.
void writeOutput(std::string_view text);

/// printf-style output to the calling thread's sink, without a length limit.
void qdprintf(const char* pattern, ...) __attribute__((format(printf, 1, 2)));
