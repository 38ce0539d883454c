#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

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
  /// Reads the rules `first` to `last` of the table, which must not change while this is used.
  tSecondWords(const tXChgArray& table, int first, int last);

  // Equal for words that a rule may find equal.
  static std::uint64_t wholeKey(std::string_view word);
  static std::uint64_t abbreviatedKey(std::string_view word);

  /// Calls `take` with the index of every rule that can match where `word` stands second; an empty
  /// word means that nothing does. The order is not that of the rules.
  template <class Taker>
  void find(std::string_view word, const Taker& take) const {
    for (const int index : others_) take(index);
    if (word.empty()) return;
    visit(whole_, wholeKey(word), take);
    visit(abbreviated_, abbreviatedKey(word), take);
  }

 private:
  using tIndexes = std::unordered_map<std::uint64_t, std::vector<int>>;

  template <class Taker>
  static void visit(const tIndexes& indexes, std::uint64_t key, const Taker& take) {
    const auto found = indexes.find(key);
    if (found == indexes.end()) return;
    for (const int index : found->second) take(index);
  }

  tIndexes whole_;        // rules that want the whole word
  tIndexes abbreviated_;  // rules that are content with four characters of it
  std::vector<int> others_;
};

}  // namespace precomp
