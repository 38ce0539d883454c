#pragma once

#include "lib_base/diskman.h"
#include "lib_base/stringz.h"

/// What came of a source that a converter has looked at.
enum class eConversion {
  kNone,      // nothing in it to convert, or it cannot be read
  kDone,      // its converted text stands under its name, in memory
  kError,     // it has an error
  kTooLarge,  // the converted text would be larger than a text may be
};

/// Reads a whole source, unpacked when it is a packed one. False when it cannot be read or is
/// damaged; those who read it next say so.
bool readSourceText(tDiskMan& disk, const tString& name, tString& text);

/// Puts `text` under `name` into the memory of `files`, in front of the file on the disk.
eConversion keepConverted(tDiskManOverlay& files, const tString& name, const tString& text);
