#include "ssvp40xpf/ssyacctable.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/ssvp40xpf/samples.h"

namespace {

const char kInvalid[] = "22 SSYacc0111e: Error reading table, image";

std::string loaded(const tableimage::tImage& image) {
  const std::vector<char> bytes = samples::bytesOf(image);
  return samples::raised([&] { SSYaccTable(bytes.data(), bytes.size(), "image"); });
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
    EXPECT_EQ(loaded(image), damage.error) << damage.word << " " << damage.value;
  }
  for (auto end = sound.begin(); end != sound.end(); ++end) {
    EXPECT_EQ(loaded({sound.begin(), end}), kInvalid) << end - sound.begin();
  }
}

}  // namespace
