#pragma once

#include <string_view>

#include "lib_base/diskman.h"
#include "lib_base/stringz.h"
#include "preprocessor/convert/pageprogress.h"
#include "preprocessor/convert/pagewriter.h"
#include "preprocessor/convert/sourcetext.h"

/// Turns a server-side page into the source of a function. When `name` is a page (see
/// sourcekind.h), its converted text stands under that name in `files` afterwards, in memory;
/// docs/pages.md describes the language. Other sources are left alone. With kError `error` tells
/// what is wrong.
eConversion DoKRHPreprocessor(tDiskManOverlay& files, const tString& name, bool debugInfo,
                              bool httpSend, tPageError& error);

/// Converts the text of a page: line for line, but that the end of the function takes a line more
/// when the last line is a directive's. On an error `text` stays as it was and `error` tells which.
eConversion HTMLParse(tString& text, const tPageForm& form, tPageError& error);

/// The name of the function of a page, from the file's name without directory and extension: what
/// cannot stand in a name becomes "_", and a "_" goes in front of a digit.
tString pageFunctionName(std::string_view base);
