#include "korelpre/text/exprbounds.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "korelpre/text/linescan.h"
#include "korelpre/text/tokenise.h"

namespace {

using namespace precomp;

/// The tokens of a source line; the text is kept, because they refer to it.
struct tLine {
  explicit tLine(const std::string& source) : text(source + "\n") {
    tokenisePlain(text.data(), text.data() + text.size(), 1, tokens);
  }
  std::string text;
  tTknString tokens;
};

/// The end of the expression that the tokens begin with, found in both ways; the fuzz target
/// "match" compares them too.
int bound(tTknString& tokens) {
  AYaccClass parser;
  int first = 0;
  int last = tokens.count() - 1;
  int byText = last;
  validateExprByText(&parser, &tokens, first, byText);
  validateExpr(&parser, &tokens, first, last);
  EXPECT_EQ(last, byText);
  return last;
}

TEST(ExpressionBounds, CutBeforeWhatCannotContinue) {
  struct tCase {
    const char* source;
    int last;
  };
  const tCase kCases[] = {
      {"f ( x ) ) y", 3},
      {"f ( x + ) ) y", 4},  // an unbalanced parenthesis goes before everything else
      {") a", -1},
      {"* a", -1},
      {"\"text\" \"more\"", 0},
      {"f(a, b[1,{|x|x}]", 14},  // unfinished at the end
      {"f(a .and.", 3},
      {"a +", 0},    // the ")" fails one character behind the "+"
      {"x[1]y", 2},  // so does the name behind the "]"
      {"x[1] y", 3},
      {"x[1]\"y\"", 3},
      {"a ? b c", 3},  // "?" has no meaning: the parse ends there
      {"a b ? c", 0},
  };
  for (const tCase& test : kCases) {
    tLine line(test.source);
    EXPECT_EQ(bound(line.tokens), test.last) << test.source;
  }
}

TEST(ExpressionBounds, OfShortTextsAreThoseOfTheParser) {
  const std::vector<std::string> kAll = {"a",   "If",    "M", "1", "1.5", ".5", "1a",
                                         "'s'", "\"t\"", "+", "-", "*",   "/",  ",",
                                         "(",   ")",     "[", ">", ".",   "&",  "->"};
  const std::vector<std::string> kFew = {"a", "1", "-", ",", "(", ")"};
  const auto checkAll = [](const std::vector<std::string>& tokens, std::size_t most) {
    std::vector<std::size_t> chosen(1);
    while (chosen.size() <= most) {
      for (const char* blank : {"", " "}) {
        std::string source;
        for (const std::size_t i : chosen) source += tokens[i] + blank;
        const std::string line = source + "\r\n";
        if (scanLine(line.data(), line.data() + line.size()).kind != eLineKind::kPlain) continue;
        tLine made(source);
        bound(made.tokens);
        ASSERT_FALSE(testing::Test::HasFailure()) << source;
      }
      std::size_t at = 0;
      while (at < chosen.size() && ++chosen[at] == tokens.size()) chosen[at++] = 0;
      if (at == chosen.size()) chosen.push_back(0);
    }
  };
  checkAll(kAll, 3);
  checkAll(kFew, 6);
}

}  // namespace
