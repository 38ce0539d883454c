#pragma once

#include <cstddef>

/// What the module that is linked with Qt exports, in plain C terms because it is looked up by
/// name.
///
/// Writes the translation of `text` in the context "Preprocessor", in the local 8-bit encoding and
/// without a terminating zero, to `buffer` when it fits into `size` bytes. Returns its length,
/// which is larger than `size` when it did not fit, or 0 when there is no application object.
extern "C" __attribute__((visibility("default"))) std::size_t krpreQtTranslate(
    const char* text, char* buffer, std::size_t size) noexcept;
