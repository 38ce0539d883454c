#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "lib_base/stringz.h"

/// The two statements that tie generated code to its source for the debugger; finishLineMarkers
/// turns them into line markers. The first is followed by a line number and ")".
inline constexpr std::string_view kSynchronizeMarker = "__SYNCHRONIZEDEBUG__(";
inline constexpr std::string_view kIgnoreMarker = "__IGNOREDEBUGLINE__()";

/// Inserts a debugger marker on a line of its own before every statement of `text`: the one that
/// pins the debugger to `line` if the statement shows a dialog ("ACTIVATE()", ignoring case), the
/// one that makes the debugger skip the statement otherwise. Continuation lines get no marker.
///
/// Only "\r\n" ends a line here, and text after the last line end is dropped. Returns false,
/// leaving `text` as it was, if the result would exceed tString::maxSize().
bool SynchronizeDebugger(tString& text, std::int32_t line);

/// Decodes pairs of upper-case hexadecimal digits. A pair that contains a carriage return or line
/// feed is copied unchanged. Anything else makes the whole result empty.
tString HexToStr(std::string_view hexText);

/// The number of line feeds in `text` up to and including `position`; 0 if that is negative.
std::int32_t CalcCurLine(std::string_view text, std::ptrdiff_t position);
