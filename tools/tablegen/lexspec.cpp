#include "tools/tablegen/lexspec.h"

#include <algorithm>
#include <sstream>
#include <string_view>
#include <utility>

#include "ssvp40xpf/sstableformat.h"
#include "tools/tablegen/generror.h"

namespace tablegen {
namespace {

class tSpecReader {
 public:
  tSpecReader(const std::string& file, const tGrammarTokens& tokens) : tokens_(tokens) {
    spec_.file = file;
  }

  tLexSpec read(std::istream& source);

 private:
  [[noreturn]] void fail(const std::string& text) const {
    throw tGenError(spec_.file, line_, text);
  }

  void readLine(const std::string& line);
  void readDefinition(std::istringstream& words);
  void openList(std::istringstream& words);
  void readRule(std::string_view text);
  tCharExpr expression(std::string_view& text) const;
  std::uint32_t token(const std::string& name) const;
  void readActions(std::istringstream& words, tDecision& decision);
  void resolveLists();

  tLexSpec spec_;
  const tGrammarTokens& tokens_;
  tDefinitions definitions_;
  long line_ = 0;

  /// The lists referenced by rules, by list and rule; they may be defined later.
  struct tListUse {
    std::size_t list;
    std::size_t rule;
    std::string name;
  };
  std::vector<tListUse> uses_;
};

tLexSpec tSpecReader::read(std::istream& source) {
  std::string line;
  while (std::getline(source, line)) {
    ++line_;
    readLine(line);
  }
  if (spec_.lists.empty()) fail("the source opens no list");
  resolveLists();
  return std::move(spec_);
}

void tSpecReader::readLine(const std::string& line) {
  if (line.empty() || line.front() == '#') return;
  if (line.find_first_not_of(" \t\r") == std::string::npos) return;
  if (line.front() != '%') return readRule(line);
  std::istringstream words(line);
  std::string keyword;
  words >> keyword;
  if (keyword == "%let") return readDefinition(words);
  if (keyword == "%list") return openList(words);
  fail("\"" + keyword + "\" is neither %let nor %list");
}

void tSpecReader::readDefinition(std::istringstream& words) {
  std::string name;
  std::string rest;
  words >> name >> std::ws;
  std::getline(words, rest);
  std::string_view text = rest;
  tCharExpr expr = expression(text);
  if (text.find_first_not_of(" \t") != std::string_view::npos) fail("text behind the expression");
  if (!definitions_.emplace(name, std::move(expr)).second) {
    fail("\"" + name + "\" is defined twice");
  }
}

void tSpecReader::openList(std::istringstream& words) {
  std::string name;
  if (!(words >> name)) fail("the list has no name");
  for (const tLexList& list : spec_.lists) {
    if (list.name == name) fail("list \"" + name + "\" is opened twice");
  }
  spec_.lists.push_back({name, {}});
}

void tSpecReader::readRule(std::string_view text) {
  if (spec_.lists.empty()) fail("a rule stands before the first %list");
  tLexRule rule{expression(text), {}, line_};
  std::istringstream words{std::string(text)};
  std::string name;
  if (!(words >> name)) fail("the rule names no token");
  rule.decision.token = token(name);
  rule.decision.flags = sstable::kLexAccept;
  readActions(words, rule.decision);
  spec_.lists.back().rules.push_back(std::move(rule));
}

tCharExpr tSpecReader::expression(std::string_view& text) const {
  try {
    return parseCharExpr(text, definitions_);
  } catch (const tCharExprError& error) {
    fail(error.what());
  }
}

std::uint32_t tSpecReader::token(const std::string& name) const {
  if (name == "-") return sstable::kNone;
  const tToken* found = tokens_.find(name);
  if (found == nullptr) fail("the grammar declares no token \"" + name + "\"");
  return found->number;
}

void tSpecReader::readActions(std::istringstream& words, tDecision& decision) {
  std::string action;
  bool changesList = false;
  while (words >> action) {
    if (action == "drop") {
      decision.flags |= sstable::kLexDrop;
      continue;
    }
    if (changesList) fail("a rule changes the list once at most");
    changesList = true;
    if (action == "pop") {
      decision.flags |= sstable::kLexPop;
      continue;
    }
    if (action != "push" && action != "goto") fail("\"" + action + "\" is no action");
    decision.flags |= sstable::kLexPush;
    if (action == "goto") decision.flags |= sstable::kLexPop;
    std::string list;
    if (!(words >> list)) fail("\"" + action + "\" names no list");
    uses_.push_back({spec_.lists.size() - 1, spec_.lists.back().rules.size(), list});
  }
  if (decision.token == sstable::kNone && (decision.flags & sstable::kLexDrop) == 0) {
    fail("a rule without a token must drop its text");
  }
}

void tSpecReader::resolveLists() {
  for (const tListUse& use : uses_) {
    tLexRule& rule = spec_.lists[use.list].rules[use.rule];
    const auto named = std::find_if(spec_.lists.begin(), spec_.lists.end(),
                                    [&use](const tLexList& list) { return list.name == use.name; });
    line_ = rule.line;
    if (named == spec_.lists.end()) fail("there is no list \"" + use.name + "\"");
    rule.decision.list = static_cast<std::uint32_t>(named - spec_.lists.begin());
  }
}

}  // namespace

tLexSpec readLexSpec(std::istream& source, const std::string& file, const tGrammarTokens& tokens) {
  return tSpecReader(file, tokens).read(source);
}

}  // namespace tablegen
