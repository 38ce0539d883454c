// Scanner and parser tables from damaged images. Such an image is refused or gives a table that
// says exactly what the words of the image say, and over which any text can be scanned or parsed to
// an end.
//
// The first byte of the input chooses the image, the second one is a count of damages. A damage is
// three bytes of place, one byte that tells what happens to the word there, and two bytes for it.
// The rest is the text to scan or parse; with the image kRaw... it is the image.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/bytereader.h"
#include "fuzz/check.h"
#include "ssvp40xpf/builtintables.h"
#include "ssvp40xpf/directivescanner.h"
#include "ssvp40xpf/ssyacc.h"
#include "tests/ssvp40xpf/samples.h"

namespace {

using tableimage::tImage;

enum eImage : unsigned {
  kRawScanner,
  kRawParser,
  kSampleScanner,
  kSampleExpressions,
  kSampleLines,
  kBuiltinScanner,
  kBuiltinParser,
  kImages,
};

constexpr std::string_view kText = "a 1.5 \"s\n\" { x | } =b^ 12.@$ \xFF (c+d)*e; #\nx";
constexpr std::size_t kSmallImage = 4096;  // words

tImage wordsOf(std::string_view bytes) {
  tImage image(bytes.size() / sstable::kWordSize);
  if (!image.empty()) std::memcpy(image.data(), bytes.data(), tableimage::bytes(image));
  return image;
}

tImage wordsOf(const sstable::tImage& builtin) {
  return {builtin.words, builtin.words + builtin.bytes / sstable::kWordSize};
}

const tImage& soundImage(unsigned kind) {
  static const tImage images[kImages] = {{},
                                         {},
                                         samples::lexImage(),
                                         samples::expressionImage(),
                                         samples::linesImage(sstable::kRowAcceptAny),
                                         wordsOf(builtin::korelpreDfa),
                                         wordsOf(builtin::korelpreLlr)};
  return images[kind];
}

void damage(tImage& image, tByteReader& input) {
  const std::size_t place = input.word(3) % image.size();
  const unsigned how = input.byte();
  const std::uint32_t value = input.word(2);
  switch (how % 4) {
    case 0:
      image[place] ^= 1u << (value % 32);
      break;
    case 1:
      image[place] = value;
      break;
    case 2:
      image[place] -= value;
      break;
    default:
      image[place] = image[value % image.size()];
  }
}

/// The table of an image; null when it is refused, which it must be with one of its own errors.
template <class Table>
std::unique_ptr<Table> load(const tImage& image) {
  try {
    return std::make_unique<Table>(image.data(), tableimage::bytes(image), "image");
  } catch (const SSException& error) {
    const int id = error.errorId();
    require(id == SSErrorLexTable || id == SSErrorKeywordTable || id == SSErrorYaccTable,
            "a damaged image is refused as such");
    return nullptr;
  }
}

// ---- scanner tables ----------------------------------------------------------------------------

/// The next state on a code, as the words of a row tell it.
std::uint32_t nextByRow(const std::uint32_t* row, std::uint32_t code) {
  const std::uint32_t* const end = row + 1 + 3 * std::size_t{*row};
  for (const std::uint32_t* triple = row + 1; triple != end && triple[0] <= code; triple += 3) {
    if (code <= triple[1]) return triple[2];
  }
  return sstable::kNone;
}

void compareWithImage(const SSLexTable& table, const tImage& image) {
  const std::uint32_t* block = image.data() + sstable::kLexHeaderWords;
  for (unsigned list = 0; list < table.listCount(); ++list) {
    const SSLexIterator& automaton = table.expressionList(list)->automaton();
    const std::uint32_t* const index = block + block[sstable::kBlockRowIndex] / sstable::kWordSize;
    for (unsigned state = 0; state < automaton.stateCount(); ++state) {
      const std::uint32_t* const row = block + index[state] / sstable::kWordSize;
      for (unsigned code = 0; code < 0x180; ++code) {
        require(automaton.next(state, code) == nextByRow(row, code),
                "the index says what the rows say");
      }
    }
    block += block[sstable::kBlockSize] / sstable::kWordSize;
  }
}

/// Everything that a scan gives, up to its end or an error after which none can follow.
std::vector<std::string> scanAll(SSLexConsumer& consumer, const SSLexTable& table,
                                 std::size_t characters) {
  SSLex scanner(consumer, table);
  std::vector<std::string> all;
  for (;;) {
    require(all.size() <= (characters + 1) * (table.listCount() + 1), "a scan ends");
    try {
      const SSRef<SSLexLexeme> lexeme(++scanner);
      if (!lexeme) return all;
      all.push_back(std::to_string(lexeme->symbol()) + "@" + std::to_string(lexeme->line()) + ":" +
                    std::to_string(lexeme->offset()) + " " +
                    std::string(lexeme->text(), lexeme->length()));
    } catch (const SSException& error) {
      all.emplace_back(error.message());
      if (error.errorId() != SSErrorToken && error.errorId() != SSErrorKeywordIndex) return all;
    }
  }
}

void scanBoth(const SSLexTable& table, std::string_view text) {
  SSLexStringConsumer memory(text.data(), text.size());
  SSLexDataConsumer stream(text.size() + 1);
  stream.addBuffer(text.data(), text.size());
  require(scanAll(memory, table, text.size()) == scanAll(stream, table, text.size()),
          "a stream gives what the memory gives");
}

void tryScanner(const tImage& image, std::string_view text) {
  const std::unique_ptr<SSLexTable> table = load<SSLexTable>(image);
  if (table == nullptr) return;
  if (image.size() <= kSmallImage) compareWithImage(*table, image);
  scanBoth(*table, text);
}

// ---- parser tables -----------------------------------------------------------------------------

/// The first pair for `symbol` among `count` pairs; null when there is none.
const std::uint32_t* firstPair(const std::uint32_t* pairs, std::size_t count,
                               std::uint32_t symbol) {
  for (; count != 0; --count, pairs += 2) {
    if (pairs[1] == symbol) return pairs;
  }
  return nullptr;
}

void compareWithImage(const SSYaccTable& table, const tImage& image) {
  for (unsigned state = 0; state < table.stateCount(); ++state) {
    const std::uint32_t* const row =
        image.data() + image[sstable::kYaccRowIndex + state] / sstable::kWordSize;
    const std::uint32_t* const actions = row + sstable::kRowPairs;
    const std::size_t actionCount = row[sstable::kRowActionCount];
    for (std::size_t i = 0; i < actionCount; ++i) {
      const std::uint32_t symbol = actions[2 * i + 1];
      const std::uint32_t word = *firstPair(actions, actionCount, symbol);
      const bool isError = (word & ~sstable::kActionOperand) == 0;
      require(table.action(state, symbol) == (isError ? 0 : word),
              "the index says what the action pairs say");
    }
    const std::uint32_t* const gotos = actions + 2 * actionCount;
    for (std::size_t i = 0; i < row[sstable::kRowGotoCount]; ++i) {
      const std::uint32_t* const pair =
          firstPair(gotos, row[sstable::kRowGotoCount], gotos[2 * i + 1]);
      require(table.gotoState(state, pair[1]) == (*pair & sstable::kActionOperand),
              "the index says what the goto pairs say");
    }
  }
}

/// Recovers from its first errors by whatever strategy the table allows.
class tRecovering : public SSYacc {
 public:
  using SSYacc::SSYacc;

  SSYaccStackElement* reduce(unsigned, unsigned size) override {
    if (size != 0) elementFromProduction(static_cast<long>(size) - 1);
    return stackElement();
  }
  int error(unsigned state, SSLexLexeme&) override {
    if (++errors_ > 3) return 1;
    unsigned count = 0;
    const std::unique_ptr<unsigned[]> tokens(validLookaheads(state, count));
    pushStackElement(stackElement());
    return errors_ == 2 ? errorPanic(tokens.get(), count) : errorToken();
  }

 private:
  int errors_ = 0;
};

void parse(const SSYaccTable& table, SSLex& scanner) {
  tRecovering parser(scanner, table);
  try {
    parser.parse();
  } catch (const SSException&) {  // any numbered error will do
  }
}

void tryParser(const tImage& image, std::string_view text, bool directives) {
  const std::unique_ptr<SSYaccTable> table = load<SSYaccTable>(image);
  if (table == nullptr) return;
  if (image.size() <= kSmallImage) compareWithImage(*table, image);
  SSLexStringConsumer consumer(text.data(), text.size());
  if (directives) {
    KorelPreLexClass scanner(consumer);
    parse(*table, scanner);
  } else {
    static const SSLexTable lexTable(soundImage(kSampleScanner).data(), "sample");
    SSLex scanner(consumer, lexTable);
    parse(*table, scanner);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  tByteReader input(bytes, size);
  const unsigned kind = input.byte() % kImages;
  if (kind == kRawScanner) {
    tryScanner(wordsOf(input.rest()), kText);
    return 0;
  }
  if (kind == kRawParser) {
    tryParser(wordsOf(input.rest()), kText, false);
    return 0;
  }
  tImage image = soundImage(kind);
  const unsigned damages = input.byte() % 16;
  for (unsigned i = 0; i < damages; ++i) damage(image, input);
  if (kind == kSampleScanner || kind == kBuiltinScanner) {
    tryScanner(image, input.rest());
  } else {
    tryParser(image, input.rest(), kind == kBuiltinParser);
  }
  return 0;
}
