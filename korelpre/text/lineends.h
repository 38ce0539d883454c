#pragma once

#include <string_view>

#include "lib_base/stringz.h"

namespace precomp {

/// Whether every line of `text` ends with "\r\n" and neither byte stands alone.
bool hasNormalLineEnds(std::string_view text);

/// Makes every line end of `text` ("\r", "\n" or "\r\n") "\r\n".
void normaliseLineEnds(tString& text);

}  // namespace precomp
