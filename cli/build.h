#pragma once

#include <string>

#include "cli/commandline.h"

/// Preprocesses what `line` asks for and prints the messages, those of each source together, in the
/// order of the sources, whatever the number of threads. Complaints go to standard error. Returns
/// the exit status of the program.
int build(const tCommandLine& line, const std::string& shippedHeaders);
