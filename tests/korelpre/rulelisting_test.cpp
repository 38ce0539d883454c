#include <gtest/gtest.h>

#include <string>

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

}  // namespace
