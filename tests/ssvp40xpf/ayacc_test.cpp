#include "ssvp40xpf/ayacc.h"

#include <gtest/gtest.h>

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

template <std::size_t size>
void check(const tCase (&cases)[size]) {
  AYaccClass parser;
  for (const tCase& test : cases) EXPECT_EQ(failure(parser, test.text), test.offset) << test.text;
}

TEST(LanguageParser, ReadsOperandsAndOperators) {
  check({
      {"(1)", kWhole},
      {"(12.75 + .5)", kWhole},
      {"(1.and.x)", kWhole},  // a number takes a dot only with a digit behind it
      {"(\"a b\" + 'c' + \"\" + '')", kWhole},
      {"(.T. .and. .not. .f. .or. !x)", kWhole},
      {"(nil)", kWhole},
      {"(a + b - c * d / e % f ** g ^ h)", kWhole},
      {"(a = b == c != d # e <> f < g <= h > i >= j $ k)", kWhole},
      {"(- + -a)", kWhole},
      {"(++a - --b + c++ - d--)", kWhole},
      {"(a := b += c -= d *= e /= 1)", kWhole},
      {"(a .and. b := -c)", kWhole},
      {"(a[1] := o:x := S->y := &m := (S)->(z) := 5)", kWhole},
      {"(a b)", 3},
      {"(a 5)", 3},
      {"(a \"text\")", 4},  // behind the quote
      {"(\"text\" a)", 8},
      {"(a + * b)", 5},
      {"(a +)", 4},
      {"(a ++ b)", 6},
      {"(5 := a)", 3},
      {"(f(x) := a)", 6},
      {"(a < > b)", 5},
      {"(5++)", 2},
      {"(a.b)", 2},
      {"(a ; b)", 3},
  });
}

TEST(LanguageParser, ReadsCallsListsAndBlocks) {
  check({
      {"(f())", kWhole},
      {"(f(,))", kWhole},
      {"(f(a,,b,))", kWhole},
      {"(f(@a, @b[1], @o:c))", kWhole},
      {"(If(a, b, c) + iif(a,,c))", kWhole},
      {"(Upper(Trim(x)))", kWhole},
      {"({})", kWhole},
      {"({1, {2, 3}, , x}[2][1])", kWhole},
      {"(a[1, 2][b[3]])", kWhole},
      {"({|| })", kWhole},
      {"({|| a})", kWhole},
      {"({|a, b| a := b, f(a), b})", kWhole},
      {"({|x| {|y| x + y}})", kWhole},
      {"((a, b) + ((c)))", kWhole},
      {"()", kWhole},
      {"(,)", kWhole},
      {"(a,, b,)", kWhole},
      {"(, @a, b + c)", kWhole},
      {"a + b, c", kWhole},
      {"(a[])", 3},
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
      {"(a", 2},  // at the line feed
  });
}

TEST(LanguageParser, ReadsAliasesMacrosAndObjects) {
  check({
      {"(SA1->NAME + M->x + FIELD->y + _FIELD->z)", kWhole},
      {"(SA1->END + SA1->EndDate + FIELD->end + M->a->b)", kWhole},
      {"((SA1)->(Found()) .and. SA1->(a, b) .and. f(x)->y)", kWhole},
      {"(SA1->&m + SA1->&(f(x)) + &m->y + M->&m + SA1->f(x))", kWhole},
      {"(&m + &m. + &m.01 + &(a + b) + & m)", kWhole},
      {"(&m.(1) + &m(2) + &(x)(3))", kWhole},
      {"(o:a:b(1):c[2]:d := o : e)", kWhole},
      {"(o:&m + o:&(x) + o:end() + f(x):a + {|| 1}:run())", kWhole},
      {"(::a:b + ::c(1) + ::&m)", kWhole},
      {"(SA1->)", 6},
      {"(SA1->5)", 6},
      {"(SA1->M->)", 9},
      {"(&)", 2},
      {"(&5)", 2},
      {"(o:)", 3},
      {"(o:5)", 3},
      {"(o ::a)", 3},
      {"(::)", 3},
      {"(\"S\"->a)", 4},
  });
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

TEST(LanguageScanner, TakesNamesTogetherWithWhatBelongsToThem) {
  SSLexStringConsumer text("a->enddo->end FIELD->m->1.5 &a.b& c.&(o:end : ::x::=1a'q'%^");
  ALexClass lexer(text);
  std::vector<std::uint32_t> tokens;
  while (SSLexLexeme* const lexeme = ++lexer) {
    tokens.push_back(lexeme->token());
    lexeme->refDec();
  }
  // clang-format off
  const std::vector<std::uint32_t> kExpected = {
      kTokIdentName, kTokAliasEnd, kTokAliasEnd, kTokFieldAliasOp, kTokMemvar, kTokFract,
      kTokMacroNamePointIdent, kTokMacroNamePoint, kTokMacroFunct, kTokLeftParen, kTokIdentName,
      kTokObjPart, kTokObjColon, kTokSelfPart, kTokSelfColon, kTokEqual, kTokIdentName, kTokString,
      kTokPercent, kTokPower};
  // clang-format on
  EXPECT_EQ(tokens, kExpected);
}

}  // namespace
