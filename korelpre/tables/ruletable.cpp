// Finds the rules that a word of a statement can start, and applies the best of them. In goes a
// statement with the place of the word; out comes the statement as the rule has made it, or "false"
// with the statement as it was.
//
//   [find]      The rules of a word stand next to each other, since they are sorted by key. Whole
//               keys are found by a hash where the table has one, abbreviations by a binary
//               search; tWordLookup keeps the answers that took one.
//   [prefetch]  As soon as the scan of a line meets such a word, the rules that it will want are
//               prefetched: thousands of rules do not fit into the CPU's caches.
//   [narrow]    Of several rules only those are tried whose second word can be that of the
//               statement. Tags tell that without a look at the rule: one by one in a short run
//               of rules, by tSecondWords in a long one.
//   [choose]    Each is matched, and the one with the highest score is applied.
//
// All of it ends because a run of rules is finite, and what matching may cost is bounded by the
// statement's steps. How rules get their places is in ruleorder.cpp.

#include "korelpre/tables/ruletable.h"

#include <algorithm>
#include <utility>

#include "korelpre/rules/ruleobserver.h"
#include "korelpre/text/cursor.h"
#include "lib_base/misc.h"

namespace precomp {

namespace {

// Runs below this length are tried rule by rule.
constexpr int kLongRun = 16;

// [narrow] The steps that trying a rule takes whose second word is another one than that of the
// statement. They count when it is not tried too: what it may take must not hang on that.
std::uint32_t stepsOfOthers(const tTknString& t, int start) {
  return std::max(start, 0) + 1 < t.count() ? 2 : 1;
}

// In statements up to this length a rule is tried without another question.
constexpr int kShort = 60;

}  // namespace

// [choose] The rule that has scored best so far, and where its match ended. The markers of a rule
// hold what they took until the rule itself is matched again, so the best one need not be matched
// twice.
class tBestRule {
 public:
  tBestRule(int start, tTknString* t, tRuleObserver* observer)
      : start_(start), t_(t), observer_(observer) {}

  // Kept on purpose: among equals the latest wins.
  void meet(int index, tBaseXChg& rule) {
    if (t_->count() > kShort && rule.lacksWord(start_, t_)) return leaveOut(rule);
    const int score = tried(rule);
    if (score == 0 || score < score_ || (score == score_ && index < index_)) return;
    rule_ = &rule;
    score_ = score;
    index_ = index;
    cursor_ = t_->rawCursor();
  }
  // Of a rule that cannot match, an observer hears all the same. What that takes does not count.
  void leaveOut(tBaseXChg& rule) {
    if (observer_ == nullptr || observer_->spareSteps == 0) return;
    const std::uint32_t steps = t_->steps();
    tried(rule);
    observer_->spareSteps -= std::min<std::uint64_t>(observer_->spareSteps, t_->steps() - steps);
    t_->takeBack(steps);
  }
  bool apply(tRuleContext* context) {
    if (rule_ == nullptr || t_->overrun()) return false;
    if (observer_ != nullptr) observer_->ruleMatched(*rule_, start_, *t_);
    t_->setRawCursor(cursor_);
    const bool applied = rule_->replaceMatched(context, start_, t_);
    if (applied && observer_ != nullptr) observer_->ruleApplied(*rule_, start_, *t_);
    return applied;
  }
  const tBaseXChg* rule() const { return rule_; }

 private:
  int tried(tBaseXChg& rule) {
    const int score = rule.matchCount(start_, t_);
    if (observer_ != nullptr) {
      observer_->ruleTried({rule, *t_, start_, score, t_->failedMarker(), t_->failedToken()});
    }
    return score;
  }

  int start_;
  tTknString* t_;
  tRuleObserver* observer_;
  tBaseXChg* rule_ = nullptr;
  int score_ = 0;
  int index_ = 0;
  int cursor_ = 0;
};

void tXChgArray::Destroy() {
  forgetRules();
  tRuleSlots::Destroy();
}

int tXChgArray::compare(const tBaseXChg* slot, std::string_view word, bool exact) {
  tKey key = keyOf(slot);
  if (exact) key.wordRule.abbreviate = false;
  return compareKeyword(key.text, word, key.wordRule);
}

// [find] Binary search for any rule of the word, then outwards to the bounds of its run, one by
// one: the first rule that compares otherwise ends it, whatever stands behind.
bool tXChgArray::findRun(std::string_view word, bool exact, int& first, int& last) const {
  int found = 0;
  const bool any = search(*this, word, exact, count(), found);
  first = last = found;
  if (!any) return false;
  while (first > 0 && compare(slot(first - 1), word, exact) == 0) --first;
  while (last + 1 < count() && compare(slot(last + 1), word, exact) == 0) ++last;
  return true;
}

// [find] The same for whole keys by their hash.
bool tXChgArray::findKey(std::string_view word, int& first, int& last) const {
  const tKeyTable::tRun* run = keys_.find(
      foldedHash(word), [&](const tKeyTable::tRun& met) { return equalNoCase(met.text(), word); });
  if (run == nullptr) return false;
  first = run->first;
  last = run->last;
  return true;
}

int tXChgArray::Find(const tString& word, int& first, int& last, unsigned char exact) const {
  arrange();
  return findRun(word, exact != 0, first, last) ? 1 : 0;
}

tBaseXChg* tXChgArray::latestOf(std::string_view word) {
  int first = 0;
  int last = 0;
  arrange();
  return findRun(word, true, first, last) ? get(last) : nullptr;
}

tFoundRules tXChgArray::findRules(std::string_view word) const {
  arrange();
  tFoundRules found;
  const bool whole = knowsKeys() ? findKey(word, found.wholeFirst, found.wholeLast)
                                 : findRun(word, true, found.wholeFirst, found.wholeLast);
  if (!whole) found.wholeLast = -1;
  if (!abbreviating_) {
    found.first = found.wholeFirst;
    found.last = found.wholeLast;
  } else if (!findRun(word, false, found.first, found.last)) {
    found.last = -1;
  }
  return found;
}

const tFoundRules* tXChgArray::lookUpPassed(std::string_view word) {
  if (abbreviating_ || !knowsKeys()) return lookup_.findPassed(*this, word);
  found_ = findRules(word);
  return found_.any() ? &found_ : nullptr;
}

// [prefetch] Whether a run of the word's hash is really that of the word can wait until its rules
// are there: to compare the key would be to wait for it now.
bool tXChgArray::foreseePassed(std::string_view word, std::string_view behind) {
  if (abbreviating_ || !knowsKeys()) {
    const tFoundRules* found = lookup_.findPassed(*this, word);
    if (found == nullptr) return false;
    fetchLikely(found->wholeFirst, found->wholeLast, behind);
    return true;
  }
  const tKeyTable::tRun* run =
      keys_.find(foldedHash(word), [](const tKeyTable::tRun& /*met*/) { return true; });
  if (run == nullptr) return false;
  // The words of the rule stand behind its key.
  constexpr std::size_t kLine = 64;
  __builtin_prefetch(run->key);
  __builtin_prefetch(run->key + kLine);
  fetchLikely(run->first, run->last, behind);
  return true;
}

// [prefetch] Of several rules only those whose second word may be the one that follows in the text,
// of a long run one of them. A stored rule would have to be made.
void tXChgArray::fetchLikely(int first, int last, std::string_view behind) {
  std::uint32_t wanted = tSecondTags::kUnknown;
  if (first < last) {
    const std::size_t begin = skipBlanks(behind, 0);
    std::size_t end = begin;
    while (end < behind.size() && isWordByte(behind[end])) ++end;
    wanted = secondTag(behind.substr(begin, end - begin), false);
  }
  if (last - first >= kLongRun) {
    first = isRun(first, last) && run_.words != nullptr ? run_.words->likely(wanted) : -1;
    if (first >= 0 && storedIn(slot(first)) == nullptr) fetched(first);
    return;
  }
  for (int i = first; i <= last; ++i) {
    const std::uint32_t tag = first == last ? wanted : tags_.at(i, lookup_.generation());
    const bool likely = tag == wanted || tag == tSecondTags::kNoTag;
    if (likely && storedIn(slot(i)) == nullptr) fetched(i);
  }
}

// The rule at `index`, about to be looked at.
tBaseXChg& tXChgArray::fetched(int index) {
  tBaseXChg* const rule = get(index);
  if (rule != foreseen_) tBaseXChg::fetch(rule);
  foreseen_ = rule;
  return *rule;
}

void tXChgArray::Add(tBaseXChg* rule) {
  const tWordRule wordRule = rule->wordRule();
  noteKey(rule->key(), wordRule);
  rule->setPlace(count());
  add(rule);
  if (!wordRule.caseSensitive) {
    waiting_.push_back(headOf(rule));
    if (rule->isRead()) waiting_.back().tag = tagOf(rule);
  }
  if (wordRule.caseSensitive && !wordRule.abbreviate) index_.added(rule);
}

void tXChgArray::enter(std::unique_ptr<tBaseXChg> rule) {
  const int before = count();
  try {
    Add(rule.get());
  } catch (...) {
    if (count() > before) static_cast<void>(rule.release());
    throw;
  }
  static_cast<void>(rule.release());
}

// To be called before the rule is added.
void tXChgArray::noteKey(std::string_view key, tWordRule wordRule) {
  if (wordRule.abbreviate) abbreviating_ = true;
  if (!empty() && keyOf(slot(0)).wordRule.caseSensitive != wordRule.caseSensitive) mixed_ = true;
  lookup_.added(key, wordRule);
}

void tXChgArray::addStored(const tStoredRule& rule, tRuleContext* context) {
  const tWordRule wordRule = rule.wordRule();
  noteKey(rule.keyText(), wordRule);
  addStoredSlot(rule, context);
  if (wordRule.caseSensitive && !wordRule.abbreviate) index_.addedStored(rule.keyText(), *this);
}

// The stored rules have their places already; those that were here before get theirs among them.
void tXChgArray::addStored(const tStoredRules& stored, tRuleContext* context) {
  if (stored.count == 0) return;
  arrange();
  std::vector<tBaseXChg*> own;
  own.reserve(static_cast<std::size_t>(count()));
  for (int i = 0; i < count(); ++i) own.push_back(slot(i));
  dropElements();
  waiting_.clear();
  reserve(static_cast<int>(stored.count) + static_cast<int>(own.size()));
  for (std::uint32_t i = 0; i < stored.count; ++i) {
    addStoredSlot(stored.rules[stored.order[i]], context);
  }
  placed_ = count();
  for (tBaseXChg* rule : own) add(rule);
  abbreviating_ = abbreviating_ || stored.abbreviating;
  irregular_ = irregular_ || stored.irregular;
  lookup_.addedStored(stored);
  index_.addedStored(stored, *this);
}

void tXChgArray::removeRule(int index) {
  delete takeRule(index);
}

tBaseXChg* tXChgArray::takeRule(int index) {
  tBaseXChg* rule = get(index);
  takeAt(index);
  placed_ = count();
  lookup_.changed();
  const tWordRule wordRule = rule->wordRule();
  if (!wordRule.caseSensitive || wordRule.abbreviate) return rule;
  index_.removed(rule, latestOf(rule->key()));
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
bool tXChgArray::define(std::unique_ptr<tBaseXChg> rule) {
  const tIndexedName* known = index_.find(rule->key());
  if (known == nullptr || known->rules != 1) {
    enter(std::move(rule));
    return false;
  }
  const int place = placeOf(*known->rule);
  index_.replaced(rule.get());
  tBaseXChg* const placed = rule.release();
  replaceAt(place, placed);
  placed->setPlace(place);
  lookup_.changed();
  return true;
}

void tXChgArray::forgetRules() {
  index_.clear();
  lookup_.clear();
  waiting_.clear();
  placed_ = 0;
  irregular_ = abbreviating_ = mixed_ = false;
}

void tXChgArray::dropRules() {
  forgetRules();
  dropSlots();
}

// [narrow] Worth the trouble only when the run is asked for again before the table changes.
const tSecondWords* tXChgArray::secondWordsOf(int first, int last) {
  if (last - first < kLongRun) return nullptr;
  if (!isRun(first, last)) {
    run_ = {lookup_.generation(), first, last, false, nullptr};
  }
  if (run_.words == nullptr && run_.asked) {
    std::vector<std::uint32_t> tags;
    for (int i = first; i <= last; ++i) tags.push_back(tagAt(i));
    run_.words = std::make_unique<tSecondWords>(tags, first);
  }
  run_.asked = true;
  return run_.words.get();
}

std::uint32_t tXChgArray::tagAt(int index) {
  std::uint32_t& tag = tags_.at(index, lookup_.generation());
  if (tag == tSecondTags::kUnknown) tag = tagOf(slot(index));
  return tag;
}

std::uint32_t tXChgArray::tagOf(const tBaseXChg* slot) {
  const std::string_view word = secondWordOf(slot);
  return word.empty() ? tSecondTags::kNoTag : secondTag(word, keyOf(slot).wordRule.abbreviate);
}

// [narrow] The rules of a run that may match by the word after their keys.
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
        t->step(stepsOfOthers(*t, start));
        if (observer_ != nullptr) best.leaveOut(fetched(i));
        continue;
      }
    }
    best.meet(i, fetched(i));
  }
}

bool tXChgArray::apply(tRuleContext* context, tBaseXChg& rule, int start, tTknString* t) {
  tBestRule best(start, t, observer_);
  best.meet(0, rule);
  return best.apply(context);
}

bool tXChgArray::replace(tRuleContext* context, int first, int last, int start, tTknString* t) {
  tBestRule best(start, t, observer_);
  // An observer wants to see the rules too that cannot match, in their order.
  const tSecondWords* words = observer_ == nullptr ? secondWordsOf(first, last) : nullptr;
  if (words != nullptr) {
    const tString& second = t->getToken(std::max(start, 0) + 1);
    int left = last - first + 1;
    words->find(second, [&](int index) {
      best.meet(index, fetched(index));
      --left;
    });
    t->step(static_cast<std::uint32_t>(left) * stepsOfOthers(*t, start));
  } else if (last != first) {
    meetLikely(first, last, start, t, best);
  } else {
    best.meet(first, fetched(first));
  }
  if (!best.apply(context)) return false;
  lastApplied_ = best.rule();
  return true;
}

}  // namespace precomp
