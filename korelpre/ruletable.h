#pragma once

#include <cstdint>

#include "korelpre/rule.h"
#include "korelpre/ruleindex.h"
#include "lib_base/list.h"

namespace precomp {

/// Rules sorted by key; rules with equal keys stand next to each other in the order of arrival.
/// Owns its rules.
class tXChgArray : public tAutoArray<tBaseXChg> {
 public:
  ~tXChgArray() override = default;
  void Destroy() override;

  /// Inserts `rule` behind every rule whose key equals its key.
  void Add(tBaseXChg* rule);
  /// Finds the run of rules whose key matches `word`. Returns 1 with `first` and `last` its
  /// bounds, or 0 with both the index at which such a rule would be inserted. A rule compares by
  /// its own flags; with `exact` set none of them abbreviates.
  int Find(const tString& word, int& first, int& last, unsigned char exact) const;
  /// Applies the best of the rules `first` to `last` at the token `start` of `t`: the one with the
  /// highest score, the latest among equals. False when none matches.
  virtual bool replace(KorelPreYaccClass* processor, int first, int last, int start, tTknString* t);

  /// Destroys the rule at `index`.
  void removeRule(int index);
  /// Removes the rule at `index` from the table; it stays alive.
  tBaseXChg* takeRule(int index);
  /// Removes `rule` when it stands in the table; it stays alive.
  void forget(const tBaseXChg* rule);
  /// Forgets all rules without destroying them.
  void dropRules();

  /// The look-up of single words, kept up with the table. For tables whose rules neither
  /// abbreviate nor ignore case.
  tRuleIndex& index() { return index_; }
  const tRuleIndex& index() const { return index_; }

 private:
  int compare(int index, std::string_view word, bool exact) const;
  /// Sets `position` to the index of a rule whose key equals `word`, or to where it would be
  /// inserted and returns false.
  bool search(std::string_view word, bool exact, int& position) const;

  tRuleIndex index_;
};

}  // namespace precomp
