#pragma once

#include <cstddef>
#include <string_view>

#include "lib_base/stringz.h"

/// Packed source and header files:
///
///     offset  bytes  content
///          0      4  "#zip", in any case
///          4      4  U, the size of the text, little-endian
///          8      4  P, the size of the packed data, little-endian
///         12      P  the text as zlib data
///
/// What stands behind the packed data is ignored.

enum class eZipResult {
  kOk,
  kShortHeader,  // no tag, or the file ends within the header
  kBadLengths,   // P exceeds what the file holds, or U the limit
  kDamaged,      // the data is no zlib data, or not of a text of U bytes
};

/// True when a file begins as a packed one does. Its first four bytes suffice.
bool isZipSource(std::string_view file) noexcept;

/// Unpacks a whole packed file into `text`, which stays as it is on failure. A text larger than
/// `limit` or tString::maxSize() is refused before memory is taken for it.
eZipResult unpackZipSource(std::string_view file, std::size_t limit, tString& text);

/// A packed file that holds `text`.
tString packZipSource(std::string_view text);
