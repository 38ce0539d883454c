#pragma once

#include <cstdint>
#include <vector>

#include "tools/tablegen/dfa.h"

namespace tablegen {

/// A table image, word by word.
using tImage = std::vector<std::uint32_t>;

/// Builds the smallest automaton of every list and lays all of them out as a scanner image.
/// Throws tGenError for a rule that no text can reach or that matches the empty text.
tImage buildLexImage(const tLexSpec& spec);

}  // namespace tablegen
