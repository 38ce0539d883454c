#include "korelpre/rules/markerarena.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>

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
  if (size <= spare_.size) {
    startChunk(std::move(spare_));
    spare_ = {};
    return allocate(size);
  }
  chunkSize_ = std::clamp(chunkSize_ * 4, kFirstChunk, kLargePage);
  const std::size_t wanted = std::max(size, chunkSize_);
  const bool large = wanted == kLargePage;
  void* const chunk = large ? std::aligned_alloc(kLargePage, wanted) : std::malloc(wanted);
  if (chunk == nullptr) throw std::bad_alloc();
  if (large) madvise(chunk, wanted, MADV_HUGEPAGE);  // a wish, whatever comes of it
  tChunk made;
  made.bytes.reset(static_cast<std::byte*>(chunk));
  made.size = wanted;
  startChunk(std::move(made));
  return allocate(size);
}

void tMarkerArena::startChunk(tChunk chunk) {
  chunks_.push_back(std::move(chunk));
  next_ = chunks_.back().bytes.get();
  left_ = chunks_.back().size;
  size_ += left_;
}

void tMarkerArena::keepSpare(std::size_t chunks) {
  if (chunks_.back().size >= spare_.size) spare_ = std::move(chunks_.back());
  chunks_.resize(chunks);
}

}  // namespace precomp
