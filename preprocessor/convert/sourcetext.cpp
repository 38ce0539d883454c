#include "preprocessor/convert/sourcetext.h"

#include "lib_gzip/zipsource.h"

bool readSourceText(tDiskMan& disk, const tString& name, tString& text, int& error) {
  const std::unique_ptr<tFile> file = disk.open(name.c_str(), error);
  tString bytes;
  if (!file) return false;
  if (!file->readAll(bytes)) {
    error = file->error();
    return false;
  }
  if (isZipSource(bytes))
    return unpackZipSource(bytes, tString::maxSize(), text) == eZipResult::kOk;
  text = std::move(bytes);
  return true;
}

void keepConverted(tDiskManOverlay& files, const tString& name, const tString& text) {
  files.keepInMemory(name);
  files.create(name.c_str())->write(text);  // which takes whatever a tString holds
}
