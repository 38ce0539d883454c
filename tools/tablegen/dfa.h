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
  std::vector<tDfaMove> moves;  // ascending, apart from each other; neighbours lead elsewhere
  int rule = kNoRule;           // the first of the rules whose match ends here
};

/// A deterministic automaton; state 0 is its start.
struct tDfa {
  std::vector<tDfaState> states;

  /// For each rule that loses some of its matches to an earlier one: that earlier rule, else
  /// kNoRule.
  std::vector<int> shadowedBy;
};

/// Makes the automaton deterministic; `ruleCount` is the number of its list's rules.
tDfa buildDfa(const tNfa& nfa, std::size_t ruleCount);

/// Adds a move behind the last one, joined with it when both lead to the same state and touch.
void appendMove(std::vector<tDfaMove>& moves, const tDfaMove& move);

/// Throws tGenError for a rule of `list` that no text can reach and for one that matches the empty
/// text.
void checkRules(const tDfa& dfa, const tLexList& list, const std::string& file);

}  // namespace tablegen
