#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "lib_base/output.h"

/// Ends the process when a property does not hold; libFuzzer then keeps the input.
inline void require(bool holds, const char* property) {
  if (holds) return;
  std::fprintf(stderr, "Violated: %s\n", property);
  std::abort();
}

/// The same for two texts that must be equal; shows both.
inline void requireEqual(std::string_view left, std::string_view right, const char* property) {
  if (left == right) return;
  for (const std::string_view text : {left, right}) {
    std::fprintf(stderr, "----\n%.*s\n", static_cast<int>(text.size()), text.data());
  }
  require(false, property);
}

/// Swallows what is printed while it lives.
class tSilence : public tOutputSink {
 public:
  void write(std::string_view) override {}

 private:
  tOutputScope scope_{*this};
};
