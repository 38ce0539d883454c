#pragma once

#include <cstdint>
#include <vector>

#include "tools/tablegen/lexspec.h"

namespace tablegen {

/// No rule: a state in which no match ends.
constexpr int kNoRule = -1;

/// A move on the codes low to high.
struct tNfaMove {
  std::uint32_t low;
  std::uint32_t high;
  int to;
};

struct tNfaState {
  std::vector<tNfaMove> moves;
  std::vector<int> silent;  // states reached without a character
  int rule = kNoRule;       // the rule whose match ends here
};

/// The automaton of one expression list; state 0 is its start. From every state an accepting one
/// can be reached.
struct tNfa {
  std::vector<tNfaState> states;
};

/// Builds it from the rules, whose numbers are their places in the list.
tNfa buildNfa(const std::vector<tLexRule>& rules);

}  // namespace tablegen
