#include "lib_base/output.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "lib_base/fatal.h"

namespace {

thread_local tOutputSink* currentSink = nullptr;

struct tFree {
  void operator()(char* bytes) const noexcept { std::free(bytes); }
};

}  // namespace

tOutputScope::tOutputScope(tOutputSink& sink) noexcept : previous_(currentSink) {
  currentSink = &sink;
}

tOutputScope::~tOutputScope() {
  currentSink = previous_;
}

std::size_t controlLength(std::string_view text) {
  const auto byte = static_cast<unsigned char>(text[0]);
  const auto next = static_cast<unsigned char>(text.size() > 1 ? text[1] : '\0');
  if (byte == 0xC2 && next >= 0x80 && next < 0xA0) return 2;
  return byte == 0x7F || (byte < ' ' && byte != '\t') ? 1 : 0;
}

tString visibleControls(std::string_view text) {
  tString shown;
  appendVisibly(text, shown);
  return shown;
}

void writeOutput(std::string_view text) {
  if (text.empty()) return;
  if (currentSink) {
    currentSink->write(text);
  } else {
    std::fwrite(text.data(), 1, text.size(), stdout);
  }
}

void qdprintf(const char* pattern, ...) {
  char buffer[1024];
  std::va_list arguments;
  va_start(arguments, pattern);
  const int size = std::vsnprintf(buffer, sizeof buffer, pattern, arguments);
  va_end(arguments);
  if (size < 0) return;
  const auto length = static_cast<std::size_t>(size);
  if (length < sizeof buffer) return writeOutput({buffer, length});

  const std::unique_ptr<char, tFree> text(static_cast<char*>(std::malloc(length + 1)));
  if (!text) fatalAllocation(length + 1, "lib_base/output", __LINE__);
  va_start(arguments, pattern);
  std::vsnprintf(text.get(), length + 1, pattern, arguments);
  va_end(arguments);
  writeOutput({text.get(), length});
}
