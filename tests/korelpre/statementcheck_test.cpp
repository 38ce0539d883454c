#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/preprocess.h"

namespace {

// Both ways of reading a source must say the same.
std::string errorOf(std::string_view source, const std::vector<std::string>& options = {}) {
  const std::string quick = preprocessFiles({{"main.prw", source}}, options, true).error;
  EXPECT_EQ(preprocessFiles({{"main.prw", source}}, options, false).error, quick) << source;
  return quick;
}

struct tCase {
  const char* source;
  const char* error;  // what stands behind "main.prw("
};

template <std::size_t count>
void expectErrors(const tCase (&cases)[count]) {
  for (const tCase& row : cases) {
    const std::string error = errorOf(row.source);
    const std::string expected = std::string("main.prw(") + row.error;
    EXPECT_EQ(error.substr(0, expected.size()), expected) << row.source;
  }
}

TEST(StatementChecks, MatchStructures) {
  const tCase kCases[] = {
      {"\nElse", "2) Error C2025  ELSE does not match IF\n"},
      {"\nElseIf a", "2) Error C2026  ELSEIF does not match IF\n"},
      {"\n EndIf", "2) Error C2027  ENDIF does not match IF\n"},
      {"For a := 1 To 2\nEndDo", "2) Error C2029  ENDDO does not match WHILE\n"},
      {"While a\nNext", "2) Error C2029  NEXT does not match FOR\n"},
      {"Do Case\nIf a\nCase b", "3) Error C2030  ENDCASE does not match CASE\n"},
      {"Try\nRecover", "2) Error C2032  END SEQUENCE does not match BEGIN SEQUENCE\n"},
      {"End Sequence", "1) Error C2032"},
      {"If a\nEnd\nEnd", "3) Error C2032"},
      {"Catch", "1) Error C2033  END TRY does not match TRY\n"},
      {"Begin Sequence\nEndTry", "2) Error C2033"},
      {"If a\nElse\nElse", "3) Error C2025"},
      {"If a\nElse\nElseIf b", "3) Error C2026"},
      {"If a ; Else ; ;\n EndDo", "2) Error C2029  ENDDO"},
      // What a conditional leaves out is no statement, but it has lines and must end.
      {"#ifdef NO\nx ;\n#endif", "1) Error C2068  #ifdef/#ifndef without #endif\n"},
      {"#ifdef NO\nx ;", "1) Error C2068"},
      {"#ifdef BeginSql \nx\n#endif", "1) Error C2001"},
      {"#ifdef NO\n/* a ;\n#endif\nz", "1) Error C2068"},
      {"#ifdef NO\n\"\n#else\n'\n#endif\nz", "4) Error C2002"},
      {"#ifdef NO\nx ;\n/*\n*/ y\n#endif\nEndIf", "6) Error C2027"},
      // Defines that leave nothing, or make an arrow.
      {"#define E\n#define N -E> x\nx N\nnext N", "4) Error C2029"},
      {"#define E\nE ;\nnext", "3) Error C2029"},
      {"#define Q \\\"'\"'\\'\n\n\nx Q", "4) Error C2002"},
      // Open to the end, and where the next body begins; the innermost is named.
      {"If a\n\nDo While b\nFor i := 1 To 2\nNext\n",
       "3) Error C2024  Unclosed control structures\n"},
      {"Function A()\n If a\nFunction B()\nEndIf", "2) Error C2024"},
      {"Function A()\nIf (a)\nReturn", "2) Error C2024"},
  };
  expectErrors(kCases);
}

TEST(StatementChecks, JudgeWhatLeavesAStructure) {
  const tCase kCases[] = {
      {"If a\nExit", "2) Error C2011  EXIT statement with no loop in sight\n"},
      {"While a\nEndDo\nLoop", "3) Error C2012  LOOP statement with no loop in sight\n"},
      {"While a\nBegin Sequence\nIf b\nExit",
       "4) Error C2013  EXIT statement violates enclosing SEQUENCE\n"},
      {"For a := 1 To 2\nBegin Sequence\nLoop",
       "3) Error C2014  LOOP statement violates enclosing SEQUENCE\n"},
      {"Begin Sequence\nWhile a\nReturn x", "3) Error C2086  RETURN violates enclosing SEQUENCE\n"},
      {"Begin Sequence\nExit", "2) Error C2011"},
      {"Begin Sequence\nBegin Sequence\nRecover\nReturn", "4) Error C2086"},
      {"While a\nBegin Sequence\nRecover\nExit\nEnd\nEndDo\nBegin Sequence\nWhile "
       "b\nExit\nEnd\nEnd\n"
       "Loop",
       "12) Error C2012"},
  };
  expectErrors(kCases);
}

TEST(StatementChecks, KeepStatementsInTheirPlaces) {
  const tCase kCases[] = {
      {"Function A()\nLocal a\na := 1 ; Local b",
       "3) Error C2051  LOCAL declaration follows executable statement\n"},
      {"Function A()\nUse x\nLocal a", "3) Error C2051"},
      {"Function A()\nSta x\nLocal a", "3) Error C2051"},  // four letters are the shortest
      {"Function A()\n&x := 1\nLocal a", "3) Error C2051"},
      {"Static a\nb := 1\nc := 2\nFunction A()",
       "2) Error C2006  Statement not allowed outside procedure or function\n"},
      {"\nIf a\nEndIf\nFunction A()", "2) Error C2006"},
      {"Local a\nFunction A()", "1) Error C2006"},
      {"f(1)\nMethod B() Class C", "1) Error C2006"},
      {"o:f()\nProcedure B", "1) Error C2006"},
      {"x[1]++\nFunction B()", "1) Error C2006"},
      {"If(a, b, c)\nFunction B()", "1) Error C2006"},
      {"x = 1\nFunction B()", "1) Error C2006"},
      {"x\nusing a\nFunction A()", "2) Error C2006"},
      {"x ;;\nNameSpace a.b", "2) Error C2006"},
      {"Function A()\nFunction 1()", "2) Error C2091  Invalid Function Name 1\n"},
      {"Procedure \"x\"", "1) Error C2091  Invalid Function Name \"x\"\n"},
      {"Static Function (x)", "1) Error C2091  Invalid Function Name (\n"},
      {"Function", "1) Error C2091  Invalid Function Name \n"},
  };
  expectErrors(kCases);
}

TEST(StatementChecks, FindWhatIsNotClosed) {
  const std::string kUnterminated =
      "Error C2002  Statement unterminated at end of line/unbalanced parentesis/brackets\n";
  const tCase kCases[] = {
      {"x := (1", "1) Error C2002"},
      {"\nx := 1)", "2) Error C2002"},
      {"x := (a[1)]", "1) Error C2002"},
      {"f(a,;\n b,;\n c", "1) Error C2002"},
      {"f(a),;\n b),;\n c", "2) Error C2002"},
      {"f(a ; b)", "1) Error C2002"},
      {"\nx := \"abc", "2) Error C2002"},
      {"x + ;\n'", "2) Error C2002"},
      {"#define A (1\nx := A", "2) Error C2002"},
      {"#define A 'a\n\nx := 1 ;\n + A", "4) Error C2002"},
      {"x := 1 ;", "1) Error C2002"},
      {"x := 1 ;\n + 2 ; // more\n", "2) Error C2002"},
      {"#define A 1 ;\n", "1) Error C2002"},
      {"\nx := @y", "2) Error C2009  Invalid use of @ (pass by reference) operator\n"},
      {"@ 1, 2 Say x", "1) Error C2009"},
      {"f(a @b)", "1) Error C2009"},
      {"f(a,;\n [@b])", "2) Error C2009"},
  };
  expectErrors(kCases);
  EXPECT_EQ(errorOf("(", {}), "main.prw(1) " + kUnterminated);
  EXPECT_EQ(errorOf("#define A (\n#define B )\nx := A 1 B\nf(A @c B)\n y := 1 ;\n\n"), "");
}

TEST(StatementChecks, JudgeTheFinalForm) {
  EXPECT_EQ(errorOf("#define Wenn If\n#define Ende EndIf\nWenn (a)\nEnde"), "");
  EXPECT_EQ(errorOf("#define SET :=\n#define MY x\nIf SET 1\nMY SET 2"), "");
  EXPECT_EQ(errorOf("#define P +\nnext P+"), "main.prw(2) Error C2029  NEXT does not match FOR\n");
  EXPECT_EQ(errorOf("1(2)\n3 := x\nFunction A()"), "");  // a number is no name
  EXPECT_EQ(errorOf("a := b + 1; START y\nSTOP", {"/DSTART=While x", "/DSTOP=EndDo"}), "");
  EXPECT_EQ(errorOf("x := SUM + (1", {"/DSUM=f(2"}),
            "main.prw(1) Error C2002  Statement unterminated at end of line/unbalanced "
            "parentesis/brackets\n");
  // The line is the statement's, wherever the define stands.
  EXPECT_EQ(errorOf("\n\n#define A 1)\nx := ;\n 2 + A").substr(0, 11), "main.prw(5)");
}

TEST(StatementChecks, FollowBracketsBeyondAWord) {
  EXPECT_EQ(preprocess("x := " + repeated("[(", 40) + repeated(")]", 40)).error, "");
  EXPECT_EQ(
      preprocess("x := " + repeated("[(", 40) + repeated(")]", 39) + "])").error.substr(0, 23),
      "main.prw(1) Error C2002");
}

// A rule's word has no line of its own, however the rule was read.
TEST(StatementChecks, NameTheLineOfTheSource) {
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

TEST(StatementChecks, TellNamesFromWordsOfStructures) {
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
