#pragma once

#include <vector>

#include "korelpre/errors/diagnostic.h"
#include "korelpre/text/tknstring.h"

namespace precomp {

/// The bracket of a statement that has no partner; null when all of them nest.
const tSpcString* loneBracketOf(const tTknString& statement);

/// The same for the result of a rule, each of whose clauses may be missing; may be null.
const tSpcString* loneBracketOf(const tMatchMarker* result);

/// Notes on those of `rules` in whose results brackets do not nest.
std::vector<tNote> notesOfUnbalanced(const std::vector<const tBaseXChg*>& rules);

}  // namespace precomp
