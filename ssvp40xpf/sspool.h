#pragma once

#include <cstddef>

namespace sspool {

// AddressSanitizer must see every allocation and release, so nothing is pooled under it.
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
  unsigned room;  // how many more blocks fit
};

/// The free lists of a thread. They need no construction or destruction, and the initial-exec TLS
/// model accesses them without a call: the C library reserves a little space for such variables of
/// libraries loaded at run time, and these few hundred bytes fit into it.
struct tPool {
  tFreeList lists[kClasses];
};
extern __attribute__((tls_model("initial-exec"))) thread_local constinit tPool pool;

void* allocateFresh(std::size_t size);
/// Releases to a list without room: on the thread's first release, when the list is full, and while
/// the thread is ending.
void releaseSlow(void* storage, std::size_t sizeClass) noexcept;

}  // namespace sspool

// Taking and releasing are inlined whatever else the library grows by: it is a few instructions for
// every token.

/// Storage of that size that the thread has kept; null if there is none.
[[gnu::always_inline]] inline void* ssPoolTake(std::size_t size) noexcept {
  const std::size_t sizeClass = (size - 1) / sspool::kClassSize;
  if (!sspool::kKeeps || sizeClass >= sspool::kClasses) return nullptr;
  sspool::tFreeList& list = sspool::pool.lists[sizeClass];
  sspool::tFreeBlock* const block = list.first;
  if (block == nullptr) return nullptr;
  list.first = block->next;
  ++list.room;
  return block;
}

/// Storage for the small objects that are created for every token. Released storage is kept per
/// thread for the next request in its size class; larger requests go to the heap.
inline void* ssPoolAllocate(std::size_t size) {
  void* const block = ssPoolTake(size);
  return block != nullptr ? block : sspool::allocateFresh(size);
}

/// Releases storage allocated by ssPoolAllocate with the same `size`, on any thread.
[[gnu::always_inline]] inline void ssPoolRelease(void* storage, std::size_t size) noexcept {
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
