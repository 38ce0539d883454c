#include "ssvp40xpf/sssto.h"

#include <algorithm>
#include <new>

namespace {

// AddressSanitizer must see each object come and go, so nothing is kept back from it.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kPoolKeeps = false;
#elif defined(__has_feature)
constexpr bool kPoolKeeps = !__has_feature(address_sanitizer);
#else
constexpr bool kPoolKeeps = true;
#endif

constexpr std::size_t kClassSize = 32;
constexpr std::size_t kClasses = 16;  // up to 512 bytes

std::size_t roundedSize(std::size_t size) {
  return (size + kClassSize - 1) / kClassSize * kClassSize;
}

constexpr unsigned kKeptPerClass = 1024;

struct tFreeBlock {
  tFreeBlock* next;
};

struct tFreeList {
  tFreeBlock* first;
  unsigned count;
};

/// The free lists of a thread. They need no construction, so that reaching them costs no check.
struct tPool {
  tFreeList lists[kClasses];
  bool closed;   // the thread is ending: nothing is kept any more
  bool guarded;  // a tPoolGuard of this thread will empty the lists
};

thread_local tPool pool;

struct tPoolGuard {
  ~tPoolGuard() {
    pool.closed = true;
    for (tFreeList& list : pool.lists) {
      while (list.first != nullptr) {
        tFreeBlock* const block = list.first;
        list.first = block->next;
        ::operator delete(block);
      }
    }
  }
};

/// Makes sure that this thread's lists are emptied when it ends.
void guardPool() {
  static thread_local tPoolGuard guard;
  (void)&guard;
  pool.guarded = true;
}

}  // namespace

void* ssPoolAllocate(std::size_t size) {
  const std::size_t sizeClass = (size - 1) / kClassSize;
  if (kPoolKeeps && sizeClass < kClasses) {
    tFreeList& list = pool.lists[sizeClass];
    if (tFreeBlock* const block = list.first) {
      list.first = block->next;
      --list.count;
      return block;
    }
  }
  return ::operator new(kPoolKeeps ? roundedSize(size) : size);
}

void ssPoolRelease(void* storage, std::size_t size) noexcept {
  const std::size_t sizeClass = (size - 1) / kClassSize;
  if (kPoolKeeps && sizeClass < kClasses && !pool.closed) {
    tFreeList& list = pool.lists[sizeClass];
    if (list.count < kKeptPerClass) {
      if (!pool.guarded) guardPool();
      list.first = new (storage) tFreeBlock{list.first};
      ++list.count;
      return;
    }
  }
  ::operator delete(storage);
}

bool SSSetArray::add(unsigned value) {
  if (holds(value)) return true;
  if (members_.size() >= capacity_) {
    raise(SSErrorSetFull);
    return false;
  }
  members_.push_back(value);
  return true;
}

bool SSSetArray::holds(unsigned value) const {
  return std::find(members_.begin(), members_.end(), value) != members_.end();
}
