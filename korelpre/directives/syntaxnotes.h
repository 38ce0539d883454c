#pragma once

#include <functional>
#include <vector>

#include "korelpre/directives/programfile.h"
#include "korelpre/rules/ruledirective.h"

namespace precomp {

/// What could have stood where the grammar met the token `met`; `takes` answers for each token
/// whether it could.
std::vector<tNote> notesOfLookaheads(const std::function<bool(unsigned)>& takes, unsigned met);

/// Raises what makes a directive of `file` no rule: a bracket of a group without its partner, or a
/// pattern that begins with no word.
[[noreturn]] void raiseUnsound(tProgramFile& file, const tRuleDirective& directive);

}  // namespace precomp
