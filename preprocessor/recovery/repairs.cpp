// Repairs are guesses: of several, the caller takes the one that gets the run farthest.

#include "preprocessor/recovery/repairs.h"

#include <algorithm>
#include <utility>

#include "korelpre/errors/errortexts.h"
#include "korelpre/text/cursor.h"
#include "korelpre/text/directivewords.h"
#include "korelpre/text/statementopening.h"
#include "korelpre/text/words.h"
#include "preprocessor/copy/textlines.h"

using precomp::eBlock;
using precomp::eDirective;
using precomp::eSourceError;
using precomp::eStatementWord;

namespace {

constexpr std::size_t kMostClosed = 4;  // structures that one repair closes

// The first two words of a statement, and what they mean.
struct tWords {
  std::string first;
  std::string second;
  eStatementWord meaning = eStatementWord::kNone;
  eStatementWord secondMeaning = eStatementWord::kNone;
};

tWords wordsOf(std::string_view line) {
  const std::string text = std::string(line) + '\n';
  const char* const p = precomp::skipBlanks(text.c_str());
  const std::string_view first = precomp::nameAt(p);
  tWords words;
  words.first = first;
  if (first.empty()) return words;
  words.second = precomp::nameAt(precomp::skipBlanks(p + first.size()));
  words.meaning = precomp::statementWord(words.first);
  words.secondMeaning = precomp::statementWord(words.second);
  return words;
}

bool beginsBody(const tWords& words) {
  const auto isBody = [](eStatementWord word) {
    return word == eStatementWord::kFunction || word == eStatementWord::kMethod ||
           word == eStatementWord::kMainFunction;
  };
  return isBody(words.meaning) ||
         (words.meaning != eStatementWord::kNone && isBody(words.secondMeaning));
}

// What is left of a statement when only what it does to structures and bodies counts.
std::string skeletonOf(std::string_view line) {
  const tWords words = wordsOf(line);
  if (beginsBody(words)) return std::string(line.substr(0, line.find('('))) + "()";
  switch (words.meaning) {
    case eStatementWord::kIf:
    case eStatementWord::kElseIf:
    case eStatementWord::kWhile:
    case eStatementWord::kCase:
    case eStatementWord::kFor:
      return words.first + " x";
    case eStatementWord::kDo:
      return words.first + ' ' + words.second + " x";
    case eStatementWord::kBegin:
    case eStatementWord::kEnd:
      return words.first + ' ' + words.second;
    case eStatementWord::kElse:
    case eStatementWord::kEndIf:
    case eStatementWord::kOtherwise:
    case eStatementWord::kEndCase:
    case eStatementWord::kEndDo:
    case eStatementWord::kNext:
    case eStatementWord::kRecover:
    case eStatementWord::kTry:
    case eStatementWord::kCatch:
    case eStatementWord::kEndTry:
      return words.first;
    default:
      return {};
  }
}

const char* closerOf(eBlock block) {
  constexpr const char* kClosers[] = {"EndIf;", "EndCase;",      "EndDo;",
                                      "Next;",  "End Sequence;", "EndTry;"};
  return kClosers[static_cast<std::size_t>(block)];  // kBody is none of the structures
}

bool continues(std::string_view line) {
  const std::string text = std::string(line) + '\n';
  const char* const end = text.c_str() + text.size();
  for (const char* p = text.c_str(); !precomp::endsCode(p); ++p) {
    if (*p == ';' && precomp::behindContinuation(p, end) != nullptr) return true;
    if (!precomp::isQuote(*p)) continue;
    const char* const behind = precomp::behindString(p);
    if (behind == nullptr) return false;
    p = behind - 1;
  }
  return false;
}

// The lines of a statement, `text` in the place of the first.
tRepair replaced(tLineRange lines, const std::string& text) {
  tRepair repair;
  for (int line = lines.first; line <= lines.last; ++line) {
    repair.push_back({line, {.before = {}, .instead = line == lines.first ? text : ""}});
  }
  return repair;
}

// The statement without what is wrong in it, and nothing in its place.
std::vector<tRepair> withoutStatement(const tRepairedText& text, int line) {
  const tLineRange lines = statementAt(text, line);
  std::vector<tRepair> repairs;
  const std::string skeleton = skeletonOf(text.line(lines.first));
  if (!skeleton.empty()) repairs.push_back(replaced(lines, skeleton));
  repairs.push_back(replaced(lines, {}));
  return repairs;
}

// Closes the innermost structures in front of the line, ends the innermost one by the statement, or
// takes the statement away.
std::vector<tRepair> closed(const tRepairedText& text, int line,
                            const std::vector<precomp::tBlockCmd>& open) {
  std::vector<tRepair> repairs;
  const tLineRange lines = statementAt(text, line);
  std::string closers;
  for (std::size_t i = 0; i < std::min(open.size(), kMostClosed); ++i) {
    closers += closerOf(open[open.size() - 1 - i].block());
    repairs.push_back({{lines.first, {.before = closers, .instead = {}}}});
  }
  if (!open.empty()) repairs.push_back(replaced(lines, closerOf(open.back().block())));
  repairs.push_back(replaced(lines, {}));
  return repairs;
}

eDirective directiveOf(std::string_view line) {
  const std::string text = std::string(line) + '\n';
  const char* const p = precomp::skipBlanks(text.c_str());
  return *p == '#' ? precomp::directiveAt(p, text.c_str() + text.size()).directive
                   : eDirective::kNone;
}

// Whether the conditional that a line opens has an #else of its own.
bool hasElse(const tRepairedText& text, int line) {
  int depth = 0;
  while (++line <= text.count() && depth >= 0) {
    const eDirective directive = directiveOf(text.line(line));
    if (directive == eDirective::kElse && depth == 0) return true;
    if (directive == eDirective::kIfdef || directive == eDirective::kIfndef) ++depth;
    if (directive == eDirective::kEndif) --depth;
  }
  return false;
}

// One LOCAL that comes too late is told, not those right below it.
tRepair withoutLocals(const tRepairedText& text, int line) {
  tRepair repair;
  tLineRange lines = statementAt(text, line);
  do {
    for (auto& change : replaced(lines, {})) repair.push_back(std::move(change));
    lines = statementAt(text, lines.last + 1);
  } while (lines.first <= text.count() &&
           wordsOf(text.line(lines.first)).meaning == eStatementWord::kLocal);
  return repair;
}

}  // namespace

tRepairedText::tRepairedText(std::string text) : text_(std::move(text)) {
  for (std::size_t at = 0; at < text_.size(); at = behindLine(text_, at)) starts_.push_back(at);
  starts_.push_back(text_.size());
}

std::string_view tRepairedText::original(int line) const {
  if (line < 1 || line > count()) return {};
  std::string_view rest =
      std::string_view(text_).substr(starts_[static_cast<std::size_t>(line) - 1]);
  return takeLine(rest);
}

std::string_view tRepairedText::line(int line) const {
  const auto repair = repairs_.find(line);
  if (repair != repairs_.end() && repair->second.instead) return *repair->second.instead;
  return original(line);
}

int tRepairedText::shift(int line) const {
  const auto repair = repairs_.find(line);
  return repair == repairs_.end() ? 0 : static_cast<int>(repair->second.before.size());
}

void tRepairedText::add(int line, const tLineRepair& repair) {
  tLineRepair& all = repairs_[line];
  all.before += repair.before;
  if (repair.instead) all.instead = repair.instead;
}

std::string tRepairedText::text() const {
  std::string text;
  std::size_t copied = 0;
  for (const auto& [line, repair] : repairs_) {
    const bool behind = line > count();
    const std::size_t at = behind ? text_.size() : starts_[static_cast<std::size_t>(line) - 1];
    text.append(text_, copied, at - copied).append(repair.before);
    copied = at;
    if (behind) {
      text += "\r\n";
    } else if (repair.instead) {
      text += *repair.instead;
      copied += original(line).size();
    }
  }
  return text.append(text_, copied);
}

tLineRange statementAt(const tRepairedText& text, int line) {
  tLineRange lines{line, line};
  while (lines.first > 1 && continues(text.line(lines.first - 1))) --lines.first;
  while (lines.last < text.count() && continues(text.line(lines.last))) ++lines.last;
  return lines;
}

tLineRange bodyAt(const tRepairedText& text, int line) {
  tLineRange lines{line, line};
  while (lines.first > 1 && !beginsBody(wordsOf(text.line(lines.first)))) --lines.first;
  while (lines.last < text.count() && !beginsBody(wordsOf(text.line(lines.last + 1)))) ++lines.last;
  return lines;
}

bool mayBeCommand(std::string_view line) {
  const std::size_t begin = precomp::skipBlanks(line, 0);
  if (begin == line.size()) return false;
  if (line[begin] == '@') return true;
  const tWords words = wordsOf(line);
  if (words.first.empty() || words.meaning != eStatementWord::kNone) return false;
  const std::size_t behind = begin + words.first.size();
  const std::size_t next = precomp::skipBlanks(line, behind);
  if (next == behind || next == line.size()) return next == line.size();
  return precomp::isWordByte(line[next]) || precomp::isQuote(line[next]);
}

std::vector<tRepair> repairsOf(const precomp::tDiagnosis& error, const tRepairedText& text,
                               const std::vector<precomp::tBlockCmd>& open) {
  if (error.line < 1 || error.line > text.count()) return {};
  const int line = error.line;
  switch (static_cast<eSourceError>(error.code)) {
    case eSourceError::kUnclosedStructure:
      if (open.empty()) return {};
      return {{{bodyAt(text, line).last + 1,
                {.before = closerOf(open.back().block()), .instead = {}}}}};
    case eSourceError::kElseWithoutIf:
    case eSourceError::kElseIfWithoutIf:
    case eSourceError::kEndIfWithoutIf:
    case eSourceError::kEndDoWithoutWhile:
    case eSourceError::kNextWithoutFor:
    case eSourceError::kEndCaseWithoutCase:
    case eSourceError::kEndWithoutSequence:
    case eSourceError::kEndWithoutTry:
      return closed(text, line, open);
    case eSourceError::kUnclosedConditional:
      // Text that is not skipped shows its errors.
      if (directiveOf(text.line(line)) == eDirective::kEndif || !hasElse(text, line)) {
        return {replaced({line, line}, {})};
      }
      return {{{text.count() + 1, {.before = "#endif", .instead = {}}}}};
    case eSourceError::kOutsideFunction: {
      std::vector<tRepair> repairs = withoutStatement(text, line);
      repairs.insert(repairs.begin(), {{line, {.before = "Function Repaired();", .instead = {}}}});
      return repairs;
    }
    case eSourceError::kInvalidFunctionName:
      return {replaced(statementAt(text, line), "Function Repaired()")};
    case eSourceError::kLateLocal:
      return {withoutLocals(text, line)};
    case eSourceError::kLimitExceeded:
      if (error.slug != "cannot-read") return {};
      [[fallthrough]];
    default:
      return withoutStatement(text, line);
  }
}
