#pragma once

#include <string>

/// The directory of the headers that come with the program, found from where the program itself
/// stands; the same in the build tree and installed. Empty when the system does not tell.
std::string shippedHeaders();
