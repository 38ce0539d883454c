#pragma once

#include <cstddef>
#include <cstring>
#include <memory>

/// The untyped base of the pointer arrays: storage, growth and bounds checks.
///
/// A full array grows by 2 below 9 elements, by 16 below 65, otherwise by a quarter, and by a
/// tenth once the pointer storage exceeds 1 MiB. An index outside the array is the fatal error
/// "array index out of bounds".
class tPointerArray {
 public:
  tPointerArray(const tPointerArray&) = delete;
  tPointerArray& operator=(const tPointerArray&) = delete;

  int count() const noexcept { return count_; }
  bool empty() const noexcept { return count_ == 0; }
  int capacity() const noexcept { return capacity_; }
  /// The capacity to which a full array of `capacity` elements grows.
  static int grownCapacity(int capacity) noexcept;
  /// Reserves room for `capacity` elements.
  void reserve(int capacity);

 protected:
  tPointerArray() noexcept = default;
  ~tPointerArray();

  void* at(int index) const {
    if (static_cast<unsigned>(index) >= static_cast<unsigned>(count_)) outOfBounds();
    return items_[index];
  }
  /// Appends to an array that is not full.
  void appendInPlace(void* item) noexcept { items_[count_++] = item; }
  void appendPointer(void* item) {
    if (count_ < capacity_) {
      appendInPlace(item);
    } else {
      insertPointer(count_, item);
    }
  }
  /// Inserts before `index`, which may be count().
  void insertPointer(int index, void* item);
  /// Removes and returns the pointer at `index`.
  void* removePointer(int index);
  void setPointer(int index, void* item) {
    at(index);
    items_[index] = item;
  }
  void dropAll() noexcept { count_ = 0; }
  /// Replaces the `removed` pointers from `index` on with those of `other`, which is left empty.
  /// `index` + `removed` must not exceed count().
  void splicePointers(int index, int removed, tPointerArray& other) {
    const int added = other.count_;
    const int after = count_ - index - removed;
    reserveForSplice(index, removed, added);
    if (after > 0 && added != removed) {
      std::memmove(items_ + index + added, items_ + index + removed,
                   static_cast<std::size_t>(after) * sizeof(void*));
    }
    if (added > 0) {
      std::memcpy(items_ + index, other.items_, static_cast<std::size_t>(added) * sizeof(void*));
    }
    count_ += added - removed;
    other.count_ = 0;
  }
  /// Makes room for one more element in a full array.
  void growByOne();
  /// All that can fail in splicePointers.
  void reserveForSplice(int index, int removed, int added) {
    const int count = count_ - removed + added;
    if (index < 0 || removed < 0 || count_ - index - removed < 0) outOfBounds();
    if (count <= capacity_) return;
    const int grown = grownCapacity(capacity_);
    reserve(grown > count ? grown : count);
  }
  void swapWith(tPointerArray& other) noexcept;

 private:
  [[noreturn]] static void outOfBounds();

  void** items_ = nullptr;
  int count_ = 0;
  int capacity_ = 0;
};

/// An array of non-owning pointers. Indexes are zero-based.
template <class T>
class tArray : public tPointerArray {
 public:
  tArray() noexcept = default;
  virtual ~tArray() = default;

  T& operator[](int index) const { return *static_cast<T*>(at(index)); }
  T* get(int index) const { return static_cast<T*>(at(index)); }
  T* last() const { return get(count() - 1); }

  void add(T* item) { appendPointer(item); }
  void insertAt(int index, T* item) { insertPointer(index, item); }
  /// Removes the pointer without destroying the element.
  T* takeAt(int index) { return static_cast<T*>(removePointer(index)); }
  /// Removes all pointers; the storage is kept.
  void dropElements() noexcept { dropAll(); }
  /// The index of `item`, or -1.
  int indexOf(const T* item) const noexcept {
    for (int i = 0; i < count(); ++i) {
      if (get(i) == item) return i;
    }
    return -1;
  }
};

/// An array that owns its elements and destroys them when they are removed or the array goes away.
/// What is handed over is destroyed, too, when there is no memory for it.
template <class T>
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): it is virtual, through the base
class tAutoArray : public tArray<T> {
 public:
  tAutoArray() noexcept = default;
  ~tAutoArray() override { destroyElements(); }

  /// Destroys every element and leaves the array empty.
  virtual void Destroy() { destroyElements(); }
  void add(T* item) {
    if (this->count() == this->capacity()) growFor(item);
    this->appendInPlace(item);
  }
  void insertAt(int index, T* item) {
    std::unique_ptr<T> owner(item);
    tArray<T>::insertAt(index, item);
    static_cast<void>(owner.release());
  }
  void removeAt(int index) { delete this->takeAt(index); }
  /// Destroys the element at `index` and replaces it with `item`.
  void replaceAt(int index, T* item) {
    T* old = this->get(index);
    this->setPointer(index, item);
    delete old;
  }
  void swap(tAutoArray& other) noexcept { this->swapWith(other); }
  /// Destroys the `removed` elements from `index` on and replaces them with those of `other`, which
  /// is left empty.
  void splice(int index, int removed, tAutoArray& other) {
    this->reserveForSplice(index, removed, other.count());
    for (int i = index; i < index + removed; ++i) delete this->get(i);
    this->splicePointers(index, removed, other);
  }

 private:
  // Rare, and out of the way of what adds tokens by the million.
  [[gnu::noinline]] void growFor(T* item) {
    std::unique_ptr<T> owner(item);
    this->growByOne();
    static_cast<void>(owner.release());
  }
  void destroyElements() {
    while (this->count() > 0) delete this->takeAt(this->count() - 1);
  }
};
