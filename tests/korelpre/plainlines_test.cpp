// Plain lines are written from the source text; everything else goes through scanner and grammar.
// Whatever the source, both ways must give the same.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/support/preprocess.h"

namespace {

// Pieces that meet in every order: what scanner, grammar and rewriting treat in ways of their own.
// clang-format off
const std::vector<std::string> kPieces = {
    "a", "b", "One", "Two", "Nothing", "Ring", "x1", "1", "12.5", "1a", "1.5One", ".5", "a~b", " ",
    "  ", "\t", "+", "-", "->", "->END", "->ENDX", "M->", "FIELD->", "_FIELD", "M", ".T.", ".One.",
    ".", "...", "..", "(", ")", "[", "]", "{", "}", ",", ":=", "==", "=>", ">=", "!=", "#", "<",
    ">", "&", "&&", "//", "/*", "*/", "/**/", "/* c\n c */", "*", "**", ";", "; ", ";\n", "; \n  ",
    ";// c\n", "; && c\n", ";;// c\n", "\"", "'", "\"\"", "''", "\"One\"", "'it One'", "\"a'b\"",
    "\n", "\n", "\n", "\n  * One", "\n*", "\n#define One 1 + Two\n", "\n#define Two 2\n",
    "\n#define Nothing\n", "\n#define Ring Ring\n", "\n#ifdef One\n", "\n#ifndef Two // c\n",
    "\n #else\n", "\n#endif\n", "\n#endif x\n", "\n#elseif\n", "\n#undef One\n", "\n#error q\n",
    "\n#include \"h.ch\"\n", "\n#ifdef One Two\n", "\\", "\\x", "`", "~", "\x7f", "\xe9", "\x01",
    "q", "begin", "beginsql", "ENDSQL", "%", "%a", "%EXP:One%", "%notdel%", "@", "?", "$", "^", "|",
    "!", "\r", "\r\n", "if", "EndIf", "return", "=", "FUNC", "iif(", "%Table: x %", "e", "E", "x",
    "n", "\nIf a\n", "\nIf(a)\n", "\nif (a, {1, 2})\n", "\nelse\n", "\nElseIf ", "\nEndif\n",
    "\nEndIf\n", "\nend", "\nDo ", "while ", "case ", "\nOther\n", "\nFor i := 1 To 2\n", "\nNext ",
    "\nBEGIN ", "sequence", "\nRecover\n", "\nTry\n", "\ncatch\n", "\nExit", "\nloop", "\nReturn ",
    "\nbreak", "\nFunction ", "\nStatic Function F()\n", "\nlocal ", "static ", "\nusing ",
    "\n__IgnoreDebugLine__() [\n", "(a)", "[1]", "(@a, @ b)", "(One, @x)", "::", "++", "--",
    "\nbeginsql alias x\n", "\nendsql\n", "\n#define One ", "\n\t#DEFINE Two\t", "\n#define Two",
    "\n#define F(", "\n#define F( b )", "\n#define F(a ,;\n If) ", "\n#define ;\nTwo "};
// clang-format on

// The same with rules of all kinds and the words that they start with.
// clang-format off
const std::vector<std::string> kRulePieces = {
    "\n#define F(p) (p+One)\n", "\n#define One F(3)\n", "\n#define Two Tran\n",
    "\n#define Three display\n", "\n#define Four .5\n", "\n#translate TRANSLATED <x> => t(<x>)\n",
    "\n#xtranslate tran(<x> [BY <y>]) => s(<x>,<y>)\n", "\n#xtranslate b->a => ba\n",
    "\n#xtranslate -> z => .z\n", "\n#translate M->a => ma\n", "\n#translate .5 => half\n",
    "\n#translate 1 => one\n", "\n#translate \"One\" => 'quoted'\n",
    "\n#command DISPLAY <x,...> [TO <f>] => d( #<f>, <x> )\n", "\n#xcommand display => dd\n",
    "\n#command ? <*x*> => print(<x>)\n", "\n#command /* c */ STORE <x> => One := <x>\n",
    "\n#command => x\n", "\n#command 1 <x> => <x>\n", "\n  disp ", "\n/**/displ ", "\n;\nDISPLAY ",
    "\nThree a", "\n? ", "\nstor ", "\n1 ", "tran(", "tran (", "TRAN", "transl ", "TRANSLATED ",
    "transx", " by ", " to ", "b->a", "M->a", "F(", "F", "One", "Two", "Three", "Four", ".5", "->"};

// Names, and what stands in their definitions and beside them: signs that open and close something
// or make one token with what they meet, and words that mean something where a statement begins.
const std::vector<std::string> kNames = {"One", "Two", "F", "T", "M", "next"};
const std::vector<std::string> kFragments = {
    "(", ")", "(1,2)", "(1)", "[1]", "]", ",", "1", ".5", "1.", ".", ".T", "T.", "->", "-", ">", "+",
    "++", ":", "=", ":=", "&", "@", "(@x)", "\"s\"", "'\"'", "\\\"", "\\'", "\\;", "\\/*", "If", "else(",
    "Function", "using", "x", "x :=", ";", ";\n", "\n;\n", "\n* 's\n", "C:\\\n", "d\\;\n", "/**/"};
// clang-format on

std::string randomFragments(std::mt19937& random, std::size_t count) {
  std::string text;
  for (; count > 0; --count) {
    const std::vector<std::string>& from = random() % 2 == 0 ? kNames : kFragments;
    text += from[random() % from.size()];
    if (random() % 3 != 0) text += ' ';
  }
  return text;
}

std::string sourceOfDefinitions(std::mt19937& random) {
  const char* const kBefore[] = {"", "", "Function f()\n", "For i := 1 To 2\n"};
  const char* const kParameters[] = {" ", " ", "(x) ", "(x, One) "};
  std::string source = kBefore[random() % 4];
  for (std::size_t count = 1 + random() % 4; count > 0; --count) {
    source += "#define " + kNames[random() % kNames.size()] + kParameters[random() % 4];
    source += randomFragments(random, random() % 3) + "\n";
  }
  return source + randomFragments(random, 2 + random() % 3);
}

// Few statements of random pieces have brackets that nest, so most sources take only some of them.
const std::vector<std::string>& somePieces(std::mt19937& random) {
  static std::vector<std::string> some;
  some.clear();
  for (int i = 0; i < 12; ++i) some.push_back(kPieces[random() % kPieces.size()]);
  return some;
}

std::string sourceOfPieces(std::mt19937& random, bool withRules) {
  std::string source;
  const std::size_t pieces = 1 + random() % 24;
  const std::vector<std::string>& plain = random() % 4 == 0 ? kPieces : somePieces(random);
  for (std::size_t i = 0; i < pieces; ++i) {
    const bool ofRules = withRules && random() % 3 != 0;
    const std::vector<std::string>& from = ofRules ? kRulePieces : plain;
    source += from[random() % from.size()];
  }
  return source;
}

std::string shown(const tPreprocessed& result) {
  return result.text + "\n== " + result.error;
}

const char* const kHeader = "h := One\n#define One 11\n  k(Two)  // c\n";

std::string throughBoth(const std::string& source, bool plain) {
  return shown(preprocessFiles({{"main.prw", source}, {"h.ch", kHeader}}, {}, plain));
}

// Returns how many of the sources had no error.
template <class tMaker>
int compareBothWays(int count, unsigned seed, const tMaker& makeSource) {
  std::mt19937 random(seed);
  int withoutError = 0;
  for (int i = 0; i < count; ++i) {
    const std::string source = makeSource(random);
    const std::string quick = throughBoth(source, true);
    const std::string full = throughBoth(source, false);
    EXPECT_EQ(full, quick) << "source:\n" << source;
    if (full != quick) break;
    if (quick.ends_with("\n== ")) ++withoutError;
  }
  return withoutError;
}

TEST(PlainLines, GiveWhatScannerAndGrammarGive) {
  EXPECT_GT(
      compareBothWays(8000, 20240223, [](auto& random) { return sourceOfPieces(random, false); }),
      800);
  EXPECT_GT(
      compareBothWays(8000, 20240224, [](auto& random) { return sourceOfPieces(random, true); }),
      800);
  EXPECT_GT(compareBothWays(20000, 20240225, sourceOfDefinitions), 4000);
}

// All texts of up to `most` tokens whose brackets nest, with and without blanks between.
std::vector<std::string> shortTexts(const std::vector<std::string>& tokens, std::size_t most) {
  std::vector<std::string> texts;
  for (std::vector<std::size_t> chosen(1); chosen.size() <= most;) {
    std::string open;
    bool nests = true;
    for (const std::size_t i : chosen) {
      const char c = tokens[i].back();
      if (c == '(' || c == '[') open.push_back(c);
      if (c != ')' && c != ']') continue;
      nests = nests && !open.empty() && open.back() == (c == ')' ? '(' : '[');
      if (nests) open.pop_back();
    }
    for (const char* blank : {"", " "}) {
      if (!nests || !open.empty()) break;
      texts.emplace_back();
      for (const std::size_t i : chosen) texts.back() += tokens[i] + blank;
    }
    std::size_t at = 0;
    while (at < chosen.size() && ++chosen[at] == tokens.size()) chosen[at++] = 0;
    if (at == chosen.size()) chosen.push_back(0);
  }
  return texts;
}

// A source ends with its first error, so one that has some is compared in parts.
void compareCalls(const std::string* text, std::size_t count) {
  std::string source =
      "#define One 1 + Two\n#define Nothing\n#define F(x) f(x) - x.x\n#define G(x, y) y-x\n"
      "#define H(x, X) x\n#define E(x)\n#define L(x) x G\n#define T t\n#define C(x) x\\/* "
      "x\n#translate { z => "
      "{zz\nFunction f()\n";
  for (std::size_t i = 0; i < count; ++i) {
    source += "r :=  F(" + text[i] + ") + G(1," + text[i] + ")\n";
    source += "  e := E(" + text[i] + ")F( F(" + text[i] + "))\n";
    source += "h := H(" + text[i] + ", b)\n  E(" + text[i] + ")\n";
    source += "l := L(" + text[i] + ") (1, x)\ng := 1 /* c */ G(1," + text[i] + ")\n";
  }
  const std::string quick = throughBoth(source, true);
  ASSERT_EQ(throughBoth(source, false), quick) << "source:\n" << source;
  if (quick.ends_with("\n== ") || count == 1) return;
  compareCalls(text, count / 2);
  if (!testing::Test::HasFailure()) compareCalls(text + count / 2, count - count / 2);
}

TEST(PlainLines, ReplaceCallsWithAnyArguments) {
  const std::string glued = "#define F(x) next\n#define C(x) x\\/* x\nx := C(1)\nF(1)One\n";
  EXPECT_EQ(throughBoth(glued, false), throughBoth(glued, true));
  const std::vector<std::string> kAll = {
      "a",  "One", "Nothing", "F(b)", "F", "Left", "M", "T",  "1", "1.5",    ".5",
      "1a", "'s'", "\"\"",    "+",    "-", "*",    "/", ",",  "(", ")",      "[",
      "]",  ".",   "->",      "&",    "@", "{",    "}", ":=", "#", "\"a'b\""};
  const std::vector<std::string> kSome = {"a", "One", "G(a, b)", "Left", "1", "'s'", "+",
                                          "-", "/",   ",",       "(",    ")", "."};
  const std::vector<std::string> kFew = {"a", "1", "-", ",", "(", ")"};
  for (const std::vector<std::string>& texts :
       {shortTexts(kAll, 2), shortTexts(kSome, 3), shortTexts(kFew, 4)}) {
    for (std::size_t at = 0; at < texts.size() && !HasFailure(); at += 32) {
      compareCalls(&texts[at], std::min<std::size_t>(32, texts.size() - at));
    }
  }
}

// A program with everything in it, cut anywhere.
TEST(PlainLines, GiveTheSameForEveryTruncationOfAProgram) {
  const std::string program =
      "* first\n#include \"h.ch\"\n#define Two (One + ;\n  2) // c\nFunction f(a, b)\n"
      "#define F(a, date) [a, F(date)] ; 'x' .5\n F(1, F(2, ;\n Two))\n"
      "#ifdef One\n\tLocal x := {'it', \"is\"} ; y := Two\n\t#ifndef No /* c\n c */\n"
      "  a->END := .T. && c\n\t#else\n) nothing ~\n#endif\n#else\nskipped ;\n#endif\n#endif\n"
      "#xcommand A <x> [B <y: C, D &>] => f( <x>, #<y> ) ;\n  [ <.y.> ]\nReturn %notdel% /* c */\n";
  for (std::size_t size = 0; size <= program.size(); ++size) {
    const std::string source = program.substr(0, size);
    ASSERT_EQ(throughBoth(source, false), throughBoth(source, true)) << "source:\n" << source;
  }
}

}  // namespace
