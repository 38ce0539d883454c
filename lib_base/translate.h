#pragma once

#include "lib_base/fatal.h"
#include "lib_base/stringz.h"

/// Translates a fixed message text in the context "Preprocessor" to the local 8-bit encoding.
/// `text` is an ASCII literal.
///
/// A tLanguageScope in the calling thread determines the language. Otherwise Qt translates the
/// text, provided that the host has loaded Qt and created an application object; if not, the text
/// is returned unchanged, without a warning and without loading Qt. Only a separate module beside
/// the library (krpre/libkrpre-qt.so) is linked with Qt, so runs without a Qt host do not pay for
/// loading it.
tString translate(const char* text);

/// What is told of a fatal error: "TEXT in file UNIT at line N".
tString toldOf(const tFatalError& failure);
