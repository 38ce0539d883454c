#pragma once

#include <string>

#include "include/krpre.h"

/// An error or a warning as a result of SARIF 2.1.0, with a comma behind it; empty for other
/// diagnostics. Included files and notes are related locations, the rules that were applied a code
/// flow.
std::string sarifResult(const krpre_diagnostic& diagnostic);

/// The document with those results, and the kinds of messages that there are as its rules.
/// `successful`: no source has failed.
std::string sarifDocument(std::string results, bool successful);
