#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "ssvp40xpf/ssexcept.h"
#include "ssvp40xpf/sspool.h"

/// The four characters by which the flat functions recognise an object behind a handle.
constexpr std::uint32_t ssCorrelator(const char (&text)[5]) {
  std::uint32_t value = 0;
  for (int i = 0; i < 4; ++i) {
    value |= static_cast<std::uint32_t>(static_cast<unsigned char>(text[i])) << (8 * i);
  }
  return value;
}

/// What a handle of the flat functions points to.
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

/// Holds one reference of a counted object (anything with refInc and refDec), or none.
template <class T>
class SSRef {
 public:
  SSRef() = default;
  /// Takes over a reference that the caller holds.
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

  /// Adds a reference of its own.
  static SSRef share(T* object) {
    if (object != nullptr) object->refInc();
    return SSRef(object);
  }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

  /// Hands the reference to the caller.
  T* release() { return std::exchange(object_, nullptr); }
  /// Drops the reference and takes over another one.
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

/// A stack in an array of slots. It starts with `capacity` slots and grows by `increment` of them;
/// without an increment a push on a full stack raises SSErrorStackFull.
template <class T>
class SSLifo : public SSExceptionPresent {
 public:
  SSLifo(std::size_t capacity, std::size_t increment)
      : slots_(capacity), capacity_(capacity), increment_(increment) {}

  std::size_t depth() const { return depth_; }
  bool empty() const { return depth_ == 0; }

  /// Overwrites the next slot. False when the stack is full and may not grow.
  bool push(T value) {
    if (depth_ == slots_.size() && !grow()) return false;
    slots_[depth_++] = std::move(value);
    if (depth_ > used_) used_ = depth_;
    return true;
  }

  /// Pops `count` values and empties their slots. False (SSErrorStackPop) when there are fewer; the
  /// stack then stays as it is.
  bool pop(std::size_t count = 1) {
    if (count > depth_) {
      raise(SSErrorStackPop);
      return false;
    }
    for (; count != 0; --count) slots_[--depth_] = T{};
    return true;
  }

  /// Pops the top value but leaves it in its slot until a push overwrites it. Null when empty.
  T* takeOff() { return empty() ? nullptr : &slots_[--depth_]; }

  /// The top value; null (SSErrorStackNoTop) when the stack is empty.
  T* top() {
    if (empty()) {
      raise(SSErrorStackNoTop);
      return nullptr;
    }
    return &slots_[depth_ - 1];
  }

  /// The value `distance` below the top (0 is the top); null (SSErrorStackIndex) beyond the bottom.
  T* fromTop(std::size_t distance) {
    if (distance >= depth_) {
      raise(SSErrorStackIndex);
      return nullptr;
    }
    return &slots_[depth_ - 1 - distance];
  }

  /// Empties every slot that was ever used and starts again with the first capacity.
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
  std::size_t used_ = 0;  // slots from here on have been empty since the last clear
};

/// A set of numbers of fixed capacity, in order of arrival.
class SSSetArray : public SSExceptionPresent {
 public:
  explicit SSSetArray(std::size_t capacity) : capacity_(capacity) { members_.reserve(capacity); }

  /// False (SSErrorSetFull) when the set is full and does not hold the value yet.
  bool add(unsigned value);
  bool holds(unsigned value) const;
  bool empty() const { return members_.empty(); }
  std::size_t count() const { return members_.size(); }

 private:
  std::vector<unsigned> members_;
  std::size_t capacity_;
};
