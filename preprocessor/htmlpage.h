#pragma once

#include "lib_base/diskman.h"
#include "lib_base/stringz.h"
#include "preprocessor/sourcetext.h"

/// Turns a server-side page into Korel source, which stands under the page's name in `files`
/// afterwards, in memory. Sources that are no pages are left alone. No page is converted yet.
eConversion DoKRHPreprocessor(tDiskManOverlay& files, const tString& name, bool debugInfo,
                              bool httpSend);
