#pragma once

#include <string_view>

#include "korelpre/text/directivewords.h"

namespace precomp {

class tProgramFile;

// The four conditionals on a line of a file, from 1; what is wrong is raised there.
/// #ifdef or #ifndef; a null name means that it lies in a skipped region.
void openConditional(tProgramFile& file, eDirective directive, const std::string_view* name,
                     int line);
/// #else.
void turnConditional(tProgramFile& file, int line);
/// #endif.
void closeConditional(tProgramFile& file, int line);

/// Carries out the directive in the one way or the other, and notes it on its line. `name` is that
/// of an #ifdef or #ifndef.
void carryOutConditional(tProgramFile& file, eDirective directive, std::string_view name, int line);

}  // namespace precomp
