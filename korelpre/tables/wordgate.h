#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace precomp {

/// Dismisses words that no rule can start with by their first two bytes.
class tWordGate {
 public:
  void clear() { bits_.fill(0); }
  void add(std::string_view word) {
    if (word.empty()) return;
    const unsigned pair = pairOf(word[0], word.size() > 1 ? word[1] : '\0');
    bits_[pair >> 6] |= std::uint64_t{1} << (pair & 63);
  }
  static constexpr std::size_t kWords = 1024;
  /// What the gate knows, in kWords numbers.
  const std::uint64_t* bits() const { return bits_.data(); }
  /// Adds what another gate knows.
  void addBits(const std::uint64_t* bits) {
    for (std::size_t i = 0; i < kWords; ++i) bits_[i] |= bits[i];
  }
  /// `second` is 0 for a word of one byte. False when no added word begins so.
  bool passes(char first, char second) const {
    const unsigned pair = pairOf(first, second);
    return ((bits_[pair >> 6] >> (pair & 63)) & 1) != 0;
  }
  bool passes(std::string_view word) const {
    return !word.empty() && passes(word[0], word.size() > 1 ? word[1] : '\0');
  }

 private:
  static unsigned pairOf(char first, char second) {
    return static_cast<unsigned>(static_cast<unsigned char>(first)) << 8 |
           static_cast<unsigned char>(second);
  }

  std::array<std::uint64_t, kWords> bits_{};
};

/// The same without regard to bit 0x20 of the bytes, and so to case.
class tFoldedGate {
 public:
  void clear() { bits_.fill(0); }
  void add(std::string_view word) {
    if (word.empty()) return;
    const unsigned pair = pairOf(word[0], word.size() > 1 ? word[1] : '\0');
    bits_[pair >> 6] |= std::uint64_t{1} << (pair & 63);
  }
  static constexpr std::size_t kWords = 64;
  const std::uint64_t* bits() const { return bits_.data(); }
  void addBits(const std::uint64_t* bits) {
    for (std::size_t i = 0; i < kWords; ++i) bits_[i] |= bits[i];
  }
  bool passes(char first, char second) const {
    const unsigned pair = pairOf(first, second);
    return ((bits_[pair >> 6] >> (pair & 63)) & 1) != 0;
  }

 private:
  // Bits 0 to 4 and 6 of a byte.
  static unsigned fold(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte & 0x1Fu) | (byte & 0x40u) >> 1;
  }
  static unsigned pairOf(char first, char second) { return fold(first) << 6 | fold(second); }

  std::array<std::uint64_t, kWords> bits_{};
};

}  // namespace precomp
