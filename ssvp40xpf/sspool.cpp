#include "ssvp40xpf/sspool.h"

#include <pthread.h>

#include <new>

namespace sspool {

namespace {

constexpr std::size_t kKeptBytes = 256 * 1024;  // per size class

constexpr unsigned kUnused = 0;
constexpr unsigned kOpen = 1;
constexpr unsigned kClosed = 2;

// Kept apart from the lists, which are accessed for every token.
thread_local constinit unsigned state = kUnused;

void empty(void* /*thread*/) {
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

/// Has the lists of each thread emptied at its end. A thread_local object with a destructor would
/// do that, too, but the C library ends the process when there is no memory to note it.
class tThreadEnds {
 public:
  tThreadEnds() : made_(pthread_key_create(&key_, empty) == 0) {}
  ~tThreadEnds() {
    // The library is going, and so must the lists of the thread that unloads it.
    if (made_) pthread_key_delete(key_);
    if (state == kOpen) empty(nullptr);
  }
  tThreadEnds(const tThreadEnds&) = delete;
  tThreadEnds& operator=(const tThreadEnds&) = delete;

  bool watch() const { return made_ && pthread_setspecific(key_, &state) == 0; }

 private:
  pthread_key_t key_{};
  bool made_;
};

/// Gives the lists their room. False when there is no memory for what empties them.
bool open() {
  static const tThreadEnds ends;
  if (!ends.watch()) return false;
  state = kOpen;
  for (std::size_t i = 0; i < kClasses; ++i) {
    pool.lists[i].room = static_cast<unsigned>(kKeptBytes / ((i + 1) * kClassSize));
  }
  return true;
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
    const bool opened = open();
    if (opened && sizeClass < kClasses) return ssPoolRelease(storage, (sizeClass + 1) * kClassSize);
  }
  ::operator delete(storage);
}

}  // namespace sspool
