#pragma once

/// `krpre pack` and `krpre unpack`. `arguments[0]` is the subcommand's name. Tells on standard
/// output what has become of each file and complains on standard error. Returns 0, 1 when a file
/// failed, or 2 when the usage is wrong; then nothing has been done.
int packCommand(int count, char** arguments);
int unpackCommand(int count, char** arguments);
