#pragma once

#include <span>

namespace precomp {

/// An error of a source: its number, a name for it, and its text.
struct tErrorText {
  int code;
  const char* slug;
  const char* text;
};

/// All of them, by number.
std::span<const tErrorText> errorTexts();
/// That of a number; "9999" for one that has none.
const tErrorText& errorTextOf(int code);

}  // namespace precomp
