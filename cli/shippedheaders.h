#pragma once

#include <string>

/// The directory of the headers that come with the program, relative to the program's own place, in
/// the build tree as in an installation. Empty if the system does not tell that place.
std::string shippedHeaders();
