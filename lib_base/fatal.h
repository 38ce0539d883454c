#pragma once

#include <cstddef>

/// A broken invariant of the program. It leaves as an exception of this type, which only the
/// driver and the session catch; nobody recovers from it locally.
class tFatalError {
 public:
  /// `unit` must outlive the process (a literal); `text` is copied, cut to 255 bytes.
  tFatalError(const char* text, const char* unit, unsigned line);

  const char* text() const { return text_; }
  const char* unit() const { return unit_; }
  /// Counted from 1.
  unsigned line() const { return line_; }

 private:
  char text_[256];
  const char* unit_;
  unsigned line_;
};

/// Throws a tFatalError.
[[noreturn]] void fatalError(const char* text, const char* unit, unsigned line);

/// Throws the fatal error for a failed allocation of `bytes` bytes:
/// "Memory Allocation Failure" (translated) followed by " ( %lld Bytes )".
[[noreturn]] void fatalAllocation(std::size_t bytes, const char* unit, unsigned line);

/// Checks an invariant. `unit` names the source without its folder's path, "lib_base/stringz" say.
#define krpreAssert(condition, text, unit) \
  (static_cast<bool>(condition) ? void(0) : fatalError((text), (unit), __LINE__))

/// Copies the translation of `text` to `buffer`, cut to `size` bytes with the terminating zero. May
/// throw a tFatalError.
using tFatalTranslator = void (*)(const char* text, char* buffer, std::size_t size);

/// Sets how fatalAllocation translates its text, which is English until then. lib_base/translate
/// does so while the program or library is loaded.
void setFatalTranslator(tFatalTranslator translator) noexcept;
