#pragma once

#include "cli/commandline.h"

/// `krpre explain` and `krpre rules`: print the answer to standard output and complaints to
/// standard error. Return 0, or 1 when the source has an error or there is nothing to tell.
int explain(const tCommandLine& line);
int listRules(const tCommandLine& line);
