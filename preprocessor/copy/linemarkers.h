#pragma once

#include "lib_base/stringz.h"

/// Finishes a generated text, in this order:
///  - the name of the normalised copy, with or without its directory, becomes `sourceName`;
///  - each skip marker of debugsync.h becomes a line marker for line 0;
///  - each synchronisation marker becomes a line marker for the line in it. Blanks around the
///    digits are skipped; a marker with anything else in it is left unchanged;
///  - the ";" between such a marker and another statement on its line becomes a line end.
/// False when the text would exceed tString::maxSize().
bool finishLineMarkers(tString& text, const tString& copyName, const tString& sourceName);
