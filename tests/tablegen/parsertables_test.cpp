#include <gtest/gtest.h>

#include <string>

#include "tests/tablegen/faults.h"
#include "tools/tablegen/yaccimage.h"

namespace tablegen {
namespace {

/// The start of a report: everything the generator reads of it but the states.
constexpr const char* kGrammar =
    "<bison-xml-report><filename>t.y</filename><grammar><rules>"
    "<rule number='0'><lhs>$accept</lhs><rhs><symbol>list</symbol><symbol>$end</symbol></rhs>"
    "</rule><rule number='1'><lhs>list</lhs><rhs><symbol>list</symbol><symbol>\"x\"</symbol>"
    "<symbol>tail</symbol></rhs></rule>"
    "<rule number='2'><lhs>list</lhs><rhs><empty/></rhs></rule>"
    "<rule number='3'><lhs>tail</lhs><rhs><empty/></rhs></rule>"
    "</rules><terminals><terminal token-number='0' name='$end'/>"
    "<terminal token-number='90' name='\"x\"'/><terminal token-number='70' name='\"y\"'/>"
    "</terminals></grammar>\n";

std::string transition(const std::string& type, const std::string& symbol, int state) {
  return "<transition type='" + type + "' symbol='" + symbol + "' state='" + std::to_string(state) +
         "'/>";
}

std::string reduction(const std::string& symbol, const std::string& rule, bool enabled = true) {
  return "<reduction symbol='" + symbol + "' rule='" + rule + "' enabled='" +
         (enabled ? "true" : "false") + "'/>";
}

std::string state(int number, const std::string& transitions, const std::string& reductions) {
  return "<state number='" + std::to_string(number) + "'><itemset/><actions><transitions>" +
         transitions + "</transitions><errors/><reductions>" + reductions +
         "</reductions></actions><solved-conflicts/></state>\n";
}

tBisonReport report(const std::string& states) {
  return readBisonReport(kGrammar + ("<automaton>" + states + "</automaton></bison-xml-report>"),
                         "t.xml");
}

const std::string kShiftX = transition("shift", "\"x\"", 2);

TEST(ParserTables, ConflictsAreFoundByStateAndToken) {
  std::string found;
  for (const tShiftConflict& conflict : shiftConflicts(
           report(state(0, kShiftX + transition("shift", "\"y\"", 1),
                        reduction("\"x\"", "2", false) + reduction("\"y\"", "3", false)) +
                  state(1, kShiftX, reduction("\"x\"", "2", false) + reduction("\"y\"", "2")) +
                  state(2, kShiftX, "")))) {
    found += conflict.symbol + conflict.production;
  }
  EXPECT_EQ(found, "\"x\"2\"y\"3\"x\"2");
}

TEST(ParserTables, FaultsNameFileAndLine) {
  const tFault kCases[] = {
      {state(0, "", "") + state(1, "", reduction("\"x\"", "2") + reduction("\"x\"", "3", false)),
       "t.xml:3: reduce/reduce conflict in state 1 on \"x\" between productions 2 and 3"},
      {state(0, kShiftX, reduction("\"x\"", "2", false) + reduction("\"x\"", "3", false)),
       "t.xml:2: reduce/reduce conflict in state 0 on \"x\" between productions 2 and 3"},
      {state(0, "", reduction("$default", "2")),
       "t.xml:2: a reduction on $default; the grammar needs %define lr.default-reduction "
       "accepting"},
      {state(1, "", ""), "t.xml:2: states are out of order"},
      {"<state number='x'/>", "t.xml:2: attribute \"number\" is no number"},
      {"", "t.xml:2: the report has no automaton"},
  };
  expectFaults(kCases, [](const std::string& states) {
    const tBisonReport faulty = report(states);
    shiftConflicts(faulty);
    buildYaccImage(faulty);
  });
  EXPECT_THROW(readBisonReport("<bison-xml-report><grammar>", "t.xml"), tGenError);
}

}  // namespace
}  // namespace tablegen
