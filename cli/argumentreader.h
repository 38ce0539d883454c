#pragma once

#include "cli/commandline.h"

struct tCommand;

/// Reads the arguments of `command`, its options (see cli/optiontable.h) and files in any order;
/// slot 0 is not read. Prints nothing. To be called once: it relies on the process-wide state of
/// getopt.
tCommandLine readCommandLine(const tCommand& command, int count, char** arguments);
