#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace precomp {

/// Storage for the markers of many rules, side by side in the order in which they are made: what a
/// match of one rule touches lies together. All of it is given back together, when this object
/// goes; the markers must have been destroyed by then.
class tMarkerArena {
 public:
  /// Gives everything back.
  void clear() { *this = tMarkerArena(); }
  /// How far the storage is taken; rewind() gives back what was taken since.
  struct tMark {
    std::size_t chunks = 0;
    std::byte* next = nullptr;
    std::size_t left = 0;
    std::size_t size = 0;
  };
  tMark mark() const { return {chunks_.size(), next_, left_, size_}; }
  void rewind(const tMark& mark) {
    if (chunks_.size() > mark.chunks) keepSpare(mark.chunks);
    next_ = mark.next;
    left_ = mark.left;
    size_ = mark.size;
  }
  /// The bytes of all chunks.
  std::size_t size() const { return size_; }

  void* allocate(std::size_t size) {
    constexpr std::size_t kAlignment = 8;
    size = (size + kAlignment - 1) / kAlignment * kAlignment;
    if (size > left_) return allocateFresh(size);
    void* const place = next_;
    next_ += size;
    left_ -= size;
    return place;
  }

  /// A copy of two texts, one behind the other.
  std::string_view join(std::string_view first, std::string_view second) {
    auto* const copy = static_cast<char*>(allocate(first.size() + second.size()));
    std::copy(first.begin(), first.end(), copy);
    std::copy(second.begin(), second.end(), copy + first.size());
    return {copy, first.size() + second.size()};
  }

 private:
  struct tRelease {
    void operator()(std::byte* chunk) const noexcept;
  };

  struct tChunk {
    std::unique_ptr<std::byte, tRelease> bytes;
    std::size_t size = 0;
  };

  void* allocateFresh(std::size_t size);
  void startChunk(tChunk chunk);
  void keepSpare(std::size_t chunks);

  std::vector<tChunk> chunks_;
  tChunk spare_;  // given back by rewind(), which may come again and again
  std::size_t chunkSize_ = 0;
  std::byte* next_ = nullptr;
  std::size_t left_ = 0;
  std::size_t size_ = 0;
};

/// A new marker of the class, in `arena` or on its own when that is null.
template <class Marker, class... Arguments>
Marker* makeMarker(tMarkerArena* arena, const Arguments&... arguments) {
  if (arena == nullptr) return new Marker(arguments...);
  Marker* const marker = new (*arena) Marker(arguments...);
  marker->setInArena();
  return marker;
}

}  // namespace precomp
