// Sources and what they become, written by hand: text that a conditional leaves out, and statements
// that begin with the word of a structure. There are two ways through a source; both must give
// exactly this.

#include <gtest/gtest.h>

#include <string>

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
      {"#ifdef NO\n\"\n#else\n'\n#endif\nz", "\n\n\n'\n",
       "main.prw(4) Error C2002  Statement unterminated "
       "at end of line/unbalanced parentesis/brackets\n"},
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
  const struct {
    const char* statement;
    const char* code;  // of the error when the word is no name
  } kCases[] = {
      {"next", "C2029"},
      {"next x", "C2029"},
      {"next(1)", "C2029"},
      {"next, 1", "C2029"},
      {"next := 1", ""},
      {"next = 1", ""},
      {"next == 1", "C2029"},
      {"next[1] := 2", ""},
      {"next {1}", "C2029"},
      {"next->x", ""},
      {"next.x", ""},
      {"next .T.", "C2029"},
      {"next .5", "C2029"},
      {"next:x()", ""},
      {"next : x()", ""},
      {"next ::x", "C2029"},
      {"next + 2", "C2029"},
      {"next += 2", ""},
      {"next -= 2", ""},
      {"next - = 2", "C2029"},
      {"next *= 2", ""},
      {"next * 2", "C2029"},
      {"next ** 2", "C2029"},
      {"next /= 2", ""},
      {"next / 2", "C2029"},
      {"next ^= 2", ""},
      {"next ^ 2", "C2029"},
      {"next %= 2", ""},
      {"next % 2", "C2029"},
      {"next++", ""},
      {"next --", ""},
      {"next ++x", "C2029"},
      {"next --(x)", "C2029"},
      {"next ++ ; x", ""},
      {"next ++::x", "C2029"},
      {"next +Nothing+", "C2029"},  // two signs, though nothing is between them
      {"next :Nothing= 1", ""},
      {"next Nothing:= 1", ""},
      {"exit", "C2011"},
      {"exit ^= 2", ""},
      {"loop x", "C2012"},
      {"loop %= 2", ""},
      {"else", "C2025"},
      {"else--", ""},
      {"elsei x", "C2026"},
      {"endif->x := 1", ""},
      {"endd", "C2029"},
      {"case := 1", ""},
      {"case x", "C2030"},
      {"other:x()", ""},
      {"catch", "C2033"},
      {"recover[1] := 2", ""},
      {"if x", "C2024"},
      {"if := 1", ""},
      {"if (x)", "C2024"},
      {"if (x, y)", ""},
      {"if ({x, y})", "C2024"},
      {"if (x, y) + 1", "C2024"},
      {"if ++x", "C2024"},
      {"if ++", ""},
      {"while x", "C2024"},
      {"while /= 2", ""},
      {"for i := 1 to 2", "C2024"},
      {"for[1] := 2", ""},
      {"do case", "C2024"},
      {"do while x", "C2024"},
      {"do case := 1", "C2024"},  // the first word decides
      {"do x with case", ""},
      {"do := case", ""},
      {"begin sequence", "C2024"},
      {"begin report", ""},
      {"begin += 1", ""},
      {"try", "C2024"},
      {"try:x()", ""},
      {"end", "C2032"},
      {"end if", "C2027"},
      {"end sequence", "C2032"},
      {"end transaction", ""},
      {"end.x", ""},
      {"end ++", ""},
      {"x next", ""},
      {"x := next", ""},
      {"(next)", ""},
  };
  for (const auto& row : kCases) {
    for (const bool plain : {true, false}) {
      const std::string source = std::string("#define Nothing\n") + row.statement;
      const tPreprocessed result = preprocessFiles({{"main.prw", source}}, {}, plain);
      EXPECT_EQ(codeOf(result.error), row.code) << plain << " " << row.statement;
    }
  }
}

}  // namespace
