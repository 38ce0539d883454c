// A cache of what words start. In goes a word of a statement; out comes which rules of the table it
// can start, as findRules() of the table says, or null. Where rules may be abbreviated that takes a
// binary search, since no hash finds an abbreviation; but programs use few words, again and again.
//
//   1. The gate dismisses a word by its first two bytes, case and a few signs aside.
//   2. Its entry is looked up by a hash of its bytes, as it is written. Every spelling has an
//      entry of its own, since folding costs more than a few entries.
//   3. An entry of another generation is stale, and the table is asked. Words that start nothing
//      have entries too.
//
// The entries of stale words go when the table grows, and all of them when there are very many, so
// the cache does not grow with the length of a source. A probe ends because half of the slots are
// empty.

#include "korelpre/tables/wordlookup.h"

#include <cstring>

#include "korelpre/tables/storedrules.h"
#include "korelpre/text/cursor.h"
#include "lib_base/slots.h"

namespace precomp {

namespace {

constexpr std::size_t kFewEntries = 256;
constexpr std::size_t kLongestKept = 64;  // longer words are rare and would fill the memory
constexpr std::size_t kMostEntries = std::size_t{1} << 15;

// Of those bits of each byte that are set in the mask: all, or those that letters of either case
// share. Eight bytes at a time, since it is asked of every word that passes.
std::uint32_t hashOfBits(std::string_view word, std::uint64_t mask) {
  constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15u;
  std::uint64_t hash = word.size() * kFactor;
  const char* p = word.data();
  std::size_t left = word.size();
  for (; left > 8; left -= 8, p += 8) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, p, 8);
    hash = (hash ^ (bytes & mask)) * kFactor;
    hash ^= hash >> 32;
  }
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, p, left);
  hash = (hash ^ (bytes & mask)) * kFactor;
  return static_cast<std::uint32_t>(hash >> 32);
}

}  // namespace

std::uint32_t hashOfWord(std::string_view word) {
  return hashOfBits(word, ~std::uint64_t{0});
}

std::uint32_t foldedHash(std::string_view word) {
  return hashOfBits(word, 0xDFDFDFDFDFDFDFDFu);
}

// Notes a key in the gate, and of one that begins like no name the first byte: who passes over
// bytes looks up words only, and has to stop there.
void tWordLookup::added(std::string_view key, tWordRule wordRule) {
  ++generation_;
  gate_.add(key);
  // "M->" is found by the name that it begins with too.
  if (key.size() > 1 && !isWordByte(key[1])) gate_.add(key.substr(0, 1));
  if (key.empty() || isNameStart(key[0])) return;
  const auto first = static_cast<unsigned char>(key[0]);
  oddStarts_[first] = true;
  // Where words may be abbreviated the comparison ignores that bit in every byte.
  if (wordRule.abbreviate) oddStarts_[first ^ 0x20u] = true;
}

void tWordLookup::addedStored(const tStoredRules& stored) {
  ++generation_;
  gate_.addBits(stored.wordGate);
  for (std::size_t i = 0; i < oddStarts_.size(); ++i) {
    if ((stored.oddStarts[i / 64] >> (i % 64) & 1) != 0) oddStarts_[i] = true;
  }
}

void tWordLookup::clear() {
  gate_.clear();
  oddStarts_.fill(false);
  ++generation_;
}

const tFoundRules* tWordLookup::findPassed(const tRuleSource& table, std::string_view word) {
  if (word.size() > kLongestKept) {
    unkept_ = table.findRules(word);
    return unkept_.any() ? &unkept_ : nullptr;
  }
  if (slotsAreFull(used_, entries_.size())) grow();
  const std::uint32_t hash = hashOfWord(word);
  tEntry& entry = entries_[slotOf(
      entries_.data(), entries_.size() - 1, hash,
      [](const tEntry& slot) { return slot.generation == 0; },
      [&](const tEntry& slot) { return slot.hash == hash && slot.word == word; })];
  // [3] Steps 1 and 2 are behind us.
  if (entry.generation == generation_) return entry.rules.any() ? &entry.rules : nullptr;
  if (entry.generation == 0) {
    ++used_;
    entry.hash = hash;
    entry.word = word;
  }
  entry.generation = generation_;
  entry.rules = table.findRules(word);
  return entry.rules.any() ? &entry.rules : nullptr;
}

// Grows, or begins anew when there are very many words or stale ones.
void tWordLookup::grow() {
  if (entries_.size() >= kMostEntries) {
    entries_.assign(kMostEntries, {});
    used_ = 0;
    return;
  }
  used_ = resizeSlots(
      entries_, entries_.empty() ? kFewEntries : entries_.size() * 2,
      [this](const tEntry& entry) { return entry.generation != generation_; },
      [](const tEntry& entry) { return entry.hash; });
}

}  // namespace precomp
