#include "lib_base/list.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "lib_base/fatal.h"

namespace {

constexpr char kUnit[] = "lib_base/list";
constexpr int kMostElements = std::numeric_limits<int>::max();
/// Beyond this many elements the pointers take more than 1 MiB.
constexpr int kManyElements = (1 << 20) / static_cast<int>(sizeof(void*));

}  // namespace

tPointerArray::~tPointerArray() {
  std::free(items_);
}

void tPointerArray::outOfBounds() {
  fatalError("array index out of bounds", kUnit, __LINE__);
}

int tPointerArray::grownCapacity(int capacity) noexcept {
  const int more = capacity < 9                ? 2
                   : capacity < 65             ? 16
                   : capacity <= kManyElements ? capacity / 4
                                               : capacity / 10;
  return capacity > kMostElements - more ? kMostElements : capacity + more;
}

void tPointerArray::reserve(int capacity) {
  if (capacity <= capacity_) return;
  const std::size_t bytes = static_cast<std::size_t>(capacity) * sizeof(void*);
  auto** items = static_cast<void**>(std::realloc(items_, bytes));
  if (!items) fatalAllocation(bytes, kUnit, __LINE__);
  items_ = items;
  capacity_ = capacity;
}

void tPointerArray::growByOne() {
  if (capacity_ == kMostElements) outOfBounds();
  reserve(grownCapacity(capacity_));
}

void tPointerArray::insertPointer(int index, void* item) {
  if (index < 0 || index > count_) outOfBounds();
  if (count_ == capacity_) growByOne();
  if (index < count_) {
    const auto after = static_cast<std::size_t>(count_ - index);
    std::memmove(items_ + index + 1, items_ + index, after * sizeof(void*));
  }
  items_[index] = item;
  ++count_;
}

void* tPointerArray::removePointer(int index) {
  void* item = at(index);
  --count_;
  if (index < count_) {
    const auto after = static_cast<std::size_t>(count_ - index);
    std::memmove(items_ + index, items_ + index + 1, after * sizeof(void*));
  }
  return item;
}

void tPointerArray::swapWith(tPointerArray& other) noexcept {
  std::swap(items_, other.items_);
  std::swap(count_, other.count_);
  std::swap(capacity_, other.capacity_);
}
