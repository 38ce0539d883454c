#pragma once

#include <string>
#include <string_view>

#include "lib_base/stringz.h"

/// The encodings between a Java virtual machine and files. Its modified UTF-8 differs from UTF-8 in
/// two points: the character 0 is two bytes, C0 80, and a character beyond U+FFFF is a pair of
/// surrogates of three bytes each.

/// True for well-formed UTF-8: no byte too few or too many, shortest forms only, no surrogates,
/// nothing beyond U+10FFFF.
bool isUtf8(std::string_view bytes) noexcept;

/// A text from a file as modified UTF-8. It is taken for UTF-8 when isUtf8, otherwise for
/// Windows-1252, whose five undefined bytes become the control characters of their numbers.
std::string modifiedUtf8FromText(std::string_view bytes);

/// Modified UTF-8 of the virtual machine as UTF-8, but that C0 80 and single surrogates stay as
/// they are: no zero byte cuts a name in two.
tString utf8FromModified(std::string_view name);

/// UTF-16 of the virtual machine as UTF-8; a single surrogate becomes "?".
std::string utf8FromUtf16(std::u16string_view text);
