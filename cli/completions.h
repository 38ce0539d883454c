#pragma once

/// `krpre --completions bash|zsh|man`: prints what a shell is told of the options, or the section
/// of the manual page that lists them, made from their table. For those who build the program; the
/// files in completions/ and docs/krpre.1 are its output. `arguments[1]` says which.
int completionsCommand(int count, char** arguments);
