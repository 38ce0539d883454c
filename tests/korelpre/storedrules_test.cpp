#include <gtest/gtest.h>

#include <string>

#include "korelpre/rules/patternmarkers.h"
#include "korelpre/rules/rule.h"
#include "korelpre/rules/rulestream.h"

using namespace precomp;

namespace {

TEST(StoredRules, DoNotNestDeeperThanRulesMay) {
  const auto loads = [](int depth) {
    tPCHStream stream;
    stream.putByte(0x08);  // a pattern
    stream.putText("K");
    stream.putName("");
    stream.putNumber(1);
    for (int i = 0; i < depth; ++i) {
      stream.putByte(0x10 | kMatchIdentifier);
      stream.putNumber(116);
      stream.putNumber(0);
      stream.putText("K");
      stream.putNumber(1);
    }
    stream.putByte(kMatchIdentifier);
    stream.putNumber(116);
    stream.putNumber(0);
    stream.putText("K");
    tPCHStream reading(stream.written(), 0);
    return tBaseXChg::restore(&reading, nullptr) != nullptr;
  };
  EXPECT_TRUE(loads(kDeepestGroup));
  EXPECT_FALSE(loads(kDeepestGroup + 1));
  EXPECT_FALSE(loads(100000));
}

TEST(StoredNumbers, KeepTheirValuesAndRefuseLargerOnes) {
  tPCHStream stream;
  for (const std::uint64_t number : {0ULL, 127ULL, 128ULL, 0xFFFFFFFFULL, ~0ULL, 1ULL << 32}) {
    stream.putNumber(number);
  }
  stream.putName("twice");
  stream.putName("twice");
  tPCHStream reading(stream.written(), 0);
  for (const std::uint64_t number : {0ULL, 127ULL, 128ULL, 0xFFFFFFFFULL, ~0ULL}) {
    EXPECT_EQ(reading.number(), number);
  }
  EXPECT_FALSE(reading.failed());
  tPCHStream large = reading;
  EXPECT_EQ(large.number32(), 0u);
  EXPECT_TRUE(large.failed());
  reading.number();
  const std::string_view first = reading.name();
  EXPECT_EQ(first, "twice");
  EXPECT_EQ(reading.name().data(), first.data());
  EXPECT_EQ(reading.byte(), 0);
  EXPECT_TRUE(reading.failed());
  tPCHStream cut(std::string_view("\x02x"), 0);
  EXPECT_EQ(cut.text(), "");
  EXPECT_TRUE(cut.failed());
}

}  // namespace
