// Where rules stand in their table.
//
// A new rule is inserted behind the rules of its key: a binary search with whole keys, then a step
// over every rule that still compares equal. Inserting thousands of rules one by one into a sorted
// array would cost too much, so rules first wait at the end of it, and all that wait are sorted and
// merged in when somebody looks. The result is the same as long as the order is a regular one.
//
// Note [irregular order]
// The step over equal rules compares as the rules do, abbreviations included. A second rule DISP
// thus passes a rule DISPLAY that may be abbreviated, and stands behind it. Where that, or the
// folding of characters other than letters, could happen the rules are inserted one by one. The
// order is then none that a sort could give: what a search finds depends on where its probes fall.

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "korelpre/tables/ruletable.h"
#include "lib_base/misc.h"

namespace precomp {

namespace {

// Below this many rules that wait, inserting them is as good.
constexpr int kFewWaiting = 8;
// And below this many, inserting them into the table itself.
constexpr int kSomeWaiting = 256;

// Rules in a row into which one is inserted without moving all that follow. They stand in full
// blocks, the last one aside; each block is a ring, so that a rule more at its front pushes one out
// at its end.
class tRuleRow {
 public:
  tBaseXChg* slot(int index) const {
    const tBlock& block = blocks_[static_cast<std::size_t>(index) / kBlock];
    return block.rules[block.at(static_cast<std::size_t>(index))];
  }
  void insertAt(int index, tBaseXChg* rule) {
    const std::size_t within = static_cast<std::size_t>(index) % kBlock;
    const std::size_t first = static_cast<std::size_t>(index) / kBlock;
    if (static_cast<std::size_t>(count_) % kBlock == 0) blocks_.emplace_back();
    if (index == count_++) {
      blocks_[first].rules[blocks_[first].at(within)] = rule;
      return;
    }
    for (std::size_t i = first; i < blocks_.size(); ++i) {
      tBlock& block = blocks_[i];
      block.head = (block.head + kBlock - 1) % kBlock;
      std::swap(rule, block.rules[block.head]);
      if (i != first) continue;
      for (std::size_t j = 0; j < within; ++j) {
        std::swap(block.rules[block.at(j)], block.rules[block.at(j + 1)]);
      }
    }
  }

 private:
  static constexpr std::size_t kBlock = 1024;

  struct tBlock {
    std::array<tBaseXChg*, kBlock> rules{};
    std::size_t head = 0;

    std::size_t at(std::size_t index) const { return (head + index) % kBlock; }
  };

  std::vector<tBlock> blocks_;
  int count_ = 0;
};

// How many characters of a key its start holds.
constexpr std::size_t kStart = 8;

bool foldsOddly(std::string_view key) {
  return key.find_first_of("@`[{\\|]}^~\x7f") != std::string_view::npos;
}

}  // namespace

tXChgArray::tHead tXChgArray::headOf(tBaseXChg* slot) {
  const tKey key = keyOf(slot);
  std::uint64_t start = 0;
  for (std::size_t i = 0; i < kStart; ++i) {
    const char c = i < key.text.size() ? key.text[i] : '\0';
    const char folded = key.wordRule.caseSensitive ? c : upperAscii(c);
    start = start << 8 | static_cast<unsigned char>(folded);
  }
  return {start, key.text.size(), foldedHash(key.text), tSecondTags::kUnknown, slot};
}

bool tXChgArray::isBefore(const tHead& a, const tHead& b) {
  if (a.start != b.start) return a.start < b.start;
  if (a.size <= kStart && b.size <= kStart) return a.size < b.size;
  tKey key = keyOf(a.rule);
  key.wordRule.abbreviate = false;
  return compareKeyword(key.text, keyOf(b.rule).text, key.wordRule) < 0;
}

// Whether no rule can have been put behind one that its key abbreviates: no key that comes twice
// is followed by one that begins with it and may be abbreviated.
bool tXChgArray::isRegular(const std::vector<tHead>& rules) {
  for (std::size_t i = 0; i < rules.size(); ++i) {
    const std::string_view key = keyOf(rules[i].rule).text;
    if (foldsOddly(key)) return false;
    const bool comesTwice = i > 0 && !isBefore(rules[i - 1], rules[i]);
    const bool isLast = i + 1 == rules.size() || isBefore(rules[i], rules[i + 1]);
    if (!comesTwice || !isLast) continue;
    for (std::size_t j = i + 1; j < rules.size(); ++j) {
      const tKey later = keyOf(rules[j].rule);
      if (!startsWithNoCase(later.text, key)) break;
      if (later.text.size() > key.size() && later.wordRule.abbreviate) return false;
    }
  }
  return true;
}

void tXChgArray::arrange() const {
  if (placed_ == count()) return;
  auto& table = const_cast<tXChgArray&>(*this);  // the table stays what it is
  if (count() - placed_ < kFewWaiting || irregular_ || mixed_ || !table.placeTogether()) {
    table.placeOneByOne();
  }
}

void tXChgArray::placeOneByOne() {
  waiting_.clear();
  if (count() - placed_ < kSomeWaiting) {
    while (placed_ < count()) placeBehindEquals(*this, placed_, takeAt(placed_));
    return;
  }
  tRuleRow row;
  for (int i = 0; i < placed_; ++i) row.insertAt(i, slot(i));
  while (placed_ < count()) placeBehindEquals(row, placed_, slot(placed_));
  for (int i = 0; i < count(); ++i) setPointer(i, row.slot(i));
}

// `row` has its rules in their places up to `placed`.
template <class tRow>
void tXChgArray::placeBehindEquals(tRow& row, int& placed, tBaseXChg* rule) {
  const std::string_view key = keyOf(rule).text;
  int position = 0;
  if (search(row, key, true, placed, position)) {
    do {
      ++position;
    } while (position < placed && compare(row.slot(position), key, false) == 0);
  }
  if (position > 0 && compare(row.slot(position - 1), key, true) > 0) irregular_ = true;
  row.insertAt(position, rule);
  ++placed;
}

// What was noted of the rules that wait, or is found out now.
std::vector<tXChgArray::tHead> tXChgArray::takeWaiting() {
  std::vector<tHead> waiting;
  waiting.swap(waiting_);
  const auto count = static_cast<std::size_t>(this->count() - placed_);
  if (waiting.size() == count) return waiting;
  waiting.clear();
  waiting.reserve(count);
  for (int i = placed_; i < this->count(); ++i) waiting.push_back(headOf(slot(i)));
  return waiting;
}

// See note [irregular order]. Sorts the rules that wait and merges them in; false, with nothing
// done, when that may not be what inserting them gives.
bool tXChgArray::placeTogether() {
  std::vector<tHead> waiting = takeWaiting();
  std::stable_sort(waiting.begin(), waiting.end(), isBefore);
  std::vector<tHead> all;
  all.reserve(static_cast<std::size_t>(count()));
  int next = 0;
  for (const tHead& rule : waiting) {
    for (; next < placed_; ++next) {
      const tHead placed = headOf(slot(next));
      if (isBefore(rule, placed)) break;
      all.push_back(placed);
    }
    all.push_back(rule);
  }
  for (; next < placed_; ++next) all.push_back(headOf(slot(next)));
  if (abbreviating_ && !isRegular(all)) return false;
  for (int i = 0; i < count(); ++i) {
    setPointer(i, all[static_cast<std::size_t>(i)].rule);
    if (storedIn(slot(i)) == nullptr) slot(i)->setPlace(i);
  }
  placed_ = count();
  if (!keyOf(slot(0)).wordRule.caseSensitive) learnKeys(all);
  return true;
}

// `rules` are all of the table.
void tXChgArray::learnKeys(const std::vector<tHead>& rules) {
  keys_.begin(rules.size());
  int first = 0;
  for (int i = 1; i <= count(); ++i) {
    if (i < count() &&
        !isBefore(rules[static_cast<std::size_t>(i - 1)], rules[static_cast<std::size_t>(i)])) {
      continue;
    }
    const std::string_view key = keyOf(slot(first)).text;
    keys_.add({.key = key.data(),
               .hash = rules[static_cast<std::size_t>(first)].hash,
               .size = static_cast<std::uint32_t>(key.size()),
               .first = first,
               .last = i - 1});
    first = i;
  }
  keysGeneration_ = lookup_.generation();
  for (int i = 0; i < count(); ++i) {
    tags_.at(i, lookup_.generation()) = rules[static_cast<std::size_t>(i)].tag;
  }
}

}  // namespace precomp
