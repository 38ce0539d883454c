#pragma once

#include <string>

/// Writes a file that appears whole under its name or not at all: first as `temporary`, which must
/// be in the same directory, then by renaming. A temporary file left by a killed process is
/// overwritten; processes with the same one take turns. Returns 0 or an errno value.
int writeWholeFile(const std::string& name, const std::string& temporary, const std::string& bytes);
