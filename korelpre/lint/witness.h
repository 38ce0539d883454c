#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "korelpre/tables/ruleset.h"
#include "korelpre/text/tknstring.h"

namespace precomp {

/// A statement that shows what is said of a rule: it has the form of the rule's pattern, and the
/// engine itself tells what becomes of it.
class tWitness {
 public:
  enum eGroups { kNone, kEach };

  /// Of `rule`, without its optional groups or with each of them once. The rules must outlive the
  /// witness. What the matcher takes is added to `steps`.
  tWitness(tRuleSet& rules, const tBaseXChg& rule, eGroups groups, std::uint64_t& steps);
  /// The same with one group only, which stands behind a marker of the pattern's own chain, twice.
  tWitness(tRuleSet& rules, const tBaseXChg& rule, const tMatchMarker& group, std::uint64_t& steps);

  const std::string& text() const { return text_; }
  /// Whether each of the values in it is a word of `text`.
  bool hasAllValues(std::string_view text) const;
  /// How well a rule of the same table fits the statement; 0 when it does not.
  int scoreOf(tBaseXChg& rule);

  struct tRewritten {
    bool ended = false;  // no circle of rules kept it from an end
    std::string text;
    std::vector<const tBaseXChg*> applied;  // in this order
  };
  tRewritten rewritten();

 private:
  tWitness(tRuleSet& rules, const tBaseXChg& rule, std::uint64_t& steps);
  // How often a group is written.
  using tTimes = std::function<int(const tMatchMarker& group)>;
  void fill(const tBaseXChg& rule, const tTimes& times);
  void append(const tMatchMarker* head, const tTimes& times);
  void put(std::string_view piece, bool apart);
  void cut(tTknString& statement) const;

  tRuleSet& rules_;
  std::uint64_t& steps_;
  std::string text_;
  std::string line_;  // the text with a line end, to which the tokens refer
  int start_;         // the token at which the pattern begins, or -1 for a command
  int values_ = 0;
  tTknString statement_;
};

}  // namespace precomp
