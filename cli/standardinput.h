#pragma once

#include <string>

/// Reads standard input to its end. Returns what went wrong, if it cannot be read or is longer than
/// a source may be; otherwise an empty text.
std::string readStandardInput(std::string& text);
