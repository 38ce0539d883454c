#pragma once

#include <cstddef>

namespace sspool {

// AddressSanitizer must see each object come and go, so nothing is kept back from it.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kKeeps = false;
#elif defined(__has_feature)
constexpr bool kKeeps = !__has_feature(address_sanitizer);
#else
constexpr bool kKeeps = true;
#endif

constexpr std::size_t kClassSize = 32;
constexpr std::size_t kClasses = 16;  // up to 512 bytes

struct tFreeBlock {
  tFreeBlock* next;
};

struct tFreeList {
  tFreeBlock* first;
  unsigned room;  // for how many more blocks
};

/// The free lists of a thread. They need neither construction nor destruction, and are reached
/// without a call: the C library sets a little space aside for such variables of libraries that are
/// loaded late, of which these few hundred bytes are the library's share.
struct tPool {
  tFreeList lists[kClasses];
};
extern __attribute__((tls_model("initial-exec"))) thread_local constinit tPool pool;

void* allocateFresh(std::size_t size);
/// A list without room: at the thread's first release, when it is full, and when the thread ends.
void releaseSlow(void* storage, std::size_t sizeClass) noexcept;

}  // namespace sspool

/// Storage for the small objects that come and go with every token. Released storage is kept for
/// the next request of its size class, thread by thread; larger requests go to the heap.
inline void* ssPoolAllocate(std::size_t size) {
  const std::size_t sizeClass = (size - 1) / sspool::kClassSize;
  if (sspool::kKeeps && sizeClass < sspool::kClasses) {
    sspool::tFreeList& list = sspool::pool.lists[sizeClass];
    if (sspool::tFreeBlock* const block = list.first) {
      list.first = block->next;
      ++list.room;
      return block;
    }
  }
  return sspool::allocateFresh(size);
}

/// Gives back what ssPoolAllocate gave for the same `size`, on any thread.
inline void ssPoolRelease(void* storage, std::size_t size) noexcept {
  const std::size_t sizeClass = (size - 1) / sspool::kClassSize;
  if (sspool::kKeeps && sizeClass < sspool::kClasses) {
    sspool::tFreeList& list = sspool::pool.lists[sizeClass];
    if (list.room > 0) {
      auto* const block = static_cast<sspool::tFreeBlock*>(storage);
      block->next = list.first;
      list.first = block;
      --list.room;
      return;
    }
  }
  sspool::releaseSlow(storage, sizeClass);
}
