#include "ssvp40xpf/sslex.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/ssvp40xpf/scanning.h"

namespace {

using samples::raised;
using scanning::lexTable;
using scanning::scanAll;

struct tCase {
  const char* text;
  const char* lexemes;
};

const tCase kScans[] = {
    {"", ""},
    {"  \n ", ""},
    {"{ never closed", ""},
    {"12.a", nullptr},  // "12", then "." starts nothing
    {"12.5a", "3 12.5 1:1@0\n1 a 1:5@4\n"},
    {"12.", nullptr},
    {"\"x", "20 x 1:2@1\n"},
    {"\"\"a", "1 a 1:3@2\n"},
    {"=ab", "10 = 1:1@0\n1 ab 1:2@1\n"},
    {"a{\n\n}b\n{\n}c", "1 a 1:1@0\n1 b 3:2@5\n1 c 5:2@10\n"},
    {"#\nxa", "13 #\nx 1:1@0\n1 a 2:2@3\n"},
    {"\"a\nb\"c", "20 a\nb 1:2@1\n1 c 2:3@5\n"},
};

// That a stream gives the same is held by the fuzz target "table".
TEST(Scanner, FindsTheLongestLexemes) {
  for (const tCase& row : kScans) {
    SSLexStringConsumer text(row.text);
    std::string lexemes;
    const std::string error = raised([&] { lexemes = scanAll(text); });
    EXPECT_EQ(error == "none", row.lexemes != nullptr) << row.text;
    if (row.lexemes != nullptr) {
      EXPECT_EQ(lexemes, row.lexemes) << row.text;
    }
  }
}

TEST(Scanner, ReportsTheTextItReadAndGoesOnBehindIt) {
  SSLexStringConsumer consumer("a\n 12.x?%");
  SSLex lex(consumer, lexTable());
  const char* const expected[] = {"none",
                                  "none",  // a, 12
                                  "5 SSLex0105e: Invalid token, Line 2, Offset 4, .",
                                  "none",
                                  "5 SSLex0105e: Invalid token, Line 2, Offset 6, ?",
                                  "5 SSLex0105e: Invalid token, Line 2, Offset 7, %"};
  for (const char* const error : expected) {
    EXPECT_EQ(raised([&] { SSRef<SSLexLexeme>(++lex); }), error);
  }
  EXPECT_EQ(++lex, nullptr);
  EXPECT_EQ(lex.lexemeCount(), 3u);

  SSLexStringConsumer partial("=5");  // "=" alone accepts nothing: both characters were read
  EXPECT_EQ(raised([&] { scanAll(partial); }), "5 SSLex0105e: Invalid token, Line 1, Offset 1, =5");
}

TEST(Scanner, SwitchesExpressionListsByHand) {
  SSLexStringConsumer consumer("a b\" c ^ d");
  SSLex lex(consumer, lexTable());
  lex.pushExpressionList(*lexTable().expressionList(1));
  EXPECT_TRUE(lex.isCurrentExpressionList(1));
  EXPECT_EQ(SSRef<SSLexLexeme>(++lex)->length(), 3u);
  EXPECT_EQ(SSRef<SSLexLexeme>(++lex)->token(), samples::kName);  // the quote popped
  lex.gotoExpressionList(*lexTable().expressionList(2));
  EXPECT_EQ(lex.getCurrentExpressionList(), 2u);
  lex.gotoExpressionList(*lexTable().expressionList(0));
  EXPECT_EQ(raised([&] { ++lex; }), "9 SSLifo0002e: No top, stack empty");
  EXPECT_EQ(raised([&] { lex.popExpressionList(); }), "10 SSLifo0004e: Cannot pop empty stack");
  EXPECT_EQ(raised([&] { lex.getCurrentExpressionList(); }),
            "47 SSLex0111e: getExpressionList failed");
  lex.reset();
  EXPECT_TRUE(lex.isCurrentExpressionList(0));
  EXPECT_EQ(raised([&] { (void)lexTable().expressionList(3); }),
            "6 SSLex0106e: Invalid expression list index, 3");
  EXPECT_EQ(raised([] { ++SSLex(); }), "7 SSLex0107e: Table or consumer missing, required");
}

/// Delivers dropped text and errors as lexemes of their own, and drops names.
class tCuriousLex : public SSLex {
 public:
  using SSLex::SSLex;
  SSLexLexeme* ignore(SSLexConsumer& from, unsigned, SSLexMark& mark) override {
    return SSLex::complete(from, 100, mark);
  }
  SSLexLexeme* complete(SSLexConsumer& from, unsigned token, SSLexMark& mark) override {
    if (token != samples::kName) return SSLex::complete(from, token, mark);
    from.acceptTo(mark);
    return nullptr;
  }
  SSLexLexeme* error(SSLexConsumer& from) override {
    return SSLexLexeme::make(from.lexemeText(), from.lexemeLength(from.mark()), 101,
                             from.startLine(), from.startColumn());
  }
};

TEST(Scanner, LetsOverridesDecide) {
  SSLexStringConsumer consumer("a 1?%b");
  tCuriousLex lex(consumer, lexTable());
  EXPECT_EQ(scanAll(lex), "100   1:2@1\n2 1 1:3@2\n101 ? 1:4@0\n101 % 1:5@0\n");
  EXPECT_STREQ(lex.tokenToConstChar(1), "SSLexTokenNotFound");
}

TEST(Scanner, OwnsWhatItOpensByName) {
  const samples::tFile image(samples::lexImage());
  const samples::tFile text("one 2");
  SSLex lex(text.path(), image.path());
  EXPECT_EQ(scanAll(lex), "1 one 1:1@0\n2 2 1:5@4\n");
  EXPECT_EQ(raised([] { SSLexTable("/no/such/table"); }),
            "1 SSLex0101e: Error opening file, /no/such/table, 2");
}

}  // namespace
