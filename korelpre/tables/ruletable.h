#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "korelpre/tables/keytable.h"
#include "korelpre/tables/ruleindex.h"
#include "korelpre/tables/ruleslots.h"
#include "korelpre/tables/secondwords.h"
#include "korelpre/tables/storedrules.h"
#include "korelpre/tables/wordlookup.h"

namespace precomp {

class tBestRule;
class tRuleObserver;

/// Rules sorted by key; rules with equal keys stand next to each other in the order of arrival.
/// Owns its rules.
///
/// Rules that have arrived since the last look into the table wait at its end; they get their
/// places together when somebody looks. Before indexes are used arrange() must have been called;
/// every operation that answers with an index has done so.
class tXChgArray : public tRuleSlots, private tRuleSource {
 public:
  void Destroy() override;

  /// Inserts `rule` behind every rule whose key equals its key.
  void Add(tBaseXChg* rule);
  /// The same for a table that owns its rules. The rule goes when memory runs out.
  void enter(std::unique_ptr<tBaseXChg> rule);
  /// Inserts the rule of a #define. When exactly one rule has its key, that one is destroyed; true
  /// then.
  bool define(std::unique_ptr<tBaseXChg> rule);
  /// As Add for a rule of an image, which must outlive this table. `context` is that of the rule.
  void addStored(const tStoredRule& rule, tRuleContext* context);
  /// Adds all rules of a table that lie in an image at once. The rules that this table has must
  /// have other keys, and all of one class.
  void addStored(const tStoredRules& stored, tRuleContext* context);
  /// Finds the run of rules whose key matches `word`. Returns 1 with `first` and `last` its
  /// bounds, or 0 with both the index at which such a rule would be inserted. A rule compares by
  /// its own flags; with `exact` set none of them abbreviates.
  int Find(const tString& word, int& first, int& last, unsigned char exact) const;
  /// Applies the best of the rules `first` to `last` at the token `start` of `t`: the one with the
  /// highest score, the latest among equals. False when none matches.
  virtual bool replace(tRuleContext* context, int first, int last, int start, tTknString* t);

  /// Applies `rule` of this table at the token `start` of `t`. False when it does not match.
  bool apply(tRuleContext* context, tBaseXChg& rule, int start, tTknString* t);
  /// The rule that the last replace() which answered true has applied.
  const tBaseXChg* lastApplied() const { return lastApplied_; }

  /// Lets `observer` see which rules are tried and applied; null for none. It must outlive the
  /// table or be taken away.
  void setObserver(tRuleObserver* observer) { observer_ = observer; }

  /// Gives the rules that wait their places.
  void arrange() const;
  bool abbreviating() const { return abbreviating_; }
  /// See ruleorder.cpp.
  bool irregular() const { return irregular_; }
  /// What Find answers for the word, with and without `exact`.
  tFoundRules findRules(std::string_view word) const override;
  /// The same, fast for words that come again and again; null when the word starts no rule. The
  /// answer is valid until the next call.
  const tFoundRules* lookUp(std::string_view word) {
    return lookup_.passes(word) ? lookUpPassed(word) : nullptr;
  }
  /// False when the word starts no rule. Otherwise prefetches what a look at its rules will need;
  /// `behind` is what follows the word.
  bool foresee(std::string_view word, std::string_view behind) {
    return lookup_.passes(word) && foreseePassed(word, behind);
  }
  const tWordLookup& lookup() const { return lookup_; }

  /// Destroys the rule at `index`.
  void removeRule(int index);
  /// Removes the rule at `index` from the table; it stays alive.
  tBaseXChg* takeRule(int index);
  /// Forgets all rules without destroying them.
  void dropRules();

  /// The look-up of names, kept up with those rules of the table that neither abbreviate nor ignore
  /// case.
  tRuleIndex& index() { return index_; }
  const tRuleIndex& index() const { return index_; }

 private:
  tBaseXChg* latestOf(std::string_view word) override;
  static int compare(const tBaseXChg* slot, std::string_view word, bool exact);
  /// Sets `position` to the index of a rule whose key equals `word`, or to where it would be
  /// inserted and returns false. Only the first `count` slots of `row` are looked at.
  template <class tRow>
  static bool search(const tRow& row, std::string_view word, bool exact, int count, int& position);
  bool findRun(std::string_view word, bool exact, int& first, int& last) const;
  bool knowsKeys() const { return keysGeneration_ == lookup_.generation(); }
  bool findKey(std::string_view word, int& first, int& last) const;
  // For words that pass the gate.
  const tFoundRules* lookUpPassed(std::string_view word);
  bool foreseePassed(std::string_view word, std::string_view behind);
  void fetchLikely(int first, int last, std::string_view behind);
  tBaseXChg& fetched(int index);
  int placeOf(const tBaseXChg& rule) const;

  void noteKey(std::string_view key, tWordRule wordRule);
  static std::uint32_t tagOf(const tBaseXChg* slot);
  std::uint32_t tagAt(int index);
  void meetLikely(int first, int last, int start, tTknString* t, tBestRule& best);

  // Giving rules their places (ruleorder.cpp). What orders and finds a rule, noted when it comes:
  // its markers are at hand then.
  struct tHead {
    std::uint64_t start;  // the beginning of its key, which decides most comparisons
    std::size_t size;     // of its key
    std::uint32_t hash;   // of its key
    std::uint32_t tag;    // of its second word; see tSecondTags
    tBaseXChg* rule;
  };
  static tHead headOf(tBaseXChg* slot);
  std::vector<tHead> takeWaiting();
  static bool isBefore(const tHead& a, const tHead& b);
  static bool isRegular(const std::vector<tHead>& rules);
  void placeOneByOne();
  template <class tRow>
  void placeBehindEquals(tRow& row, int& placed, tBaseXChg* rule);
  bool placeTogether();
  void learnKeys(const std::vector<tHead>& rules);
  void forgetRules();
  bool isRun(int first, int last) const {
    return run_.generation == lookup_.generation() && run_.first == first && run_.last == last;
  }
  const tSecondWords* secondWordsOf(int first, int last);

  std::vector<tHead> waiting_;  // the rules behind placed_, or some of them
  tRuleIndex index_;
  tWordLookup lookup_;
  tSecondTags tags_;
  tKeyTable keys_;                       // finds rules by whole keys, case ignored,
  std::uint32_t keysGeneration_ = 0;     // as of this generation
  tFoundRules found_;                    // what lookUp has found in it
  const tBaseXChg* foreseen_ = nullptr;  // the rule that was fetched last, which may be gone
  tRuleObserver* observer_ = nullptr;
  const tBaseXChg* lastApplied_ = nullptr;
  int placed_ = 0;             // rules at the front that have their places
  bool irregular_ = false;     // see ruleorder.cpp
  bool abbreviating_ = false;  // there is a rule that lets words be abbreviated
  bool mixed_ = false;         // some rules ignore case and some do not

  // The last long run that was asked for, and what is known of its rules.
  struct tRun {
    std::uint32_t generation = 0;
    int first = 0;
    int last = -1;
    bool asked = false;
    std::unique_ptr<tSecondWords> words;
  };
  tRun run_;
};

template <class tRow>
bool tXChgArray::search(const tRow& row, std::string_view word, bool exact, int count,
                        int& position) {
  int low = 0;
  int high = count - 1;
  while (low <= high) {
    const int middle = low + (high - low) / 2;
    const int order = compare(row.slot(middle), word, exact);
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

}  // namespace precomp
