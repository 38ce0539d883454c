#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace precomp {

/// Dismisses words that no rule can start with by their first two bytes: `tPair` makes a number of
/// them.
template <class tPair>
class tGate {
 public:
  static constexpr std::size_t kWords = tPair::kNumbers / 64;

  void clear() { bits_.fill(0); }
  void add(std::string_view word) {
    if (word.empty()) return;
    const unsigned pair = tPair::of(word[0], word.size() > 1 ? word[1] : '\0');
    bits_[pair >> 6] |= std::uint64_t{1} << (pair & 63);
  }
  /// What the gate knows, in kWords numbers.
  const std::uint64_t* bits() const { return bits_.data(); }
  /// Adds what another gate knows.
  void addBits(const std::uint64_t* bits) {
    for (std::size_t i = 0; i < kWords; ++i) bits_[i] |= bits[i];
  }
  /// `second` is 0 for a word of one byte. False when no added word begins so.
  bool passes(char first, char second) const {
    const unsigned pair = tPair::of(first, second);
    return ((bits_[pair >> 6] >> (pair & 63)) & 1) != 0;
  }
  bool passes(std::string_view word) const {
    return !word.empty() && passes(word[0], word.size() > 1 ? word[1] : '\0');
  }

 private:
  std::array<std::uint64_t, kWords> bits_{};
};

struct tBytePair {
  static constexpr std::size_t kNumbers = std::size_t{1} << 16;
  static unsigned of(char first, char second) {
    return static_cast<unsigned>(static_cast<unsigned char>(first)) << 8 |
           static_cast<unsigned char>(second);
  }
};

/// Without regard to bit 0x20 of the bytes, and so to case.
struct tFoldedPair {
  static constexpr std::size_t kNumbers = std::size_t{1} << 12;
  // Bits 0 to 4 and 6 of a byte.
  static unsigned fold(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte & 0x1Fu) | (byte & 0x40u) >> 1;
  }
  static unsigned of(char first, char second) { return fold(first) << 6 | fold(second); }
};

using tWordGate = tGate<tBytePair>;
using tFoldedGate = tGate<tFoldedPair>;

}  // namespace precomp
