// Sources and what they become, written by hand: text that a conditional leaves out, and statements
// that begin with the word of a structure. There are two ways through a source; both must give
// exactly this.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/preprocess.h"

namespace {

struct tCase {
  const char* source;
  const char* text;  // after an error what was written by then
  const char* error = "";
};

template <std::size_t count>
void expectBothWays(const tCase (&cases)[count]) {
  for (const tCase& row : cases) {
    for (const bool plain : {true, false}) {
      const tPreprocessed result =
          preprocessFiles({{"main.prw", row.source}, {"h.ch", "h\n"}}, {}, plain);
      EXPECT_EQ(result.error, row.error) << plain << "\n" << row.source;
      EXPECT_EQ(result.text, row.text) << plain << "\n" << row.source;
    }
  }
}

const char* const kOpen =
    "main.prw(4) Error C2002  Statement unterminated at end of line/unbalanced "
    "parentesis/brackets\n";
const char* const kUnclosed = "main.prw(1) Error C2068  #ifdef/#ifndef without #endif\n";

TEST(SkippedText, GoesOnWhereALineIsContinued) {
  expectBothWays({
      {"#ifdef NO\nx ;\n#endif\ny\n#endif\nz := 1", "\n\n\n\n\nz := 1"},
      {"#ifdef NO\nx ; \t\n y ;\n #endif\n#endif\nz", "\n\n\n\n\nz"},
      {"#ifdef NO\r\nx ;\r\n#endif\r\n#endif\r\nz", "\n\n\n\nz"},
      {"#ifdef NO\nx ; // c\n#else\n#endif\nz", "\n\n\n\nz"},
      {"#ifdef NO\nx ; && c\n#endif\n#endif\nz", "\n\n\n\nz"},
      {"#ifdef NO\nx ;;\n#endif\n#endif\nz", "\n\n\n\nz"},
      {"#ifdef NO\nx ; y\n#endif\nz", "\n\n\nz"},
      {"#ifdef NO\nx ;\n\n#endif\nz", "\n\n\n\nz"},
      {"#ifndef NO\ny\n#else\nx ;\n#endif\n#endif\nz", "\ny\n\n\n\n\nz"},
      {"#ifdef NO\nx ;\n#endif", "", kUnclosed},
      {"#ifdef NO\nx ;", "", kUnclosed},
  });
}

TEST(SkippedText, HidesSignsInStringsThatEndWithTheirLine) {
  expectBothWays({
      {"#ifdef NO\nx := \"a\" ;\n#endif\n#endif\nz", "\n\n\n\nz"},
      {"#ifdef NO\nx := \"a ;\n#endif\nz", "\n\n\nz"},
      {"#ifdef NO\nx := 'it\"s ;\n#endif\nz", "\n\n\nz"},
      {"#ifdef NO\nx := 'http://a' ;\n#endif\n#endif\nz", "\n\n\n\nz"},
      {"#ifdef NO\nx := \"/*\" + '*'\n#endif\nz", "\n\n\nz"},
      {"#ifdef NO\ndon't /* x\n#endif\nz", "\n\n\nz"},
      {"#ifdef NO\n\"\n#else\n'\n#endif\nz", "\n\n\n'\n", kOpen},
  });
}

TEST(SkippedText, TakesACharacterBehindABackslashAsAnOrdinaryOne) {
  expectBothWays({
      {"#ifdef NO\nx \\;\nC:\\d\\;\nC:\\\nx \\/* y\n#endif\nz", "\n\n\n\n\n\nz"},
      {"#ifdef NO\nx \\; ;\n#endif\n#endif\nz", "\n\n\n\nz"},
      {"#ifdef NO\nx \\\" ;\n#endif\n#endif\nz", "\n\n\n\nz"},
      {"x C:\\\ny C:\\d\\\nx \\;\ny C:\\d\\;\n\\", "x C:\\\ny C:\\d\\\nx \\;\ny C:\\d\\;\n\\"},
      {"x C:\\d\\\" + \\d\\/* + \\\\//\nz", "x C:\\d\\\" + \\d\\/* + \\\\\nz"},
      {"x C:\\d\\\\;\ny (\\d\\)", "x C:\\d\\\\ y (\\d\\)"},
      {"#define P C:\\\nx P y", "\nx C:\\ y"},
  });
}

TEST(SkippedText, SeesTheLineBelowALoneContinuation) {
  expectBothWays({
      {"#ifdef NO\n;\n#else\ny\n#endif\nz", "\n\n\ny\n\nz"},
      {"#ifdef NO\n /**/ ; // c\n#endif\nz", "\n\n\nz"},
      {"#ifdef NO\n;; && c\n#endif\nz", "\n\n\nz"},
      {"#ifdef NO\nx ;\n;\n#endif\n#endif\nz", "\n\n\n\n\nz"},
      {"; // c\n#ifdef NO\n;\n#endif\n;\nz ;\n;\ny\n;", "\n\n\n\n\nz y"},
      {"; // c\n * it's\n/**/;\n* it's\nz", "\n\n\n\nz"},
  });
}

TEST(SkippedText, HidesSignsInComments) {
  expectBothWays({
      {"#ifdef NO\nx // a ;\n#endif\nz", "\n\n\nz"},
      {"#ifdef NO\nx && it's ;\n#endif\nz", "\n\n\nz"},
      {"#ifdef NO\n * don't /* ;\n#endif\nz", "\n\n\nz"},
      {"#ifdef NO\nx // /*\n#endif\nz", "\n\n\nz"},
      {"#ifdef NO\nx / y & z ;\n#endif\n#endif\nz", "\n\n\n\nz"},
      {"#ifdef NO\nx /* a\n#endif\n \" */ y\n#endif\nz", "\n\n\n\n\nz"},
      {"#ifdef NO\n/* a\n*/ #endif\nz", "\n\n\nz"},
      {"#ifdef NO\n/**/ /* b */\t#else\ny\n#endif\nz", "\n\ny\n\nz"},
      {"#ifdef NO\nx /* a\n*/ ;\n#endif\n#endif\nz", "\n\n\n\n\nz"},
      {"#ifdef NO\n/* a ;\n#endif\nz", "", kUnclosed},
  });
}

TEST(SkippedText, HoldsNothingButConditionals) {
  expectBothWays({
      {"#ifdef NO\n#ifdef X\n\"\n#else\n#endif\n#else\ny\n#endif\nz", "\n\n\n\n\n\ny\n\nz"},
      {"#ifdef NO\n\t #IFNDEF x // c\n#endif\n #Else y\ny\n#endif", "\n\n\n\ny"},
      {"#ifdef NO\n# endif\n#endif\nz", "\n\n\nz"},
      {"#ifdef NO\n#define A 1\n#include \"none.ch\"\n#command => (\n#endif\nA", "\n\n\n\n\nA"},
      {"#ifdef NO\nBeginSql alias\n\x7F \\ \x80 ~\n#endif\nz", "\n\n\n\nz"},
      {"#ifdef NO\nx\n#endif\nEndIf", "\n\n\nEndIf\n",
       "main.prw(4) Error C2027  ENDIF does not match IF\n"},
      {"#ifdef NO\nx ;\n/*\n*/ y\n#endif\nEndIf", "\n\n\n\n\nEndIf\n",
       "main.prw(6) Error C2027  ENDIF does not match IF\n"},
      {"a\n#ifdef NO\nx ;\n#include \"no.ch\"\n#endif\n#include \"h.ch\"\n\nz",
       "a\n#line 1 \"h.ch\"\nh\n#line 8 \"main.prw\"\nz"},
  });
}

TEST(Statements, AreRewrittenAlikeWhicheverWayTheyGo) {
  expectBothWays({
      {"#define A (1,2)\n#define S(a,b) a+b\nx := S A\nx := S A ; y",
       "\n\nx := 1 +2\nx := 1 +2 ; y"},
      {"#define f\n#define h(a) [a]\nx h f(1)\nx h f\n(1)", "\n\nx [1]\nx h\n(1)"},
      {"#define N 1\nFor i := 1 To 2\nnext.N\nNext", "\nFor i := 1 To 2\nnext.1\nNext"},
      {"#define N T.\nnext.N\nnext.Nx", "\nnext.T.\nnext.Nx"},
      {"#define E\n#define N -E> x\nx N\nnext N", "\n\nx -> x\nnext -> x\n",
       "main.prw(4) Error C2029  NEXT does not match FOR\n"},
      {"#define E\nE ;\nnext", "\n next\n", "main.prw(3) Error C2029  NEXT does not match FOR\n"},
      {"#define Q \\\"'\"'\\'\n\n\nx Q", "\n\n\nx \"'\"''\n", kOpen},
  });
}

// A rule's word has no line of its own, however the rule was read.
TEST(Statements, HaveTheLineOfTheirSource) {
  for (const char* const comment : {"", " /**/"}) {
    const std::string header = std::string("\n\n\n#xtranslate A <x: next>") + comment + " => <x>\n";
    const tPreprocessed result =
        preprocessFiles({{"main.prw", "#include \"h.ch\"\nA next"}, {"h.ch", header}});
    EXPECT_EQ(result.error, "main.prw(2) Error C2029  NEXT does not match FOR\n");
  }
}

// "C2029" stands for the whole error of a NEXT without FOR in the first line, and so on.
std::string codeOf(const std::string& error) {
  const std::string start = "main.prw(";
  const std::size_t at = error.find(" Error C");
  return error.starts_with(start) && at != std::string::npos ? error.substr(at + 7, 5) : error;
}

TEST(Openings, TellNamesFromWordsOfStructures) {
  // clang-format off
  const struct {
    const char* code;  // of the error when the word is no name
    std::vector<const char*> statements;
  } kCases[] = {
      {"", {"next(1)", "next Nothing (1) + 2", "next := 1", "next = 1", "next[1] := 2",
            "next->x", "next.x", "next:x()", "next : x()", "next += 2", "next -= 2",
            "next *= 2", "next /= 2", "next ^= 2", "next %= 2", "next++", "next --",
            "next ++ ; x", "next :Nothing= 1", "next Nothing:= 1", "exit (x)", "loop()",
            "else (x)", "endi(x)", "other(x)", "endcas ()", "endd()", "recov(x)", "end (x)",
            "try(x):y()", "endtry()", "exit ^= 2", "loop %= 2", "else--", "endif->x := 1",
            "case := 1", "other:x()", "recover[1] := 2", "if := 1", "if (x, y)", "if ++",
            "while /= 2", "for[1] := 2", "do x with case", "do := case", "begin report",
            "begin += 1", "try:x()", "end transaction", "end.x", "end ++", "x next",
            "x := next", "(next)"}},
      {"C2011", {"exit"}},
      {"C2012", {"loop x"}},
      {"C2024", {"if x", "if (x)", "if ({x, y})", "if (x, y) + 1", "if ++x", "while x",
                 "for i := 1 to 2", "do case", "do while x", "do case := 1", "begin sequence", "try"}},
      {"C2025", {"else"}},
      {"C2026", {"elseif(x)", "elsei x"}},
      {"C2027", {"end if"}},
      {"C2029", {"next", "next x", "next, 1", "next == 1", "next {1}", "next .T.", "next .5",
                 "next ::x", "next + 2", "next - = 2", "next * 2", "next ** 2", "next / 2",
                 "next ^ 2", "next % 2", "next ++x", "next --(x)", "next ++::x", "next +Nothing+",
                 "endd"}},
      {"C2030", {"case (x)", "case x", "Otherwise", "EndCase"}},
      {"C2032", {"end", "end sequence"}},
      {"C2033", {"catch(x)", "catch", "End Try"}},
  };
  // clang-format on
  for (const auto& row : kCases) {
    for (const char* const statement : row.statements) {
      const std::string source = std::string("#define Nothing\n") + statement;
      for (const bool plain : {true, false}) {
        const tPreprocessed result = preprocessFiles({{"main.prw", source}}, {}, plain);
        EXPECT_EQ(codeOf(result.error), row.code) << plain << " " << statement;
      }
    }
  }
}

}  // namespace
