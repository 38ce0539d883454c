#include "korelpre/markerarena.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace precomp {

namespace {

constexpr std::size_t kFirstChunk = 16 * 1024;
constexpr std::size_t kLargePage = std::size_t{2} << 20;

}  // namespace

void tMarkerArena::tRelease::operator()(std::byte* chunk) const noexcept {
  std::free(chunk);
}

// Few rules shall not take much, and many not many chunks. Chunks become large pages as soon as the
// system allows it: markers of thousands of rules are visited in no order, and looking up the small
// page of each would take longer than reading it.
void* tMarkerArena::allocateFresh(std::size_t size) {
  chunkSize_ = std::clamp(chunkSize_ * 4, kFirstChunk, kLargePage);
  const std::size_t wanted = std::max(size, chunkSize_);
  const bool large = wanted == kLargePage;
  void* const chunk = large ? std::aligned_alloc(kLargePage, wanted) : std::malloc(wanted);
  if (chunk == nullptr) throw std::bad_alloc();
  if (large) madvise(chunk, wanted, MADV_HUGEPAGE);  // a wish, whatever comes of it
  chunks_.emplace_back(static_cast<std::byte*>(chunk));
  next_ = chunks_.back().get();
  left_ = wanted;
  size_ += wanted;
  return allocate(size);
}

}  // namespace precomp
