#pragma once

#include <cstddef>
#include <string_view>

#include "lib_base/stringz.h"

/// Packed source and header files:
///
///     offset  bytes  content
///          0      4  "#zip", case-insensitive
///          4      4  U, the size of the text, little-endian
///          8      4  P, the size of the packed data, little-endian
///         12      P  the text as zlib data
///
/// Anything after the packed data is ignored.

enum class eZipResult {
  kOk,
  kShortHeader,  // no tag, or an incomplete header
  kBadLengths,   // P exceeds the size of the file, or U exceeds the limit
  kDamaged,      // invalid zlib data, or data that does not unpack to U bytes
};

/// Whether `file` starts with the tag of a packed file. The first four bytes are enough.
bool isZipSource(std::string_view file) noexcept;

/// The size of the text that a packed file claims to hold, in bytes; 0 for an incomplete header.
std::size_t unpackedSize(std::string_view file) noexcept;

/// Unpacks a complete packed file into `text`, which is left unchanged on failure. A text larger
/// than `limit` or tString::maxSize() is rejected before any memory is allocated for it.
eZipResult unpackZipSource(std::string_view file, std::size_t limit, tString& text);

/// Packs `text`; returns the content of the packed file.
tString packZipSource(std::string_view text);
