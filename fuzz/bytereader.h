#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Takes an input apart from front to back. Beyond its end everything is zero.
class tByteReader {
 public:
  explicit tByteReader(std::string_view bytes) : rest_(bytes) {}
  tByteReader(const std::uint8_t* bytes, std::size_t size)
      : rest_(reinterpret_cast<const char*>(bytes), size) {}

  unsigned byte() {
    if (rest_.empty()) return 0;
    const auto first = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    return first;
  }
  /// A little-endian word of `bytes` bytes, at most four.
  std::uint32_t word(unsigned bytes) {
    std::uint32_t value = 0;
    for (unsigned i = 0; i < bytes; ++i) value |= std::uint32_t{byte()} << (8 * i);
    return value;
  }
  std::string_view rest() const { return rest_; }

 private:
  std::string_view rest_;
};
