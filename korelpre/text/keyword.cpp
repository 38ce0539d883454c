#include "korelpre/text/keyword.h"

#include <algorithm>

#include "lib_base/misc.h"

namespace precomp {

namespace {

constexpr std::size_t kShortestAbbreviation = 4;

int compareAbbreviated(std::string_view keyword, std::string_view word, unsigned char mask) {
  const std::size_t count = std::max(word.size(), kShortestAbbreviation);
  for (std::size_t i = 0; i < count; ++i) {
    const bool keywordEnds = i >= keyword.size();
    const bool wordEnds = i >= word.size();
    if (keywordEnds || wordEnds) return static_cast<int>(wordEnds) - static_cast<int>(keywordEnds);
    const int k = static_cast<unsigned char>(keyword[i]) & mask;
    const int w = static_cast<unsigned char>(word[i]) & mask;
    if (k != w) return k - w;
  }
  return 0;
}

}  // namespace

int compareKeyword(std::string_view keyword, std::string_view word, tWordRule rule) {
  if (rule.abbreviate) {
    return compareAbbreviated(keyword, word, rule.caseSensitive ? 0xFF : 0xDF);
  }
  return rule.caseSensitive ? keyword.compare(word) : compareNoCase(keyword, word);
}

}  // namespace precomp
