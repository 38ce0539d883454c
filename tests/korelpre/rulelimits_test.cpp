// Rules and statements that use the engine's storage up: what comes out must be right all the same.
// What they may cost is held by hostile_test.py.

#include <gtest/gtest.h>

#include <string>

#include "tests/support/maxsizescope.h"
#include "tests/support/preprocess.h"

namespace {

TEST(RuleLimits, AreThoseOfTheStatementWhateverStandsWhere) {
  const std::string name(900000, 'L');
  const std::string many = repeated("a+", 60000);
  const std::string text = "'" + std::string(30000, 'v') + "' ";
  std::string rules;
  for (int i = 0; i < 1000; ++i) rules += "#xtranslate A w" + std::to_string(i) + " => b\n";
  const struct {
    std::string source;
    bool ends;
  } kCases[] = {
      {"#define N 1\n" + many + "N", true},
      {"#define N 1\nN+" + many + "a", true},
      {"#define N 1\n" + many + "a", false},
      {"#define N\n" + many.substr(0, 90000) + "N", false},
      {"#define N " + text + "\n" + repeated("N ", 34), false},
      {"#define N " + text + "\n" + repeated("N ", 36), true},
      {"#define N " + many.substr(0, 8000) + "a\n" + repeated("+N", 30), true},
      // What a name becomes on the way counts, and so do rules that need no trial.
      {"#define N " + name + name + "\n#define " + name + name + " 1\nN", true},
      {rules + repeated("A ", 26000), true},
      {rules + "A\n" + repeated("A ", 26000), true},
      {rules + "A\n" + repeated("A ", 24000), false},
  };
  for (const auto& row : kCases) {
    const std::string error = preprocess(row.source).error;
    EXPECT_EQ(error.find("C2078") != std::string::npos, row.ends) << row.source.substr(0, 30);
  }
}

TEST(RuleLimits, HoldForTheColumnsOfEmbeddedSql) {
  const tMaxSizeScope scope(1 << 20);
  const std::string column = "column " + std::string(250, 'c') + " as logical\n";
  EXPECT_EQ(preprocess("BeginSql alias x\n" + repeated(column, 2100) + "EndSql\n").error,
            "main.prw(1) Error C9999  ERRO generico: statement size\n");
}

TEST(RuleLimits, AllowLongPatternsAndStatements) {
  std::string pattern = "#xcommand A";
  std::string result = " => f(0";
  std::string statement = "A";
  for (int i = 0; i < 10000; ++i) {
    const std::string name = "x" + std::to_string(i);
    pattern += " <" + name + ">,";
    result += ",<" + name + ">";
    statement += " v" + std::to_string(i) + ",";
  }
  const tPreprocessed rewritten = preprocess(pattern + result + ")\n" + statement);
  EXPECT_EQ(rewritten.error, "");
  EXPECT_EQ(rewritten.text.substr(0, 12), "\nf(0,v0,v1,v");
  EXPECT_TRUE(rewritten.text.ends_with(",v9999)"));
}

TEST(RuleLimits, LeaveAStatementAsItWasWhenAResultIsTooLong) {
  // The second rule of the same key would have applied, but the statement has used up its limit.
  const std::string rules =
      "#xcommand A <x> => b\n#xcommand A <x,...> END => " + repeated("<x> ", 4000) + "\n";
  EXPECT_EQ(preprocess(rules + "A f(" + repeated("x,", 100) + "x) END").error,
            "main.prw(3) Error C2078  Circular #translate/#command/#define\n");
}

TEST(RuleLimits, RulesThatAreReadAgainApplyLikeTheFirst) {
  // The markers of so many rules pass what is kept of them.
  std::string source;
  for (int i = 10000; i < 50000; ++i) {
    const std::string number = std::to_string(i);
    source.append("#xcommand Z").append(number).append(" TO <x1> [WITH <x2>] [TINT <x3>] ;\n");
    source.append(" => Open(<x1>, <x2>, <x3>, ").append(number).append(", '', '', '', '')\n");
  }
  for (int i = 0; i < 10000; ++i) source.append("#define N" + std::to_string(i) + " 1\n");
  source.append("#define F(a, b) [b + ;\n  a][G]\n#define G 5 // c\n#define H\n");
  // The header's define stays, and that of the main file goes.
  source += "#ifdef N9999\n#include \"h.ch\"\n#endif\n";
  source += "Z10000 TO a TINT b\nz49999 TO a WITH b\nF(1, F(H 2, N9998 + N9997))";
  const tPreprocessed result =
      preprocessFiles({{"main.prw", source}, {"h.ch", "#define N9998 3\n"}});
  EXPECT_EQ(result.error, "");
  EXPECT_TRUE(
      result.text.ends_with("Open(a,, b, 10000, '', '', '', '')\n"
                            "Open(a, b,, 49999, '', '', '', '')\n"
                            "[[3 + 1 +   2][5] +   1][5]"))
      << result.text.substr(result.text.size() - 100);
}

TEST(RuleLimits, RulesWithoutSoundGroupsOrAFirstWordAreSyntaxErrors) {
  for (const char* rule : {"[A] B => c", "<x> A => c", "A [B => c", "A B] => c", "A => [b",
                           "A => b]", "[[A]] => c", "A <x => c", "A B"}) {
    for (const char* directive : {"#command ", "#xtranslate "}) {
      const std::string source = "\n" + std::string(directive) + rule + "\nA B";
      EXPECT_EQ(preprocess(source).error, "main.prw(2) Error C2001  Syntax error:\n") << source;
    }
  }
  const std::string nested = std::string(300, '[') + "B" + std::string(300, ']');
  EXPECT_EQ(preprocess("#command A " + nested + " => c\nA B").error,
            "main.prw(1) Error C2001  Syntax error:\n");
}

}  // namespace
