#pragma once

#include "tools/tablegen/dfa.h"

namespace tablegen {

/// The smallest automaton of a list that makes the same decisions: states that no text can tell
/// apart become one. Rules with equal decisions count as the same. States are numbered in the order
/// in which a walk from the start, breadth first and by ascending codes, meets them.
tDfa minimise(const tDfa& dfa, const std::vector<tLexRule>& rules);

}  // namespace tablegen
