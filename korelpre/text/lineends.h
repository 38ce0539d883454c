#pragma once

#include <string_view>

#include "lib_base/stringz.h"

namespace precomp {

/// Whether every line of `text` ends with "\r\n" and neither byte stands alone.
bool hasNormalLineEnds(std::string_view text);

/// Makes every line end of `text` ("\r", "\n" or "\r\n") "\r\n". False, with the text as it was,
/// when it would exceed tString::maxSize().
bool normaliseLineEnds(tString& text);

}  // namespace precomp
