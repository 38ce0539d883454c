#pragma once

#include "lib_base/stringz.h"

/// The directory, including the final '/', of the program or library that contains this code, links
/// resolved; empty if it cannot be determined.
tString ownDirectory();
