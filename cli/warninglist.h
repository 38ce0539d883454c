#pragma once

#include <string>

/// What is wrong with a word that -W was given, as krpre_host.warnings takes them; empty when
/// nothing is.
std::string faultOfWarning(const std::string& word);

/// All warnings, one per line.
std::string warningList();
