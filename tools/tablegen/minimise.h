#pragma once

#include "tools/tablegen/dfa.h"

namespace tablegen {

/// The minimal automaton with the same decisions: equivalent states are merged. Rules with equal
/// decisions count as the same. States are numbered in breadth-first order from the start state, by
/// ascending codes.
tDfa minimise(const tDfa& dfa, const std::vector<tLexRule>& rules);

}  // namespace tablegen
