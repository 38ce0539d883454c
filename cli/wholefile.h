#pragma once

#include <string>

/// Writes a file that appears whole or not at all; a link to one is followed. What is there and no
/// regular file is written in place; "-" is standard output. Returns 0 or an errno value.
int writeFile(const std::string& name, const std::string& text);
