#include "preprocessor/host/textencoding.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr char32_t kLastShort = 0xFFFF;  // characters up to here are one unit of UTF-16
constexpr char32_t kHighSurrogates = 0xD800, kLowSurrogates = 0xDC00, kBehindSurrogates = 0xE000;

/// The characters of the bytes 0x80 to 0x9F in Windows-1252.
constexpr char16_t kWindows1252[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// The forms of UTF-8 by length: what the first byte looks like, and the least character.
struct tForm {
  unsigned mask, mark;
  std::size_t length;
  char32_t least;
};
constexpr tForm kForms[] = {
    {0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};

constexpr bool isSurrogate(char32_t character) {
  return character >= kHighSurrogates && character < kBehindSurrogates;
}

unsigned byteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

struct tDecoded {
  std::size_t length = 0;  // 0: no character stands there
  char32_t character = 0;
  char32_t least = 0;  // the least character of this length

  bool isWellFormed() const {
    return length > 0 && character >= least && character <= 0x10FFFF && !isSurrogate(character);
  }
};

/// The character at `at` by its form alone, surrogates and forms that are too long included.
tDecoded decode(std::string_view bytes, std::size_t at) noexcept {
  const unsigned first = byteAt(bytes, at);
  const auto* form = std::find_if(std::begin(kForms), std::end(kForms),
                                  [&](const tForm& f) { return (first & f.mask) == f.mark; });
  if (form == std::end(kForms) || bytes.size() - at < form->length) return {};
  tDecoded decoded = {form->length, first & ~form->mask, form->least};
  for (std::size_t i = 1; i < form->length; ++i) {
    const unsigned next = byteAt(bytes, at + i);
    if ((next & 0xC0) != 0x80) return {};
    decoded.character = decoded.character << 6 | (next & 0x3F);
  }
  return decoded;
}

/// The end of the bytes from `at` on that are the same in every encoding here.
std::size_t endOfAscii(std::string_view bytes, std::size_t at) noexcept {
  while (at < bytes.size() && byteAt(bytes, at) - 1 < 0x7F) ++at;
  return at;
}

void appendUtf8(std::string& text, char32_t character) {
  const auto* form = std::begin(kForms);
  while (form->length < 4 && character >= form[1].least) ++form;
  auto shift = static_cast<unsigned>(6 * (form->length - 1));
  text += static_cast<char>(form->mark | character >> shift);
  while (shift > 0) {
    shift -= 6;
    text += static_cast<char>(0x80 | (character >> shift & 0x3F));
  }
}

void appendModified(std::string& text, char32_t character) {
  if (character == 0) {
    text.append("\xC0\x80");
  } else if (character <= kLastShort) {
    appendUtf8(text, character);
  } else {
    character -= kLastShort + 1;
    appendUtf8(text, kHighSurrogates + (character >> 10));
    appendUtf8(text, kLowSurrogates + (character & 0x3FF));
  }
}

char32_t joined(char32_t high, char32_t low) {
  return ((high - kHighSurrogates) << 10) + (low - kLowSurrogates) + kLastShort + 1;
}

constexpr bool isHigh(char32_t c) {
  return c >= kHighSurrogates && c < kLowSurrogates;
}
constexpr bool isLow(char32_t c) {
  return c >= kLowSurrogates && c < kBehindSurrogates;
}

char32_t windows1252(unsigned byte) {
  return byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80] : byte;
}

}  // namespace

bool isUtf8(std::string_view bytes) noexcept {
  for (std::size_t at = endOfAscii(bytes, 0); at < bytes.size(); at = endOfAscii(bytes, at)) {
    const tDecoded decoded = decode(bytes, at);
    if (!decoded.isWellFormed()) return false;
    at += decoded.length;
  }
  return true;
}

std::string modifiedUtf8FromText(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  const bool utf8 = isUtf8(bytes);
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t end = endOfAscii(bytes, at);
    text.append(bytes.substr(at, end - at));
    at = end;
    if (at == bytes.size()) break;
    const tDecoded decoded =
        utf8 ? decode(bytes, at) : tDecoded{1, windows1252(byteAt(bytes, at)), 0};
    appendModified(text, decoded.character);
    at += decoded.length;
  }
  return text;
}

tString utf8FromModified(std::string_view name) {
  std::string text;
  for (std::size_t at = 0; at < name.size();) {
    const tDecoded high = decode(name, at);
    const std::size_t next = at + std::max<std::size_t>(high.length, 1);
    const tDecoded low = next < name.size() ? decode(name, next) : tDecoded();
    if (isHigh(high.character) && isLow(low.character)) {
      appendUtf8(text, joined(high.character, low.character));
      at = next + low.length;
    } else {
      text.append(name.substr(at, next - at));
      at = next;
    }
  }
  return tString(text);
}

std::string utf8FromUtf16(std::u16string_view text) {
  std::string bytes;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char32_t unit = text[at];
    if (isHigh(unit) && at + 1 < text.size() && isLow(text[at + 1])) {
      appendUtf8(bytes, joined(unit, text[++at]));
    } else {
      appendUtf8(bytes, isSurrogate(unit) ? U'?' : unit);
    }
  }
  return bytes;
}
