#include "korelpre/secondwords.h"

#include <algorithm>

#include "korelpre/ruletable.h"
#include "lib_base/misc.h"

namespace precomp {

// Words that are equal whatever their case have one key; so may others.
std::uint64_t tSecondWords::wholeKey(std::string_view word) {
  std::uint64_t hash = 14695981039346656037u;
  for (const char c : word)
    hash = (hash ^ static_cast<unsigned char>(upperAscii(c))) * 1099511628211u;
  return hash;
}

// So have a word and its abbreviations.
std::uint64_t tSecondWords::abbreviatedKey(std::string_view word) {
  std::uint64_t key = 0;
  for (std::size_t i = 0; i < std::min<std::size_t>(word.size(), 4); ++i) {
    key = key << 8 | (static_cast<unsigned char>(word[i]) & 0xDFu);
  }
  return key;
}

// The lowest bit tells the two kinds apart.
std::uint32_t secondTag(std::string_view word, bool abbreviate) {
  const std::uint64_t key =
      abbreviate ? tSecondWords::abbreviatedKey(word) : tSecondWords::wholeKey(word);
  const auto folded = static_cast<std::uint32_t>(key ^ key >> 29);
  return (folded << 2) | 2U | (abbreviate ? 1U : 0U);
}

tSecondWords::tSecondWords(const tXChgArray& table, int first, int last) {
  for (int i = first; i <= last; ++i) {
    const std::string_view word = table.secondWord(i);
    if (word.empty()) {
      others_.push_back(i);
    } else if (table.wordRuleAt(i).abbreviate) {
      abbreviated_[abbreviatedKey(word)].push_back(i);
    } else {
      whole_[wholeKey(word)].push_back(i);
    }
  }
}

}  // namespace precomp
