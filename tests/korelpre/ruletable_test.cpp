#include <gtest/gtest.h>

#include "korelpre/ruletable.h"

using namespace precomp;

namespace {

tBaseXChg* rule(const char* key, tWordRule wordRule) {
  return new tBaseXChg(nullptr, wordRule, new tMatchIdentifier(tSpcString(tString(key))), nullptr,
                       tString(key));
}

constexpr tWordRule kAbbreviating{true, false};
constexpr tWordRule kWhole{false, false};
constexpr tWordRule kExact{false, true};

TEST(Keyword, ComparesByTheRulesFlags) {
  const struct {
    const char* keyword;
    const char* word;
    tWordRule rule;
    int sign;
  } kCases[] = {
      {"DISPLAY", "DISP", kAbbreviating, 0},
      {"DISPLAY", "displ", kAbbreviating, 0},
      {"DISPLAY", "DIS", kAbbreviating, 1},
      {"DISPLAY", "DISPLAYS", kAbbreviating, -1},
      {"ADD", "add", kAbbreviating, 0},
      {"ADD", "ADDS", kAbbreviating, -1},
      {"A{", "a[", kAbbreviating, 0},
      {"DISPLAY", "DISP", kWhole, 1},
      {"DISPLAY", "display", kWhole, 0},
      {"A{", "A[", kWhole, 1},
      {"A_", "AZ", kWhole, 1},
      {"Foo", "FOO", kExact, 1},
      {"Foo", "Foo", kExact, 0},
      {"DISPLAY", "DISX", kAbbreviating, -1},
  };
  for (const auto& row : kCases) {
    const int order = compareKeyword(row.keyword, row.word, row.rule);
    EXPECT_EQ((order > 0) - (order < 0), row.sign) << row.keyword << " " << row.word;
  }
}

TEST(RuleTable, KeepsRulesOfOneKeyTogetherInTheOrderOfArrival) {
  tXChgArray table;
  int first = -1;
  int last = -1;
  EXPECT_EQ(table.Find(tString("X"), first, last, 0), 0);
  EXPECT_EQ(first, 0);
  EXPECT_EQ(last, 0);
  tBaseXChg* early = rule("display", kAbbreviating);
  tBaseXChg* late = rule("DISPLAY", kWhole);
  for (tBaseXChg* added : {rule("B", kWhole), early, rule("Z", kWhole), late, rule("A", kWhole)}) {
    table.Add(added);
  }
  ASSERT_EQ(table.Find(tString("Display"), first, last, 0), 1);
  EXPECT_EQ(first, 2);
  EXPECT_EQ(last, 3);
  EXPECT_EQ(table.get(2), early);
  EXPECT_EQ(table.get(3), late);
  // The walk from the abbreviating rule stops at the one that does not abbreviate.
  ASSERT_EQ(table.Find(tString("DISP"), first, last, 0), 1);
  EXPECT_EQ(first, 2);
  EXPECT_EQ(last, 2);
  EXPECT_EQ(table.Find(tString("DISP"), first, last, 1), 0);
  EXPECT_EQ(table.Find(tString("C"), first, last, 0), 0);
  EXPECT_EQ(first, 2);
}

TEST(RuleTable, IndexFollowsEveryChange) {
  tXChgArray table;
  table.Add(rule("A", kExact));
  table.Add(rule("A", kExact));
  for (int i = 0; i < 200; ++i) table.Add(rule(("N" + std::to_string(i)).c_str(), kExact));
  ASSERT_NE(table.index().find("A"), nullptr);
  EXPECT_EQ(table.index().find("A")->rules, 2);
  EXPECT_EQ(table.index().find("a"), nullptr);
  for (int i = 0; i < 200; ++i) {
    EXPECT_NE(table.index().find("N" + std::to_string(i)), nullptr) << i;
  }
  table.removeRule(1);
  EXPECT_EQ(table.index().find("A")->rule, table.get(0));
  table.removeRule(0);
  EXPECT_EQ(table.index().find("A"), nullptr);
  EXPECT_FALSE(table.index().gate().passes('B', '\0'));
}

TEST(RuleTable, AppliesTheLatestAmongEquals) {
  tXChgArray table;
  for (const char* text : {"1", "2"}) {
    tAutoArray<tSpcString> value;
    value.add(new tSpcString(tString(text)));
    table.Add(new tTranslate(nullptr, tSpcString(tString("A")), value));
  }
  tTknString statement;
  for (const char* text : {"x", "A", "y"}) statement.tokens().add(new tSpcString(tString(text)));
  statement.getToken(1).setSpacing(tString("\t"));
  EXPECT_FALSE(table.replace(nullptr, 0, 1, 0, &statement));
  EXPECT_TRUE(table.replace(nullptr, 0, 1, 1, &statement));
  tString text;
  statement.appendText(text);
  EXPECT_EQ(text, "x\t2y");
}

}  // namespace
