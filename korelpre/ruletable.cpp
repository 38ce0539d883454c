#include "korelpre/ruletable.h"

#include <algorithm>

#include "korelpre/ruleobserver.h"

namespace precomp {

namespace {

// Runs below this length are tried rule by rule.
constexpr int kLongRun = 16;

}  // namespace

// The rule that has scored best so far, and where its match ended.
class tBestRule {
 public:
  tBestRule(int start, tTknString* t, tRuleObserver* observer)
      : start_(start), t_(t), observer_(observer) {}

  // Kept on purpose: among equals the latest wins.
  void meet(int index, tBaseXChg& rule) {
    const int score = rule.matchCount(start_, t_);
    if (observer_ != nullptr) {
      observer_->ruleTried({rule, *t_, start_, score, t_->failedMarker(), t_->failedToken()});
    }
    if (score == 0 || score < score_ || (score == score_ && index < index_)) return;
    rule_ = &rule;
    score_ = score;
    index_ = index;
    cursor_ = t_->rawCursor();
  }
  bool apply(KorelPreYaccClass* processor) {
    if (rule_ == nullptr || t_->overrun()) return false;
    if (observer_ != nullptr) observer_->ruleMatched(*rule_, start_, *t_);
    t_->setRawCursor(cursor_);
    const bool applied = rule_->replaceMatched(processor, start_, t_);
    if (applied && observer_ != nullptr) observer_->ruleApplied(*rule_, start_, *t_);
    return applied;
  }
  const tBaseXChg* rule() const { return rule_; }

 private:
  int start_;
  tTknString* t_;
  tRuleObserver* observer_;
  tBaseXChg* rule_ = nullptr;
  int score_ = 0;
  int index_ = 0;
  int cursor_ = 0;
};

void tXChgArray::Destroy() {
  dropStored();
  forgetRules();
  tAutoArray<tBaseXChg>::Destroy();
}

namespace {

/// The first index from `first` up to `last` for which `holds` does not: it holds for those before.
template <class tHolds>
int firstWithout(int first, int last, const tHolds& holds) {
  while (first < last) {
    const int middle = first + (last - first) / 2;
    if (holds(middle)) {
      first = middle + 1;
    } else {
      last = middle;
    }
  }
  return first;
}

}  // namespace

int tXChgArray::compare(const tBaseXChg* slot, std::string_view word, bool exact) {
  tKey key = keyOf(slot);
  if (exact) key.wordRule.abbreviate = false;
  return compareKeyword(key.text, word, key.wordRule);
}

bool tXChgArray::findRun(std::string_view word, bool exact, int& first, int& last) const {
  if (exact && startsGeneration_ == lookup_.generation()) return findOrdered(word, first, last);
  int found = 0;
  const bool any = search(*this, word, exact, count(), found);
  first = last = found;
  if (!any) return false;
  while (first > 0 && compare(slot(first - 1), word, exact) == 0) --first;
  while (last + 1 < count() && compare(slot(last + 1), word, exact) == 0) ++last;
  return true;
}

// As findRun for whole words, where starts_ tells which rules need not be looked at.
bool tXChgArray::findOrdered(std::string_view word, int& first, int& last) const {
  const bool folds = !keyOf(slot(0)).wordRule.caseSensitive;
  const auto run = std::equal_range(starts_.begin(), starts_.end(), startOf(word, folds));
  first = static_cast<int>(run.first - starts_.begin());
  last = static_cast<int>(run.second - starts_.begin());
  const auto isLess = [&](int index) { return compare(slot(index), word, true) < 0; };
  const auto isNotGreater = [&](int index) { return compare(slot(index), word, true) <= 0; };
  const int begin = firstWithout(first, last, isLess);
  const int end = firstWithout(begin, last, isNotGreater);
  first = begin;
  last = begin < end ? end - 1 : begin;
  return begin < end;
}

int tXChgArray::Find(const tString& word, int& first, int& last, unsigned char exact) const {
  arrange();
  return findRun(word, exact != 0, first, last) ? 1 : 0;
}

tFoundRules tXChgArray::findRules(std::string_view word) const {
  arrange();
  tFoundRules found;
  if (!findRun(word, true, found.wholeFirst, found.wholeLast)) found.wholeLast = -1;
  if (!abbreviating_) {
    found.first = found.wholeFirst;
    found.last = found.wholeLast;
  } else if (!findRun(word, false, found.first, found.last)) {
    found.last = -1;
  }
  return found;
}

void tXChgArray::Add(tBaseXChg* rule) {
  const tWordRule wordRule = rule->wordRule();
  noteKey(rule->key(), wordRule);
  rule->setPlace(count());
  add(rule);
  if (wordRule.caseSensitive && !wordRule.abbreviate) index_.added(rule);
}

// To be called before the rule is added.
void tXChgArray::noteKey(std::string_view key, tWordRule wordRule) {
  if (wordRule.abbreviate) abbreviating_ = true;
  if (!empty() && keyOf(slot(0)).wordRule.caseSensitive != wordRule.caseSensitive) mixed_ = true;
  lookup_.added(key, wordRule);
}

void tXChgArray::addStored(const tStoredRule& rule, KorelPreYaccClass* processor) {
  const tWordRule wordRule = rule.wordRule();
  noteKey(rule.keyText(), wordRule);
  processor_ = processor;
  add(slotOf(rule));
  if (wordRule.caseSensitive && !wordRule.abbreviate) index_.addedStored(rule.keyText(), *this);
}

// The stored rules have their places already; those that were here before get theirs among them.
void tXChgArray::addStored(const tStoredRules& stored, KorelPreYaccClass* processor) {
  if (stored.count == 0) return;
  arrange();
  std::vector<tBaseXChg*> own;
  own.reserve(static_cast<std::size_t>(count()));
  for (int i = 0; i < count(); ++i) own.push_back(slot(i));
  dropElements();
  reserve(static_cast<int>(stored.count) + static_cast<int>(own.size()));
  for (std::uint32_t i = 0; i < stored.count; ++i) add(slotOf(stored.rules[stored.order[i]]));
  placed_ = count();
  for (tBaseXChg* rule : own) add(rule);
  processor_ = processor;
  abbreviating_ = abbreviating_ || stored.abbreviating;
  irregular_ = irregular_ || stored.irregular;
  lookup_.addedStored(stored);
  index_.addedStored(stored, *this);
}

tBaseXChg* tXChgArray::makeRule(int index) const {
  tBaseXChg* const rule = storedIn(slot(index))->make(processor_).release();
  const_cast<tXChgArray*>(this)->setPointer(index, rule);  // the table stays what it is
  return rule;
}

void tXChgArray::dropStored() {
  if (processor_ == nullptr) return;
  for (int i = 0; i < count(); ++i) {
    if (storedIn(slot(i)) != nullptr) setPointer(i, nullptr);
  }
  processor_ = nullptr;
}

std::string_view tXChgArray::secondWord(int index) const {
  const tStoredRule* stored = storedIn(slot(index));
  if (stored != nullptr) return stored->secondWord();
  const tMatchMarker* head = slot(index)->firstMatch();
  if (head->hasGroups() || head->next() == nullptr || !head->next()->isIdentifier()) return {};
  return head->next()->token();
}

void tXChgArray::removeRule(int index) {
  delete takeRule(index);
}

tBaseXChg* tXChgArray::takeRule(int index) {
  arrange();
  tBaseXChg* rule = get(index);
  takeAt(index);
  placed_ = count();
  lookup_.changed();
  const tWordRule wordRule = rule->wordRule();
  if (!wordRule.caseSensitive || wordRule.abbreviate) return rule;
  int first = 0;
  int last = 0;
  tBaseXChg* latest = Find(rule->key(), first, last, 1) != 0 ? get(last) : nullptr;
  index_.removed(rule, latest);
  return rule;
}

// Most rules stand where they were put, so those that wait need not be arranged for this.
int tXChgArray::placeOf(const tBaseXChg& rule) const {
  if (rule.place() < count() && slot(rule.place()) == &rule) return rule.place();
  int first = 0;
  int last = 0;
  Find(rule.key(), first, last, 1);
  while (first < last && slot(first) != &rule) ++first;
  return first;
}

// A define takes the place of the one that it replaces: names are all different there.
bool tXChgArray::define(tBaseXChg* rule) {
  const tIndexedName* known = index_.find(rule->key());
  if (known == nullptr || known->rules != 1) {
    Add(rule);
    return false;
  }
  const int place = placeOf(*known->rule);
  index_.removed(known->rule, nullptr);
  replaceAt(place, rule);
  rule->setPlace(place);
  lookup_.changed();
  index_.added(rule);
  return true;
}

void tXChgArray::forgetRules() {
  index_.clear();
  lookup_.clear();
  placed_ = 0;
  irregular_ = abbreviating_ = mixed_ = false;
}

void tXChgArray::dropRules() {
  dropStored();
  forgetRules();
  dropElements();
}

// Worth the trouble only when the run is asked for again before the table changes.
const tSecondWords* tXChgArray::secondWordsOf(int first, int last) {
  if (last - first < kLongRun) return nullptr;
  if (run_.generation != lookup_.generation() || run_.first != first || run_.last != last) {
    run_ = {lookup_.generation(), first, last, false, nullptr};
  }
  if (run_.words == nullptr && run_.asked) {
    run_.words = std::make_unique<tSecondWords>(*this, first, last);
  }
  run_.asked = true;
  return run_.words.get();
}

std::uint32_t tXChgArray::tagAt(int index) {
  std::uint32_t& tag = tags_.at(index, lookup_.generation());
  if (tag == tSecondTags::kUnknown) {
    const std::string_view word = secondWord(index);
    tag = word.empty() ? tSecondTags::kNoTag : secondTag(word, wordRuleAt(index).abbreviate);
  }
  return tag;
}

// The rules of a run that may match by the word after their keys. Takes the steps that trying one
// of the others would have taken.
void tXChgArray::meetLikely(int first, int last, int start, tTknString* t, tBestRule& best) {
  const int next = std::max(start, 0) + 1;
  const bool ends = next >= t->count();
  const std::string_view word = t->getToken(next);
  std::uint32_t tags[2] = {tSecondTags::kUnknown, tSecondTags::kUnknown};
  for (int i = last; i >= first; --i) {
    const std::uint32_t tag = tagAt(i);
    if (tag != tSecondTags::kNoTag) {
      const bool abbreviate = (tag & 1U) != 0;
      std::uint32_t& wanted = tags[abbreviate ? 1 : 0];
      if (wanted == tSecondTags::kUnknown) wanted = secondTag(word, abbreviate);
      if (ends || tag != wanted) {
        t->step(ends ? 1 : 2);
        continue;
      }
    }
    tBaseXChg::fetch(get(i));
    best.meet(i, *get(i));
  }
}

bool tXChgArray::apply(KorelPreYaccClass* processor, tBaseXChg& rule, int start, tTknString* t) {
  tBestRule best(start, t, observer_);
  best.meet(0, rule);
  return best.apply(processor);
}

bool tXChgArray::replace(KorelPreYaccClass* processor, int first, int last, int start,
                         tTknString* t) {
  tBestRule best(start, t, observer_);
  // An observer wants to see the rules too that cannot match.
  const tSecondWords* words = observer_ == nullptr ? secondWordsOf(first, last) : nullptr;
  if (words != nullptr) {
    const tString& second = t->getToken(std::max(start, 0) + 1);
    words->find(second, [&](int index) {
      tBaseXChg::fetch(get(index));
      best.meet(index, *get(index));
    });
  } else if (observer_ == nullptr && last > first) {
    meetLikely(first, last, start, t, best);
  } else {
    for (int i = last; i >= first; --i) {
      tBaseXChg::fetch(get(i));
      best.meet(i, *get(i));
    }
  }
  if (!best.apply(processor)) return false;
  lastApplied_ = best.rule();
  return true;
}

}  // namespace precomp
