#include <gtest/gtest.h>

#include "ssvp40xpf/builtintables.h"
#include "ssvp40xpf/korelpretokens.h"
#include "tests/tablegen/imagewalk.h"

namespace {

using namespace sstable;
using namespace korelpre;

const tImageWalk kScanner(builtin::korelpreDfa.words, builtin::korelpreDfa.bytes / kWordSize);

TEST(BuiltinTables, ScannerKnowsWideCodes) {
  EXPECT_EQ(kScanner.next(kListStatement, 0, 0xFFB4), kScanner.next(kListStatement, 0, 0xFF));
  EXPECT_EQ(kScanner.next(kListStatement, 0, 0xFFB5), kNone);
  EXPECT_EQ(kScanner.next(kListSingleQuoted, 0, 0x20AC), kScanner.next(kListSingleQuoted, 0, 'x'));
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
