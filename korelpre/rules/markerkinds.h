#pragma once

#include <cstdint>

namespace precomp {

/// The kinds of markers; see markers.def.
enum eRuleType : std::uint8_t {
#define MARKER(class, kind, number, side, production, open, close, before, behind) kind = number,
#include "korelpre/rules/markers.def"
#undef MARKER
};

}  // namespace precomp
