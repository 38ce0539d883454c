// Plain lines are written from the source text; everything else goes through scanner and grammar.
// Whatever the source, both ways must give the same.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/support/preprocess.h"

namespace {

// Pieces that meet in every order: what scanner, grammar and rewriting treat in ways of their own.
const std::vector<std::string> kPieces = {
    "a",
    "b",
    "One",
    "Two",
    "Nothing",
    "Loop",
    "x1",
    "1",
    "12.5",
    "1a",
    "1.5One",
    ".5",
    "a~b",
    " ",
    "  ",
    "\t",
    "+",
    "-",
    "->",
    "->END",
    "->ENDX",
    "M->",
    "FIELD->",
    "_FIELD",
    "M",
    ".T.",
    ".One.",
    ".",
    "...",
    "..",
    "(",
    ")",
    "[",
    "]",
    "{",
    "}",
    ",",
    ":=",
    "==",
    "=>",
    ">=",
    "!=",
    "#",
    "<",
    ">",
    "&",
    "&&",
    "//",
    "/*",
    "*/",
    "/**/",
    "/* c\n c */",
    "*",
    "**",
    ";",
    "; ",
    ";\n",
    "; \n  ",
    ";// c\n",
    "; && c\n",
    ";;// c\n",
    "\"",
    "'",
    "\"\"",
    "''",
    "\"One\"",
    "'it One'",
    "\"a'b\"",
    "\n",
    "\n",
    "\n",
    "\n  * One",
    "\n*",
    "\n#define One 1 + Two\n",
    "\n#define Two 2\n",
    "\n#define Nothing\n",
    "\n#define Loop Loop\n",
    "\n#ifdef One\n",
    "\n#ifndef Two // c\n",
    "\n #else\n",
    "\n#endif\n",
    "\n#endif x\n",
    "\n#elseif\n",
    "\n#undef One\n",
    "\n#error q\n",
    "\n#include \"h.ch\"\n",
    "\n#ifdef One Two\n",
    "\\",
    "\\x",
    "`",
    "~",
    "\x7f",
    "\xe9",
    "\x01",
    "q",
    "begin",
    "beginsql",
    "ENDSQL",
    "%",
    "%a",
    "%EXP:One%",
    "%notdel%",
    "@",
    "?",
    "$",
    "^",
    "|",
    "!",
    "\r",
    "\r\n",
    "if",
    "EndIf",
    "return",
    "=",
    "FUNC",
    "iif(",
    "%Table: x %",
    "e",
    "E",
    "x",
    "n",
};

std::string randomSource(std::mt19937& random) {
  std::string source;
  const std::size_t pieces = 1 + random() % 24;
  for (std::size_t i = 0; i < pieces; ++i) source += kPieces[random() % kPieces.size()];
  return source;
}

std::string shown(const tPreprocessed& result) {
  return result.text + "\n== " + result.error;
}

const char* const kHeader = "h := One\n#define One 11\n  k(Two)  // c\n";

std::string throughBoth(const std::string& source, bool plain) {
  return shown(preprocessFiles({{"main.prw", source}, {"h.ch", kHeader}}, {}, plain));
}

TEST(PlainLines, GiveWhatScannerAndGrammarGive) {
  std::mt19937 random(20240223);
  int withoutError = 0;
  for (int i = 0; i < 20000; ++i) {
    const std::string source = randomSource(random);
    const std::string quick = throughBoth(source, true);
    ASSERT_EQ(throughBoth(source, false), quick) << "source:\n" << source;
    if (quick.ends_with("\n== ")) ++withoutError;
  }
  EXPECT_GT(withoutError, 2000);
}

// A program with everything in it, cut anywhere.
TEST(PlainLines, GiveTheSameForEveryTruncationOfAProgram) {
  const std::string program =
      "* first\n#include \"h.ch\"\n#define Two (One + ;\n  2) // c\nFunction f(a, b)\n"
      "#ifdef One\n\tLocal x := {'it', \"is\"} ; y := Two\n\t#ifndef No /* c\n c */\n"
      "  a->END := .T. && c\n\t#else\n) nothing ~\n#endif\n#else\nskipped ;\n#endif\n#endif\n"
      "#xcommand A <x> [B <y: C, D &>] => f( <x>, #<y> ) ;\n  [ <.y.> ]\nReturn %notdel% /* c */\n";
  for (std::size_t size = 0; size <= program.size(); ++size) {
    const std::string source = program.substr(0, size);
    ASSERT_EQ(throughBoth(source, false), throughBoth(source, true)) << "source:\n" << source;
  }
}

TEST(PlainLines, KeepTheLayoutOfTheStatement) {
  const struct {
    const char* source;
    const char* text;
  } kCases[] = {
      {"  a  :=  b  ", "  a  :=  b"},
      {"a/**/b", "a b"},
      {"a /* c */ b", "a  b"},
      {"/**/a", "a"},
      {"a /* c", ""},
      {"f(a, ;\n\t\tb)\nc", "f(a, \t\tb)\n\nc"},
      {"a;\nb", "a b"},
      {"a /* c\n c */ + b\nc", "a  + b\n\nc"},
      {"a // One", "a"},
      {"x := \"a // b\" + 'c; d' // e", "x := \"a // b\" + 'c; d'"},
      {"\"abc   \ny", "\"abc   \ny"},
      {"a\n  * comment One\nb", "a\n\nb"},
  };
  for (const auto& row : kCases) EXPECT_EQ(preprocess(row.source).text, row.text) << row.source;
}

}  // namespace
