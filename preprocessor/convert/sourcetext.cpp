#include "preprocessor/convert/sourcetext.h"

#include "lib_gzip/zipsource.h"

bool readSourceText(tDiskMan& disk, const tString& name, tString& text) {
  const std::unique_ptr<tFile> file = disk.open(name.c_str());
  tString bytes;
  if (!file || !file->readAll(bytes)) return false;
  if (isZipSource(bytes))
    return unpackZipSource(bytes, tString::maxSize(), text) == eZipResult::kOk;
  text = std::move(bytes);
  return true;
}

eConversion keepConverted(tDiskManOverlay& files, const tString& name, const tString& text) {
  files.keepInMemory(name);
  const std::unique_ptr<tFile> copy = files.create(name.c_str());
  const bool written = copy && copy->write(text) && copy->close();
  return written ? eConversion::kDone : eConversion::kTooLarge;
}
