#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/support/preprocess.h"

using namespace precomp;

namespace {

// The rules that a source defines, one after the other.
std::string listing(std::string_view source) {
  tMemoryProcessor processor;
  processor.run("rules", source);
  tString text;
  for (tXChgArray* table : {processor->defines(), processor->translates(), processor->commands()}) {
    table->arrange();
    for (int i = 0; i < table->count(); ++i) table->get(i)->print(&text);
  }
  return std::string(text.view());
}

TEST(RuleListing, ShowsEachRuleCloseToItsDirective) {
  const struct {
    const char* rule;
    const char* listing;
  } kCases[] = {
      {"#command A <x> => b(<x>)", "#xcommand A x => b ( x )  \n "},
      {"#xcommand A <x> => b(<x>)", "#xcommand A x => b ( x )  \n "},
      {"#translate A <x,...> <(y)> <*z*> => <{x}> #<y> <\"z\"> <(x)> <.y.>",
       "A <x ,...> <(y)> <*z*>  => <{x}>#<y><\"z\"><(x)><.y.> \n "},
      {"#xtranslate A [<x: B, C D>] [[E] F] => c[, <x>]", "A [<x:B,C D> ][[E ]F ] => c [, x ] \n "},
      {"#command A [<x>] => b(<x>)\nA 1", "#xcommand A [x] => b ( x )  \n "},  // applied before
      {"#define A", "A  =>  \n "},
      {"#define F(a, b) a + b", "F ( a, b)  => a + b  \n "},
  };
  for (const auto& row : kCases) EXPECT_EQ(listing(row.rule), row.listing) << row.rule;
}

TEST(RuleListing, GoesToTheOutputWithOtherWords) {
  tStringSink sink;
  const tOutputScope scope(sink);
  tMemoryProcessor processor;
  processor.run("rules", "#command A <x> => b\n#translate C => d");
  processor->commands()->get(0)->print(nullptr);
  processor->translates()->get(0)->print(nullptr);
  EXPECT_EQ(sink.text, "xCommand A x => b  \n tTranslate C  => d  \n ");
}

TEST(RuleListing, KnowsTheDirectiveOfEachRule) {
  tMemoryProcessor processor;
  processor.run("rules", " #command A <x> ; // c\n  => b // c\n#command C => d #xcommand E => f\n");
  tXChgArray& commands = *processor->commands();
  commands.arrange();
  EXPECT_EQ(commands[0].directive(), "#command A <x> ; // c\r\n  => b");
  EXPECT_EQ(commands[1].directive(), "#command C => d ");
  EXPECT_EQ(commands[2].directive(), "#xcommand E => f");
}

// The ordinary forms of rules are read without the grammar; both ways must give the same rule.
TEST(RuleListing, IsTheSameHoweverARuleWasRead) {
  const std::vector<std::string> kPieces = {
      "A",        "b ",          " c",       "<x>",        " <y> ",
      "< x >",    "<x,...>",     "<x,... >", "<x ,...>",   "<(x)>",
      "<( x )>",  "<*y*>",       "<* y * >", "<x:A>",      "<x: A, b c ,D >",
      "<x:A,&>",  "<x: >",       "<{x}>",    "<{ x }>",    "#<x>",
      "# <x>",    "<\"x\">",     "< 'x' >",  "<.x.>",      "<. x .>",
      "<.t.>",    "[",           "]",        " [",         "] ",
      "=>",       " => ",        ",",        "\"s\"",      "'s'",
      "\"\"",     "\"s",         "\\<",      "\\[",        "\\x",
      "/**/",     " // c",       ";\n",      " ; // c\n ", ";;",
      ";",        "<",           ">",        "<=",         "!=",
      "...",      "1.5",         ".and.",    "M->",        "if",
      "%notdel%", "\x01",        "~",        "@",          "beginsql",
      "*",        "#define Z 1", "FUNCTION", "=",          "->",
      "\t"};
  std::mt19937 random(11);
  int rules = 0;
  for (int i = 0; i < 15000; ++i) {
    std::string source = i % 2 == 0 ? "#command A" : "  #XTranslate\tA ";
    for (std::size_t left = random() % 7; left > 0; --left) {
      source += kPieces[random() % kPieces.size()];
    }
    if (random() % 2 == 0) source += " => ";
    for (std::size_t left = random() % 5; left > 0; --left) {
      source += kPieces[random() % kPieces.size()];
    }
    std::string shown[2];
    for (const bool plain : {false, true}) {
      tMemoryProcessor processor;
      processor->setPlainLines(plain);
      tString text;
      try {
        text.append(processor.run("rules", source + "\nA b\nZ"));
      } catch (const SSException& failure) {
        text.append(failure.message());
      }
      for (tXChgArray* table : {processor->translates(), processor->commands()}) {
        for (int r = 0; r < table->count(); ++r) table->get(r)->print(&text);
        if (plain) rules += table->count();
      }
      shown[plain ? 1 : 0] = std::string(text.view());
    }
    ASSERT_EQ(shown[0], shown[1]) << source;
  }
  EXPECT_GT(rules, 1900);
}

}  // namespace
