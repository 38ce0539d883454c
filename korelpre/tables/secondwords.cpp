#include "korelpre/tables/secondwords.h"

#include <algorithm>

#include "lib_base/misc.h"

namespace precomp {

namespace {

// Words that are equal whatever their case have one key; so may others.
std::uint64_t wholeKey(std::string_view word) {
  std::uint64_t hash = 14695981039346656037u;
  for (const char c : word)
    hash = (hash ^ static_cast<unsigned char>(upperAscii(c))) * 1099511628211u;
  return hash;
}

// So have a word and its abbreviations.
std::uint64_t abbreviatedKey(std::string_view word) {
  std::uint64_t key = 0;
  for (std::size_t i = 0; i < std::min<std::size_t>(word.size(), 4); ++i) {
    key = key << 8 | (static_cast<unsigned char>(word[i]) & 0xDFu);
  }
  return key;
}

}  // namespace

// The lowest bit tells the two kinds apart.
std::uint32_t secondTag(std::string_view word, bool abbreviate) {
  const std::uint64_t key = abbreviate ? abbreviatedKey(word) : wholeKey(word);
  const auto folded = static_cast<std::uint32_t>(key ^ key >> 29);
  return (folded << 2) | 2U | (abbreviate ? 1U : 0U);
}

tSecondWords::tSecondWords(const std::vector<std::uint32_t>& tags, int first)
    : first_(first),
      slots_(slotsFor(tags.size())),
      mask_(slots_.size() - 1),
      before_(tags.size(), -1) {
  for (std::size_t i = 0; i < tags.size(); ++i) {
    if (tags[i] == tSecondTags::kNoTag) {
      others_.push_back(first + static_cast<int>(i));
      continue;
    }
    tSlot& slot = slots_[slotOf(tags[i])];
    slot.tag = tags[i];
    before_[i] = slot.latest;
    slot.latest = static_cast<int>(i);
  }
}

}  // namespace precomp
