#pragma once

#include <cstddef>

/// Thrown when an invariant of the program is broken. Only the driver, the session and the rule
/// engine catch it.
class tFatalError {
 public:
  /// `unit` must be a string literal; `text` is copied and truncated to 255 bytes.
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

/// Thrown when memory has run out.
class tAllocationError : public tFatalError {
 public:
  using tFatalError::tFatalError;
};

/// Throws a tFatalError.
[[noreturn]] void fatalError(const char* text, const char* unit, unsigned line);

/// Throws a tAllocationError for a failed allocation of `bytes` bytes:
/// "Memory Allocation Failure" (translated) followed by " ( %lld Bytes )".
[[noreturn]] void fatalAllocation(std::size_t bytes, const char* unit, unsigned line);

/// Checks an invariant. `unit` names the source file without its extension, e.g.
/// "lib_base/stringz".
#define krpreAssert(condition, text, unit) \
  (static_cast<bool>(condition) ? void(0) : fatalError((text), (unit), __LINE__))

/// Copies the translation of `text` to `buffer`, truncated to `size` bytes including the
/// terminating zero. May throw a tFatalError.
using tFatalTranslator = void (*)(const char* text, char* buffer, std::size_t size);

/// Sets the translator that fatalAllocation uses; its text is English until then.
/// lib_base/translate installs one during static initialisation.
void setFatalTranslator(tFatalTranslator translator) noexcept;
