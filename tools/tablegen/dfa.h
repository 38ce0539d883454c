#pragma once

#include <cstdint>
#include <vector>

#include "tools/tablegen/nfa.h"

namespace tablegen {

struct tDfaMove {
  std::uint32_t low;
  std::uint32_t high;
  int to;

  auto operator<=>(const tDfaMove&) const = default;
};

struct tDfaState {
  std::vector<tDfaMove> moves;  // ascending and disjoint; adjacent ones have different targets
  int rule = kNoRule;           // the first rule whose match ends here
};

/// A deterministic automaton; state 0 is the start state.
struct tDfa {
  std::vector<tDfaState> states;

  /// For each rule that loses matches to an earlier rule, the earlier one; otherwise kNoRule.
  std::vector<int> shadowedBy;
};

/// Makes the automaton deterministic; `ruleCount` is the number of rules in its list.
tDfa buildDfa(const tNfa& nfa, std::size_t ruleCount);

/// Appends a move, merging it with the last one if they are adjacent and have the same target.
void appendMove(std::vector<tDfaMove>& moves, const tDfaMove& move);

/// Throws tGenError for a rule of `list` that can never match and for one that matches the empty
/// string.
void checkRules(const tDfa& dfa, const tLexList& list, const std::string& file);

}  // namespace tablegen
