#include "preprocessor/host/hostdisk.h"

#include "preprocessor/run/preprocessor.h"

tHostDisk::tHostDisk(tDiskMan& machine, const krpre_host& host)
    : tDiskManOverlay(machine), onlyFiles_((host.flags & KRPRE_ONLY_FILES) != 0) {
  tString::setMaxSize(kLongestText);
  for (std::size_t i = 0; i < host.fileCount; ++i) {
    const krpre_file& file = host.files[i];
    keepText(file.name, {file.text, file.length});
  }
}

std::unique_ptr<tFile> tHostDisk::open(const char* name, int& error) {
  if (!hides(name)) return tDiskManOverlay::open(name, error);
  error = 0;
  return nullptr;
}

// What is no file may still be written to.
eStanding tHostDisk::look(const char* name) {
  const eStanding standing = tDiskManOverlay::look(name);
  return standing == eStanding::kFile && hides(name) ? eStanding::kNothing : standing;
}

std::vector<std::string> tHostDisk::namesIn(const char* directory) {
  return onlyFiles_ ? std::vector<std::string>() : tDiskManOverlay::namesIn(directory);
}
