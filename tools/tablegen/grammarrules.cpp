// Reads the parts of a bison grammar's rules that are missing from bison's report: labels, groups,
// numbers, and the line numbers for messages. Actions, %prec and rules without ";" are not
// supported.

#include "tools/tablegen/grammarrules.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string_view>
#include <utility>

#include "tools/tablegen/generror.h"

namespace tablegen {
namespace {

bool isNameByte(char byte) {
  return std::isalnum(static_cast<unsigned char>(byte)) != 0 || byte == '_';
}

bool isNumber(const std::string& word) {
  return !word.empty() && word.size() < 6 &&
         word.find_first_not_of("0123456789") == std::string::npos;
}

bool isLabel(const std::string& word) {
  return word.size() > 1 && word[0] == 'k' &&
         std::isupper(static_cast<unsigned char>(word[1])) != 0 &&
         std::all_of(word.begin(), word.end(), isNameByte);
}

bool isGroup(const std::string& word) {
  return word.size() > 1 && word[0] == '@' && std::all_of(word.begin() + 1, word.end(), isNameByte);
}

/// A symbol, a bison operator or the content of a comment.
struct tPiece {
  enum eKind : char { kSymbol = 's', kComment = 'c', kColon = ':', kBar = '|', kEndOfRule = ';' };
  eKind kind;
  std::string text;
  long line;
};

class tPieceReader {
 public:
  tPieceReader(std::istream& grammar, const std::string& file);

  /// Reads the next piece; false at the end of the text.
  bool read(tPiece& piece);

 private:
  [[noreturn]] void fail(const std::string& text) const { throw tGenError(file_, line_, text); }
  void skipBlanks();
  std::string takeComment();
  std::string takeQuoted();
  std::string takeWord();

  const std::string& file_;
  std::string text_;
  std::size_t at_ = 0;
  long line_ = 1;
};

tPieceReader::tPieceReader(std::istream& grammar, const std::string& file) : file_(file) {
  std::string line;
  while (std::getline(grammar, line)) {
    ++line_;
    if (line.rfind("%%", 0) == 0) break;
  }
  text_.assign(std::istreambuf_iterator<char>(grammar), std::istreambuf_iterator<char>());
}

bool tPieceReader::read(tPiece& piece) {
  skipBlanks();
  piece.line = line_;
  if (at_ >= text_.size() || text_.compare(at_, 2, "%%") == 0) return false;
  const char byte = text_[at_];
  if (text_.compare(at_, 2, "/*") == 0) {
    piece.kind = tPiece::kComment;
    piece.text = takeComment();
  } else if (byte == ':' || byte == '|' || byte == ';') {
    piece.kind = static_cast<tPiece::eKind>(byte);
    ++at_;
  } else {
    piece.kind = tPiece::kSymbol;
    piece.text = byte == '"' ? takeQuoted() : takeWord();
  }
  return true;
}

void tPieceReader::skipBlanks() {
  for (; at_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[at_])) != 0; ++at_) {
    if (text_[at_] == '\n') ++line_;
  }
}

std::string tPieceReader::takeComment() {
  const std::size_t end = text_.find("*/", at_ + 2);
  if (end == std::string::npos) fail("the comment has no end");
  std::string comment = text_.substr(at_ + 2, end - at_ - 2);
  line_ += std::count(comment.begin(), comment.end(), '\n');
  at_ = end + 2;
  return comment;
}

std::string tPieceReader::takeQuoted() {
  const std::size_t begin = at_++;
  while (at_ < text_.size() && text_[at_] != '"' && text_[at_] != '\n') {
    at_ += text_[at_] == '\\' ? 2 : 1;
  }
  if (at_ >= text_.size() || text_[at_] != '"') fail("the spelling has no closing quote");
  ++at_;
  return text_.substr(begin, at_ - begin);
}

std::string tPieceReader::takeWord() {
  const std::size_t begin = at_;
  if (text_.compare(at_, 6, "%empty") == 0) at_ += 6;
  while (at_ < text_.size() && isNameByte(text_[at_])) ++at_;
  if (at_ == begin) fail(std::string("\"") + text_[at_] + "\" has no place in a rule");
  return text_.substr(begin, at_ - begin);
}

/// Reads rules, `left: right | right;`.
class tRuleReader {
 public:
  tRuleReader(std::istream& grammar, const std::string& file)
      : pieces_(grammar, file), file_(file) {}

  /// Appends the next rule's productions to `rules` and their explicit numbers, or 0, to `numbers`;
  /// false at the end.
  bool read(std::vector<tGrammarRule>& rules, std::vector<std::uint32_t>& numbers);

 private:
  [[noreturn]] void fail(const std::string& text) const {
    throw tGenError(file_, piece_.line, text);
  }
  void need(bool good, const char* what) const {
    if (!good) fail(std::string("expected ") + what);
  }
  void readProduction(tGrammarRule& rule, std::uint32_t& number);
  bool readPlace(tGrammarRule& rule) const;
  void readLabels(tGrammarRule& rule, std::uint32_t& number) const;
  void readLabel(const std::string& word, tGrammarRule& rule) const;

  tPieceReader pieces_;
  const std::string& file_;
  tPiece piece_{tPiece::kSymbol, {}, 0};
};

bool tRuleReader::read(std::vector<tGrammarRule>& rules, std::vector<std::uint32_t>& numbers) {
  do {
    if (!pieces_.read(piece_)) return false;
  } while (piece_.kind == tPiece::kComment);
  need(piece_.kind == tPiece::kSymbol && isNameByte(piece_.text[0]), "a nonterminal");
  const std::string left = piece_.text;
  need(pieces_.read(piece_) && piece_.kind == tPiece::kColon, "\":\"");
  do {
    rules.push_back({});
    rules.back().left = left;
    numbers.push_back(0);
    readProduction(rules.back(), numbers.back());
  } while (piece_.kind == tPiece::kBar);
  return true;
}

void tRuleReader::readProduction(tGrammarRule& rule, std::uint32_t& number) {
  bool labelled = false;
  bool empty = true;
  for (;;) {
    need(pieces_.read(piece_), "\";\"");
    if (empty) rule.line = piece_.line;
    if (piece_.kind == tPiece::kBar || piece_.kind == tPiece::kEndOfRule) break;
    need(piece_.kind != tPiece::kColon, "\";\" before the next rule");
    if (piece_.kind == tPiece::kComment) {
      if (empty && readPlace(rule)) continue;
      if (empty || labelled) fail("one comment stands in a production, at its end");
      labelled = true;
      readLabels(rule, number);
      continue;
    }
    if (labelled) fail("a label stands at the end of its production");
    empty = false;
    if (piece_.text != "%empty") ++rule.symbols;
  }
  if (empty) fail("an empty right side is written %empty");
}

// "/* 73 */" before a production.
bool tRuleReader::readPlace(tGrammarRule& rule) const {
  std::istringstream words(piece_.text);
  std::string word;
  if (rule.expected != 0 || !(words >> word) || !isNumber(word)) return false;
  rule.expected = static_cast<std::uint32_t>(std::stoul(word));
  return true;
}

void tRuleReader::readLabels(tGrammarRule& rule, std::uint32_t& number) const {
  std::istringstream words(piece_.text);
  std::string word;
  while (words >> word) {
    if (word != "=") {
      readLabel(word, rule);
      continue;
    }
    words >> word;
    if (number != 0 || !isNumber(word) || std::stoul(word) == 0)
      fail("expected one number behind \"=\"");
    number = static_cast<std::uint32_t>(std::stoul(word));
  }
}

void tRuleReader::readLabel(const std::string& word, tGrammarRule& rule) const {
  if (word == "yields") {
    rule.yields = true;
  } else if (isGroup(word)) {
    rule.groups.push_back(word.substr(1));
  } else if (isLabel(word) && rule.label.empty()) {
    rule.label = word;
  } else {
    fail("\"" + word + "\" is no label, @group, \"yields\" or \"= number\"");
  }
}

}  // namespace

tGrammarRules::tGrammarRules(std::istream& grammar, const std::string& file) : file_(file) {
  tRuleReader reader(grammar, file);
  std::vector<std::uint32_t> stated;
  while (reader.read(rules_, stated)) {
  }
  numberRules(stated);
  checkLabels();
}

// Explicit numbers follow the implicit ones, so adding a production does not renumber the others.
void tGrammarRules::numberRules(const std::vector<std::uint32_t>& stated) {
  std::uint32_t counted = 0;
  for (std::size_t at = 0; at < rules_.size(); ++at) {
    rules_[at].number = stated[at] != 0 ? stated[at] : ++counted;
  }
  for (const tGrammarRule& rule : rules_) {
    if (rule.expected == 0 || rule.expected == rule.number) continue;
    throw tGenError(file_, rule.line,
                    "production " + std::to_string(rule.number) + ", " +
                        std::to_string(rule.expected) +
                        " expected; a new production states a number of its own, \"= " +
                        std::to_string(rules_.size()) + "\"");
  }
  std::set<std::uint32_t> taken;
  for (std::uint32_t number = 1; number <= counted; ++number) taken.insert(number);
  for (std::size_t at = 0; at < rules_.size(); ++at) {
    if (stated[at] == 0 || taken.insert(stated[at]).second) continue;
    throw tGenError(file_, rules_[at].line, "number " + std::to_string(stated[at]) + " is taken");
  }
  for (const tGrammarRule& rule : rules_) {
    if (rule.number <= rules_.size()) continue;
    std::uint32_t next = 1;
    while (taken.count(next) > 0) ++next;
    throw tGenError(file_, rule.line, "the next free number is " + std::to_string(next));
  }
}

void tGrammarRules::checkLabels() const {
  std::map<std::string, const tGrammarRule*> labels;
  std::set<std::string> labelled;
  for (const tGrammarRule& rule : rules_) {
    if (rule.label.empty()) continue;
    labelled.insert(rule.left);
    const auto [other, isFirst] = labels.emplace(rule.label, &rule);
    if (isFirst) continue;
    throw tGenError(file_, rule.line,
                    "label " + rule.label + " stands in line " +
                        std::to_string(other->second->line) + " already");
  }
  for (const tGrammarRule& rule : rules_) {
    if (!rule.label.empty() || labelled.count(rule.left) == 0) continue;
    throw tGenError(file_, rule.line, "this production of " + rule.left + " has no label");
  }
}

std::vector<const tGrammarRule*> tGrammarRules::byNumber() const {
  std::vector<const tGrammarRule*> sorted(rules_.size());
  for (const tGrammarRule& rule : rules_) sorted[rule.number - 1] = &rule;
  return sorted;
}

void tGrammarRules::number(tBisonReport& report) const {
  std::vector<tBisonReport::tProduction> productions(report.productions.size());
  productions[0] = report.productions[0];
  bool same = productions.size() == rules_.size() + 1;
  for (std::size_t at = 0; same && at < rules_.size(); ++at) {
    const tBisonReport::tProduction& production = report.productions[at + 1];
    same = production.left == rules_[at].left && production.right.size() == rules_[at].symbols;
    productions[rules_[at].number] = production;
  }
  if (!same) throw tGenError(file_, 0, "its productions are not those of " + report.file);
  report.productions = std::move(productions);
  for (tBisonReport::tState& state : report.states) {
    for (tBisonReport::tReduction& reduction : state.reductions) {
      if (!isNumber(reduction.production)) continue;  // "accept"
      const std::size_t place = std::stoul(reduction.production);
      if (place == 0 || place > rules_.size()) continue;
      reduction.production = std::to_string(rules_[place - 1].number);
    }
  }
}

void tGrammarRules::expectConflicts(const std::vector<tShiftConflict>& conflicts) const {
  for (const tGrammarRule& rule : rules_) {
    const auto found =
        std::find_if(conflicts.begin(), conflicts.end(), [&rule](const tShiftConflict& conflict) {
          return conflict.production == std::to_string(rule.number);
        });
    const bool yields = found != conflicts.end();
    if (yields == rule.yields) continue;
    throw tGenError(
        file_, rule.line,
        yields ? "shift/reduce conflict on " + found->symbol +
                     "; \"yields\" in the production's comment says that the shift is right"
               : "the production yields in no conflict");
  }
}

}  // namespace tablegen
