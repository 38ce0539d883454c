#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "cli/optiontable.h"

// Texts made from the table of options.

/// Appends `words` to the last line of `text`, wrapped for a terminal; further lines are indented.
void appendWrapped(std::string& text, std::string_view words, std::size_t indent);

/// The text of `--help` of a command.
std::string helpText(const tCommand& command);
/// The sections of the manual page that list the options; docs/krpre.1 holds them.
std::string manualSections();
/// The completions for a shell, "bash", "zsh" or "fish"; the files in completions/ hold them.
std::string completionsFor(const std::string& shell);
