#pragma once

#include "lib_base/stringz.h"

/// The directory of the headers that come with the library, as an installation and the build tree
/// have it relative to the library's file; it is not looked at. Empty if the place of that file
/// cannot be determined.
tString shippedHeaders();
