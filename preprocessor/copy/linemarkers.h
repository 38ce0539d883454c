#pragma once

#include <vector>

#include "lib_base/stringz.h"

/// A name that begins with `from` is shown with `to` instead of that.
struct tPrefix {
  tString from;
  tString to;
};

/// Finishes a generated text, in this order:
///  - the name of the normalised copy, with or without its directory, becomes `sourceName`;
///  - each skip marker of debugsync.h becomes a line marker for line 0;
///  - each synchronisation marker becomes a line marker for the line in it. Blanks around the
///    digits are skipped; a marker with anything else in it is left unchanged;
///  - the ";" between such a marker and another statement on its line becomes a line end;
///  - in line markers, the last of `prefixes` that a name begins with is replaced.
/// False when the text would exceed tString::maxSize().
bool finishLineMarkers(tString& text, const tString& copyName, const tString& sourceName,
                       const std::vector<tPrefix>& prefixes = {});
