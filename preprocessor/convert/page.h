#pragma once

#include <string_view>

#include "lib_base/diskman.h"
#include "lib_base/stringz.h"
#include "preprocessor/convert/pageprogress.h"
#include "preprocessor/convert/pagewriter.h"
#include "preprocessor/convert/sourcetext.h"

/// Converts a server-side page to the source of a function; docs/pages.md describes the language.
/// If `name` is a page (see sourcekind.h), `files` serves the converted text under that name from
/// then on, from memory. Other sources are left alone. On kError, `error` says what is wrong; on
/// kUnreadable, `reason` is the errno value.
eConversion DoKRHPreprocessor(tDiskManOverlay& files, const tString& name, bool debugInfo,
                              bool httpSend, tPageError& error, int& reason);

/// Converts the text of a page line by line; only the end of the function needs an extra line if
/// the last line is a directive. On an error, `text` is unchanged and `error` says what is wrong.
eConversion HTMLParse(tString& text, const tPageForm& form, tPageError& error);

/// The name of a page's function, made from the file name without directory and extension:
/// characters that a name cannot contain become "_", and a leading digit is preceded by "_".
tString pageFunctionName(std::string_view base);
