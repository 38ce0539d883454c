#pragma once

#include "cli/commandline.h"

/// Carries out `krpre reduce`: shrinks a source and its headers while they show the same error or
/// output, and writes what is left as a bundle. Returns an exit status.
int reduce(const tCommandLine& given);
