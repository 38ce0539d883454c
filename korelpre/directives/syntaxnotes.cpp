#include "korelpre/directives/syntaxnotes.h"

#include <algorithm>
#include <string>
#include <utility>

#include "korelpre/errors/notes.h"
#include "lib_base/translate.h"
#include "ssvp40xpf/korelpretokens.h"

namespace precomp {

using namespace korelpre;

namespace {

/// What was expected, "A, B or C", in English and in the language of the run.
class tChoice {
 public:
  void add(const char* words) { add(words, translate(words)); }
  void addToken(unsigned token) {
    const std::string spelt = std::string("'") + tokenSpelling(token) + "'";
    add(spelt, spelt);
  }
  bool empty() const { return words_.empty(); }
  tNote note() const {
    const tString english = list(&tWords::english, "or");
    tNote note = noted("expected %1", {english});
    const tString words = list(&tWords::translated, translate("or"));
    if (words != english) note.translated = filled(translate("expected %1"), {words});
    return note;
  }

 private:
  struct tWords {
    tString english;
    tString translated;
  };

  void add(std::string_view english, std::string_view translated) {
    words_.push_back({tString(english), tString(translated)});
  }
  tString list(tString tWords::*language, std::string_view last) const {
    tString all;
    for (const tWords& words : words_) {
      if (!all.empty() && &words != &words_.back()) all.append(", ");
      if (!all.empty() && &words == &words_.back()) all.append(' ').append(last).append(' ');
      all.append(words.*language);
    }
    return all;
  }

  std::vector<tWords> words_;
};

/// A bracket of a group that has no partner.
struct tLoneBracket {
  std::size_t at = std::string_view::npos;  // in the directive; npos: there is none
  bool opens = false;
};

// Pattern and result have their groups each.
tLoneBracket loneBracketIn(std::string_view directive) {
  std::vector<std::size_t> open;
  for (std::size_t i = 0; i < directive.size(); ++i) {
    const char c = directive[i];
    if (c == '\\') {
      ++i;
    } else if (c == '"' || c == '\'') {
      const std::size_t end = directive.find(c, i + 1);
      if (end < directive.find('\n', i)) i = end;
    } else if (c == '[') {
      open.push_back(i);
    } else if (c == ']') {
      if (open.empty()) return {i, false};
      open.pop_back();
    } else if (directive.substr(i, 2) == "=>" && !open.empty()) {
      break;
    }
  }
  return open.empty() ? tLoneBracket() : tLoneBracket{open.back(), true};
}

}  // namespace

std::vector<tNote> notesOfLookaheads(const std::function<bool(unsigned)>& takes, unsigned met) {
  const bool anything = takes(kTokPlus);
  if (isDirectiveToken(met) && takes(kTokLineFeed)) {
    return {noted("a directive stands at the beginning of its line")};
  }
  tChoice choice;
  if (takes(kTokResultArrow)) {
    choice.addToken(kTokResultArrow);
  } else if (anything) {
    choice.add("a word");
  } else {
    const bool name = takes(kTokIdentName);
    if (name) choice.add("a name");
    if (!name && takes(kTokString)) choice.add("a name in quotes");
    if (!name && takes(kTokNumber)) choice.add("a number");
    for (const unsigned token : {kTokEllipsis, kTokColon, kTokComma, kTokStar, kTokDot,
                                 kTokRightParen, kTokRightBrace, kTokGreater}) {
      if (takes(token)) choice.addToken(token);
    }
    if (!name && takes(kTokAlias)) choice.addToken(kTokAlias);
    if (takes(kTokLineFeed)) choice.add("the end of the line");
  }
  if (choice.empty()) return {};
  return {choice.note()};
}

void raiseUnsound(tProgramFile& file, const tRuleDirective& directive) {
  const tLoneBracket bracket = loneBracketIn(directive.text);
  const auto begin = static_cast<std::size_t>(directive.text.data() - file.text.data());
  if (bracket.at == std::string_view::npos) {
    std::vector<tNote> notes;
    if (directive.pattern->isBalanced()) notes.push_back(noted("a pattern begins with a word"));
    file.raise(eSourceError::kSyntax, directive.line, nullptr, 0, std::move(notes));
  }
  const std::string_view before = directive.text.substr(0, bracket.at);
  tStatementPlace place = file.placeOf(
      directive.line + static_cast<int>(std::count(before.begin(), before.end(), '\n')));
  place.column = file.columnAt(begin + bracket.at);
  const std::string column = std::to_string(place.column);
  tNote note = bracket.opens ? noted("expected ']' for the '[' in column %1", {column})
                             : noted("the ']' in column %1 has no '['", {column});
  file.raise(eSourceError::kSyntax, directive.line, nullptr,
             place.line == directive.line ? place.column : 0,
             {file.noteAt(place, std::move(note))});
}

}  // namespace precomp
