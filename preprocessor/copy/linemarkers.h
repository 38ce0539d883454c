#pragma once

#include "lib_base/stringz.h"

/// The last touch to a generated text, in this order:
///  - the name of the normalised copy, with its directory or without, becomes `sourceName`;
///  - each skip marker of debugsync.h becomes a line marker with line 0;
///  - each synchronisation marker becomes a line marker with the line it holds. Blanks around the
///    digits are skipped; a marker that holds anything else stays as it is;
///  - the ";" between such a marker and another statement on its line becomes a line end.
void finishLineMarkers(tString& text, const tString& copyName, const tString& sourceName);
