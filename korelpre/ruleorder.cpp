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
// folding of characters other than letters, could happen the rules are inserted one by one.

#include <algorithm>
#include <cstdint>
#include <vector>

#include "korelpre/ruletable.h"
#include "lib_base/misc.h"

namespace precomp {

namespace {

// Below this many rules that wait, inserting them is as good.
constexpr int kFewWaiting = 8;

// A rule with the beginning of its key, which decides most comparisons.
struct tWaiting {
  std::uint64_t start;
  tBaseXChg* rule;
};

std::uint64_t startOf(const tBaseXChg& rule) {
  const std::string_view key = rule.key();
  const bool folded = !rule.wordRule().caseSensitive;
  std::uint64_t start = 0;
  for (std::size_t i = 0; i < 8; ++i) {
    const char c = i < key.size() ? key[i] : '\0';
    start = start << 8 | static_cast<unsigned char>(folded ? upperAscii(c) : c);
  }
  return start;
}

bool isBefore(const tWaiting& a, const tWaiting& b) {
  if (a.start != b.start) return a.start < b.start;
  tWordRule wordRule = a.rule->wordRule();
  wordRule.abbreviate = false;
  return compareKeyword(a.rule->key(), b.rule->key(), wordRule) < 0;
}

bool foldsOddly(std::string_view key) {
  return key.find_first_of("@`[{\\|]}^~\x7f") != std::string_view::npos;
}

// Whether no rule can have been put behind one that its key abbreviates: no key that comes twice
// is followed by one that begins with it and may be abbreviated.
bool isRegular(const std::vector<tWaiting>& rules) {
  for (std::size_t i = 0; i < rules.size(); ++i) {
    const std::string_view key = rules[i].rule->key();
    if (foldsOddly(key)) return false;
    const bool comesTwice = i > 0 && !isBefore(rules[i - 1], rules[i]);
    const bool isLast = i + 1 == rules.size() || isBefore(rules[i], rules[i + 1]);
    if (!comesTwice || !isLast) continue;
    for (std::size_t j = i + 1; j < rules.size(); ++j) {
      const tBaseXChg& later = *rules[j].rule;
      if (!startsWithNoCase(later.key(), key)) break;
      if (later.key().size() > key.size() && later.wordRule().abbreviate) return false;
    }
  }
  return true;
}

}  // namespace

void tXChgArray::arrange() const {
  if (placed_ == count()) return;
  auto& table = const_cast<tXChgArray&>(*this);  // the table stays what it is
  if (count() - placed_ < kFewWaiting || irregular_ || mixed_ || !table.placeTogether()) {
    table.placeOneByOne();
  }
}

void tXChgArray::placeOneByOne() {
  while (placed_ < count()) {
    tBaseXChg* rule = takeAt(placed_);
    int position = 0;
    if (search(rule->key(), true, placed_, position)) {
      do {
        ++position;
      } while (position < placed_ && compare(position, rule->key(), false) == 0);
    }
    if (position > 0 && compare(position - 1, rule->key(), true) > 0) irregular_ = true;
    insertAt(position, rule);
    ++placed_;
  }
}

// See note [irregular order]. Sorts the rules that wait and merges them in; false, with nothing
// done, when that may not be what inserting them gives.
bool tXChgArray::placeTogether() {
  std::vector<tWaiting> waiting;
  waiting.reserve(static_cast<std::size_t>(count() - placed_));
  for (int i = placed_; i < count(); ++i) waiting.push_back({startOf(*get(i)), get(i)});
  std::stable_sort(waiting.begin(), waiting.end(), isBefore);
  std::vector<tWaiting> all;
  all.reserve(static_cast<std::size_t>(count()));
  int next = 0;
  for (const tWaiting& rule : waiting) {
    for (; next < placed_; ++next) {
      const tWaiting placed{startOf(*get(next)), get(next)};
      if (isBefore(rule, placed)) break;
      all.push_back(placed);
    }
    all.push_back(rule);
  }
  for (; next < placed_; ++next) all.push_back({startOf(*get(next)), get(next)});
  if (abbreviating_ && !isRegular(all)) return false;
  for (int i = 0; i < count(); ++i) setPointer(i, all[static_cast<std::size_t>(i)].rule);
  placed_ = count();
  return true;
}

}  // namespace precomp
