#pragma once

#include <string>
#include <vector>

#include "cli/paint.h"
#include "cli/rulestory.h"

/// The story of a statement of `file`, for people.
std::string explainedText(const tRuleStory& story, const std::string& file, const tPaint& paint);
/// The same as one JSON object. Bytes that are not valid UTF-8 are replaced.
std::string explainedJson(const tRuleStory& story, const std::string& file);

/// The rules as they are written, or `asListed` by the library, one to a line, with the place of
/// each in front as compilers write it.
std::string listedText(const std::vector<tRuleInfo>& rules, bool asListed, const tPaint& paint);
/// The same as one JSON array.
std::string listedJson(const std::vector<tRuleInfo>& rules);
