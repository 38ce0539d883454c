#pragma once

#include <string>
#include <vector>

/// The one of `words` that `word` is most likely a misspelling of; empty when none is close.
std::string nearestTo(const std::string& word, const std::vector<std::string>& words);
