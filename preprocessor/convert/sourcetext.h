#pragma once

#include "lib_base/diskman.h"
#include "lib_base/stringz.h"

/// The result of a conversion.
enum class eConversion {
  kNone,      // there is nothing to convert
  kDone,      // the converted text is in memory, under the name of the source
  kError,     // the source has an error
  kTooLarge,  // the converted text would exceed the limit for a text
  kUnreadable,
};

/// Reads a whole source and unpacks it if it is packed. Returns false if it is not there, too large
/// or damaged, which is then reported by whoever reads it next, or if it cannot be read: then
/// `error` is the errno value, otherwise 0.
bool readSourceText(tDiskMan& disk, const tString& name, tString& text, int& error);

/// Makes `files` serve `text` under `name` from memory, in front of the file on disk.
void keepConverted(tDiskManOverlay& files, const tString& name, const tString& text);
