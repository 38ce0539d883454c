// Which rules of one key can match, by the word that stands second in the statement. Headers have
// hundreds of commands that begin with one word, and trying each would cost a look at all of them.
//
// In go the tags of the second words of a run of rules, and later the second word of a statement;
// out come the indexes of those whose tag it has, and of the rules that do not go on with a
// literal. A tag may be that of several words, so some rules come out in vain: the matcher decides.
// None that matches is left out, since words that a rule finds equal have one tag.
//
// The rules of a tag hang in a list from the latest to the first, through `before_`. It ends since
// every link leads to a rule in front.

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

// Two kinds, since a word that a rule may abbreviate is another question than a whole word. The
// lowest bit tells them apart; the one above it is set, so that no tag is kUnknown or kNoTag.
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
