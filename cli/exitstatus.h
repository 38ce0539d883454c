#pragma once

#include <string>

/// The exit status of the program, whatever it was asked for.
enum eExit { kAllDone = 0, kSomeFailed = 1, kWrongUsage = 2 };

/// Prints why the usage is wrong, with a hint at the help of `command`, and returns kWrongUsage.
int refuseUsage(const std::string& reason, const std::string& command = "krpre");
