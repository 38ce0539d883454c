#pragma once

#include "lib_base/stringz.h"

namespace precomp {

class tInclude;
class tProgramFile;

/// The two halves of what follows, for whoever reads the file in between: the record of the
/// include, null when the file has been included before; and what is done when the file has been
/// read, or an image was taken (`done`), or there was nothing to read.
tInclude* beginInclude(tProgramFile& file, const tString& name, int line);
void endInclude(tProgramFile& file, tInclude& record, bool done);

/// Carries out an #include on line `line` of the file, from 1: reads the file `name`, or takes an
/// image of it, unless it has been included before.
void carryOutInclude(tProgramFile& file, const tString& name, int line);

}  // namespace precomp
