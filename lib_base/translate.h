#pragma once

#include "lib_base/stringz.h"

/// The translation of a fixed message text in the context "Preprocessor", in the local 8-bit
/// encoding. `text` is a literal in ASCII.
///
/// Qt is asked only when the host has it loaded and an application object exists; otherwise the
/// text itself comes back, without a warning and without Qt being loaded. The part that needs Qt
/// is a module of its own (libkrpre-qt.so), found beside the library, so that a run without a Qt
/// host never pays for loading it.
tString translate(const char* text);
