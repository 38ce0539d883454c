#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "cli/paint.h"
#include "include/krpre.h"

/// How messages are shown.
enum class eDiagnosticForm {
  kClassic,  // the lines of the library
  kLong,     // the same without results, with details below each error
  kJson,     // one object per line
  kGcc,      // "file:line:column: error: text [code]"
  kMsvc,     // "file(line,column,line,end): error code: text"
  kSarif,    // one document of SARIF 2.1.0
};

/// Translates words of the details.
using tWords = std::function<std::string(const char* text)>;

/// The line that the long form has in place of the library's: of a warning, which the library does
/// not print, and of a source that cannot be read, where the library names its copy or another
/// line. Otherwise empty.
std::string longHead(const krpre_diagnostic& diagnostic, const tPaint& paint,
                     const tWords& translated);

/// What stands below the first line of an error or a warning: the line of the source with a caret,
/// the including directives, the rules that were applied, the notes. Empty for other diagnostics.
std::string longDetails(const krpre_diagnostic& diagnostic, const tPaint& paint,
                        const tWords& translated);

/// One line of JSON. Bytes that are not valid UTF-8 are replaced.
std::string jsonLine(const krpre_diagnostic& diagnostic);

/// The line of an error with its notes, as compilers print them; nothing for a result.
std::string gccLines(const krpre_diagnostic& diagnostic);
std::string msvcLines(const krpre_diagnostic& diagnostic);
