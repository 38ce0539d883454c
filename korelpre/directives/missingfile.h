#pragma once

#include <vector>

#include "korelpre/directives/filefinder.h"
#include "korelpre/errors/diagnostic.h"

namespace precomp {

/// What helps to find an included file that was not found: the directories that were searched, and
/// a file whose name is nearly the one that was looked for.
std::vector<tNote> notesOfMissing(tFileFinder& finder, const tString& name);

}  // namespace precomp
