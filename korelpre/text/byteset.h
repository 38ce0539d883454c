#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "korelpre/text/cursor.h"

namespace precomp {

/// A set of bytes in which many bytes are looked up at once.
class tByteSet {
 public:
  static constexpr std::size_t kBlock = 64;

  constexpr tByteSet() = default;
  /// Holds the bytes that are true in `members`.
  explicit constexpr tByteSet(const std::array<bool, 256>& members) : members_(members) {
    for (unsigned c = 0; c < members.size(); ++c) {
      if (members[c]) rows_[c / 128][c % 16] |= static_cast<std::uint8_t>(1U << (c / 16 % 8));
    }
  }

  /// Looks up the kBlock bytes from `p` on: bit i of the result tells whether p[i] is a member.
  std::uint64_t among(const char* p) const { return kLookUp(*this, p); }

  using tLookUp = std::uint64_t (*)(const tByteSet& set, const char* p);
  /// The ways to look up, the fastest first. In the place of one that this processor does not have
  /// stands the next; the last is a plain loop.
  static std::array<tLookUp, 3> ways();

 private:
  static const tLookUp kLookUp;
  static std::uint64_t amongBy32(const tByteSet& set, const char* p);
  static std::uint64_t amongBy16(const tByteSet& set, const char* p);
  static std::uint64_t amongPlainly(const tByteSet& set, const char* p);

  std::array<bool, 256> members_{};
  // For each low half of a byte, a bit for each high half; first those of ASCII.
  std::array<std::array<std::uint8_t, 16>, 2> rows_{};
};

inline constexpr tByteSet kWordByteSet(bytekinds::kWordBytes);

/// Finds the bytes of a text that a scan has to look at, a block at a time: the members of a set,
/// the end of the text and, when `words` is true, the first byte of each word.
template <bool words>
class tStops {
 public:
  /// `start` is not inside a word, and `end` is behind the text. `set` must outlive this object.
  tStops(const tByteSet& set, const char* start, const char* end) : set_(set), end_(end) {
    load(start, false);
  }

  /// The next stop; not to be called behind the end.
  const char* next() {
    while (bits_ == 0) goTo(block_ + tByteSet::kBlock);
    const char* const stop = block_ + __builtin_ctzll(bits_);
    bits_ &= bits_ - 1;
    return stop;
  }
  /// Leaves out the stops in front of `p`, which lies behind the last stop and not behind the end.
  void goTo(const char* p) {
    const auto at = static_cast<std::size_t>(p - block_);
    if (at < tByteSet::kBlock) {
      bits_ &= ~std::uint64_t{0} << at;
    } else {
      load(p, isWordByte(p[-1]));
    }
  }

 private:
  void load(const char* block, bool behindWordByte) {
    block_ = block;
    bits_ = among(set_);
    if constexpr (words) {
      const std::uint64_t word = among(kWordByteSet);
      bits_ |= word & ~(word << 1 | std::uint64_t{behindWordByte});
    }
  }
  // What lies behind the text is not read.
  std::uint64_t among(const tByteSet& set) const {
    const auto size = static_cast<std::size_t>(end_ - block_);
    if (size >= tByteSet::kBlock) return set.among(block_);
    std::array<char, tByteSet::kBlock> last{};
    std::memcpy(last.data(), block_, size);
    return set.among(last.data()) | std::uint64_t{1} << size;
  }

  const tByteSet& set_;
  const char* end_;
  const char* block_ = nullptr;
  std::uint64_t bits_ = 0;
};

}  // namespace precomp
