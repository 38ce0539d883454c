#pragma once

#include <string>

#include "cli/optiontable.h"

// Texts that are made from the table of options.

/// The text of `--help` of a command.
std::string helpText(const tCommand& command);
/// The sections of the manual page that list the options; docs/krpre.1 holds them.
std::string manualSections();
/// What a shell, "bash" or "zsh", is told of the options; the files in completions/ hold it.
std::string completionsFor(const std::string& shell);
