#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

#include "tests/tablegen/faults.h"
#include "tests/tablegen/imagewalk.h"
#include "tools/tablegen/leximage.h"

namespace tablegen {
namespace {

constexpr const char* kTokens =
    "%token One 51 \"one\"\n"
    "%token Two 52 \"two\"\n"
    "%token Three 53\n"
    "%%\n"
    "%token Ignored";

tLexSpec readSpec(const std::string& source) {
  std::istringstream grammar(kTokens);
  const tGrammarTokens tokens(grammar, "t.y");
  std::istringstream lex(source);
  return readLexSpec(lex, "t.lex", tokens);
}

/// All places where a match of `expr` that begins at `from` can end, by trying every way.
std::set<std::size_t> matchEnds(const tCharExpr& expr, std::string_view text, std::size_t from) {
  std::set<std::size_t> ends;
  switch (expr.kind) {
    case tCharExpr::kSet:
      for (const tCharRange& range : expr.ranges) {
        if (from == text.size()) break;
        const auto code = static_cast<unsigned char>(text[from]);
        if (range.low <= code && code <= range.high) ends.insert(from + 1);
      }
      break;
    case tCharExpr::kSequence:
      ends = {from};
      for (const tCharExpr& part : expr.parts) {
        std::set<std::size_t> further;
        for (const std::size_t end : ends) further.merge(matchEnds(part, text, end));
        ends = further;
      }
      break;
    case tCharExpr::kChoice:
      for (const tCharExpr& part : expr.parts) ends.merge(matchEnds(part, text, from));
      break;
    case tCharExpr::kOptional:
      ends = matchEnds(expr.parts.front(), text, from);
      ends.insert(from);
      break;
    case tCharExpr::kMany:
      for (const std::size_t end : matchEnds(expr.parts.front(), text, from)) {
        ends.insert(end);
        if (end > from) ends.merge(matchEnds(expr, text, end));
      }
      break;
  }
  return ends;
}

/// The longest match of a list by its rules; of equally long ones the first.
std::pair<std::size_t, const tLexRule*> naiveMatch(const tLexList& list, std::string_view text) {
  std::pair<std::size_t, const tLexRule*> best{0, nullptr};
  for (const tLexRule& rule : list.rules) {
    const std::set<std::size_t> ends = matchEnds(rule.expr, text, 0);
    if (!ends.empty() && *ends.rbegin() > best.first) best = {*ends.rbegin(), &rule};
  }
  return best;
}

template <class Visit>
void forEachText(std::string_view alphabet, std::size_t maxLength, const Visit& visit,
                 std::string text = "") {
  visit(text);
  if (text.size() == maxLength) return;
  for (const char c : alphabet) forEachText(alphabet, maxLength, visit, text + c);
}

TEST(ScannerTables, MatchExactlyWhatTheRulesSay) {
  const char* const kSpecs[] = {
      "%list a\n'AB~CA' One\n[a-c]+ Two\n\"-\" Three\n",
      "%list a\n(ab|a)(c|bc)*  One\na(b?c)+- Two\n[^a]-? Three\n",
      "%let x a|bc\n%list a\n{x}+-{x} One\n{x}+ Two\n({x}|-)*c Three\n",
      "%list a\n(a+|b)c? One\n(b|(c-)+)+a Two\n[^c] Three\n",
      "%list a\n(a*b*)*c One\n((a|b)(a|b))+ Two\n- - drop\n",
      "%list a\n\"a\"\"b\" One\na(b(c(-)?)?)? Two\n[b-c\\-]+ Three\n",
  };
  for (const char* source : kSpecs) {
    const tLexSpec spec = readSpec(source);
    const tImage image = buildLexImage(spec);
    const tImageWalk walk(image.data(), image.size());
    forEachText("aBbc-", 6, [&](const std::string& text) {
      const auto [length, rule] = naiveMatch(spec.lists[0], text);
      const tImageWalk::tMatch match = walk.longestMatch(0, text);
      ASSERT_EQ(match.length, length) << source << text;
      if (rule == nullptr) return;
      ASSERT_EQ(walk.final(0, match.state, sstable::kFinalToken), rule->decision.token)
          << source << text;
    });
  }
}

TEST(ScannerTables, FaultsNameFileAndLine) {
  const tFault kCases[] = {
      {"%list a\n[a-z]+ One\nabc Two\n", "t.lex:3: the rule can never match, line 2 comes first"},
      {"%list a\na One\n\n(b)? Two\n", "t.lex:4: the rule matches the empty text"},
      {"%list a\na One\n%list b\n", "t.lex: list \"b\" is empty"},
      {"%list a\na Four\n", "t.lex:2: the grammar declares no token \"Four\""},
      {"%list a\na One push b\n", "t.lex:2: there is no list \"b\""},
      {"%list a\na One pop push a\n", "t.lex:2: a rule changes the list once at most"},
      {"%list a\na One dorp\n", "t.lex:2: \"dorp\" is no action"},
      {"%list a\na -\n", "t.lex:2: a rule without a token must drop its text"},
      {"%list a\n{x} One\n", "t.lex:2: \"x\" is not defined"},
      {"%list a\n(a One\n", "t.lex:2: \")\" is missing"},
      {"%list a\n'a One\n", "t.lex:2: the closing quote is missing"},
      {"%list a\n[z-a] One\n", "t.lex:2: a range goes downwards"},
      {"%list a\n[] One\n", "t.lex:2: a class is empty"},
      {"%list a\n\\x1 One\n", "t.lex:2: a hexadecimal code is malformed"},
      {"%list a\n+a One\n", "t.lex:2: \"+\" is out of place"},
      {"%let x a\n%let x b\n", "t.lex:2: \"x\" is defined twice"},
      {"a One\n", "t.lex:1: a rule stands before the first %list"},
      {"%lst a\n", "t.lex:1: \"%lst\" is neither %let nor %list"},
  };
  expectFaults(kCases, [](const std::string& source) { buildLexImage(readSpec(source)); });
}

TEST(ScannerTables, TokenDeclarationsAreChecked) {
  const tFault kCases[] = {
      {"%token A 5 \"a\"\n%token A 6\n", "t.y:2: name, number or spelling of A stands twice"},
      {"\n%token A 5\n%token B 5\n", "t.y:3: name, number or spelling of B stands twice"},
      {"%token A 5 \"a\" /* b */\n",
       "t.y:1: expected %token Name number \"spelling\" /* @group */"},
      {"%token A 5 \"a\" b\n", "t.y:1: expected %token Name number \"spelling\" /* @group */"},
      {"%token A 5 \"\\\"\n", "t.y:1: expected %token Name number \"spelling\" /* @group */"},
      {"%token A\n", "t.y:1: expected %token Name number \"spelling\" /* @group */"},
  };
  expectFaults(kCases, [](const std::string& source) {
    std::istringstream grammar(source);
    const tGrammarTokens tokens(grammar, "t.y");
  });
}

}  // namespace
}  // namespace tablegen
