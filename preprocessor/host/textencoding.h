#pragma once

#include <string>
#include <string_view>

#include "lib_base/stringz.h"

/// Conversions between the encodings of a Java virtual machine and of files. The machine's modified
/// UTF-8 differs from UTF-8 in two points: the character 0 is the two bytes C0 80, and a character
/// beyond U+FFFF is a pair of surrogates of three bytes each.

/// Whether the bytes are well-formed UTF-8: no missing or stray bytes, no overlong forms, no
/// surrogates, nothing beyond U+10FFFF.
bool isUtf8(std::string_view bytes) noexcept;

/// Converts a text from a file to modified UTF-8. It is read as UTF-8 if isUtf8 says so, otherwise
/// as Windows-1252, whose five undefined bytes become the control characters of the same numbers.
std::string modifiedUtf8FromText(std::string_view bytes);

/// Converts modified UTF-8 to UTF-8, but leaves C0 80 and unpaired surrogates unchanged, so that no
/// zero byte cuts a name in two.
tString utf8FromModified(std::string_view name);

/// Converts UTF-16 to UTF-8; an unpaired surrogate becomes "?".
std::string utf8FromUtf16(std::u16string_view text);
