#pragma once

#include "lib_base/diskman.h"

/// The result of packing or unpacking a file.
enum class eFileResult {
  kDone,
  kUnchanged,   // already packed, or not packed
  kUnreadable,  // cannot be read
  kTooLarge,    // its packed or unpacked size exceeds the limit for a source
  kDamaged,     // cannot be unpacked
  kNotWritten,
};

/// The maximum size of a packed file and of its text, in bytes.
constexpr std::size_t kLargestSource = 16 * 1024 * 1024;

/// Packs the file `in` into `out`; null means in place. `out`, or the file that it links to, is
/// replaced atomically once the new file is complete, gets the permissions of `in`, and is left
/// unchanged on failure; a pipe or a device is written to. An already packed file is copied
/// unchanged, or left alone when packing in place. After a failure of the system, `error` is its
/// errno value.
eFileResult packFile(tDiskMan& disk, const char* in, const char* out, int& error);
/// The inverse of packFile.
eFileResult unpackFile(tDiskMan& disk, const char* in, const char* out, int& error);

inline eFileResult packFile(tDiskMan& disk, const char* in, const char* out) {
  int ignored = 0;
  return packFile(disk, in, out, ignored);
}
inline eFileResult unpackFile(tDiskMan& disk, const char* in, const char* out) {
  int ignored = 0;
  return unpackFile(disk, in, out, ignored);
}
