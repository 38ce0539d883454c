// The directive scanner over any bytes. A lexeme must be the text at the place that it names, line
// and column must follow from the line feeds in front of it, and the kind of input must not matter:
// text in memory, a buffer that is refilled in pieces, 16-bit units in either byte order.
//
// The first byte of the input is the size of the pieces.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/bytereader.h"
#include "fuzz/check.h"
#include "ssvp40xpf/directivescanner.h"

namespace {

/// A lexeme, or an error with its message as the text.
struct tFound {
  bool error = false;
  bool followsComment = false;
  unsigned token = 0;
  unsigned line = 0;
  unsigned column = 0;
  std::size_t at = 0;
  std::u16string text;

  bool operator==(const tFound&) const = default;
};

std::u16string widened(std::string_view text) {
  std::u16string wide(text.size(), u'\0');
  std::transform(text.begin(), text.end(), wide.begin(),
                 [](char c) { return static_cast<unsigned char>(c); });
  return wide;
}

std::u16string textOf(const SSLexLexeme& lexeme) {
  if (lexeme.isByteText()) return widened({lexeme.text(), lexeme.length()});
  return {lexeme.wideText(), lexeme.length()};
}

std::vector<tFound> scanAll(SSLexConsumer& consumer, std::size_t characters) {
  KorelPreLexClass scanner(consumer);
  std::vector<tFound> all;
  for (;;) {
    require(all.size() <= characters, "each lexeme and each error takes a character");
    try {
      const SSRef<SSLexLexeme> lexeme(++scanner);
      if (!lexeme) return all;
      all.push_back({false, scanner.followsComment(), lexeme->token(), lexeme->line(),
                     lexeme->offset(), lexeme->absoluteOffset(), textOf(*lexeme)});
    } catch (const SSException& error) {
      all.push_back({.error = true, .text = widened(error.message())});
    }
  }
}

void checkPlaces(const std::vector<tFound>& all, const std::u16string& source) {
  std::size_t at = 0;
  unsigned line = 1;
  unsigned column = 1;
  for (const tFound& found : all) {
    if (found.error) continue;
    require(found.at >= at, "lexemes do not overlap");
    require(!found.text.empty(), "a lexeme has text");
    for (; at < found.at; ++at) {
      const bool feed = source[at] == u'\n';
      line += feed ? 1 : 0;
      column = feed ? 1 : column + 1;
    }
    require(found.line == line, "the line counts the line feeds");
    require(found.column == column, "the column counts from the line feed");
    require(source.compare(at, found.text.size(), found.text) == 0,
            "the text stands at the offset");
  }
}

/// Hands a text out in pieces, through a buffer that shifts and grows.
class tPieces : public SSLexConsumer {
 public:
  tPieces(std::string_view bytes, SSLexConsumerType type, std::size_t piece)
      : SSLexConsumer(type, kSmallBuffer, kIncrement), rest_(bytes), piece_(piece) {}

  std::size_t nextBuffer() override {
    const std::size_t count = std::min({piece_, freeSize(), rest_.size()});
    std::memcpy(freeSpace(), rest_.data(), count);
    rest_.remove_prefix(count);
    return count;
  }

 protected:
  bool atEnd() override { return rest_.empty(); }

 private:
  static constexpr std::size_t kSmallBuffer = 24;
  static constexpr std::size_t kIncrement = 512;

  std::string_view rest_;
  std::size_t piece_;
};

std::string_view bytesOf(const std::u16string& units) {
  return {reinterpret_cast<const char*>(units.data()), 2 * units.size()};
}

void scanBytes(std::string_view text, std::size_t piece) {
  const std::u16string source = widened(text);
  SSLexStringConsumer memory(text.data(), text.size(), SSLexConsumer::charType,
                             SSLexStringConsumer::kBorrowed);
  const std::vector<tFound> all = scanAll(memory, text.size());
  checkPlaces(all, source);

  tPieces stream(text, SSLexConsumer::charType, piece);
  require(scanAll(stream, text.size()) == all, "a stream gives what the memory gives");

  std::u16string swapped = u"\xFFFE" + source;
  for (std::size_t i = 1; i < swapped.size(); ++i) {
    swapped[i] = static_cast<char16_t>(swapped[i] << 8);
  }
  tPieces wide(bytesOf(swapped), SSLexConsumer::wideType, piece);
  require(scanAll(wide, text.size()) == all, "16-bit units give what bytes give");
}

void scanUnits(std::string_view bytes, std::size_t piece) {
  std::u16string source(bytes.size() / 2, u'\0');
  if (!source.empty()) std::memcpy(source.data(), bytes.data(), 2 * source.size());
  SSLexStringConsumer memory(source.data(), source.size(), SSLexConsumer::wideType);
  const std::vector<tFound> all = scanAll(memory, source.size());
  tPieces stream(bytesOf(source), SSLexConsumer::wideType, piece);
  require(scanAll(stream, source.size()) == all, "a stream of units gives what the memory gives");
  const bool marked = !source.empty() && (source[0] == 0xFEFF || source[0] == 0xFFFE);
  if (!marked) checkPlaces(all, source);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  tByteReader input(bytes, size);
  const std::size_t piece = 1 + input.byte() % 64;
  scanBytes(input.rest(), piece);
  scanUnits(input.rest(), piece);
  return 0;
}
