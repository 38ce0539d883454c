#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "lib_base/stringz.h"

/// The two statements that tie generated code to its source for the debugger. The run turns them
/// into line markers in the end. The first is followed by a line number and ")".
inline constexpr std::string_view kSynchronizeMarker = "__SYNCHRONIZEDEBUG__(";
inline constexpr std::string_view kIgnoreMarker = "__IGNOREDEBUGLINE__()";

/// Puts a marker line before every statement of `text`: before one that shows a dialog
/// ("ACTIVATE()" in any case) the one that pins the debugger to `line`, before all others the one
/// that makes it skip them. A line that continues the one before (which ends in ';') gets none.
///
/// Only "\r\n" ends a line here, and text behind the last one is dropped.
void SynchronizeDebugger(tString& text, std::int32_t line);

/// Decodes pairs of upper-case hexadecimal digits. A pair that holds a carriage return or line feed
/// is copied as it stands. Anything else makes the whole result empty.
tString HexToStr(std::string_view hexText);

/// How many line feeds `text` holds up to and including `position`; 0 for a negative position.
std::int32_t CalcCurLine(std::string_view text, std::ptrdiff_t position);
