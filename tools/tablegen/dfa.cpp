// The subset construction. A deterministic state represents the set of states that the automaton
// can be in after reading the same text. The code range is split wherever a move of the set starts
// or ends; all codes between two splits lead to the same set. It terminates because the number of
// sets is finite.
#include "tools/tablegen/dfa.h"

#include <algorithm>
#include <map>
#include <utility>

#include "tools/tablegen/generror.h"

namespace tablegen {
namespace {

using tStateSet = std::vector<int>;  // ascending, without duplicates

class tSubsets {
 public:
  tSubsets(const tNfa& nfa, std::size_t ruleCount) : nfa_(nfa) {
    dfa_.shadowedBy.assign(ruleCount, kNoRule);
  }

  tDfa build();

 private:
  const tNfaState& state(int index) const { return nfa_.states[static_cast<std::size_t>(index)]; }
  tStateSet closure(tStateSet set) const;
  int stateOf(tStateSet set);
  void chooseRule(tDfaState& made, const tStateSet& set);
  void addMoves(std::size_t from);

  const tNfa& nfa_;
  tDfa dfa_;
  std::map<tStateSet, int> numbers_;
  std::vector<const tStateSet*> sets_;  // by deterministic state; the keys of numbers_
};

tDfa tSubsets::build() {
  stateOf({0});
  for (std::size_t next = 0; next < sets_.size(); ++next) addMoves(next);
  return std::move(dfa_);
}

tStateSet tSubsets::closure(tStateSet set) const {
  std::vector<bool> inside(nfa_.states.size());
  for (const int index : set) inside[static_cast<std::size_t>(index)] = true;
  for (std::size_t next = 0; next < set.size(); ++next) {
    for (const int reached : state(set[next]).silent) {
      if (inside[static_cast<std::size_t>(reached)]) continue;
      inside[static_cast<std::size_t>(reached)] = true;
      set.push_back(reached);
    }
  }
  std::sort(set.begin(), set.end());
  return set;
}

int tSubsets::stateOf(tStateSet set) {
  const auto [entry, isNew] =
      numbers_.emplace(closure(std::move(set)), static_cast<int>(sets_.size()));
  if (isNew) {
    sets_.push_back(&entry->first);
    dfa_.states.emplace_back();
    chooseRule(dfa_.states.back(), entry->first);
  }
  return entry->second;
}

void tSubsets::chooseRule(tDfaState& made, const tStateSet& set) {
  std::vector<int> rules;
  for (const int index : set) {
    if (state(index).rule != kNoRule) rules.push_back(state(index).rule);
  }
  if (rules.empty()) return;
  made.rule = *std::min_element(rules.begin(), rules.end());
  for (const int rule : rules) {
    int& winner = dfa_.shadowedBy[static_cast<std::size_t>(rule)];
    if (rule != made.rule && winner == kNoRule) winner = made.rule;
  }
}

void tSubsets::addMoves(std::size_t from) {
  std::vector<tNfaMove> moves;
  std::vector<std::uint32_t> cuts;
  for (const int index : *sets_[from]) {
    for (const tNfaMove& move : state(index).moves) {
      moves.push_back(move);
      cuts.push_back(move.low);
      cuts.push_back(move.high + 1);
    }
  }
  std::sort(cuts.begin(), cuts.end());
  cuts.erase(std::unique(cuts.begin(), cuts.end()), cuts.end());

  for (std::size_t cut = 0; cut + 1 < cuts.size(); ++cut) {
    const std::uint32_t low = cuts[cut];
    tStateSet reached;
    for (const tNfaMove& move : moves) {
      if (move.low <= low && low <= move.high) reached.push_back(move.to);
    }
    if (reached.empty()) continue;
    std::sort(reached.begin(), reached.end());
    reached.erase(std::unique(reached.begin(), reached.end()), reached.end());
    const int to = stateOf(std::move(reached));
    appendMove(dfa_.states[from].moves, {low, cuts[cut + 1] - 1, to});
  }
}

}  // namespace

tDfa buildDfa(const tNfa& nfa, std::size_t ruleCount) {
  return tSubsets(nfa, ruleCount).build();
}

void appendMove(std::vector<tDfaMove>& moves, const tDfaMove& move) {
  if (!moves.empty() && moves.back().to == move.to && moves.back().high + 1 == move.low) {
    moves.back().high = move.high;
  } else {
    moves.push_back(move);
  }
}

void checkRules(const tDfa& dfa, const tLexList& list, const std::string& file) {
  std::vector<bool> wins(list.rules.size());
  for (const tDfaState& state : dfa.states) {
    if (state.rule != kNoRule) wins[static_cast<std::size_t>(state.rule)] = true;
  }
  const int empty = dfa.states.front().rule;
  if (empty != kNoRule) {
    throw tGenError(file, list.rules[static_cast<std::size_t>(empty)].line,
                    "the rule matches the empty text");
  }
  for (std::size_t rule = 0; rule < list.rules.size(); ++rule) {
    if (wins[rule]) continue;
    const long winner = list.rules[static_cast<std::size_t>(dfa.shadowedBy[rule])].line;
    throw tGenError(file, list.rules[rule].line,
                    "the rule can never match, line " + std::to_string(winner) + " comes first");
  }
}

}  // namespace tablegen
