#pragma once

#include <string>

enum eExit { kAllPreprocessed = 0, kSomeFailed = 1, kWrongUsage = 2 };

/// Prints why the usage is wrong, with a hint, and returns kWrongUsage.
int refuseUsage(const std::string& reason);
