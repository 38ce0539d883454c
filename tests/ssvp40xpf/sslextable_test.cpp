#include "ssvp40xpf/sslextable.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ssvp40xpf/sslex.h"
#include "tests/ssvp40xpf/samples.h"

namespace {

using samples::bytesOf;
using samples::raised;

const char kInvalid[] = "4 SSLex0104e: Invalid table, image";

/// Loads exactly these bytes and, when they pass, scans a text to its end. Gives what was raised
/// while loading.
std::string loadAndScan(const std::vector<char>& bytes) {
  std::unique_ptr<SSLexTable> table;
  const std::string error =
      raised([&] { table = std::make_unique<SSLexTable>(bytes.data(), bytes.size(), "image"); });
  if (!table) return error;
  const std::string text = "a 1.5 \"s\n\" { } =b^ 12.@$ \xFF";
  for (const bool wide : {false, true}) {
    const std::u16string units(text.begin(), text.end());
    SSLexStringConsumer consumer(wide ? static_cast<const void*>(units.data()) : text.data(),
                                 text.size(),
                                 wide ? SSLexConsumer::wideType : SSLexConsumer::charType);
    SSLex lex(consumer, *table);
    bool ended = false;
    for (std::size_t calls = 0; !ended && calls < 10 * text.size(); ++calls) {
      raised([&] { ended = !SSRef<SSLexLexeme>(++lex); });
      ended = ended || lex.consumer()->start() == lex.consumer()->dataEnd() ||
              raised([&] { lex.getCurrentExpressionList(); }) != "none";
    }
    EXPECT_TRUE(ended) << "the scan does not end";
  }
  return error;
}

TEST(ScannerTable, RefusesEveryTruncationAndSurvivesEveryFlippedBit) {
  const std::vector<char> whole = bytesOf(samples::lexImage());
  ASSERT_EQ(loadAndScan(whole), "none");
  EXPECT_EQ(samples::refusedTruncations(whole, loadAndScan, kInvalid), whole.size());
  const std::size_t refused = samples::refusedFlips(whole, loadAndScan);
  EXPECT_GT(refused, 2 * whole.size());
  EXPECT_LT(refused, 8 * whole.size());
}

TEST(ScannerTable, ChecksWhatTheImageSays) {
  constexpr std::size_t kBlock = sstable::kLexHeaderWords;
  constexpr std::size_t kFinal = kBlock + sstable::kBlockHeaderWords;
  tableimage::tAutomaton list;
  const unsigned letter = list.state(1, samples::kAccept);
  list.on(0, 'a', 'c', letter).on(0, 'd', 'f', letter);
  const tableimage::tImage sound = tableimage::lexImage({list});
  const std::size_t row = kFinal + 2 * sstable::kFinalWords;
  struct tDamage {
    std::size_t word;
    std::uint32_t value;
    const char* error;
  };
  const tDamage damages[] = {
      {sstable::kLexListCount, 0, kInvalid},
      {sstable::kLexListCount, 2, kInvalid},
      {sstable::kLexHeaderMagic, 0x58, kInvalid},
      {sstable::kLexKeywordTableCount, 1, "43 SSLex0109e: Unable to read keyword table, image"},
      {sstable::kLexClassCount, 1, kInvalid},
      {kBlock + sstable::kBlockMagic, 0, kInvalid},
      {kBlock + sstable::kBlockStateCount, 0, kInvalid},
      {kBlock + sstable::kBlockSizeAgain, 8, kInvalid},
      {kBlock + sstable::kBlockRowIndex, 1u << 30, kInvalid},
      {kBlock + sstable::kBlockFinals, 90, kInvalid},
      {kFinal + sstable::kFinalFlags, sstable::kLexPush | sstable::kLexAccept, "none"},
      {kFinal + sstable::kFinalFlags, 0x4, "none"},
      {row, 3000, kInvalid},
      {row + 1, 'd', kInvalid},  // low above high
      {row + 4, 'c', kInvalid},  // ranges overlap
      {row + 3, 2, kInvalid},    // no such state
      {row + 3, sstable::kNone, "none"},
  };
  for (const tDamage& damage : damages) {
    tableimage::tImage image = sound;
    image[damage.word] = damage.value;
    EXPECT_EQ(loadAndScan(bytesOf(image)), damage.error) << damage.word << " " << damage.value;
  }
  tableimage::tImage pushing = sound;
  pushing[kFinal + sstable::kFinalWords + sstable::kFinalFlags] |= sstable::kLexPush;
  pushing[kFinal + sstable::kFinalWords + sstable::kFinalList] = 1;
  EXPECT_EQ(loadAndScan(bytesOf(pushing)), kInvalid);
  tableimage::tImage longer = sound;
  longer.push_back(0);
  EXPECT_EQ(loadAndScan(bytesOf(longer)), kInvalid);
}

}  // namespace
