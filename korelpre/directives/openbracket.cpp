#include "korelpre/directives/openbracket.h"

#include <algorithm>

#include "korelpre/errors/notes.h"
#include "korelpre/rules/rule.h"

namespace precomp {

namespace {

/// Takes the tokens of a statement or a result in order and keeps the brackets that are open.
class tOpenBrackets {
 public:
  void take(const tSpcString& token) {
    if (lone_ != nullptr || token.size() != 1) return;
    const char c = token[0];
    if (c == '(' || c == '[') open_.push_back(&token);
    if (c != ')' && c != ']') return;
    const bool fits = !open_.empty() && (*open_.back())[0] == (c == ')' ? '(' : '[');
    if (fits) {
      open_.pop_back();
    } else {
      lone_ = &token;
    }
  }
  /// Where one statement ends and the next begins.
  void end() {
    if (lone_ == nullptr && !open_.empty()) lone_ = open_.back();
    open_.clear();
  }
  const tSpcString* lone() const { return lone_; }

 private:
  std::vector<const tSpcString*> open_;
  const tSpcString* lone_ = nullptr;
};

const char* directiveOf(const tBaseXChg& rule) {
  const tWordRule words = rule.wordRule();
  if (words.caseSensitive) return "#define";
  if (rule.isCmd()) return words.abbreviate ? "#command" : "#xcommand";
  return words.abbreviate ? "#translate" : "#xtranslate";
}

}  // namespace

const tSpcString* loneBracketOf(const tTknString& statement) {
  tOpenBrackets brackets;
  for (int i = 0; i < statement.count(); ++i) {
    const tSpcString& token = statement.tokens()[i];
    if (token == ";") brackets.end();
    brackets.take(token);
  }
  brackets.end();
  return brackets.lone();
}

const tSpcString* loneBracketOf(const tMatchMarker* result) {
  tOpenBrackets brackets;
  for (const tMatchMarker* marker = result; marker != nullptr; marker = marker->next()) {
    if (marker->kind() == kResultIdentifier) brackets.take(marker->token());
    for (const tMatchMarker* clause : marker->groups()) {
      if (const tSpcString* const lone = loneBracketOf(clause)) return lone;
    }
  }
  brackets.end();
  return brackets.lone();
}

std::vector<tNote> notesOfUnbalanced(const std::vector<const tBaseXChg*>& rules) {
  std::vector<tNote> notes;
  for (auto at = rules.begin(); at != rules.end(); ++at) {
    const tBaseXChg& rule = **at;
    if (std::find(rules.begin(), at, &rule) != at) continue;
    const tSpcString* const bracket = loneBracketOf(rule.firstResult());
    if (bracket == nullptr) continue;
    notes.push_back(noteAt(rule, noted("in the result of %1 %2 the '%3' has no partner",
                                       {directiveOf(rule), rule.key(), *bracket})));
  }
  return notes;
}

}  // namespace precomp
