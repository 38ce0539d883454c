#include "ssvp40xpf/sspool.h"

#include <new>

namespace sspool {

namespace {

constexpr std::size_t kKeptBytes = 256 * 1024;  // per size class

constexpr unsigned kUnused = 0;
constexpr unsigned kOpen = 1;
constexpr unsigned kClosed = 2;

// Kept apart from the lists, which are accessed for every token.
thread_local constinit unsigned state = kUnused;

struct tGuard {
  ~tGuard() {
    state = kClosed;
    for (tFreeList& list : pool.lists) {
      list.room = 0;
      while (list.first != nullptr) {
        tFreeBlock* const block = list.first;
        list.first = block->next;
        ::operator delete(block);
      }
    }
  }
};

/// Gives the lists their room and ensures that they are emptied when the thread ends.
void open() {
  static thread_local tGuard guard;
  (void)&guard;
  state = kOpen;
  for (std::size_t i = 0; i < kClasses; ++i) {
    pool.lists[i].room = static_cast<unsigned>(kKeptBytes / ((i + 1) * kClassSize));
  }
}

}  // namespace

thread_local constinit tPool pool{};

void* allocateFresh(std::size_t size) {
  if (kKeeps) size = (size + kClassSize - 1) / kClassSize * kClassSize;
  // Does not change the room of the list: the block is not from there.
  return ::operator new(size);
}

void releaseSlow(void* storage, std::size_t sizeClass) noexcept {
  if (kKeeps && state == kUnused) {
    open();
    if (sizeClass < kClasses) return ssPoolRelease(storage, (sizeClass + 1) * kClassSize);
  }
  ::operator delete(storage);
}

}  // namespace sspool
