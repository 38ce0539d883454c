#pragma once

/// `krpre explain` and `krpre rules`. `arguments[0]` is the subcommand's name. Prints the answer to
/// standard output and complaints to standard error. Returns 0, 1 when the source has an error or
/// there is nothing to tell, or 2 when the usage is wrong.
int explainCommand(int count, char** arguments);
int rulesCommand(int count, char** arguments);
