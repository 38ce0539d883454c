// The rewriting of one statement.
//
// The tokens are looked at from the first on; the first #define or, at the same token, translation
// that applies is applied, and the look begins anew. Only when none applies anywhere a command may
// replace the statement, which then is looked at anew too.
//
// Note [looking anew]
// A rewrite leaves the tokens in front of it as they were. Of these only the ones that start a
// rule, which did not match, can give another answer now, because its pattern may reach into what
// was rewritten. So the new look visits these and then goes on where the rewrite began.

#include <vector>

#include "korelpre/korelprecls.h"
#include "korelpre/rules/ruleobserver.h"
#include "korelpre/tables/nameexpansion.h"
#include "korelpre/text/tokenise.h"

namespace precomp {

namespace {

bool tooLarge(const tTknString& statement) {
  return statement.count() > kMostTokens || statement.textSize() > kLargestStatement;
}

// Rewrites one statement.
class tRewriter {
 public:
  tRewriter(KorelPreYaccClass& processor, tTknString& statement, std::vector<int>& failed,
            std::vector<const tBaseXChg*>& applied)
      : processor_(processor), statement_(statement), failed_(failed), applied_(applied) {
    failed_.clear();
    applied_.clear();
  }

  /// Applies the first rule that matches anywhere. False when none does.
  bool rewriteOnce() {
    for (std::size_t i = 0; i < failed_.size(); ++i) {
      if (applyAt(failed_[i]) != kApplied) continue;
      next_ = failed_[i];
      failed_.resize(i);
      return true;
    }
    for (; next_ < statement_.count(); ++next_) {
      switch (applyAt(next_)) {
        case kApplied:
          return true;
        case kFailed:
          failed_.push_back(next_);
          break;
        case kNoRule:
          break;
      }
    }
    if (!applyCommand()) return false;
    next_ = 0;
    failed_.clear();
    return true;
  }

 private:
  enum eOutcome { kNoRule, kFailed, kApplied };

  eOutcome applyAt(int index) {
    const tString& word = statement_.getToken(index);
    if (word.empty()) return kNoRule;
    const eOutcome defined = applyDefine(word, index);
    if (defined == kApplied) return kApplied;
    const tFoundRules* found = processor_.translates()->lookUp(word);
    if (found == nullptr) return defined;
    // A translation is also looked for by its whole key.
    const bool abbreviated = found->first <= found->last;
    return apply(*processor_.translates(), abbreviated ? found->first : found->wholeFirst,
                 abbreviated ? found->last : found->wholeLast, index)
               ? kApplied
               : kFailed;
  }

  eOutcome applyDefine(const tString& word, int index) {
    tXChgArray& defines = *processor_.defines();
    if (!defines.index().gate().passes(word.data()[0], word.size() > 1 ? word.data()[1] : '\0')) {
      return kNoRule;
    }
    const tIndexedName* name = defines.index().find(word);
    if (name == nullptr) return kNoRule;
    if (name->rules == 1) {
      if (!defines.apply(&processor_, *name->rule, index, &statement_)) return kFailed;
      applied_.push_back(name->rule);
      return kApplied;
    }
    const tFoundRules* found = defines.lookUp(word);
    return found != nullptr && apply(defines, found->first, found->last, index) ? kApplied
                                                                                : kFailed;
  }

  // Rules of the whole word come first, then those that it abbreviates.
  bool applyCommand() {
    constexpr int kWholeStatement = -1;
    tXChgArray& commands = *processor_.commands();
    const tFoundRules* found = commands.lookUp(statement_.getToken(0));
    if (found == nullptr) return false;
    if (apply(commands, found->wholeFirst, found->wholeLast, kWholeStatement)) return true;
    const bool same = found->wholeFirst == found->first && found->wholeLast == found->last;
    return !same && apply(commands, found->first, found->last, kWholeStatement);
  }

  bool apply(tXChgArray& table, int first, int last, int start) {
    if (!table.replace(&processor_, first, last, start, &statement_)) return false;
    applied_.push_back(table.lastApplied());
    return true;
  }

  KorelPreYaccClass& processor_;
  tTknString& statement_;
  std::vector<int>& failed_;  // see note [looking anew]
  std::vector<const tBaseXChg*>& applied_;
  int next_ = 0;
};

}  // namespace

void KorelPreYaccClass::processLine(tTknString& statement, tString& output) {
  statement.startSteps();
  if (shared_.observer != nullptr) shared_.observer->statementBegins(statement, openedName_);
  shared_.rewriting.file = this;
  shared_.rewriting.line = statement.origin();
  tRewriter rewriter(*this, statement, failedPositions_, shared_.rewriting.rules);
  for (int rewrites = 0; rewriter.rewriteOnce();) {
    if (++rewrites > kMostRewrites || tooLarge(statement)) {
      exceptionAt(2078, statement.origin(), nullptr);
    }
  }
  if (statement.overrun()) exceptionAt(2078, statement.origin(), nullptr);
  if (shared_.observer != nullptr) shared_.observer->statementEnds(statement);
  statement.appendText(output);
  output.append('\n');
  shared_.checks.check(statement, *this);
}

// Finds out once more how a plain statement is rewritten, for a message about it.
std::vector<const tBaseXChg*> KorelPreYaccClass::rulesOfPlain(int line) {
  std::vector<const tBaseXChg*> rules;
  std::vector<int> failed;
  tTknString statement(line);
  const char* const start = text_.data() + source_.offset(line);
  tokenisePlain(start, text_.data() + text_.size(), line, statement);
  tRuleObserver* const observer = shared_.observer;
  setRuleObserver(nullptr);
  tRewriter rewriter(*this, statement, failed, rules);
  int rewrites = 0;
  while (rewrites <= kMostRewrites && !tooLarge(statement) && rewriter.rewriteOnce()) ++rewrites;
  setRuleObserver(observer);
  return rules;
}

}  // namespace precomp
