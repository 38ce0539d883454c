#include "cli/sourcequote.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace {

// Unicode for the bytes 0x80 to 0x9F of Windows-1252; 0 for unassigned ones.
constexpr std::uint16_t kWindows[] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

constexpr std::size_t kWidest = 100;  // characters of a line that are shown

// The length of the UTF-8 character at the start of `text`, which is not empty; 0 if it is invalid.
std::size_t utf8Length(std::string_view text) {
  const auto byteAt = [&](std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
  };
  const unsigned first = byteAt(0);
  if (first < 0x80) return 1;
  const std::size_t length = first < 0xC2   ? 0
                             : first < 0xE0 ? 2
                             : first < 0xF0 ? 3
                             : first < 0xF5 ? 4
                                            : 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byteAt(i) & 0xC0) != 0x80) return 0;
  }
  const unsigned second = byteAt(1);
  const bool outside = (first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F) ||
                       (first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F);
  return outside ? 0 : length;
}

std::string utf8Of(unsigned code) {
  if (code < 0x800) {
    return {static_cast<char>(0xC0 | code >> 6), static_cast<char>(0x80 | (code & 0x3F))};
  }
  return {static_cast<char>(0xE0 | code >> 12), static_cast<char>(0x80 | (code >> 6 & 0x3F)),
          static_cast<char>(0x80 | (code & 0x3F))};
}

// Empty for what has no shape.
std::string shownByte(unsigned char byte) {
  if (byte == '\t' || (byte >= 0x20 && byte < 0x7F)) return std::string(1, static_cast<char>(byte));
  if (byte < 0x80) return {};
  const unsigned code = byte < 0xA0 ? kWindows[byte - 0x80] : byte;
  return code == 0 ? std::string() : utf8Of(code);
}

std::string spelt(std::string_view bytes) {
  constexpr const char* kDigits = "0123456789abcdef";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    text.append("\\x").append({kDigits[byte >> 4], kDigits[byte & 15]});
  }
  return text;
}

// The characters of a text as they are shown, control characters spelt or as "?"; turns `at` from
// the index of a byte into that of its character.
std::vector<std::string> charactersOf(std::string_view text, std::size_t& at, bool spelling) {
  std::vector<std::string> characters;
  const std::size_t wanted = at;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = utf8Length(text.substr(i));
    const std::size_t size = std::max<std::size_t>(length, 1);
    if (wanted >= i && wanted < i + size) at = characters.size();
    // C1 control characters.
    const bool control =
        length == 2 && text[i] == '\xC2' && static_cast<unsigned char>(text[i + 1]) < 0xA0;
    std::string shown = length < 2 ? shownByte(static_cast<unsigned char>(text[i]))
                        : control  ? std::string()
                                   : std::string(text.substr(i, length));
    if (shown.empty()) shown = spelling ? spelt(text.substr(i, size)) : "?";
    characters.push_back(std::move(shown));
    i += size;
  }
  if (wanted >= text.size()) at = characters.size() + (wanted - text.size());
  return characters;
}

}  // namespace

std::string printable(std::string_view text) {
  std::size_t none = 0;
  std::string shown;
  for (const std::string& character : charactersOf(text, none, true)) shown += character;
  return shown;
}

int characterColumn(std::string_view source, int column) {
  auto at = static_cast<std::size_t>(column) - 1;
  charactersOf(source, at, false);
  return static_cast<int>(at) + 1;
}

std::string quoted(std::string_view source, int line, int column, const tPaint& paint) {
  // Enough bytes for all characters that are shown. One cut at the front is not among them.
  constexpr std::size_t kBytes = 4 * kWidest;
  std::size_t at =
      column > 0 ? std::min<std::size_t>(static_cast<std::size_t>(column) - 1, source.size()) : 0;
  const std::size_t begin = at > kBytes ? at - kBytes : 0;
  at -= begin;
  const bool cutBehind = source.size() - begin > 2 * kBytes;
  std::vector<std::string> shown = charactersOf(source.substr(begin, 2 * kBytes), at, false);
  std::string before;
  std::string behind;
  if (shown.size() > kWidest || begin > 0) {
    const std::size_t first = at > kWidest / 2 ? at - kWidest / 2 : 0;
    const std::size_t count = std::min(kWidest, shown.size() - std::min(first, shown.size()));
    if (first > 0 || begin > 0) before = "...";
    if (cutBehind || first + count < shown.size()) behind = "...";
    shown = {shown.begin() + static_cast<std::ptrdiff_t>(first),
             shown.begin() + static_cast<std::ptrdiff_t>(first + count)};
    at -= first;
  }
  const std::string number = std::to_string(line);
  std::string text = paint(tPaint::kDim, "  " + number + " |") + " " + before;
  for (const std::string& character : shown) text += character;
  while (text.ends_with(' ') || text.ends_with('\t')) text.pop_back();
  text += behind + "\n";
  if (column == 0) return text;
  text += paint(tPaint::kDim, "  " + std::string(number.size(), ' ') + " |") + " ";
  text.append(before.size(), ' ');
  for (std::size_t i = 0; i < at; ++i) text += i < shown.size() && shown[i] == "\t" ? '\t' : ' ';
  return text + paint(tPaint::kRed, "^") + "\n";
}
