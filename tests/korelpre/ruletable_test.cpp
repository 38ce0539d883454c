#include <gtest/gtest.h>

#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "korelpre/rules/patternmarkers.h"
#include "korelpre/rules/ruleobserver.h"
#include "korelpre/tables/ruletable.h"
#include "korelpre/text/tokenise.h"
#include "tests/support/preprocess.h"

using namespace precomp;

namespace {

tBaseXChg* rule(const char* key, tWordRule wordRule) {
  return new tBaseXChg(nullptr, wordRule, new tMatchIdentifier(tSpcString(tString(key))), nullptr,
                       tString(key));
}

constexpr tWordRule kWhole{false, false};

std::vector<int> runsOf(tXChgArray& table, const std::string& word) {
  const tFoundRules* found = table.lookUp(word);
  if (found == nullptr) return {};
  EXPECT_TRUE(table.foresee(word, {})) << word;
  return {found->wholeFirst, found->wholeLast, found->first, found->last};
}

// Rules that arrive together are sorted together and found by a table of their keys; that must not
// show.
TEST(RuleTable, HasOneOrderHoweverOftenItIsLookedInto) {
  const std::vector<std::string> kKeys = {"DISP", "DISPL", "disPLAY", "DISPATCH", "ABCD", "abcde",
                                          "ABC",  "X",     "x_y",     "X1",       "XA",   "xa",
                                          "A{BC", "A[BC",  "A[BCD",   "DISPLAYS"};
  std::mt19937 random(3);
  for (int round = 0; round < 2000; ++round) {
    const int rules = round == 0 ? 5000 : 30;
    tXChgArray atOnce;
    tXChgArray oneByOne;
    const std::size_t kinds = round % 4 == 0 ? kKeys.size() : kKeys.size() - 7;
    int first = 0;
    int last = 0;
    for (int i = 0; i < rules; ++i) {
      const std::string& key = kKeys[random() % kinds];
      const bool abbreviate = (round == 0 || round % 3 != 0) && random() % 2 == 0;
      for (tXChgArray* table : {&atOnce, &oneByOne}) {
        table->Add(rule(key.c_str(), {abbreviate, false}));
        table->get(table->count() - 1)->setOrigin(tString(), i);
      }
      oneByOne.Find(tString("X"), first, last, 0);
    }
    atOnce.arrange();
    for (int i = 0; i < rules; ++i) {
      ASSERT_EQ(atOnce.get(i)->originLine(), oneByOne.get(i)->originLine()) << round << " " << i;
    }
    for (const char* late : {"", "ABCD", "Later"}) {
      for (tXChgArray* table : {&atOnce, &oneByOne}) {
        if (*late != '\0') table->Add(rule(late, kWhole));
      }
      for (const std::string& word : kKeys) {
        ASSERT_EQ(runsOf(atOnce, word), runsOf(oneByOne, word)) << round << " " << word;
      }
      for (const char* word : {"disp", "Display", "x", "Xa", "xB", "ABCDEF", "X\x11", "later"}) {
        ASSERT_EQ(runsOf(atOnce, word), runsOf(oneByOne, word)) << round << " " << word;
      }
    }
  }
}

TEST(RuleTable, InsertsOneByOneOnceAnAbbreviationHasBeenPassed) {
  tXChgArray table;
  for (const char* key : {"DISP", "DISPLAY", "DISP"}) {
    table.Add(rule(key, {key[4] != '\0', false}));
    table.arrange();
  }
  for (int i = 0; i < 8; ++i) table.Add(rule("DISPLAY", kWhole));
  table.arrange();
  EXPECT_EQ(table.get(10)->key(), "DISP");
}

std::uint32_t stepsOf(tMemoryProcessor& processor, std::string text) {
  tTknString statement(1);
  tString output;
  text += "\r\n";
  tokenisePlain(text.data(), text.data() + text.size(), 1, statement);
  processor->processLine(statement, output);
  return statement.steps();
}

void expectSameRules(int rules, bool abbreviate) {
  std::string header = "#xtranslate E <a> Z => y\n#xtranslate E TO <a> F => E <a>\n";
  for (int i = 0; i < rules; ++i) {
    // Those without a second word come first, since they match everything.
    const std::string second = i == 3 ? "<y>" : i == 5 ? "[OPT]" : "WORD" + std::to_string(i % 50);
    const std::string directive = i % 3 == 0 && abbreviate ? "#command" : "#xcommand";
    const std::string last = i % 4 == 1 ? " TO <z>" : "";
    header +=
        directive + " KEYWORD " + second + " <x>" + last + " => r" + std::to_string(i) + "(<x>)\n";
  }
  tRuleObserver observer;
  tMemoryProcessor narrowed;
  tMemoryProcessor observed;
  observed->setRuleObserver(&observer);
  std::string statements;
  for (int i = 0; i < 60; ++i) {
    statements += (i % 2 == 0 ? "keyword word" : "KEYW WORD") + std::to_string(i) +
                  (i % 3 == 0 ? " a\n" : " a to b\n");
  }
  statements += "KEYWORD opt b\nKEYWORD\nKEYWORD WORD x\nkeyword c\n";
  const std::string text = narrowed.run("a", header + statements);
  EXPECT_EQ(text, observed.run("a", header + statements));
  for (const char* start : {"KEYWORD word1 ", "keyword none ", "E ", ""}) {
    const std::string statement = start + repeated("keyword x ", 50) + repeated("E E to F ", 40);
    const std::uint32_t steps = stepsOf(narrowed, statement);
    EXPECT_GT(steps, 0u);
    EXPECT_EQ(steps, stepsOf(observed, statement)) << statement;
  }
  std::set<std::string> applied;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) applied.insert(line.substr(0, line.find('(')));
  EXPECT_GT(applied.size(), rules == 200 ? 50u : 8u) << text;
}

TEST(RuleTable, AppliesTheSameRuleHoweverManyShareItsKey) {
  expectSameRules(200, true);
  expectSameRules(200, false);
  expectSameRules(14, false);
}

// Operations of the interface that statements are not rewritten by.
TEST(RuleTable, AnswersHostsAsStatementsAreRewritten) {
  tMemoryProcessor processor;
  processor.run("a", "#command MACRO <x> => f(<x>)\nMACRO &a.\n");
  tXChgArray& rules = *processor->commands();
  int first = 0;
  int last = 0;
  EXPECT_EQ(rules.Find(tString("macr"), first, last, 0), 1);
  EXPECT_EQ(rules.Find(tString("macr"), first, last, 1), 0);
  EXPECT_TRUE(rules.get(0)->firstMatch()->next()->isMacroWithDot());
  for (const std::string text : {"MACRO b\r\n", "OTHER b\r\n"}) {
    tTknString statement(1);
    tokenisePlain(text.data(), text.data() + text.size(), 1, statement);
    EXPECT_EQ(rules.get(0)->replace(&*processor, -1, &statement), text[0] == 'M');
    EXPECT_EQ(statement.getToken(0), text[0] == 'M' ? "f" : "OTHER");
  }
}

}  // namespace
