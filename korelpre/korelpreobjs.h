#pragma once

#include <cstdint>

namespace precomp {

class tBaseXChg;
class tMatchMarker;
class tPCHStream;
class tResultMarker;
class tTknString;

/// The kinds of markers; the numbers stand in precompiled headers.
enum eRuleType : std::uint8_t {
  kMatchIdentifier = 1,
  kMatchMarker = 2,
  kMatchMarkerExt = 3,
  kMatchMarkerList = 4,
  kMatchMarkerRestrict = 5,
  kMatchMarkerWild = 6,
  kMatchMarkerOpt = 7,
  kResultIdentifier = 8,
  kResultMarker = 9,
  kResultMarkerBlock = 10,
  kResultMarkerBool = 11,
  kResultMarkerDumbStr = 12,
  kResultMarkerRegStr = 13,
  kResultMarkerSmartStr = 14,
};

/// A statement may not grow past these while it is rewritten.
constexpr int kMostTokens = 100000;
constexpr std::size_t kLargestStatement = std::size_t{1} << 20;
/// Steps that the matcher may take for one statement.
constexpr std::uint32_t kMostSteps = 50'000'000;
/// How deep the groups of a rule may nest.
constexpr int kDeepestGroup = 250;

}  // namespace precomp
