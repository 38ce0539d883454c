#pragma once

#include "lib_base/stringz.h"

/// The translation of a fixed message text in the context "Preprocessor", in the local 8-bit
/// encoding. `text` is a literal in ASCII.
///
/// While a tLanguageScope lives, the language is that scope's. Otherwise Qt is asked, but only when
/// the host has it loaded and an application object exists; else the text itself comes back,
/// without a warning and without Qt being loaded. The part that needs Qt is a module of its own
/// (libkrpre-qt.so), found beside the library, so that a run without a Qt host never pays for
/// loading it.
tString translate(const char* text);
