#pragma once

#include <cstddef>

#include "lib_base/stringz.h"

/// While it lives no tString grows past so many bytes.
class tMaxSizeScope {
 public:
  explicit tMaxSizeScope(std::size_t bytes) { tString::setMaxSize(bytes); }
  ~tMaxSizeScope() { tString::setMaxSize(before_); }
  tMaxSizeScope(const tMaxSizeScope&) = delete;
  tMaxSizeScope& operator=(const tMaxSizeScope&) = delete;

 private:
  const std::size_t before_ = tString::maxSize();
};
