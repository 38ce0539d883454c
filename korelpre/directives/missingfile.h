#pragma once

#include <string>
#include <vector>

#include "korelpre/directives/filefinder.h"
#include "korelpre/errors/diagnostic.h"

namespace precomp {

/// Adds a note on a file that exists and differs in case from one of `paths`, which do not, or
/// whose name is close to one of theirs.
void noteNearFile(std::vector<tNote>& notes, tDiskMan& files,
                  const std::vector<std::string>& paths);

/// What helps to find an included file that was not found: the directories that were searched, and
/// a file whose name is nearly the one that was looked for.
std::vector<tNote> notesOfMissing(tFileFinder& finder, const tString& name);

}  // namespace precomp
