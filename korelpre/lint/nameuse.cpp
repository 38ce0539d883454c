// Which words of a main file a #define was meant to replace, and does not.
//
//   [names]   The defines of the program come from its tables: those of headers and options hold
//             from the first line on, those of the main file from their own. Two bits for each pair
//             of letters dismiss nearly all words of the file at once.
//   [words]   A word is compared with the defines of its folded name. The same spelling above the
//             line of the define is one finding, no define of the spelling another.
//   [own]     The language knows no case, and a program may have a variable of the name of a
//             define, or of a word of the language. What is declared, assigned to, called, or
//             belongs to an object or an alias is the program's own word, and so is a word that a
//             rule in force has in its pattern.

#include "korelpre/lint/nameuse.h"

#include <algorithm>
#include <cstring>

#include "korelpre/directives/programfile.h"
#include "korelpre/errors/notes.h"
#include "korelpre/text/cursor.h"
#include "korelpre/text/statementopening.h"
#include "lib_base/misc.h"

namespace precomp {

namespace {

bool isDeclaration(eStatementWord word) {
  using enum eStatementWord;
  return word == kLocal || word == kStatic || word == kDeclaration || word == kFunction ||
         word == kMethod || word == kMainFunction || word == kModifier;
}

void addWords(const tMatchMarker* head, std::unordered_set<std::string>& words) {
  for (const tMatchMarker* marker = head; marker != nullptr; marker = marker->next()) {
    if (marker->isIdentifier()) words.insert(foldedWord(marker->token()));
    for (int i = 0; i < marker->groups().count(); ++i) addWords(marker->groups()[i], words);
  }
}

}  // namespace

tNameUse::tNameUse(tFindings& findings, tProgramFile& file) : findings_(findings), file_(file) {
  const tRuleSet& rules = file.shared().rules;
  for (int i = 0; i < rules.defines.count(); ++i) {
    const tBaseXChg* const rule = rules.defines.madeRule(i);
    if (rule != nullptr) add({rule->key(), 0, rule});
  }
  addWaiting();
}

// [names] The lines of the main file that a #define has been left on.
void tNameUse::addWaiting() {
  tSourceCode& lines = file_.lines;
  for (int line = 1; line <= lines.count(); ++line) {
    if (lines.kind(line) != tSourceCode::kEntry) continue;
    const tBaseXChg* const rule = lines.entryAt(line).pendingDefine.get();
    if (rule != nullptr) add({rule->key(), line, rule});
  }
}

void tNameUse::add(const tDefine& define) {
  if (define.name.empty()) return;
  gate_.set(gateOf(define.name));
  folded_[foldedWord(define.name)].push_back(define);
}

void tNameUse::statementBegins(std::string_view word) {
  first_ = word;
  statement_ = statementWord(word);
}

// [words]
void tNameUse::passed(std::string_view word, int line) {
  const auto found = folded_.find(foldedWord(word));
  if (found == folded_.end()) return;
  if (declares(word)) {
    variables_.insert(found->first);
    return;
  }
  const tDefine* first = nullptr;
  for (const tDefine& define : found->second) {
    if (define.name == word && (first == nullptr || define.line < first->line)) first = &define;
  }
  const bool called = *skipBlanks(word.data() + word.size()) == '(';
  if (first != nullptr) {
    const bool isMacro = first->rule->firstMatch()->next() != nullptr;
    if (line < first->line && (called || !isMacro)) uses_.push_back({word, line, first});
  } else if (!isOwnWord(word) && !called && statementWord(word) == eStatementWord::kNone &&
             found->first != "NIL") {
    uses_.push_back({word, line, &found->second.front()});
  }
}

// [words] Of these only the spelling counts: a #define below may be meant for what follows.
void tNameUse::conditional(std::string_view name, int line) {
  if (name.empty() || file_.shared().rules.isDefined(name)) return;
  const auto found = folded_.find(foldedWord(name));
  if (found != folded_.end()) uses_.push_back({name, line, &found->second.front()});
}

// [own] Whether the word is the name of a variable that comes to be, or to a value, here.
bool tNameUse::declares(std::string_view word) const {
  const char* const next = skipBlanks(word.data() + word.size());
  const std::string_view rest(next, 2);
  if (rest == ":=" || rest == "++" || rest == "--" ||
      (next[1] == '=' && std::strchr("+-*/", *next)))
    return true;
  if (isBlockParameter(word)) return true;
  const bool isFirst = word.data() == first_.data();
  if (isFirst) return *next == '=';
  const char* const before = backOverBlanks(word.data(), first_.data());
  const bool follows = before == first_.data() + first_.size();
  if (statement_ == eStatementWord::kFor) return follows;
  return isDeclaration(statement_) && (follows || before[-1] == ',' || before[-1] == '(');
}

// [own] Of a code block: "{|a, b| a + b}".
bool tNameUse::isBlockParameter(std::string_view word) const {
  constexpr std::ptrdiff_t kFarthest = 200;
  const char* const text = file_.text.data();
  const char* const start = word.data() - std::min(word.data() - text, kFarthest);
  const char* before = word.data();
  while (before > start && (isWordByte(before[-1]) || isBlank(before[-1]) || before[-1] == ',')) {
    --before;
  }
  if (before == start || before[-1] != '|') return false;
  before = backOverBlanks(before - 1, start);
  return before > start && before[-1] == '{';
}

// [own] A property, an alias or a field of one.
bool tNameUse::isOwnWord(std::string_view word) const {
  const char* const next = skipBlanks(word.data() + word.size());
  if ((next[0] == '-' && next[1] == '>') || *next == ':' || *next == '.') return true;
  const char* const before = backOverBlanks(word.data(), file_.text.data());
  return before > file_.text.data() && std::strchr(":>.&", before[-1]) != nullptr &&
         before[-1] != '\0';
}

bool tNameUse::isRuleWord(const std::string& folded) {
  tRuleSet& rules = file_.shared().rules;
  if (!rulesRead_) {
    rulesRead_ = true;
    for (const tXChgArray* table : {&rules.commands, &rules.translates}) {
      for (int i = 0; i < table->count(); ++i) {
        const tBaseXChg* const rule = table->madeRule(i);
        if (rule != nullptr) addWords(rule->firstMatch(), ruleWords_);
      }
    }
    tSourceCode& lines = file_.lines;
    for (int line = 1; line <= lines.count(); ++line) {
      if (lines.kind(line) != tSourceCode::kEntry) continue;
      for (const auto& rule : lines.entryAt(line).pendingRules) {
        addWords(rule->firstMatch(), ruleWords_);
      }
    }
  }
  return ruleWords_.count(folded) > 0;
}

void tNameUse::finish() {
  std::unordered_set<std::string> told;
  for (const tUse& use : uses_) {
    const std::string folded = foldedWord(use.word);
    if (variables_.count(folded) > 0 || isRuleWord(folded)) continue;
    if (told.emplace(use.word).second) tellUse(use);
  }
}

// Of each spelling the first use is told.
void tNameUse::tellUse(const tUse& use) {
  const bool sameCase = use.define->name == use.word;
  const eWarning warning = sameCase ? eWarning::kDefineBelowUse : eWarning::kDefineCase;
  if (!findings_.hears(warning)) return;
  const auto offset = static_cast<std::size_t>(use.word.data() - file_.text.data());
  const tLintPlace place{file_.names.opened, use.line, file_.columnAt(offset), use.word.size()};
  std::vector<tNote> notes;
  const tBaseXChg& rule = *use.define->rule;
  if (rule.originLine() > 0) notes.push_back(noteAt(rule, noted("defined here")));
  findings_.tell(warning, place, {use.word, use.define->name}, std::move(notes));
}

}  // namespace precomp
