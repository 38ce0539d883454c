#include "lib_base/stringz.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <limits>

#include "lib_base/fatal.h"
#include "lib_base/largetext.h"
#include "lib_base/misc.h"

// Storage is one allocation: the header, the bytes, a zero. Only a sole owner writes to the bytes.
// Strings of different sizes can share storage (a substring that starts at 0), so while it is
// shared the bytes past size() are meaningless.

namespace {

constexpr char kUnit[] = "lib_base/stringz";
/// Leaves room for the terminating zero within 32 bits.
constexpr std::size_t kLargestSize = std::numeric_limits<std::uint32_t>::max() - 1;
/// The initial capacity of a string that grows by appending; with header and zero it makes 40
/// bytes.
constexpr std::size_t kFirstCapacity = 31;

/// Copies shared bytes only if one of them changes.
template <class Map>
void mapBytes(tString& text, Map map) {
  const std::string_view old = text.view();
  if (std::all_of(old.begin(), old.end(), [map](char c) { return map(c) == c; })) return;
  char* bytes = text.writable();
  std::transform(bytes, bytes + text.size(), bytes, map);
}

}  // namespace

std::atomic<std::size_t> tString::maxSize_{std::size_t{1} << 30};

void tString::setMaxSize(std::size_t bytes) noexcept {
  maxSize_.store(std::min(bytes, kLargestSize), std::memory_order_relaxed);
}

void tString::outOfBounds() {
  fatalError("string index out of bounds", kUnit, __LINE__);
}

void tString::tooLong() {
  fatalError("string too long", kUnit, __LINE__);
}

void tString::requireWritable() const {
  krpreAssert(!isConstant(), "Cannot update a constant string", kUnit);
}

// --- storage ----------------------------------------------------------------------------------

tString::tStorage* tString::allocate(std::size_t capacity) {
  if (capacity > maxSize()) tooLong();
  const std::size_t bytes = blockSize(capacity);
  auto* storage = static_cast<tStorage*>(allocateTextBlock(bytes));
  if (!storage) fatalAllocation(bytes, kUnit, __LINE__);
  storage->references = 1;
  storage->capacity = static_cast<std::uint32_t>(capacity);
  reinterpret_cast<char*>(storage + 1)[capacity] = '\0';
  return storage;
}

void tString::release() noexcept {
  tStorage* own = storage();
  if (--own->references == 0) releaseTextBlock(own, blockSize(own->capacity));
}

void tString::makeOwned(std::size_t capacity) {
  requireWritable();
  capacity = std::max<std::size_t>(capacity, size_);
  if (unshared()) {
    if (storage()->capacity >= capacity) return;
    if (capacity > maxSize()) tooLong();
    const std::size_t bytes = blockSize(capacity);
    void* resized = resizeTextBlock(storage(), blockSize(storage()->capacity), bytes);
    auto* larger = static_cast<tStorage*>(resized);
    if (!larger) fatalAllocation(bytes, kUnit, __LINE__);
    larger->capacity = static_cast<std::uint32_t>(capacity);
    char* start = reinterpret_cast<char*>(larger + 1);
    start[capacity] = '\0';
    data_ = start;
    return;
  }
  char* start = reinterpret_cast<char*>(allocate(capacity) + 1);
  std::memcpy(start, data_, size_);
  if (kind_ == kOwned) release();
  data_ = start;
  kind_ = kOwned;
}

void tString::grow(std::size_t size) {
  if (unshared() && storage()->capacity >= size) return;
  if (size > maxSize()) {
    requireWritable();
    tooLong();
  }
  const std::size_t grown = std::max(kFirstCapacity, size_ + std::size_t{size_} / 2);
  makeOwned(std::max(size, std::min(grown, maxSize())));
}

const char* tString::c_str() const {
  if (size_ == 0) return "";
  if (kind_ >= kOwned) {
    if (storage()->capacity == size_) return data_;
    if (storage()->references == 1) {
      const_cast<char*>(data_)[size_] = '\0';
      return data_;
    }
  }
  char* start = reinterpret_cast<char*>(allocate(size_) + 1);
  std::memcpy(start, data_, size_);
  const bool constant = isConstant();
  if (kind_ >= kOwned) const_cast<tString*>(this)->release();
  data_ = start;
  kind_ = constant ? kOwnedConstant : kOwned;
  return data_;
}

// --- making and assigning ---------------------------------------------------------------------

tString::tString(const char* text) : tString(text, text ? std::strlen(text) : 0) {}

tString::tString(const char* text, std::size_t size) : tString() {
  if (size == 0 || !text) return;
  char* start = reinterpret_cast<char*>(allocate(size) + 1);
  std::memcpy(start, text, size);
  data_ = start;
  setSize(size);
  kind_ = kOwned;
}

tString::tString(std::size_t count, char c) : tString() {
  if (count > 0) std::memset(extend(count), c, count);
}

tString& tString::operator=(const tString& other) noexcept {
  if (this != &other) *this = tString(other);
  return *this;
}

tString& tString::operator=(tString&& other) noexcept {
  if (this == &other) return *this;
  if (kind_ >= kOwned) release();
  data_ = other.data_;
  size_ = other.size_;
  kind_ = other.kind_;
  other.forget();
  return *this;
}

tString tString::format(const char* pattern, ...) {
  char buffer[512];
  std::va_list arguments;
  va_start(arguments, pattern);
  const int size = std::vsnprintf(buffer, sizeof buffer, pattern, arguments);
  va_end(arguments);
  krpreAssert(size >= 0, "text cannot be formatted", kUnit);
  const auto length = static_cast<std::size_t>(size);
  if (length < sizeof buffer) return {buffer, length};

  tString text;
  text.reserve(length);
  va_start(arguments, pattern);
  // The zero may land after the capacity, where there is always room for one.
  std::vsnprintf(text.extend(length), length + 1, pattern, arguments);
  va_end(arguments);
  return text;
}

// --- size ---------------------------------------------------------------------------------------

void tString::clear() noexcept {
  if (unshared()) {
    size_ = 0;
    return;
  }
  if (kind_ >= kOwned) release();
  forget();
}

char* tString::writable() {
  makeOwned(size_);
  return const_cast<char*>(data_);
}

void tString::reserve(std::size_t capacity) {
  makeOwned(capacity);
}

std::size_t tString::capacity() const noexcept {
  return unshared() ? storage()->capacity : std::size_t{size_};
}

char* tString::extend(std::size_t count) {
  if (count > kLargestSize) {
    requireWritable();
    tooLong();
  }
  // An empty string that gets its whole size at once needs no spare room.
  if (size_ == 0 && !unshared()) makeOwned(count);
  grow(size_ + count);
  char* added = const_cast<char*>(data_) + size_;
  setSize(size_ + count);
  return added;
}

void tString::resize(std::size_t size, char fill) {
  requireWritable();
  if (size <= size_) {
    setSize(size);
    return;
  }
  const std::size_t added = size - size_;
  std::memset(extend(added), fill, added);
}

// --- changing ---------------------------------------------------------------------------------

void tString::setAt(std::size_t index, char c) {
  requireWritable();
  if (index >= size_) outOfBounds();
  writable()[index] = c;
}

void tString::appendSlow(std::string_view text) {
  requireWritable();
  if (text.empty()) return;
  if (text.size() > kLargestSize) tooLong();
  // `text` may be a part of this string. Only unshared storage can move; other storage is kept
  // alive by its other owners.
  const auto offset =
      reinterpret_cast<std::uintptr_t>(text.data()) - reinterpret_cast<std::uintptr_t>(data_);
  const bool inside = unshared() && offset < size_;
  grow(size_ + text.size());
  appendInPlace(inside ? std::string_view(data_ + offset, text.size()) : text);
}

void tString::insert(std::size_t position, std::string_view text) {
  replace(position, 0, text);
}

void tString::erase(std::size_t position, std::size_t count) {
  replace(position, count, {});
}

void tString::replace(std::size_t position, std::size_t count, std::string_view text) {
  requireWritable();
  if (position > size_) outOfBounds();
  count = std::min(count, size_ - position);
  if (text.size() > kLargestSize) tooLong();
  const std::size_t after = position + count;
  const std::size_t size = size_ - count + text.size();

  if (text.empty() && after == size_) {
    setSize(position);
    return;
  }
  if (unshared() && text.empty()) {
    char* bytes = const_cast<char*>(data_);
    std::memmove(bytes + position, bytes + after, size_ - after);
    setSize(size);
    return;
  }
  // Built separately: `text` may be a part of this string.
  tString result;
  result.reserve(size);
  result.append(view().substr(0, position)).append(text).append(view().substr(after));
  *this = std::move(result);
}

std::size_t tString::replaceAll(std::string_view what, std::string_view with) {
  requireWritable();
  if (what.empty()) return 0;
  tString result;
  std::size_t count = 0;
  std::size_t copied = 0;
  for (std::size_t at; (at = find(what, copied)) != npos; copied = at + what.size()) {
    if (count++ == 0) result.reserve(size_);
    result.append(view().substr(copied, at - copied)).append(with);
  }
  if (count == 0) return 0;
  result.append(view().substr(copied));
  *this = std::move(result);
  return count;
}

void tString::trimRight() {
  requireWritable();
  setSize(trimmedRight(view()).size());
}

void tString::trim() {
  trimRight();
  const std::size_t start = size_ - trimmed(view()).size();
  if (kind_ == kBorrowed) {
    data_ += start;
    setSize(size_ - start);
  } else if (start > 0) {
    erase(0, start);
  }
}

void tString::toUpper() {
  requireWritable();
  mapBytes(*this, upperAscii);
}

void tString::toLower() {
  requireWritable();
  mapBytes(*this, lowerAscii);
}

// --- looking ------------------------------------------------------------------------------------

tString tString::substr(std::size_t position, std::size_t count) const {
  if (position >= size_) return {};
  count = std::min(count, size_ - position);
  if (kind_ < kOwned) return borrow(view().substr(position, count));
  if (position > 0) return {data_ + position, count};
  tString part(*this);
  part.kind_ = kOwned;
  part.setSize(count);
  return part;
}

std::size_t tString::find(std::string_view text, std::size_t from) const {
  return findText(view(), text, from);
}

std::size_t tString::findNoCase(std::string_view text, std::size_t from) const {
  return findTextNoCase(view(), text, from);
}
