#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ssvp40xpf/builtintables.h"
#include "ssvp40xpf/sslextable.h"
#include "ssvp40xpf/ssyacctable.h"
#include "tests/ssvp40xpf/samples.h"

namespace {

/// A word of a sound image that is another one, and whether the image is refused then.
struct tDamage {
  std::size_t word;
  std::uint32_t value;
  bool refused = true;
  const char* error = nullptr;  // another one than that of an invalid table
};

template <class Table>
std::string loaded(const tableimage::tImage& image) {
  // Storage of exactly this size, so that a read past its end is seen.
  const std::vector<std::uint32_t> words(image.begin(), image.end());
  return samples::raised([&] { Table(words.data(), tableimage::bytes(words), "image"); });
}

template <class Table>
void expectChecked(const tableimage::tImage& sound, const char* invalid,
                   const std::vector<tDamage>& damages) {
  for (const tDamage& damage : damages) {
    tableimage::tImage image = sound;
    image[damage.word] = damage.value;
    const char* const refusal = damage.error != nullptr ? damage.error : invalid;
    EXPECT_EQ(loaded<Table>(image), damage.refused ? refusal : "none")
        << damage.word << " " << damage.value;
  }
  for (auto end = sound.begin(); end != sound.end(); ++end) {
    EXPECT_EQ(loaded<Table>({sound.begin(), end}), invalid) << end - sound.begin();
  }
}

TEST(Tables, OfScannersAreChecked) {
  constexpr std::size_t kBlock = sstable::kLexHeaderWords;
  constexpr std::size_t kFinal = kBlock + sstable::kBlockHeaderWords;
  constexpr const char* kInvalid = "4 SSLex0104e: Invalid table, image";
  tableimage::tAutomaton list;
  const unsigned letter = list.state(1, samples::kAccept);
  list.on(0, 'a', 'c', letter).on(0, 'd', 'f', letter);
  const std::size_t row = kFinal + 2 * sstable::kFinalWords;
  tableimage::tImage image = tableimage::lexImage({list});
  expectChecked<SSLexTable>(
      image, kInvalid,
      {{sstable::kLexListCount, 0},
       {sstable::kLexListCount, 2},
       {sstable::kLexHeaderMagic, 0x58},
       {sstable::kLexKeywordTableCount, 1, true,
        "43 SSLex0109e: Unable to read keyword table, image"},
       {sstable::kLexClassCount, 1},
       {kBlock + sstable::kBlockMagic, 0},
       {kBlock + sstable::kBlockStateCount, 0},
       {kBlock + sstable::kBlockSizeAgain, 8},
       {kBlock + sstable::kBlockRowIndex, 1u << 30},
       {kBlock + sstable::kBlockFinals, 90},
       {kFinal + sstable::kFinalFlags, sstable::kLexPush | sstable::kLexAccept, false},
       {kFinal + sstable::kFinalFlags, 0x4, false},
       {row, 3000},
       {row + 1, 'd'},  // low above high
       {row + 4, 'c'},  // ranges overlap
       {row + 3, 2},    // no such state
       {row + 3, sstable::kNone, false}});
  image[kFinal + sstable::kFinalWords + sstable::kFinalFlags] |= sstable::kLexPush;
  image[kFinal + sstable::kFinalWords + sstable::kFinalList] = 1;
  EXPECT_EQ(loaded<SSLexTable>(image), kInvalid);
  image = tableimage::lexImage({list});
  image.push_back(0);
  EXPECT_EQ(loaded<SSLexTable>(image), kInvalid);
}

TEST(Tables, OfParsersAreChecked) {
  const tableimage::tImage sound = samples::linesImage();
  const std::size_t row = sound[sstable::kYaccFirstRow] / sstable::kWordSize;
  const std::size_t action = row + sstable::kRowPairs;
  expectChecked<SSYaccTable>(
      sound, "22 SSYacc0111e: Error reading table, image",
      {{sstable::kYaccHeaderMagic, 0, false},
       {sstable::kYaccHeaderMagic, 1, false},
       {sstable::kYaccHeaderMagic, 2},
       {sstable::kYaccCounts, 0x10005},  // a lookahead automaton
       {sstable::kYaccCounts, 4},        // a production is reduced that does not exist
       {sstable::kYaccStateCount, 0},
       {sstable::kYaccFirstRow, 3},
       {row + sstable::kRowFlags, sstable::kRowEmpty},
       {action, sstable::kActionShift | 999},
       {action, sstable::kActionReduce | 999},
       {action, sstable::kActionConflict},
       {action, sstable::kActionShift | sstable::kActionReduce},
       {action, 0x80000000u},
       {action, 12345, false},  // no action at all
       {action + 1, 0x1000},
       {sound[sstable::kYaccProductions] / sstable::kWordSize + 3, 0x4000}});
}

// What the build has laid out is what loading the same image gives.
TEST(Tables, BuiltInAreTheirImages) {
  for (const auto& built : {builtin::korelpreDfa, builtin::korelDfa}) {
    const SSLexTable table(built.lists, built.name);
    const SSLexTable loaded(built.words, built.bytes, built.name);
    ASSERT_EQ(table.listCount(), loaded.listCount());
    for (unsigned list = 0; list < table.listCount(); ++list) {
      const SSLexIterator& one = table.expressionList(list)->automaton();
      const SSLexIterator& other = loaded.expressionList(list)->automaton();
      ASSERT_EQ(one.stateCount(), other.stateCount());
      for (unsigned state = 0; state < one.stateCount(); ++state) {
        EXPECT_TRUE(one.final(state) == other.final(state)) << state;
        for (unsigned code = 0; code <= 0x101; ++code) {
          ASSERT_EQ(one.next(state, code), other.next(state, code)) << state << " " << code;
        }
      }
    }
  }
  for (const auto& built : {builtin::korelpreLlr, builtin::korelLlr}) {
    const SSYaccTable table(built.index, built.name);
    const SSYaccTable loaded(built.words, built.bytes, built.name);
    ASSERT_EQ(table.stateCount(), loaded.stateCount());
    for (unsigned state = 0; state < table.stateCount(); ++state) {
      for (std::uint32_t i = 0; i <= SSYaccTable::kLargestSymbol + 2; ++i) {
        ASSERT_EQ(table.action(state, i - 2), loaded.action(state, i - 2)) << state << " " << i;
        const std::uint32_t nonterminal = sstable::kFirstNonterminal + i;
        ASSERT_EQ(table.gotoState(state, nonterminal), loaded.gotoState(state, nonterminal));
      }
    }
    for (unsigned i = 0; i < (built.words[sstable::kYaccCounts] & 0xFFFF); ++i) {
      EXPECT_EQ(table.production(i).left, loaded.production(i).left);
    }
  }
}

}  // namespace
