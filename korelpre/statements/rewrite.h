#pragma once

#include <vector>

#include "korelpre/tables/ruleset.h"
#include "korelpre/text/tknstring.h"

namespace precomp {

/// Rewrites one statement with the rules of a program.
class tRewriter {
 public:
  /// What is kept from one statement to the next: the rules that were applied to the last one, in
  /// this order, and storage.
  struct tNotes {
    std::vector<const tBaseXChg*> applied;
    std::vector<int> failed;
  };

  /// All arguments must outlive the rewriter. Empties the notes.
  tRewriter(tRuleSet& rules, tTknString& statement, tNotes& notes);

  /// Rewrites until no rule applies. False when the statement reached a limit: a circular rule.
  bool run();

 private:
  enum eOutcome { kNoRule, kFailed, kApplied };

  bool rewriteOnce();
  bool mayStart(std::string_view word) const;
  eOutcome applyAt(int index);
  eOutcome applyDefine(const tString& word, int index);
  bool applyCommand();
  bool apply(tXChgArray& table, int first, int last, int start);

  tRuleSet& rules_;
  tTknString& statement_;
  std::vector<int>& failed_;  // see note [looking anew]
  std::vector<const tBaseXChg*>& applied_;
  int next_ = 0;
};

}  // namespace precomp
