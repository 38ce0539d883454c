#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace precomp {

class tBaseXChg;
class tXChgArray;

/// The rules of one long run of equal keys, by the word that must stand second. Narrows the rules
/// that have to be tried to those that can match, whatever the number of rules in the run.
class tSecondWords {
 public:
  /// Reads the rules `first` to `last` of the table, which must not change while this is used.
  tSecondWords(const tXChgArray& table, int first, int last);

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
  static std::uint64_t wholeKey(std::string_view word);
  static std::uint64_t abbreviatedKey(std::string_view word);

  tIndexes whole_;        // rules that want the whole word
  tIndexes abbreviated_;  // rules that are content with four characters of it
  std::vector<int> others_;
};

}  // namespace precomp
