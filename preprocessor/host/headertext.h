#pragma once

#include "lib_base/diskman.h"
#include "lib_base/stringz.h"

enum class eHeaderText {
  kRead,
  kUnreadable,  // there is no such file, or one of its lengths is wrong or exceeds the limit
  kDamaged,     // the data of a packed file does not match its header
};

/// Reads a header for a host: a plain file unchanged, a packed one (see lib_gzip/zipsource.h)
/// unpacked and cut at its first zero byte. "\r\n" is appended; the limit is 16 MiB including it.
/// `text` is unchanged unless the result is kRead.
eHeaderText readHeaderText(tDiskMan& disk, const char* name, tString& text);
