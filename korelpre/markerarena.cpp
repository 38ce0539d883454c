#include "korelpre/markerarena.h"

#include <algorithm>

namespace precomp {

// Few rules shall not take much, and many not many chunks.
void* tMarkerArena::allocateFresh(std::size_t size) {
  constexpr std::size_t kFirstChunk = 16 * 1024;
  constexpr std::size_t kLargestChunk = 1024 * 1024;
  chunkSize_ = std::clamp(chunkSize_ * 2, kFirstChunk, kLargestChunk);
  const std::size_t wanted = std::max(size, chunkSize_);
  chunks_.emplace_back(new std::byte[wanted]);
  next_ = chunks_.back().get();
  left_ = wanted;
  return allocate(size);
}

}  // namespace precomp
