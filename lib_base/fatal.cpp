#include "lib_base/fatal.h"

#include <cstdio>
#include <cstring>

#include "lib_base/translate.h"

tFatalError::tFatalError(const char* text, const char* unit, unsigned line)
    : unit_(unit ? unit : ""), line_(line) {
  if (!text) text = "";
  const std::size_t size = strnlen(text, sizeof text_ - 1);
  std::memcpy(text_, text, size);
  text_[size] = '\0';
}

void fatalError(const char* text, const char* unit, unsigned line) {
  throw tFatalError(text, unit, line);
}

void fatalAllocation(std::size_t bytes, const char* unit, unsigned line) {
  // Translating needs memory too; what fails there must not come back here for ever.
  static thread_local bool reporting = false;
  constexpr char kMessage[] = "Memory Allocation Failure";
  char text[256];
  const auto compose = [&](const char* message) {
    std::snprintf(text, sizeof text, "%s ( %lld Bytes )", message, static_cast<long long>(bytes));
  };
  compose(kMessage);
  if (!reporting) {
    reporting = true;
    try {
      compose(translate(kMessage).c_str());
    } catch (const tFatalError&) {
    }
    reporting = false;
  }
  fatalError(text, unit, line);
}
