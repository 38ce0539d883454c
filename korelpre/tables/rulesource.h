#pragma once

#include <string_view>

namespace precomp {

class tBaseXChg;

/// Which rules of a table a word can start, as runs of indexes; a run with `last` below `first` is
/// empty.
struct tFoundRules {
  int wholeFirst = 0;  // the rules whose key is the word
  int wholeLast = -1;
  int first = 0;  // and those that let it be abbreviated too
  int last = -1;

  bool any() const { return wholeFirst <= wholeLast || first <= last; }
};

/// What the look-ups of a table ask the table itself.
class tRuleSource {
 public:
  /// Which rules the word can start.
  virtual tFoundRules findRules(std::string_view word) const = 0;
  /// The latest rule whose key is the word, made when it was a stored one; null when there is none.
  virtual tBaseXChg* latestOf(std::string_view word) = 0;

 protected:
  ~tRuleSource() = default;
};

}  // namespace precomp
