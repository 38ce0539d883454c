#pragma once

#include <cstdint>
#include <vector>

#include "tools/tablegen/lexspec.h"

namespace tablegen {

/// No rule: no match ends in the state.
constexpr int kNoRule = -1;

/// A move on the codes low to high.
struct tNfaMove {
  std::uint32_t low;
  std::uint32_t high;
  int to;
};

struct tNfaState {
  std::vector<tNfaMove> moves;
  std::vector<int> silent;  // targets of empty moves
  int rule = kNoRule;       // the rule whose match ends here
};

/// The automaton of one expression list; state 0 is the start state. Every state can reach an
/// accepting one.
struct tNfa {
  std::vector<tNfaState> states;
};

/// Builds the automaton from the rules, which are numbered by their index in the list.
tNfa buildNfa(const std::vector<tLexRule>& rules);

}  // namespace tablegen
