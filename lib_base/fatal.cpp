#include "lib_base/fatal.h"

#include <cstdio>
#include <cstring>

namespace {

// Installed from above: translating uses strings, which report their failures through this file.
constinit tFatalTranslator fatalTranslator = nullptr;

}  // namespace

void setFatalTranslator(tFatalTranslator translator) noexcept {
  fatalTranslator = translator;
}

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
  // Translating allocates too; a failure there must not recurse.
  static thread_local bool reporting = false;
  constexpr char kMessage[] = "Memory Allocation Failure";
  char message[256];
  std::memcpy(message, kMessage, sizeof kMessage);
  if (!reporting && fatalTranslator != nullptr) {
    reporting = true;
    try {
      fatalTranslator(kMessage, message, sizeof message);
    } catch (...) {  // then it stays as it is
    }
    reporting = false;
  }
  char text[sizeof message + 64];  // tFatalError truncates it
  std::snprintf(text, sizeof text, "%s ( %lld Bytes )", message, static_cast<long long>(bytes));
  throw tAllocationError(text, unit, line);
}
