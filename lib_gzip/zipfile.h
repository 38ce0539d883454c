#pragma once

#include "lib_base/diskman.h"

/// What came of packing or unpacking a file.
enum class eFileResult {
  kDone,
  kUnchanged,   // it was packed already, or is not packed
  kUnreadable,  // it cannot be read
  kTooLarge,    // its text, or what it packs to, is larger than a source may be
  kDamaged,     // it cannot be unpacked
  kNotWritten,
};

/// A packed file and its text may have this many bytes.
constexpr std::size_t kLargestSource = 16 * 1024 * 1024;

/// Packs the file `in` into `out`, which may be the same; null means the same. `out` is replaced in
/// one step when the new file is whole, keeps the permissions of `in`, and stays as it is after a
/// failure. A file that is packed already is copied as it is, unless it is to stay in its place.
eFileResult packFile(tDiskMan& disk, const char* in, const char* out);
/// The reverse.
eFileResult unpackFile(tDiskMan& disk, const char* in, const char* out);
