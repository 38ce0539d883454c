#pragma once

#include <string>
#include <vector>

/// The one of `words` that is closest to the misspelt `word`; empty if none is close.
std::string nearestTo(const std::string& word, const std::vector<std::string>& words);
