#pragma once

#include "lib_base/stringz.h"

/// Lets the external converter turn a source of a foreign language into Korel and puts the name of
/// the converted file into `source`. Returns 0 or the converter's code. `includePath` holds
/// directories separated by ';', the last of which the converter gets. No source is converted yet.
int convertForeignSource(tString& source, const tString& includePath);
