#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "korelpre/lint/findings.h"
#include "korelpre/lint/witness.h"
#include "korelpre/tables/ruleset.h"

namespace precomp {

/// Finds what is hardly meant in the rules of a program, when all of them are in force. What is
/// said of more than the text of a rule is tried with a statement first.
class tRuleLint {
 public:
  tRuleLint(tFindings& findings, tRuleSet& rules) : findings_(findings), rules_(rules) {}
  void run();

 private:
  // A rule with its place in its table, which is its rank among rules that fit equally well.
  struct tRanked {
    tBaseXChg* rule;
    int index;
  };
  using tRanks = std::vector<tRanked>;

  void judgeTable(tXChgArray& table);
  void judgeResult(const tBaseXChg& rule, const tMatchMarker* head);
  void judgeBrackets(const tBaseXChg& rule);
  void judgePattern(const tBaseXChg& rule);
  void judgeGroups(const tBaseXChg& rule);
  void judgeEnd(const tBaseXChg& rule);
  void judgeCircle(const tBaseXChg& rule);
  void judgeParameters(const tLintedFile& file);
  void judgePairs(const tRanks& rules);
  void judgePair(const tRanked& one, const tRanked& other, tWitness& witness);
  void judgeKeys(const tXChgArray& table);
  bool isWorn() const;
  bool isTold(const tBaseXChg& rule) const;
  tLintPlace placeOf(const tBaseXChg& rule, std::string_view piece = {}) const;

  tFindings& findings_;
  tRuleSet& rules_;
  std::uint64_t steps_ = 0;
  std::set<const tBaseXChg*> circular_;                            // told of
  std::set<std::pair<const tBaseXChg*, const tBaseXChg*>> pairs_;  // told of
};

}  // namespace precomp
