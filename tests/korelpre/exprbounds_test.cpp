#include "korelpre/text/exprbounds.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "korelpre/text/tokenise.h"
#include "korelpre/text/tokenkinds.h"

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

void add(tTknString& tokens, const char* spacing, const char* text, std::uint32_t kind = 0) {
  auto* const token = new tSpcString(tString(text));
  token->setSpacing(tString(spacing));
  token->setKind(kind);
  tokens.tokens().add(token);
}

std::uint32_t kindOf(const std::string& text) {
  if (text == "(") return kKindParenOpen;
  if (text == ")") return kKindParenClose;
  return 0;
}

/// The end of the expression in `first` to `last`, found in both ways.
int bound(AYaccClass& parser, tTknString& tokens, int first, int last) {
  int byText = last;
  validateExprByText(&parser, &tokens, first, byText);
  validateExpr(&parser, &tokens, first, last);
  EXPECT_EQ(last, byText);
  return last;
}

int bound(tTknString& tokens) {
  AYaccClass parser;
  return bound(parser, tokens, 0, tokens.count() - 1);
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

/// Expressions with faults in them: a random expression of which some tokens are then dropped,
/// doubled, replaced or pushed together.
class tRandomTokens {
 public:
  /// A new statement; it lives until the next call.
  tTknString& next() {
    parts_.clear();
    put(pick(2) == 0 ? "e" : "e , e", 2);
    for (int faults = pick(3); faults > 0; --faults) spoil();
    tokens_.tokens().Destroy();
    static const char* const kSpacings[] = {"", "", "", " ", " ", " ", "\t", "  "};
    for (const std::string& part : parts_) {
      const bool plain = pick(40) == 0;  // a parenthesis that is not known as one
      add(tokens_, kSpacings[pick(8)], part.c_str(), plain ? 0 : kindOf(part));
    }
    return tokens_;
  }
  int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

 private:
  template <std::size_t count>
  const char* any(const char* const (&choices)[count], std::size_t of = count) {
    return choices[pick(static_cast<int>(of))];
  }
  /// Writes a form: "e" stands for an expression, "n" for a name, "o" for an operator.
  void put(const char* form, int depth) {
    static const char* const kNames[] = {"a", "cName", "M", "FIELD", "END", "next", "If", "x~1"};
    static const char* const kOperators[] = {
        "+", "-", "*", "/", "%", "^", "=", "==", "#", "<", ">=", "$", ":=", ".and.", ".OR.", "+="};
    // The first ones hold no expression.
    static const char* const kForms[] = {
        "n",         "n",       "n",           "1",       "12.5",      ".5",      "\"t\"",
        "'a'",       ".T.",     "nil",         "e o e",   "e o e o e", "e < > e", "- e",
        "! e",       "++ e",    "@ e",         ".not. e", "n ( )",     "n ( e )", "n ( e , , e )",
        "n [ e ]",   "n -> n",  "n : n",       "& n",     "& n .",     "( e )",   "( e , e )",
        "{ e , e }", "{ }",     "{ | x | e }", "n ++",    "e --",      "M-> e",   "FIELD-> n",
        "&( e )",    "n ->END", ": n"};
    constexpr std::size_t kLeaves = 10;
    std::istringstream pieces(form);
    for (std::string piece; pieces >> piece;) {
      if (piece == "e") {
        put(depth >= 0 ? any(kForms) : any(kForms, kLeaves), depth - 1);
      } else {
        parts_.push_back(piece == "n" ? any(kNames) : piece == "o" ? any(kOperators) : piece);
      }
    }
  }
  void spoil() {
    static const char* const kOdd[] = {
        "",   "a",  "5",  ".",    "...", "?",   "\\x", ";",    "=>", "\"", "'",  "a b", "->",
        "::", "::", "/",  "/*",   "*/",  "&",   "&&",  "//",   "*",  "*=", "\t", "\n",  "\r",
        "(",  ")",  ")]", "f(x)", "1.",  "%~!", ":=",  "\xC3", "<>", "!=", "{",  "}",   "|",
    };
    if (parts_.empty()) return;
    const auto at = parts_.begin() + pick(static_cast<int>(parts_.size()));
    switch (pick(4)) {
      case 0:
        parts_.erase(at);
        break;
      case 1:
        parts_.insert(at, std::string(*at));
        break;
      case 2:
        *at = kOdd[pick(static_cast<int>(std::size(kOdd)))];
        break;
      default:
        parts_.insert(at, kOdd[pick(static_cast<int>(std::size(kOdd)))]);
        break;
    }
  }

  std::mt19937 random_{20};
  std::vector<std::string> parts_;
  tTknString tokens_;
};

TEST(ExpressionBounds, AreThoseOfThePrintedText) {
  constexpr int kRanges = 80000;
  AYaccClass parser;
  tRandomTokens random;
  int cut = 0;
  int whole = 0;
  for (int i = 0; i < kRanges && !HasFailure(); ++i) {
    tTknString& tokens = random.next();
    const int first = random.pick(4) == 0 ? random.pick(tokens.count() + 1) : 0;
    const int last = tokens.count() - 1 - (random.pick(4) == 0 ? random.pick(3) : 0);
    const int end = bound(parser, tokens, first, last);
    ++(end < last ? cut : whole);
    if (HasFailure()) {
      tString text;
      tokens.appendText(text);
      ADD_FAILURE() << "range " << first << ".." << last << " of: " << text.view();
    }
  }
  EXPECT_GT(cut, kRanges / 5);
  EXPECT_GT(whole, kRanges / 5);
}

}  // namespace
