#include "korelpre/lint/statementlint.h"

#include <algorithm>
#include <limits>

#include "korelpre/directives/programfile.h"
#include "korelpre/errors/notes.h"
#include "korelpre/lint/foldedword.h"
#include "korelpre/tables/nameexpansion.h"
#include "korelpre/text/cursor.h"
#include "korelpre/text/statementopening.h"
#include "korelpre/text/words.h"
#include "lib_base/misc.h"
#include "lib_base/nearest.h"

namespace precomp {

namespace {

int parametersOf(const tBaseXChg& macro) {
  int count = 0;
  for (const tMatchMarker* part = macro.firstMatch(); part != nullptr; part = part->next()) {
    if (!part->isIdentifier()) ++count;
  }
  return count;
}

// Whether a token is a name, a number or a string.
bool isOperand(std::string_view token) {
  return !token.empty() && (isNameByte(token[0]) || isQuote(token[0]));
}

}  // namespace

struct tStatementLint::tTrial {
  const tBaseXChg* rule = nullptr;
  int token = -1;  // where it stopped; the number of tokens for the end of the statement
  tString expected;
};

tStatementLint::tStatementLint(tFindings& findings, tProgramFile& file, tTknString& statement,
                               std::uint64_t& steps)
    : findings_(findings), file_(file), statement_(statement), steps_(steps) {}

void tStatementLint::run() {
  if (statement_.count() == 0) return;
  if (findings_.wants(eWarning::kUnmatchedCommand)) judgeCommand();
  if (findings_.wants(eWarning::kAdjacentOperands)) judgeOperands();
  if (!findings_.wants(eWarning::kArgumentCount)) return;
  for (int i = 0; i + 1 < statement_.count(); ++i) {
    if (statement_.tokens()[i + 1] == "(") judgeCall(i);
  }
}

void tStatementLint::judgeCommand() {
  // What a rule has made is the rule's affair.
  if (steps_ == 0 || isOwnStatement() || file_.columnOf(statement_.tokens()[0]) == 0) return;
  const std::uint32_t before = statement_.steps();
  const tTrial farthest = farthestRule();
  if (file_.shared().rules.commands.lookUp(statement_.tokens()[0]) == nullptr) judgeKey();
  steps_ -= std::min<std::uint64_t>(steps_, statement_.steps() - before);
  if (farthest.rule != nullptr && findings_.hears(eWarning::kUnmatchedCommand)) {
    tellCommand(farthest);
  }
}

// A statement of the language, a call, or one that begins with a variable.
bool tStatementLint::isOwnStatement() const {
  const tAutoArray<tSpcString>& tokens = statement_.tokens();
  const std::string_view word = tokens[0];
  // An annotation of the extended language.
  if (word == "@" && file_.isExtendedSource()) return true;
  if (!isNameStart(word[0])) return false;
  if (statementWord(word) != eStatementWord::kNone) return true;
  tOpening opening{word, {}, {}};
  if (statement_.count() > 1) opening.next = tokens[1];
  if (statement_.count() > 2) opening.third = tokens[2];
  if (opening.next == "(" || opening.next == "." || opening.next == ":") return true;
  return opening.wordIsName();
}

// No rule is returned when none has that key, or one takes the statement after all.
tStatementLint::tTrial tStatementLint::farthestRule() {
  tTrial best;
  tXChgArray& commands = file_.shared().rules.commands;
  const tFoundRules* const found = commands.lookUp(statement_.tokens()[0]);
  if (found == nullptr) return best;
  const tFoundRules runs = *found;
  const auto tryRun = [&](int first, int last) {
    for (int i = first; i <= last; ++i) {
      tBaseXChg& rule = *commands.get(i);
      if (rule.matchCount(-1, &statement_) > 0) return false;
      const int failed = statement_.failedToken();
      const int at = failed < 0 ? statement_.count() : failed;
      if (at <= best.token) continue;
      best = {&rule, at, {}};
      const tMatchMarker* const marker = statement_.failedMarker();
      if (marker != nullptr) marker->print(&best.expected);
      best.expected.trim();
    }
    return true;
  };
  const bool whole = tryRun(runs.wholeFirst, runs.wholeLast);
  const bool same = runs.first == runs.wholeFirst && runs.last == runs.wholeLast;
  if (!whole || (!same && !tryRun(runs.first, runs.last)) || statement_.overrun()) return {};
  return best;
}

void tStatementLint::tellCommand(const tTrial& farthest) {
  const bool atEnd = farthest.token >= statement_.count();
  tNote note;
  if (!atEnd) {
    const std::string_view stopped = statement_.tokens()[farthest.token];
    note = farthest.expected.empty()
               ? noted("this rule got farthest, and ends before %1", {stopped})
               : noted("this rule got farthest, and wants %1 where %2 stands",
                       {farthest.expected, stopped});
  } else {
    note = noted("this rule got farthest, and wants %1 behind the statement", {farthest.expected});
  }
  const tLintPlace first = placeOf(0);
  const tLintPlace stopped = atEnd ? tLintPlace{} : placeOf(farthest.token);
  findings_.tell(eWarning::kUnmatchedCommand, stopped.column > 0 ? stopped : first,
                 {statement_.tokens()[0]}, {noteAt(*farthest.rule, std::move(note))});
}

// The first word may be misspelt, or cut too short. It is told of when a rule takes the statement
// with another word in its place.
void tStatementLint::judgeKey() {
  constexpr std::size_t kMostTried = 8;
  constexpr std::size_t kShortestCut = 3;
  constexpr std::uint64_t kStepsPerByte = 8;  // of a key, for its edit distance
  if (statement_.tokens()[0].size() < kShortestCut) return;
  tXChgArray& commands = file_.shared().rules.commands;
  commands.arrange();
  steps_ -= std::min(steps_, static_cast<std::uint64_t>(commands.count()));
  const std::string word = foldedWord(statement_.tokens()[0]);
  std::vector<std::string> tried;
  std::vector<std::string> others;
  std::uint64_t cost = 0;
  for (int i = 0; i < commands.count(); ++i) {
    const tString& written = commands[i].key();
    if (written.empty() || upperAscii(written.data()[0]) != word[0]) continue;
    std::string key = foldedWord(written);
    std::vector<std::string>& keys = key.starts_with(word) ? tried : others;
    if (!keys.empty() && keys.back() == key) continue;
    if (&keys == &others) cost += kStepsPerByte * key.size();
    keys.push_back(std::move(key));
  }
  tried.resize(std::min(tried.size(), kMostTried));
  if (cost <= steps_) tried.push_back(nearestTo(word, others));
  steps_ -= std::min(steps_, cost);
  for (const std::string& key : tried) {
    if (const tBaseXChg* const rule = key.empty() ? nullptr : ruleWithKey(key)) {
      findings_.tell(eWarning::kUnmatchedCommand, placeOf(0), {statement_.tokens()[0]},
                     {noteAt(*rule, noted("did you mean %1?", {rule->key()}))});
      return;
    }
  }
}

// The rule that takes the statement when it begins with `key`; null when none does.
const tBaseXChg* tStatementLint::ruleWithKey(const std::string& key) {
  tXChgArray& commands = file_.shared().rules.commands;
  const tFoundRules* const found = commands.lookUp(key);
  if (found == nullptr) return nullptr;
  const tFoundRules run = *found;
  tSpcString& first = statement_.tokens()[0];
  const tSpcString written = first;
  first.setText(tString(key));
  const tBaseXChg* taken = nullptr;
  for (int i = run.first; i <= run.last && taken == nullptr; ++i) {
    if (commands[i].matchCount(-1, &statement_) > 0) taken = &commands[i];
  }
  first = written;
  return statement_.overrun() ? nullptr : taken;
}

// In brackets the language has no two operands without something between them, but for types.
void tStatementLint::judgeOperands() {
  const tAutoArray<tSpcString>& tokens = statement_.tokens();
  int depth = 0;
  bool quoted = false;
  for (int i = 0; i + 1 < tokens.count(); ++i) {
    const tSpcString& left = tokens[i];
    const tSpcString& right = tokens[i + 1];
    // What a rule puts in quotes stays several tokens.
    if (left == "\"" || left == "'") quoted = !quoted;
    if (quoted) continue;
    depth += left == "(" || left == "[" || left == "{" ? 1 : 0;
    depth -= left == ")" || left == "]" || left == "}" ? 1 : 0;
    if (equalNoCase(right, "as")) return;
    if (depth < 1 || !isOperand(left) || !isOperand(right)) continue;
    if (!findings_.hears(eWarning::kAdjacentOperands)) return;
    findings_.tell(eWarning::kAdjacentOperands, placeOf(i + 1), {left, right});
    return;
  }
}

void tStatementLint::judgeCall(int name) {
  const tSpcString& word = statement_.tokens()[name];
  if (word.empty() || !isNameStart(word.data()[0])) return;
  const tIndexedName* const found = file_.shared().rules.defines.index().find(word);
  if (found == nullptr || found->rules != 1 || !isMacro(*found)) return;
  const int given = argumentsAt(name + 1);
  const int expected = parametersOf(*found->rule);
  if (given < 0 || given == expected || !findings_.hears(eWarning::kArgumentCount)) return;
  findings_.tell(eWarning::kArgumentCount, placeOf(name),
                 {word, tString::format("%d", given), tString::format("%d", expected)},
                 {noteAt(*found->rule, noted("defined here"))});
}

// The arguments between the bracket at that token and its partner; -1 when it has none.
int tStatementLint::argumentsAt(int bracket) {
  constexpr int kMostTokensRead = 1'000'000;
  const tAutoArray<tSpcString>& tokens = statement_.tokens();
  int depth = 0;
  int commas = 0;
  for (int i = bracket; i < tokens.count() && ++tokens_ < kMostTokensRead; ++i) {
    const tSpcString& token = tokens[i];
    if (token == "(" || token == "[" || token == "{") ++depth;
    if (token == ")" || token == "]" || token == "}") --depth;
    if (depth == 0) return i == bracket + 1 ? 0 : commas + 1;
    if (depth == 1 && token == ",") ++commas;
  }
  return -1;
}

// A token that a rule has made stands where its statement does.
tLintPlace tStatementLint::placeOf(int token) const {
  const tSpcString& at = statement_.tokens()[token];
  const int column = file_.columnOf(at);
  if (column == 0) return {file_.names.opened, statement_.origin(), 0, 0};
  return {file_.names.opened, static_cast<int>(at.line()), column, at.size()};
}

}  // namespace precomp
