#pragma once

#include <cstdint>

namespace precomp {

class tBaseXChg;
class tMatchMarker;
class tPCHStream;
class tResultMarker;
class tTknString;

/// A statement may not grow past these while it is rewritten.
constexpr int kMostTokens = 100000;
constexpr std::size_t kLargestStatement = std::size_t{1} << 20;
/// A statement or directive may not have more tokens than this, whatever becomes of them.
constexpr int kMostSourceTokens = 1'000'000;
constexpr const char* kStatementSize = "statement size";
/// Steps that the matcher may take for one statement.
constexpr std::uint32_t kMostSteps = 50'000'000;
/// How deep the groups of a rule may nest.
constexpr int kDeepestGroup = 250;

}  // namespace precomp
