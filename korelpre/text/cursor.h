#pragma once

#include <array>
#include <cstdint>

namespace precomp {

constexpr bool isLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
constexpr bool isBlank(char c) {
  return c == ' ' || c == '\t';
}

namespace bytekinds {
constexpr std::array<bool, 256> makeWordBytes() {
  std::array<bool, 256> bytes{};
  for (unsigned c = 0; c < 256; ++c) {
    const char byte = static_cast<char>(c);
    bytes[c] = isLetter(byte) || isDigit(byte) || byte == '_';
  }
  return bytes;
}
inline constexpr std::array<bool, 256> kWordBytes = makeWordBytes();
}  // namespace bytekinds

/// A letter, a digit or "_".
constexpr bool isWordByte(char c) {
  return bytekinds::kWordBytes[static_cast<unsigned char>(c)];
}

/// Whether the code of a line ends here: a line end, or a comment that goes up to it.
inline bool endsCode(const char* p) {
  return *p == '\r' || *p == '\n' || ((*p == '/' || *p == '&') && p[0] == p[1]);
}

inline const char* skipBlanks(const char* p, const char* end) {
  while (p < end && isBlank(*p)) ++p;
  return p;
}

}  // namespace precomp
