#pragma once

#include <cstdint>

namespace precomp {

/// What has been included.
struct tIncludeCount {
  std::int64_t files = 0;
  std::int64_t bytes = 0;
};

}  // namespace precomp
