#pragma once

#include <cstddef>

#include "korelpre/ruleindex.h"

namespace precomp {

/// How many rewrites one statement may take; one more is a circular definition.
constexpr int kMostRewrites = 100;

/// Works out what a use of `name` finally becomes, when a chain of #defines without parameters is
/// all there is to it, and keeps it in the entry until the table changes. False when only the
/// rewriting of the statement can tell: then the entry's text means nothing.
bool expandName(tRuleIndex& index, tIndexedName& name);

}  // namespace precomp
