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

#include "korelpre/statements/rewrite.h"

#include "korelpre/tables/nameexpansion.h"

namespace precomp {

namespace {

bool tooLarge(const tTknString& statement) {
  return statement.count() > kMostTokens || statement.textSize() > kLargestStatement;
}

}  // namespace

tRewriter::tRewriter(tRuleSet& rules, tTknString& statement, tNotes& notes)
    : rules_(rules), statement_(statement), failed_(notes.failed), applied_(notes.applied) {
  failed_.clear();
  applied_.clear();
}

bool tRewriter::run() {
  for (int rewrites = 0; rewriteOnce();) {
    statement_.step(static_cast<std::uint32_t>(statement_.count()));
    if (++rewrites > kMostRewrites || tooLarge(statement_)) return false;
  }
  return !statement_.overrun();
}

// Applies the first rule that matches anywhere. False when none does.
bool tRewriter::rewriteOnce() {
  for (std::size_t i = 0; i < failed_.size(); ++i) {
    if (applyAt(failed_[i]) != kApplied) continue;
    next_ = failed_[i];
    failed_.resize(i);
    return true;
  }
  for (; next_ < statement_.count(); ++next_) {
    if (!mayStart(statement_.getToken(next_))) continue;
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

// Most words start nothing, which their first bytes tell.
inline bool tRewriter::mayStart(std::string_view word) const {
  return rules_.defines.index().gate().passes(word) || rules_.translates.lookup().passes(word);
}

tRewriter::eOutcome tRewriter::applyAt(int index) {
  const tString& word = statement_.getToken(index);
  const eOutcome defined = applyDefine(word, index);
  if (defined == kApplied) return kApplied;
  tXChgArray& translates = rules_.translates;
  const tFoundRules* found = translates.lookUp(word);
  if (found == nullptr) return defined;
  // A translation is also looked for by its whole key.
  const bool abbreviated = found->first <= found->last;
  const int first = abbreviated ? found->first : found->wholeFirst;
  const int last = abbreviated ? found->last : found->wholeLast;
  return apply(translates, first, last, index) ? kApplied : kFailed;
}

tRewriter::eOutcome tRewriter::applyDefine(const tString& word, int index) {
  tXChgArray& defines = rules_.defines;
  if (!defines.index().gate().passes(word)) return kNoRule;
  const tIndexedName* name = defines.index().find(word);
  if (name == nullptr) return kNoRule;
  if (name->rules == 1) {
    if (!defines.apply(&rules_, *name->rule, index, &statement_)) return kFailed;
    applied_.push_back(name->rule);
    return kApplied;
  }
  const tFoundRules* found = defines.lookUp(word);
  return found != nullptr && apply(defines, found->first, found->last, index) ? kApplied : kFailed;
}

// Rules of the whole word come first, then those that it abbreviates.
bool tRewriter::applyCommand() {
  constexpr int kWholeStatement = -1;
  tXChgArray& commands = rules_.commands;
  const tFoundRules* found = commands.lookUp(statement_.getToken(0));
  if (found == nullptr) return false;
  if (apply(commands, found->wholeFirst, found->wholeLast, kWholeStatement)) return true;
  const bool same = found->wholeFirst == found->first && found->wholeLast == found->last;
  return !same && apply(commands, found->first, found->last, kWholeStatement);
}

bool tRewriter::apply(tXChgArray& table, int first, int last, int start) {
  if (!table.replace(&rules_, first, last, start, &statement_)) return false;
  applied_.push_back(table.lastApplied());
  return true;
}

}  // namespace precomp
