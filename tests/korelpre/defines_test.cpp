#include <gtest/gtest.h>

#include <string>

#include "tests/support/preprocess.h"

namespace {

struct tCase {
  const char* source;
  const char* text;
};

TEST(Defines, ReplaceNames) {
  const tCase kCases[] = {
      {"#define A 1\nx := A + a", "\nx := 1 + a"},
      {"#define A (x + 1)\ny :=  A*A", "\ny :=  (x + 1)*(x + 1)"},
      {"#define A\nf(  A , 1) A", "\nf( , 1)"},
      {"#define N\n#define A N b\nx A c\n  A", "\n\nx b c\n b"},
      {"#define A B\n#define B C\nA B", "\n\nC C"},
      {"#define A A1\n#define A1 'A'\nA \"A\"", "\n\n'A' \"A\""},
      {"#define A 1\nb->A M->A A->A .A.", "\nb->1 M->1 1->1 .1."},
      {"#define T 1\n#define FIELD 2\n#define END 3\n.T. FIELD->x a->END T",
       "\n\n\n.T. FIELD->x a->END 1"},
      {"#define A 1\nx1A 1A A1 A", "\nx1A 1A A1 1"},
      {"#define A 1\nA;\nA", "\n1 1"},
      {"#define A  1 +  2 // c\nA", "\n1 +  2"},
      {"#define PATH \"c:\\x\" + 'y'\nPATH", "\n\"c:\\x\" + 'y'"},
      {"A\n#define A 1\nA\n#define A 2\nA\n#undef A\nA", "A\n\n1\n\n2\n\n2"},
      {"#define 1 2\nx := 1 + 1.5 + 11 + 1", "\nx := 2 + 1.5 + 11 + 2"},
      {"#define If When\nif a\nIf a\nend", "\nif a\nWhen a\nend"},
      {"#define A \\< 'b\\<'\n\\< A", "\n\\< < 'b\\<'"},
  };
  for (const tCase& row : kCases) {
    const tPreprocessed result = preprocess(row.source);
    EXPECT_EQ(result.text, row.text) << row.source;
    EXPECT_EQ(result.error, "") << row.source;
  }
}

TEST(Defines, OfTheCommandLineAreReplacedByTheirText) {
  EXPECT_EQ(preprocess("A B", {"/DA=B + 2", "-dB"}).text, "B + 2");
  // A later one stands behind the earlier and wins.
  EXPECT_EQ(preprocess("A", {"/DA=1", "/DA=2"}).text, "2");
}

TEST(Defines, RewriteAStatementAHundredTimes) {
  std::string source = "\n#define A B\n#define B C\nx(";
  for (int i = 1; i <= 50; ++i) source += i % 10 == 0 ? "A,;\n" : "A,";
  EXPECT_EQ(preprocess(source + "0)").error, "");
  EXPECT_EQ(preprocess(source + "A)").error,
            "main.prw(4) Error C2078  Circular #translate/#command/#define\n");
}

TEST(Defines, GrowAStatementToItsLimit) {
  const std::string value(200000, 'v');
  const std::string source = "#define A '" + value + "'\n";
  EXPECT_EQ(preprocess(source + "A A").text.size(), 1 + 2 * (value.size() + 2) + 1);
  EXPECT_EQ(preprocess(source + "A A A A A A").error,
            "main.prw(2) Error C2078  Circular #translate/#command/#define\n");
}

TEST(Defines, ChangeInIncludesAtOnceAndInTheMainFileLineByLine) {
  const tPreprocessed result = preprocessFiles({
      {"main.prw", "A\n#define A 1\nA\n#include \"h.ch\"\nA B\n"},
      {"h.ch", "#define A 3\n#define B 4\n#define B 5\n"},
  });
  // The header is read before the first line is written, and it takes the #define of line 2 away.
  EXPECT_EQ(result.text, "3\n\n3\n#line 1 \"h.ch\"\n#line 5 \"main.prw\"\n3 5");
}

// What a text that failed has left behind must not be touched.
TEST(Defines, OfATextThatFailedAreForgotten) {
  tMemoryProcessor processor;
  EXPECT_THROW(processor.run("a", "#define A 1\n#ifdef A\n"), SSException);
  EXPECT_EQ(processor.run("b", "#ifdef A\nx\n#endif\n#define A 2\nA"), "\n\n\n\n2");
  EXPECT_THROW(processor.run("c", "\n#else"), SSException);
  EXPECT_EQ(processor->errLine(), 2);
}

}  // namespace
