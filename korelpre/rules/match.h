#pragma once

#include "korelpre/rules/matchmarker.h"

namespace precomp {

/// Walks the chain from `head` over the tokens from the cursor of `t` on. True on a match; the
/// cursor then stands behind the last token taken. `rule` is given for the chain of a whole rule:
/// a command must then reach the end of the statement or a ";". `parent` is the marker behind which
/// the group `head` stands, or null.
bool rmatch(const tRuleHome* rule, tMatchMarker* head, tTknString* t, tMatchMarker* parent);
/// The same walk; returns how many markers matched, those of repeated groups each time, or 0 when
/// the chain does not match.
int rmatchCount(const tRuleHome* rule, tMatchMarker* head, tTknString* t, tMatchMarker* parent);
/// Whether one of the groups could start at the cursor.
bool searchOpt(tTknString* t, const tMarkerList& groups);

}  // namespace precomp
