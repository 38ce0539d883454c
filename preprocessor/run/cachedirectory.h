#pragma once

#include "lib_base/stringz.h"

/// The directory for what later runs of the user can use: "krpre" in XDG_CACHE_HOME, or in ".cache"
/// of HOME. It need not be there. Empty if neither variable holds an absolute path.
tString cacheDirectory();
