#pragma once

#include "lib_base/diskman.h"
#include "lib_base/stringz.h"

enum class eHeaderText {
  kRead,
  kUnreadable,  // there is no such file, or one of its lengths is past the limit or a lie
  kDamaged,     // the data of a packed file is not what its header promises
};

/// Reads a header for a host: a plain file as it is, a packed one (see lib_gzip/zipsource.h)
/// unpacked and cut at its first zero byte, and "\r\n" behind it; 16 MiB at most, this line end
/// included. `text` stays as it is unless the result is kRead.
eHeaderText readHeaderText(tDiskMan& disk, const char* name, tString& text);
