#pragma once

#include <string>

#include "cli/commandline.h"

/// Why no source can have that name; empty if one can.
std::string faultOfName(const std::string& name);

/// Appends the sources that the list of `line` names, if it has one, to its files. Complains of a
/// list that cannot be read and of names that cannot be meant.
void addListedFiles(tCommandLine& line);
