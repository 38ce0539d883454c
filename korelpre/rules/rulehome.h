#pragma once

#include "korelpre/rules/rulecontext.h"
#include "korelpre/text/words.h"

namespace precomp {

class tMarkerArena;

/// What the markers of a rule need to know of it.
class tRuleHome {
 public:
  virtual ~tRuleHome() = default;
  tRuleHome(const tRuleHome&) = delete;
  tRuleHome& operator=(const tRuleHome&) = delete;

  /// True for a command, which must account for a whole statement.
  virtual bool isCmd() const { return false; }
  tWordRule wordRule() const { return wordRule_; }
  /// That of the processor whose tables hold the rule; null when there is none.
  tRuleContext* context() const { return context_; }
  /// Null when neither the rule nor its markers lie in one.
  tMarkerArena* arena() const { return arena_; }

 protected:
  tRuleHome(tRuleContext* context, tWordRule wordRule, tMarkerArena* arena)
      : wordRule_(wordRule), arena_(arena), context_(context) {}
  void setWordRule(tWordRule wordRule) { wordRule_ = wordRule; }

 private:
  tWordRule wordRule_;
  tMarkerArena* arena_;
  tRuleContext* context_;
};

}  // namespace precomp
