#pragma once

#include <cstddef>

/// The function exported by the module that is linked with Qt; it has C linkage because it is
/// looked up by name.
///
/// Translates `text` in the context "Preprocessor" to the local 8-bit encoding. If the result fits
/// into `size` bytes, copies it to `buffer` without a terminating zero. Returns its length, which
/// exceeds `size` if it did not fit, or 0 if there is no application object.
extern "C" __attribute__((visibility("default"))) std::size_t krpreQtTranslate(
    const char* text, char* buffer, std::size_t size) noexcept;
