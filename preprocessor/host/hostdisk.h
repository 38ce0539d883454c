#pragma once

#include "include/krpre.h"
#include "lib_base/diskman.h"

/// The file system of a run: what the machine has, and the files that the host gives, or those
/// alone. What is written goes to the machine.
class tHostDisk final : public tDiskManOverlay {
 public:
  /// Both must outlive this object.
  tHostDisk(tDiskMan& machine, const krpre_host& host);

  using tDiskManOverlay::open;
  std::unique_ptr<tFile> open(const char* name, int& error) override;
  eStanding look(const char* name) override;
  std::vector<std::string> namesIn(const char* directory) override;

 private:
  bool hides(const char* name) { return onlyFiles_ && !keeps(name); }

  const bool onlyFiles_;
};
