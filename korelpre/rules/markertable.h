#pragma once

#include <cstdint>
#include <memory>

#include "korelpre/rules/matchmarker.h"

namespace precomp {

enum class eMarkerSide : std::uint8_t { kPattern, kResult };

/// A row of markers.def.
struct tMarkerRow {
  static constexpr std::uint32_t kNoForm = 0;
  static constexpr std::uint32_t kNoToken = 0;

  eRuleType kind;
  eMarkerSide side;
  std::uint32_t production;
  std::uint32_t open;
  std::uint32_t close;
  /// Makes the marker of a name, in `arena` or on its own when that is null.
  tMatchMarker* (*make)(tMarkerArena* arena, const tSpcString& name);
};

/// The marker of a kind on one side of a rule; null when there is none.
const tMarkerRow* markerOfKind(eMarkerSide side, unsigned kind);
/// The marker that a production of the directive grammar stands for; there must be one.
const tMarkerRow& markerOfProduction(unsigned production);
/// Calls `matches(open, close)` for the markers whose name is enclosed by tokens, until it answers
/// true; null when it never does.
template <class Matches>
const tMarkerRow* enclosingMarker(eMarkerSide side, const Matches& matches);

/// All rows, ended by one without `make`.
extern const tMarkerRow kMarkerRows[];

template <class Matches>
const tMarkerRow* enclosingMarker(eMarkerSide side, const Matches& matches) {
  for (const tMarkerRow* row = kMarkerRows; row->make != nullptr; ++row) {
    if (row->side == side && row->open != 0 && matches(row->open, row->close)) return row;
  }
  return nullptr;
}

}  // namespace precomp
