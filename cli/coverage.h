#pragma once

#include <string>

#include "cli/commandline.h"
#include "cli/sourcerun.h"

/// `krpre coverage`: writes, in the form of lcov, which rules of their headers the sources use.
/// Returns 0, or 1 when a source has an error or the file cannot be written.
int writeCoverage(const tCommandLine& line);

/// What `krpre check --unused` tells: rules, and groups of rules, that no source of `line` uses.
tSourceResult unusedRules(const tCommandLine& line, const tMessageStyle& style,
                          const std::string& shippedHeaders);
