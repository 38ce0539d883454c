#pragma once

#include <string>

/// What messages call it.
constexpr const char* kStandardInput = "standard input";

/// Reads a descriptor to its end. Returns what went wrong, if it cannot be read or holds 16 MiB or
/// more; otherwise an empty text. There it is called `name`, and `what` says what it should hold.
std::string readToEnd(int descriptor, const std::string& name, const char* what, std::string& text);
/// The same for a file.
std::string readFile(const std::string& name, const char* what, std::string& text);
