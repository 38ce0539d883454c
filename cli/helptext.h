#pragma once

#include <string>

/// The text of `--help`.
std::string helpText();
