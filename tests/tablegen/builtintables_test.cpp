#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

#include "ssvp40xpf/builtintables.h"
#include "ssvp40xpf/korelpretokens.h"
#include "tests/tablegen/imagewalk.h"

namespace {

using namespace sstable;
using namespace korelpre;

const tImageWalk kScanner(builtin::korelpreDfa.words, builtin::korelpreDfa.bytes / kWordSize);

std::uint32_t parserWord(std::size_t at) {
  return at < builtin::korelpreLlr.bytes / kWordSize ? builtin::korelpreLlr.words[at] : kNone;
}

/// The word that belongs to a symbol in one half of a state's row; kNone when it has none.
std::uint32_t parserEntry(std::uint32_t state, std::uint32_t symbol) {
  const std::size_t row = parserWord(kYaccRowIndex + state) / kWordSize;
  const std::uint32_t pairs = parserWord(row + kRowGotoCount) + parserWord(row + kRowActionCount);
  for (std::size_t at = row + kRowPairs; at < row + kRowPairs + 2 * pairs; at += 2) {
    if (parserWord(at + 1) == symbol) return parserWord(at);
  }
  return kNone;
}

/// The productions by which a text of tokens is reduced; ends with kNone when it is no sentence.
std::vector<std::uint32_t> reductions(std::vector<std::uint32_t> tokens) {
  tokens.push_back(kTokenEof);
  std::vector<std::uint32_t> found;
  std::vector<std::uint32_t> stack = {0};
  for (auto token = tokens.begin();;) {
    const std::uint32_t action = parserEntry(stack.back(), *token);
    if (action == kActionAccept) return found;
    if (action != kNone && (action & kActionShift) != 0) {
      stack.push_back(action & kActionOperand);
      ++token;
    } else if (action != kNone && (action & kActionReduce) != 0) {
      found.push_back(action & kActionOperand);
      const std::size_t production = parserWord(kYaccProductions) / kWordSize + 2 * found.back();
      stack.resize(stack.size() - parserWord(production));
      stack.push_back(parserEntry(stack.back(), parserWord(production + 1)));
    } else {
      found.push_back(kNone);
      return found;
    }
  }
}

TEST(BuiltinTables, ScannerKnowsWideCodes) {
  EXPECT_EQ(kScanner.next(kListStatement, 0, 0xFFB4), kScanner.next(kListStatement, 0, 0xFF));
  EXPECT_EQ(kScanner.next(kListStatement, 0, 0xFFB5), kNone);
  EXPECT_EQ(kScanner.next(kListSingleQuoted, 0, 0x20AC), kScanner.next(kListSingleQuoted, 0, 'x'));
}

struct tSentence {
  std::vector<std::uint32_t> tokens;
  std::vector<std::uint32_t> reductions;
};

TEST(BuiltinTables, ParserReducesByTheNumbersOfTheGrammar) {
  const tSentence kCases[] = {
      {{kTokLineFeed}, {3, 2}},
      {{kTokIdentName, kTokAssign, kTokNumber, kTokLineFeed, kTokLineFeed},
       {116, 39, 110, 40, 115, 40, 5, 2, 3, 1}},
      {{kTokDirDefine, kTokIdentName, kTokSpc, kTokNumber, kTokLineFeed}, {42, 115, 39, 11, 4, 2}},
      {{kTokDirDefine, kTokFuncName, kTokIdentName, kTokComma, kTokAs, kTokRightParen,
        kTokLineFeed},
       {44, 17, 15, 204, 48, 17, 16, 14, 4, 2}},
      {{kTokDirIfNDef, kTokSpc, kTokStep, kTokLineFeed}, {185, 47, 23, 4, 2}},
      {{kTokDirXCommand, kTokSpc, kTokIdentName, kTokSpc, kTokLess, kTokLeftParen, kTokIdentName,
        kTokRightParen, kTokGreater, kTokResultArrow, kTokLess, kTokDot, kTokIdentName, kTokDot,
        kTokGreater, kTokLineFeed},
       {120, 31, 28, 116, 31, 29, 120, 31, 29, 44, 60, 30, 29, 44, 64, 37, 35, 32, 8, 4, 2}},
      {{kTokBeginSql, kTokSpc, kTokAlias, kTokSpc, kTokIdentName, kTokLineFeed, kTokColumn, kTokSpc,
        kTokIdentName, kTokSpc, kTokAs, kTokSpc, kTokDate, kTokLineFeed, kTokEndSql, kTokLineFeed,
        kTokLineFeed},
       {135, 150, 150, 145, 142, 150, 140, 138, 150, 150, 134, 39, 5, 2}},
      {{}, {kNone}},
      {{kTokDirDefine, kTokLineFeed}, {kNone}},
      {{kTokDirElse, kTokNumber, kTokLineFeed}, {kNone}},
  };
  for (const tSentence& test : kCases) EXPECT_EQ(reductions(test.tokens), test.reductions);
}

TEST(BuiltinTables, SpellingsBelongToTheirNumbers) {
  EXPECT_EQ(tokenSpelling(58), nullptr);
  EXPECT_STREQ(tokenSpelling(59), "NullStr");
  EXPECT_STREQ(tokenSpelling(61), "\n");
  EXPECT_STREQ(tokenSpelling(104), "|");
  EXPECT_STREQ(tokenSpelling(194), "SQSTRING");
  EXPECT_EQ(tokenSpelling(195), nullptr);
  EXPECT_STREQ(tokenSpelling(199), "STRING");
  EXPECT_EQ(tokenSpelling(200), nullptr);
  int spelled = 0;
  for (std::uint32_t token = 0; token < 300; ++token) spelled += tokenSpelling(token) != nullptr;
  EXPECT_EQ(spelled, 134);
}

}  // namespace
