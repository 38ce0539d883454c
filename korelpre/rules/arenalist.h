#pragma once

#include <algorithm>
#include <cstddef>
#include <new>
#include <type_traits>

#include "korelpre/rules/markerarena.h"

namespace precomp {

/// The fatal error of an index outside an array.
[[noreturn]] void arenaListOutOfBounds();

/// A list of small things that belongs to a marker; null stands for one that was never needed. That
/// of a marker in an arena lies there too, so nobody has to visit the marker to give it back.
template <class T>
class tArenaList {
 public:
  static_assert(std::is_trivially_copyable_v<T> && alignof(T) <= 8);

  constexpr tArenaList() noexcept = default;
  tArenaList(const tArenaList&) = delete;
  tArenaList& operator=(const tArenaList&) = delete;

  int count() const noexcept { return count_; }
  bool empty() const noexcept { return count_ == 0; }
  const T& operator[](int index) const {
    if (static_cast<unsigned>(index) >= static_cast<unsigned>(count_)) arenaListOutOfBounds();
    return items()[index];
  }
  const T* begin() const noexcept { return items(); }
  const T* end() const noexcept { return items() + count_; }

  void clear() noexcept { count_ = 0; }
  /// The list must not be empty.
  void removeLast() noexcept { --count_; }

  /// Appends `item` to `list`, which is made or becomes another one when there is no room. `arena`
  /// is that of the marker, null when it lies in none.
  static void add(tArenaList*& list, const T& item, tMarkerArena* arena) {
    if (list == nullptr || list->count_ == list->capacity_) grow(list, arena);
    list->items()[list->count_++] = item;
  }
  /// Gives a list back that does not lie in an arena; null is none.
  static void release(tArenaList* list) noexcept { ::operator delete(list); }

 private:
  explicit tArenaList(int capacity) noexcept : capacity_(capacity) {}

  // They stand behind the list itself.
  const T* items() const noexcept { return reinterpret_cast<const T*>(this + 1); }
  T* items() noexcept { return reinterpret_cast<T*>(this + 1); }

  static void grow(tArenaList*& list, tMarkerArena* arena) {
    const int capacity = list == nullptr ? 2 : list->capacity_ * 2;
    // NOLINTNEXTLINE(bugprone-sizeof-expression): T can be a pointer
    const std::size_t size = sizeof(tArenaList) + static_cast<std::size_t>(capacity) * sizeof(T);
    void* const place = arena != nullptr ? arena->allocate(size) : ::operator new(size);
    auto* const larger = new (place) tArenaList(capacity);
    if (list != nullptr) {
      larger->count_ = list->count_;
      std::copy(list->begin(), list->end(), larger->items());
      if (arena == nullptr) release(list);
    }
    list = larger;
  }

  int count_ = 0;
  int capacity_ = 0;
};

}  // namespace precomp
