#pragma once

#include <string>

/// Reads standard input to its end. Empty, or what went wrong: it cannot be read, or is longer than
/// a source may be.
std::string readStandardInput(std::string& text);
