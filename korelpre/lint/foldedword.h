#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "lib_base/misc.h"

namespace precomp {

/// A word in upper case.
inline std::string foldedWord(std::string_view word) {
  std::string folded(word);
  std::transform(folded.begin(), folded.end(), folded.begin(), upperAscii);
  return folded;
}

/// A number below 65536 for the first two bytes of a word, which is not empty, in upper case: a set
/// of them dismisses most words.
inline std::size_t gateOf(std::string_view word) {
  const auto byteAt = [&](std::size_t i) {
    return i < word.size() ? static_cast<unsigned char>(upperAscii(word[i])) : 0U;
  };
  return static_cast<std::size_t>(byteAt(0)) << 8 | byteAt(1);
}

}  // namespace precomp
