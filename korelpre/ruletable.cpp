#include "korelpre/ruletable.h"

namespace precomp {

void tXChgArray::Destroy() {
  index_.clear();
  tAutoArray<tBaseXChg>::Destroy();
}

int tXChgArray::compare(int index, std::string_view word, bool exact) const {
  const tBaseXChg& rule = (*this)[index];
  tWordRule wordRule = rule.wordRule();
  if (exact) wordRule.abbreviate = false;
  return compareKeyword(rule.key(), word, wordRule);
}

bool tXChgArray::search(std::string_view word, bool exact, int& position) const {
  int low = 0;
  int high = count() - 1;
  while (low <= high) {
    const int middle = low + (high - low) / 2;
    const int order = compare(middle, word, exact);
    if (order == 0) {
      position = middle;
      return true;
    }
    if (order < 0) {
      low = middle + 1;
    } else {
      high = middle - 1;
    }
  }
  position = low;
  return false;
}

int tXChgArray::Find(const tString& word, int& first, int& last, unsigned char exact) const {
  int found = 0;
  if (!search(word, exact != 0, found)) {
    first = last = found;
    return 0;
  }
  first = last = found;
  while (first > 0 && compare(first - 1, word, exact != 0) == 0) --first;
  while (last + 1 < count() && compare(last + 1, word, exact != 0) == 0) ++last;
  return 1;
}

void tXChgArray::Add(tBaseXChg* rule) {
  int position = 0;
  if (search(rule->key(), true, position)) {
    do {
      ++position;
    } while (position < count() && compare(position, rule->key(), false) == 0);
  }
  insertAt(position, rule);
  index_.added(rule);
}

void tXChgArray::removeRule(int index) {
  delete takeRule(index);
}

tBaseXChg* tXChgArray::takeRule(int index) {
  tBaseXChg* rule = takeAt(index);
  int first = 0;
  int last = 0;
  tBaseXChg* latest = Find(rule->key(), first, last, 1) != 0 ? get(last) : nullptr;
  index_.removed(rule, latest);
  return rule;
}

void tXChgArray::forget(const tBaseXChg* rule) {
  int first = 0;
  int last = 0;
  if (Find(rule->key(), first, last, 1) == 0) return;
  for (int i = first; i <= last; ++i) {
    if (get(i) == rule) {
      takeRule(i);
      return;
    }
  }
}

void tXChgArray::dropRules() {
  index_.clear();
  dropElements();
}

bool tXChgArray::replace(KorelPreYaccClass* processor, int first, int last, int start,
                         tTknString* t) {
  tBaseXChg* best = nullptr;
  int bestScore = 0;
  for (int i = last; i >= first; --i) {
    const int score = (*this)[i].matchCount(start, t);
    if (score > bestScore) {
      bestScore = score;
      best = get(i);
    }
  }
  return best != nullptr && best->replace(processor, start, t);
}

}  // namespace precomp
