#pragma once

#include <cstdint>
#include <vector>

#include "korelpre/rules/rule.h"

namespace precomp {

/// A rule that was tried at a place of a statement.
struct tRuleTrial {
  const tBaseXChg& rule;
  const tTknString& statement;
  int start;  // the token at which the pattern was tried; -1 for a command
  int score;  // 0 when the pattern did not match
  /// When it did not: the marker at which it gave up, null when the pattern ended before the
  /// statement, and the token at which that marker was tried, -1 for the end of the statement.
  const tMatchMarker* failedMarker;
  int failedToken;
};

/// Sees what the rule engine does with statements. Every operation does nothing unless it is
/// overridden. References are valid during the call.
class tRuleObserver {
 public:
  virtual ~tRuleObserver() = default;

  /// A statement of `file`, named as it was opened, will be rewritten; its origin() is its line
  /// there.
  virtual void statementBegins(const tTknString& statement, const tString& file);
  virtual void ruleTried(const tRuleTrial& trial);
  /// The rule is the one that applies. Its markers hold what they took of the statement, which is
  /// still as it was; see capturesOf().
  virtual void ruleMatched(const tBaseXChg& rule, int start, const tTknString& statement);
  /// The statement is now as the rule has made it.
  virtual void ruleApplied(const tBaseXChg& rule, int start, const tTknString& statement);
  virtual void statementEnds(const tTknString& statement);

  /// Steps that the matcher may still take for rules that nobody would try who is not observed.
  /// When they are used up such rules are left out.
  std::uint64_t spareSteps = 0;
};

/// What a marker took.
struct tCapture {
  const tMatchMarker* marker;
  std::vector<tString> texts;  // one for each repetition of its group; of others one or none
};

/// What every capturing marker of the rule took of the statement in the last match, in the order of
/// the pattern.
std::vector<tCapture> capturesOf(const tBaseXChg& rule, const tTknString& statement);

}  // namespace precomp
