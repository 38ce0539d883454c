#pragma once

#include <cstdint>
#include <vector>

#include "tools/tablegen/dfa.h"

namespace tablegen {

/// The words of a table image.
using tImage = std::vector<std::uint32_t>;

/// Builds the minimal automaton of each list and lays them out as a scanner image. Throws tGenError
/// for a rule that can never match or that matches the empty string.
tImage buildLexImage(const tLexSpec& spec);

}  // namespace tablegen
