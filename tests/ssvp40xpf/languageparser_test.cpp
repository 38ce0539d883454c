#include "ssvp40xpf/languageparser.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace korel;

constexpr int kWhole = -1;

/// Where a text fails; kWhole when it is accepted.
int failure(AYaccClass& parser, std::string_view text) {
  int line = 0;
  int offset = 0;
  return parser.compile(text, line, offset) ? kWhole : offset;
}

struct tCase {
  const char* text;
  int offset;
};

void expectFailures(std::initializer_list<tCase> cases) {
  AYaccClass parser;
  for (const tCase& test : cases) EXPECT_EQ(failure(parser, test.text), test.offset) << test.text;
}

void expectSentences(std::initializer_list<const char*> texts) {
  for (const char* text : texts) expectFailures({{text, kWhole}});
}

TEST(LanguageParser, ReadsOperandsAndOperators) {
  expectSentences({"(1)", "(12.75 + .5)",
                   // a number takes a dot only with a digit behind it
                   "(1.and.x)", "(\"a b\" + 'c' + \"\" + '')", "(.T. .and. .not. .f. .or. !x)",
                   "(nil)", "(a + b - c * d / e % f ** g ^ h)",
                   "(a = b == c != d # e <> f < g <= h > i >= j $ k)", "(- + -a)",
                   "(++a - --b + c++ - d--)", "(a := b += c -= d *= e /= 1)", "(a .and. b := -c)",
                   "(a[1] := o:x := S->y := &m := (S)->(z) := 5)"});
  expectFailures({{"(a b)", 3},
                  {"(a 5)", 3},
                  {"(a \"text\")", 4},
                  {"(\"text\" a)", 8},
                  {"(a + * b)", 5},
                  {"(a +)", 4},
                  {"(a ++ b)", 6},
                  {"(5 := a)", 3},
                  {"(f(x) := a)", 6},
                  {"(a < > b)", 5},
                  {"(5++)", 2},
                  {"(a.b)", 2},
                  {"(a ; b)", 3}});
}

TEST(LanguageParser, ReadsCallsListsAndBlocks) {
  expectSentences({"(f())", "(f(,))", "(f(a,,b,))", "(f(@a, @b[1], @o:c))",
                   "(If(a, b, c) + iif(a,,c))", "(Upper(Trim(x)))", "({})",
                   "({1, {2, 3}, , x}[2][1])", "(a[1, 2][b[3]])", "({|| })", "({|| a})",
                   "({|a, b| a := b, f(a), b})", "({|x| {|y| x + y}})", "((a, b) + ((c)))", "()",
                   "(,)", "(a,, b,)", "(, @a, b + c)", "a + b, c"});
  expectFailures({{"(a[])", 3},
                  {"(a[1)", 4},
                  {"(f(a)(b))", 5},
                  {"(5(a))", 2},
                  {"(a, b c)", 6},
                  {"((a,,b))", 4},
                  {"({|a + 1| b})", 5},
                  {"({a| b})", 3},
                  {"({|a} b)", 4},
                  {"({1 2})", 4},
                  {"(a + @b)", 5},
                  {"(f(a}", 4},
                  {")", 0},
                  {"(a", 2}});
}

TEST(LanguageParser, ReadsAliasesMacrosAndObjects) {
  expectSentences({"(SA1->NAME + M->x + FIELD->y + _FIELD->z)",
                   "(SA1->END + SA1->EndDate + FIELD->end + M->a->b)",
                   "((SA1)->(Found()) .and. SA1->(a, b) .and. f(x)->y)",
                   "(SA1->&m + SA1->&(f(x)) + &m->y + M->&m + SA1->f(x))",
                   "(&m + &m. + &m.01 + &(a + b) + & m)", "(&m.(1) + &m(2) + &(x)(3))",
                   "(o:a:b(1):c[2]:d := o : e)",
                   "(o:&m + o:&(x) + o:end() + f(x):a + {|| 1}:run())", "(::a:b + ::c(1) + ::&m)"});
  expectFailures({{"(SA1->)", 6},
                  {"(SA1->5)", 6},
                  {"(SA1->M->)", 9},
                  {"(&)", 2},
                  {"(&5)", 2},
                  {"(o:)", 3},
                  {"(o:5)", 3},
                  {"(o ::a)", 3},
                  {"(::)", 3},
                  {"(\"S\"->a)", 4}});
}

TEST(LanguageParser, TakesEveryKeywordForAName) {
  AYaccClass parser;
  int keywords = 0;
  for (std::uint32_t token = kTokMemvar + 1; token <= kTokReadOnly; ++token) {
    const char* const spelling = tokenSpelling(token);
    if (spelling == nullptr || token == kTokFieldAliasOp || token == kTokAliasEnd) continue;
    ++keywords;
    std::string word = spelling;
    if (token == kTokField) word = "_field";
    const std::string text = "(" + word + " + " + word + "(" + word + ", a->" + word + ") " + word;
    EXPECT_EQ(failure(parser, text), static_cast<int>(text.size() - word.size())) << word;
  }
  EXPECT_EQ(keywords, 85);
}

TEST(LanguageParser, ReportsTheLastErrorOnly) {
  AYaccClass parser;
  tString message;
  int line = 7;
  int offset = 7;
  EXPECT_FALSE(parser.compile("(a +\n b", line, offset, message, 1));
  EXPECT_EQ(line, 1);
  EXPECT_EQ(offset, 4);
  EXPECT_FALSE(parser.compile("(a ? b)", line, offset, message, 1));  // begins no token
  EXPECT_EQ(line, 0);
  EXPECT_EQ(offset, 0);
  EXPECT_FALSE(parser.compile("(/* b\n*/ ]", line, offset, message, 1));
  EXPECT_EQ(line, 2);
  EXPECT_EQ(offset, 9);
  EXPECT_EQ(failure(parser, "(\"open)"), 0);
  EXPECT_EQ(failure(parser, "(a /* open)"), 0);
  EXPECT_EQ(failure(parser, "(a b ?)"), 3);
  EXPECT_EQ(failure(parser, "(a \xC3\xA9)"), 0);
  EXPECT_EQ(failure(parser, std::string_view("(a \0 b c)", 9)), 0);
  EXPECT_EQ(failure(parser, "(a) // b c"), kWhole);
}

TEST(LanguageParser, NestsAsDeepAsMemoryGoes) {
  constexpr std::size_t kDepth = 200000;
  AYaccClass parser;
  const std::string opened(kDepth, '(');
  EXPECT_EQ(failure(parser, opened + "a" + std::string(kDepth, ')')), kWhole);
  EXPECT_EQ(failure(parser, opened + "a b"), static_cast<int>(kDepth) + 2);
}

}  // namespace
