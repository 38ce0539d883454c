#include "ssvp40xpf/ssyacctable.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ssvp40xpf/ssyacc.h"
#include "tests/ssvp40xpf/samples.h"

namespace {

using samples::bytesOf;
using samples::raised;

const char kInvalid[] = "22 SSYacc0111e: Error reading table, image";

/// Recovers from its first errors by whatever strategy the table allows.
class tRecovering : public SSYacc {
 public:
  using SSYacc::SSYacc;
  SSYaccStackElement* reduce(unsigned, unsigned size) override {
    if (size != 0 && size < 10) elementFromProduction(0);
    return stackElement();
  }
  int error(unsigned, SSLexLexeme&) override {
    if (++errors_ > 3) return 1;
    pushStackElement(stackElement());
    return errorToken();
  }

 private:
  int errors_ = 0;
};

std::string loadAndParse(const std::vector<char>& bytes) {
  static const tableimage::tImage lexImage = samples::lexImage();
  static const SSLexTable lexTable(lexImage.data(), "sample");
  std::unique_ptr<SSYaccTable> table;
  const std::string error =
      raised([&] { table = std::make_unique<SSYaccTable>(bytes.data(), bytes.size(), "image"); });
  if (!table) return error;
  for (const char* const text : {"a+b*(c+d)", "a; b; + c;", ")", ""}) {
    SSLexStringConsumer consumer(text);
    SSLex lex(consumer, lexTable);
    tRecovering parser(lex, *table);
    raised([&] { parser.parse(); });
  }
  unsigned count = 0;
  SSYacc parser;
  parser.setTable(*table);
  for (unsigned state = 0; state < table->stateCount(); ++state) {
    delete[] parser.validLookaheads(state, count);
  }
  return error;
}

TEST(ParserTable, RefusesEveryTruncationAndSurvivesEveryFlippedBit) {
  for (const tableimage::tImage& image : {samples::expressionImage(), samples::linesImage()}) {
    const std::vector<char> whole = bytesOf(image);
    ASSERT_EQ(loadAndParse(whole), "none");
    EXPECT_EQ(samples::refusedTruncations(whole, loadAndParse, kInvalid), whole.size());
    const std::size_t refused = samples::refusedFlips(whole, loadAndParse);
    EXPECT_GT(refused, 3 * whole.size());
    EXPECT_LT(refused, 8 * whole.size());
  }
}

TEST(ParserTable, ChecksWhatTheImageSays) {
  const tableimage::tImage sound = samples::linesImage();
  const std::size_t row = sound[sstable::kYaccFirstRow] / sstable::kWordSize;
  const std::size_t action = row + sstable::kRowPairs;
  const std::size_t productions = sound[sstable::kYaccProductions] / sstable::kWordSize;
  struct tDamage {
    std::size_t word;
    std::uint32_t value;
    const char* error;
  };
  const tDamage damages[] = {
      {sstable::kYaccHeaderMagic, 0, "none"},
      {sstable::kYaccHeaderMagic, 1, "none"},
      {sstable::kYaccHeaderMagic, 2, kInvalid},
      {sstable::kYaccCounts, 0x10005, kInvalid},  // a lookahead automaton
      {sstable::kYaccCounts, 4, kInvalid},        // a production is reduced that does not exist
      {sstable::kYaccStateCount, 0, kInvalid},
      {sstable::kYaccFirstRow, 3, kInvalid},
      {row + sstable::kRowFlags, sstable::kRowEmpty, kInvalid},
      {action, sstable::kActionShift | 999, kInvalid},
      {action, sstable::kActionReduce | 999, kInvalid},
      {action, sstable::kActionConflict, kInvalid},
      {action, sstable::kActionShift | sstable::kActionReduce, kInvalid},
      {action, 0x80000000u, kInvalid},
      {action, 12345, "none"},  // no action at all
      {action + 1, 0x1000, kInvalid},
      {productions + 3, 0x4000, kInvalid},
  };
  for (const tDamage& damage : damages) {
    tableimage::tImage image = sound;
    image[damage.word] = damage.value;
    EXPECT_EQ(loadAndParse(bytesOf(image)), damage.error) << damage.word << " " << damage.value;
  }
}

}  // namespace
