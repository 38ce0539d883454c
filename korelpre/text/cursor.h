#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

// Steps over the bytes of a source. Unless it takes a view, a step reads until a byte stops it and
// relies on the line feed that every loaded text ends with; `end` stands behind that line feed.

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
constexpr bool isLineEnd(char c) {
  return c == '\r' || c == '\n';
}
constexpr bool isQuote(char c) {
  return c == '"' || c == '\'';
}
constexpr bool isNameStart(char c) {
  return isLetter(c) || c == '_';
}

namespace bytekinds {
constexpr std::array<bool, 256> makeWordBytes(bool tilde) {
  std::array<bool, 256> bytes{};
  for (unsigned c = 0; c < 256; ++c) {
    const char byte = static_cast<char>(c);
    bytes[c] = isNameStart(byte) || isDigit(byte) || (byte == '~' && tilde);
  }
  return bytes;
}
inline constexpr std::array<bool, 256> kWordBytes = makeWordBytes(false);
inline constexpr std::array<bool, 256> kNameBytes = makeWordBytes(true);
}  // namespace bytekinds

/// A letter, a digit or "_".
constexpr bool isWordByte(char c) {
  return bytekinds::kWordBytes[static_cast<unsigned char>(c)];
}
/// A word byte or "~", which the scanner takes into names as well.
constexpr bool isNameByte(char c) {
  return bytekinds::kNameBytes[static_cast<unsigned char>(c)];
}

inline const char* skipBlanks(const char* p, const char* end) {
  while (p < end && isBlank(*p)) ++p;
  return p;
}
inline const char* skipBlanks(const char* p) {
  while (isBlank(*p)) ++p;
  return p;
}
/// The index of the first byte from `at` on that is no blank, or the size of the text.
inline std::size_t skipBlanks(std::string_view text, std::size_t at) {
  while (at < text.size() && isBlank(text[at])) ++at;
  return at;
}
/// Back over the blanks in front of `p`, to `start` at most.
inline const char* backOverBlanks(const char* p, const char* start) {
  while (p > start && isBlank(p[-1])) --p;
  return p;
}
inline const char* behindWord(const char* p) {
  while (isWordByte(*p)) ++p;
  return p;
}

inline const char* behindDigits(const char* p) {
  while (isDigit(*p)) ++p;
  return p;
}

/// The next line feed at or behind `p`; `end` when there is none.
inline const char* lineFeedFrom(const char* p, const char* end) {
  const void* found = std::memchr(p, '\n', static_cast<std::size_t>(end - p));
  return found != nullptr ? static_cast<const char*>(found) : end;
}

inline bool startsBlockComment(const char* p) {
  return p[0] == '/' && p[1] == '*';
}
/// A comment that goes up to the end of its line wherever it begins. One with "*" is told by its
/// place, the start of a line, and left to those who know that.
inline bool startsLineComment(const char* p) {
  return (*p == '/' || *p == '&') && p[0] == p[1];
}
/// Whether the code of a line ends here: a line end, or a comment that goes up to it.
inline bool endsCode(const char* p) {
  return isLineEnd(*p) || startsLineComment(p);
}

/// Behind the "*/" of the block comment that opens at `p`, or `end` when nothing closes it; adds
/// the line feeds passed to `lines`.
inline const char* behindBlockComment(const char* p, const char* end, int& lines) {
  for (p += 2; p < end; ++p) {
    if (*p == '\n') {
      ++lines;
    } else if (*p == '*' && p[1] == '/') {
      return p + 2;
    }
  }
  return end;
}

inline const char* behindBlockComment(const char* p, const char* end) {
  int lines = 0;
  return behindBlockComment(p, end, lines);
}

/// Behind the closing quote of the string that opens at `p`, or null when its line ends first.
inline const char* behindString(const char* p) {
  const char quote = *p;
  for (++p; *p != quote; ++p) {
    if (isLineEnd(*p)) return nullptr;
  }
  return p + 1;
}
/// The same for a string that is known to be closed; fast on long ones.
inline const char* behindClosedString(const char* p, const char* end) {
  const void* closing = std::memchr(p + 1, *p, static_cast<std::size_t>(end - p - 1));
  return static_cast<const char*>(closing) + 1;
}

/// Behind the line feed up to which the ";" at `p` joins its line with the next, `end` when nothing
/// follows that. Null when code follows the ";" on its own line.
inline const char* behindContinuation(const char* p, const char* end) {
  p = skipBlanks(p + 1, end);
  if (!endsCode(p)) return nullptr;
  p = lineFeedFrom(p, end);
  return p == end ? end : p + 1;
}

}  // namespace precomp
