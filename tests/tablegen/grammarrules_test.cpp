#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/tablegen/faults.h"
#include "tools/tablegen/grammarrules.h"

namespace tablegen {
namespace {

tGrammarRules rulesOf(const std::string& text) {
  std::istringstream grammar("%token A 70\n%%\n" + text);
  return {grammar, "t.y"};
}

// Of list: "a" word | word;  list: %empty;  word: "b" | "c".
const char* const kRules =
    "list: /* 1 */\n"
    "    \"a\" word /* kBoth */\n"
    "  | word      /* kWord @some = 5 */\n"
    "  ;\n"
    "/* the rest */\n"
    "list: /* 2 */ %empty /* kNone yields */ ;\n"
    "word: /* 3 */ \"b\" /* @some */ | \"c\" ;\n";

tBisonReport reportOfRules() {
  tBisonReport report;
  report.file = "t.xml";
  report.productions = {
      {"$accept", {"list", "$end"}}, {"list", {"\"a\"", "word"}}, {"list", {"word"}}, {"list", {}},
      {"word", {"\"b\""}},           {"word", {"\"c\""}}};
  report.terminals = {{"$end", 0}, {"\"a\"", 70}, {"\"b\"", 71}, {"\"c\"", 72}};
  report.states.resize(1);
  report.states[0].reductions = {
      {"\"a\"", "2", true}, {"\"b\"", "5", true}, {"$default", "accept", true}};
  return report;
}

TEST(GrammarRules, StatedNumbersMoveNoOtherProduction) {
  tBisonReport report = reportOfRules();
  rulesOf(kRules).number(report);
  EXPECT_EQ(report.productions[1].right.size(), 2u);
  EXPECT_EQ(report.productions[2].right.size(), 0u);
  EXPECT_EQ(report.productions[3].right, std::vector<std::string>{"\"b\""});
  EXPECT_EQ(report.productions[5].right, std::vector<std::string>{"word"});
  EXPECT_EQ(report.states[0].reductions[0].production, "5");
  EXPECT_EQ(report.states[0].reductions[1].production, "4");
  EXPECT_EQ(report.states[0].reductions[2].production, "accept");
}

const tFault kFaults[] = {
    {"a: \"x\" /* kOne */\n | \"y\" /* kOne */ ;", "t.y:4: label kOne stands in line 3 already"},
    {"a: \"x\" /* kOne */\n | \"y\" ;", "t.y:4: this production of a has no label"},
    {"a: \"x\" /* one */ ;", "t.y:3: \"one\" is no label, @group, \"yields\" or \"= number\""},
    {"a: \"x\" /* kOne kTwo */ ;",
     "t.y:3: \"kTwo\" is no label, @group, \"yields\" or \"= number\""},
    {"a: \"x\" /* kOne */ \"y\" ;", "t.y:3: a label stands at the end of its production"},
    {"a: \"x\" /* kOne */ /* @two */ ;", "t.y:3: one comment stands in a production, at its end"},
    {"a: /* kOne */ \"x\" ;", "t.y:3: one comment stands in a production, at its end"},
    {"a: \"x\"\n | \"y\" /* = 1 */ ;", "t.y:4: number 1 is taken"},
    {"a: \"x\"\n | \"y\" /* = 3 */ ;", "t.y:4: the next free number is 2"},
    {"a: \"x\" /* = */ ;", "t.y:3: expected one number behind \"=\""},
    {"a: /* 1 */ \"x\" | \"y\" ;\nb: /* 2 */ \"z\" ;",
     "t.y:4: production 3, 2 expected; a new production states a number of its own, \"= 3\""},
    {"a: \"x\" | ;", "t.y:3: an empty right side is written %empty"},
    {"a: \"x\"\nb: \"y\" ;", "t.y:4: expected \";\" before the next rule"},
    {"a: \"x\" { act(); } ;", "t.y:3: \"{\" has no place in a rule"},
    {"a: \"x\n ;", "t.y:3: the spelling has no closing quote"},
    {"a: \"x\" /* kOne", "t.y:3: the comment has no end"},
};

TEST(GrammarRules, FaultsNameFileAndLine) {
  expectFaults(kFaults, rulesOf);
}

TEST(GrammarRules, ReportOfAnotherGrammarIsRefused) {
  tBisonReport report = reportOfRules();
  report.productions[4].right.clear();
  EXPECT_THROW(rulesOf(kRules).number(report), tGenError);
  report.productions.pop_back();
  EXPECT_THROW(rulesOf(kRules).number(report), tGenError);
}

TEST(GrammarRules, KnownConflictsAreThoseOfYieldingProductions) {
  const tGrammarRules rules = rulesOf(kRules);
  rules.expectConflicts({{"\"a\"", "2"}, {"\"b\"", "2"}});
  EXPECT_THROW(rules.expectConflicts({}), tGenError);
  EXPECT_THROW(rules.expectConflicts({{"\"a\"", "2"}, {"\"b\"", "3"}}), tGenError);
}

}  // namespace
}  // namespace tablegen
