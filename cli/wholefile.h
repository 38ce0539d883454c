#pragma once

#include <string>

/// Writes a file that appears whole under its name or not at all: first as `temporary`, which must
/// stand in the same directory, then renamed. What a killed process has left of the temporary file
/// is written over; processes that use the same one take turns. Returns 0 or the error's number.
int writeWholeFile(const std::string& name, const std::string& temporary, const std::string& bytes);

/// Writes everything. Returns 0 or the error's number.
int writeAll(int descriptor, const std::string& bytes);
