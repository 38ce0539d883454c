#pragma once

#include <string>
#include <string_view>

#include "cli/paint.h"

/// A text for a terminal or a tool that reads lines: bytes that are not valid UTF-8 are taken for
/// Windows-1252, and control characters other than the tab become a backslash, "x" and two
/// hexadecimal digits, as in the messages of the library.
std::string printable(std::string_view text);

/// The column of a character, from 1, that stands in that of the byte at `column`.
int characterColumn(std::string_view source, int column);

/// A line of a source, from 1, with a caret below the byte at `column`, from 1 (0: no caret). Of a
/// long line the part around the caret is shown. Characters are taken to be one column wide, and
/// tabs are kept in both lines.
std::string quoted(std::string_view source, int line, int column, const tPaint& paint);
