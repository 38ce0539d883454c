#include "ssvp40xpf/sslextable.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/ssvp40xpf/samples.h"

namespace {

const char kInvalid[] = "4 SSLex0104e: Invalid table, image";

std::string loaded(const tableimage::tImage& image) {
  const std::vector<char> bytes = samples::bytesOf(image);
  return samples::raised([&] { SSLexTable(bytes.data(), bytes.size(), "image"); });
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
    EXPECT_EQ(loaded(image), damage.error) << damage.word << " " << damage.value;
  }
  tableimage::tImage pushing = sound;
  pushing[kFinal + sstable::kFinalWords + sstable::kFinalFlags] |= sstable::kLexPush;
  pushing[kFinal + sstable::kFinalWords + sstable::kFinalList] = 1;
  EXPECT_EQ(loaded(pushing), kInvalid);
  tableimage::tImage longer = sound;
  longer.push_back(0);
  EXPECT_EQ(loaded(longer), kInvalid);
  for (auto end = sound.begin(); end != sound.end(); ++end) {
    EXPECT_EQ(loaded({sound.begin(), end}), kInvalid) << end - sound.begin();
  }
}

}  // namespace
