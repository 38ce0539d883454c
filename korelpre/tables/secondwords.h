#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "lib_base/slots.h"

namespace precomp {

class tBaseXChg;
class tXChgArray;

/// What a word is as the second of a pattern, in short: two words that an abbreviating rule, or one
/// that does not, may find equal have one tag for such rules; so may others. Never kNoTag.
std::uint32_t secondTag(std::string_view word, bool abbreviate);

/// The tags of the second words of a table's rules, found out when they are first asked for. They
/// lie side by side, so that rules that cannot match need not be looked at.
class tSecondTags {
 public:
  static constexpr std::uint32_t kUnknown = 0;
  /// Of a rule whose second token is no literal.
  static constexpr std::uint32_t kNoTag = 1;

  /// The tag at `index`, to be set when it is kUnknown; valid for one `generation` of the table.
  std::uint32_t& at(int index, std::uint32_t generation) {
    const auto place = static_cast<std::size_t>(index);
    if (place / kBlock >= blocks_.size()) blocks_.resize(place / kBlock + 1);
    tBlock& block = blocks_[place / kBlock];
    if (block.generation != generation) block = {generation, {}};
    return block.tags[place % kBlock];
  }

 private:
  static constexpr std::size_t kBlock = 15;
  struct tBlock {
    std::uint32_t generation = 0;
    std::array<std::uint32_t, kBlock> tags{};
  };

  std::vector<tBlock> blocks_;
};

/// The rules of one long run of equal keys, by the word that must stand second. Narrows the rules
/// that have to be tried to those that can match, whatever the number of rules in the run.
class tSecondWords {
 public:
  /// `tags` are those of the run, whose first rule has the index `first`.
  tSecondWords(const std::vector<std::uint32_t>& tags, int first);

  /// Calls `take` with the index of every rule that can match where `word` stands second; an empty
  /// word means that nothing does. The order is not that of the rules.
  template <class Taker>
  void find(std::string_view word, const Taker& take) const {
    for (const int index : others_) take(index);
    if (word.empty()) return;
    visit(secondTag(word, false), take);
    visit(secondTag(word, true), take);
  }
  /// One of the rules that may match where a word of `tag` stands second, or -1.
  int likely(std::uint32_t tag) const {
    const int latest = slots_[slotOf(tag)].latest;
    return latest < 0 ? -1 : first_ + latest;
  }

 private:
  struct tSlot {
    std::uint32_t tag = tSecondTags::kUnknown;
    int latest = -1;
  };

  // Where the tag is, or belongs.
  std::size_t slotOf(std::uint32_t tag) const {
    // The low bits tell little.
    return probeSlots(slots_.data(), mask_, tag >> 2, [tag](const tSlot& slot) {
      return slot.tag == tag || slot.tag == tSecondTags::kUnknown;
    });
  }
  template <class Taker>
  void visit(std::uint32_t tag, const Taker& take) const {
    for (int i = slots_[slotOf(tag)].latest; i >= 0; i = before_[static_cast<std::size_t>(i)]) {
      take(first_ + i);
    }
  }

  int first_;
  std::vector<tSlot> slots_;  // by tag
  std::size_t mask_;
  std::vector<int> before_;  // the rule before with the same tag, or -1; all counted from first_
  std::vector<int> others_;  // rules whose second token is no literal
};

}  // namespace precomp
