#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "korelpre/tables/rulesource.h"
#include "korelpre/tables/wordgate.h"
#include "korelpre/text/words.h"

namespace precomp {

struct tStoredRules;

/// Answers for single words which rules of a table they can start. Most words are dismissed by
/// their first two bytes, and what was found out about the others is kept until the table changes.
class tWordLookup {
 public:
  /// For a word that passes(). Null when it starts no rule. The answer is valid until the next
  /// call.
  const tFoundRules* findPassed(const tRuleSource& table, std::string_view word);
  /// False when no word with these first two bytes starts a rule; `second` is 0 for a word of one
  /// byte.
  bool passes(char first, char second) const { return gate_.passes(first, second); }
  bool passes(std::string_view word) const { return gate_.passes(word); }
  /// Whether a rule starts with a token that begins with this byte and is no name.
  bool startsOddToken(char first) const { return oddStarts_[static_cast<unsigned char>(first)]; }

  void added(std::string_view key, tWordRule wordRule);
  /// Takes over what the look-up of stored rules knows.
  void addedStored(const tStoredRules& stored);
  /// Forgets what was found out; to be called when the table has changed otherwise.
  void changed() { ++generation_; }
  /// Changes whenever the table does; never 0.
  std::uint32_t generation() const { return generation_; }
  void clear();
  const tFoldedGate& gate() const { return gate_; }

 private:
  struct tEntry {
    std::uint32_t hash = 0;
    std::uint32_t generation = 0;
    std::string word;
    tFoundRules rules;
  };

  void grow();

  tFoldedGate gate_;
  std::array<bool, 256> oddStarts_{};
  std::vector<tEntry> entries_;  // slots; those of generation 0 are empty
  std::size_t used_ = 0;
  tFoundRules unkept_;
  std::uint32_t generation_ = 1;  // entries of other generations are stale
};

/// A hash of a word's bytes.
std::uint32_t hashOfWord(std::string_view word);
/// Equal for words that are equal whatever the case of their letters.
std::uint32_t foldedHash(std::string_view word);

}  // namespace precomp
