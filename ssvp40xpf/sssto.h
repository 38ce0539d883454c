#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "ssvp40xpf/ssexcept.h"
#include "ssvp40xpf/sspool.h"

/// The four-character tag by which the flat functions identify the object behind a handle.
constexpr std::uint32_t ssCorrelator(const char (&text)[5]) {
  std::uint32_t value = 0;
  for (int i = 0; i < 4; ++i) {
    value |= static_cast<std::uint32_t>(static_cast<unsigned char>(text[i])) << (8 * i);
  }
  return value;
}

/// The object that a handle of the flat functions points to.
struct SSObject {
  explicit SSObject(std::uint32_t tag) : correlator(tag) {}
  std::uint32_t correlator;
};

/// A reference count, which starts at 1: the creator holds the first reference.
class SSRefCount {
 public:
  unsigned refCount() const { return count_; }

 protected:
  std::uint32_t count_ = 1;
};

/// Holds a reference to a counted object (anything with refInc and refDec), or none.
template <class T>
class SSRef {
 public:
  SSRef() = default;
  /// Adopts a reference held by the caller.
  explicit SSRef(T* adopted) : object_(adopted) {}
  SSRef(const SSRef& other) : object_(other.object_) { increment(); }
  SSRef(SSRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ~SSRef() { decrement(); }

  SSRef& operator=(const SSRef& other) {
    SSRef copy(other);
    std::swap(object_, copy.object_);
    return *this;
  }
  SSRef& operator=(SSRef&& other) noexcept {
    SSRef taken(std::move(other));
    std::swap(object_, taken.object_);
    return *this;
  }

  /// Acquires a new reference.
  static SSRef share(T* object) {
    if (object != nullptr) object->refInc();
    return SSRef(object);
  }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

  /// Transfers the reference to the caller.
  T* release() { return std::exchange(object_, nullptr); }
  /// Releases the reference and adopts another one.
  void reset(T* adopted = nullptr) { *this = SSRef(adopted); }

 private:
  void increment() {
    if (object_ != nullptr) object_->refInc();
  }
  void decrement() {
    if (object_ != nullptr) object_->refDec(1);
  }

  T* object_ = nullptr;
};

/// An array-based stack. It starts with `capacity` slots and grows by `increment`; with an
/// increment of 0, pushing to a full stack raises SSErrorStackFull.
template <class T>
class SSLifo : public SSExceptionPresent {
 public:
  SSLifo(std::size_t capacity, std::size_t increment)
      : slots_(capacity), capacity_(capacity), increment_(increment) {}

  std::size_t depth() const { return depth_; }
  bool empty() const { return depth_ == 0; }

  /// Overwrites the next slot. False if the stack is full and cannot grow.
  bool push(T value) {
    if (depth_ == slots_.size() && !grow()) return false;
    slots_[depth_++] = std::move(value);
    if (depth_ > used_) used_ = depth_;
    return true;
  }

  /// Pops `count` values and empties their slots. False (SSErrorStackPop) if there are fewer; the
  /// stack is then unchanged.
  bool pop(std::size_t count = 1) {
    if (count > depth_) {
      raise(SSErrorStackPop);
      return false;
    }
    for (; count != 0; --count) slots_[--depth_] = T{};
    return true;
  }

  /// Pops the top value but leaves it in its slot until a push overwrites it. Null if empty.
  T* takeOff() { return empty() ? nullptr : &slots_[--depth_]; }

  /// The top value; null (SSErrorStackNoTop) if the stack is empty.
  T* top() {
    if (empty()) {
      raise(SSErrorStackNoTop);
      return nullptr;
    }
    return &slots_[depth_ - 1];
  }

  /// The value `distance` slots below the top; null (SSErrorStackIndex) below the bottom.
  T* fromTop(std::size_t distance) {
    if (distance >= depth_) {
      raise(SSErrorStackIndex);
      return nullptr;
    }
    return &slots_[depth_ - 1 - distance];
  }

  /// Empties every slot that was ever used and restores the initial capacity.
  void clear() {
    for (std::size_t i = 0; i < used_; ++i) slots_[i] = T{};
    depth_ = used_ = 0;
    if (slots_.size() > capacity_) {
      slots_.resize(capacity_);
      slots_.shrink_to_fit();
    }
  }

 private:
  bool grow() {
    if (increment_ == 0) {
      raise(SSErrorStackFull);
      return false;
    }
    slots_.resize(slots_.size() + increment_);
    return true;
  }

  std::vector<T> slots_;
  std::size_t capacity_;
  std::size_t increment_;
  std::size_t depth_ = 0;
  std::size_t used_ = 0;  // slots from here on are unused since the last clear
};

/// A fixed-capacity set of numbers, in insertion order.
class SSSetArray : public SSExceptionPresent {
 public:
  explicit SSSetArray(std::size_t capacity) : capacity_(capacity) { members_.reserve(capacity); }

  /// False (SSErrorSetFull) if the set is full and does not contain the value.
  bool add(unsigned value);
  bool holds(unsigned value) const;
  bool empty() const { return members_.empty(); }
  std::size_t count() const { return members_.size(); }

 private:
  std::vector<unsigned> members_;
  std::size_t capacity_;
};
