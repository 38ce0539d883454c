#pragma once

#include <span>

namespace precomp {

/// The errors of a source; the values are their numbers. See sourceerrors.def.
enum class eSourceError : int {
  kNone = 0,
#define SOURCE_ERROR(name, number, slug, text) name = number,
#include "korelpre/errors/sourceerrors.def"
#undef SOURCE_ERROR
};

/// An error of a source: its number, a name for it, and its text.
struct tErrorText {
  int code;
  const char* slug;
  const char* text;
};

/// All of them, by number.
std::span<const tErrorText> errorTexts();
/// That of a number; kLimitExceeded for one that has none.
const tErrorText& errorTextOf(int code);
inline const tErrorText& errorTextOf(eSourceError error) {
  return errorTextOf(static_cast<int>(error));
}

}  // namespace precomp
