#pragma once

#include "lib_base/stringz.h"

namespace precomp {

/// Hears of the files that a program is made of.
class tFileObserver {
 public:
  virtual ~tFileObserver() = default;

  /// An included file, the standard header among them, has been read. `name` is the path by which
  /// it was found. A file that is included twice is told of twice.
  virtual void fileRead(const tString& name) = 0;
};

}  // namespace precomp
