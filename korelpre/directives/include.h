#pragma once

#include "lib_base/stringz.h"

namespace precomp {

class tProgramFile;

/// Carries out an #include on line `line` of the file, from 1: reads the file `name`, or takes an
/// image of it, unless it has been included before.
void carryOutInclude(tProgramFile& file, const tString& name, int line);

}  // namespace precomp
