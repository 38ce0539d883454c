#pragma once

#include "cli/commandline.h"

/// `krpre pack` and `krpre unpack`: print to standard output what became of each file and complain
/// on standard error. Return an exit status; when the usage is wrong nothing has been done.
int pack(const tCommandLine& line);
int unpack(const tCommandLine& line);
