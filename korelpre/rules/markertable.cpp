#include "korelpre/rules/markertable.h"

#include <type_traits>

#include "korelpre/rules/patternmarkers.h"
#include "korelpre/rules/restrictmarker.h"
#include "korelpre/rules/resultmarker.h"
#include "korelpre/text/tokenkinds.h"
#include "lib_base/fatal.h"
#include "ssvp40xpf/korelpreproductions.h"

namespace precomp {

using namespace korelpre;

namespace {

template <class tMarker>
tMatchMarker* make(tMarkerArena* arena, const tSpcString& name) {
  if constexpr (std::is_constructible_v<tMarker, const tSpcString&>) {
    return makeMarker<tMarker>(arena, name);
  } else {
    return makeMarker<tMarker>(arena);
  }
}

constexpr std::uint32_t kNoForm = tMarkerRow::kNoForm;
constexpr std::uint32_t kNoToken = tMarkerRow::kNoToken;

}  // namespace

const tMarkerRow kMarkerRows[] = {
#define MARKER(class, kind, number, side, production, open, close, before, behind) \
  {kind, eMarkerSide::side, production, open, close, &make<class>},
#include "korelpre/rules/markers.def"
#undef MARKER
    {},
};

const tMarkerRow* markerOfKind(eMarkerSide side, unsigned kind) {
  for (const tMarkerRow* row = kMarkerRows; row->make != nullptr; ++row) {
    if (row->side == side && row->kind == kind) return row;
  }
  return nullptr;
}

const tMarkerRow& markerOfProduction(unsigned production) {
  const tMarkerRow* row = kMarkerRows;
  while (row->make != nullptr && row->production != production) ++row;
  krpreAssert(row->make != nullptr, "a marker's production has no row",
              "korelpre/rules/markertable");
  return *row;
}

}  // namespace precomp
