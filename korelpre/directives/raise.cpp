// How an error of a source is raised. The exception and the session's error line carry what the
// classic message says; the diagnosis beside them carries all that can be told, since at this point
// the file, its text and the statement are still at hand.

#include <algorithm>
#include <cstdint>
#include <cstdio>

#include "korelpre/errors/errortexts.h"
#include "korelpre/korelprecls.h"
#include "lib_base/translate.h"

namespace precomp {

namespace {

constexpr int kFileNotFound = 2090;
constexpr int kUnknownError = 9999;

bool takesExtra(int code) {
  return code == kFileNotFound || code == 2091 || code == kUnknownError;
}

// A line of a text, from 1, without its line end; empty when there is none.
std::string_view lineOfText(std::string_view text, int line) {
  if (line < 1) return {};
  while (--line > 0) {
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos) return {};
    text.remove_prefix(end + 1);
  }
  text = text.substr(0, text.find('\n'));
  if (text.ends_with('\r')) text.remove_suffix(1);
  return text;
}

int firstColumn(std::string_view line) {
  const std::size_t at = line.find_first_not_of(" \t");
  return at == std::string_view::npos ? 0 : static_cast<int>(at) + 1;
}

// The column of a file's name in the directive that includes it, that of its quote when it has one.
int columnOfName(std::string_view line, std::string_view name) {
  const std::size_t at = line.find(name);
  if (at == std::string_view::npos) return 0;
  const bool quoted =
      at > 0 && std::string_view("\"'<").find(line[at - 1]) != std::string_view::npos;
  return static_cast<int>(at) + (quoted ? 0 : 1);
}

}  // namespace

void KorelPreYaccClass::exception(int code, const tSpcString* token, const char* extra) {
  const bool placed = token != nullptr && token->line() > 0;
  exceptionAt(code, placed ? static_cast<int>(token->line()) : currentLine_, extra,
              placed ? columnOf(*token) : 0);
}

void KorelPreYaccClass::exceptionAt(int code, int line, const char* extra, int column) {
  const tErrorText& entry = errorTextOf(code);
  tString text(entry.text);
  if (extra != nullptr && takesExtra(entry.code)) text.append(extra);
  // A file that is not there has no line: the error belongs to the directive of the main file.
  if (entry.code == kFileNotFound) {
    diagnoseInclude(entry.code, entry.slug, text);
    shared_.errorPlaced = true;
    errLine() = root().currentLine_;
  } else {
    diagnose(entry.code, entry.slug, text, line, column);
    placeError(line, column, text);
  }
  throw SSException(entry.code, text.c_str());
}

void KorelPreYaccClass::exceptionAt(int code, const tStatementPlace& place, const char* extra) {
  root().currentLine_ = place.mainLine;
  place.file->exceptionAt(code, place.line, extra, place.column);
}

// The line of a message is a line of the file that the message names, the main file. What happened
// in an included file is told in front of the text.
void KorelPreYaccClass::placeError(int line, int column, tString& text) {
  if (shared_.errorPlaced) return;
  shared_.errorPlaced = true;
  if (root_ == this) {
    errLine() = line;
    errCol() = column;
    return;
  }
  errLine() = root().currentLine_;
  errCol() = 0;
  text.insert(0,
              tString::format("%s(%d) %s ", fileName_.c_str(), line, translate("Error").c_str()));
}

void KorelPreYaccClass::raiseIncludeLimit(const char* limit) {
  const tErrorText& entry = errorTextOf(kUnknownError);
  tString text(entry.text);
  text.append(": ").append(limit);
  diagnoseInclude(entry.code, entry.slug, text);
  shared_.errorPlaced = true;
  errLine() = root().currentLine_;
  throw SSException(kUnknownError, text.c_str());
}

// An error of the scanner or the parser itself does not know about files yet.
void KorelPreYaccClass::placeScannerError(const SSException& failure) {
  if (shared_.errorPlaced) return;
  const bool invalidToken = failure.errorId() == SSErrorToken;
  const int line = invalidToken ? static_cast<int>(failure.argument(0).number())
                                : static_cast<int>(consumer_->startLine());
  const int column = invalidToken ? static_cast<int>(failure.argument(1).number()) : 0;
  tString text(failure.message());
  diagnose(failure.errorId(), invalidToken ? "invalid-character" : "runtime-error", text, line,
           column);
  placeError(line, column, text);
  throw SSException(failure.errorId(), text.c_str());
}

void KorelPreYaccClass::diagnose(int code, const char* slug, const tString& message, int line,
                                 int column) {
  if (shared_.errorPlaced) return;
  tDiagnosis& diagnosis = shared_.diagnosis;
  diagnosis = {};
  diagnosis.code = code;
  diagnosis.slug = tString::borrow(slug);
  diagnosis.message = message;
  diagnosis.file = openedName_;
  diagnosis.line = line;
  diagnosis.sourceLine = tString(lineOfText(text_, line));
  diagnosis.column = column > 0 ? column : firstColumn(diagnosis.sourceLine);
  for (const KorelPreYaccClass* file = this; file->includer_ != nullptr; file = file->includer_) {
    diagnosis.includedFrom.push_back({file->includer_->openedName_, file->includedAt_});
  }
  diagnosis.rules = rulesAppliedTo(line);
}

// What is wrong with a whole file is told of the directive that includes it.
void KorelPreYaccClass::diagnoseInclude(int code, const char* slug, const tString& message) {
  if (includer_ == nullptr) return diagnose(code, slug, message, 0, 0);
  const std::string_view directive = lineOfText(includer_->text_, includedAt_);
  includer_->diagnose(code, slug, message, includedAt_, columnOfName(directive, requestedName_));
}

int KorelPreYaccClass::columnOf(const tSpcString& token) const {
  const auto at = reinterpret_cast<std::uintptr_t>(token.data());
  const auto begin = reinterpret_cast<std::uintptr_t>(text_.data());
  if (token.line() == 0 || at < begin || at >= begin + text_.size()) return 0;
  return columnAt(at - begin);
}

int KorelPreYaccClass::columnAt(std::size_t offset) const {
  const std::string_view before = text_.view().substr(0, offset);
  return static_cast<int>(offset - (before.rfind('\n') + 1)) + 1;
}

// The rules that have made of a statement what it is. Those of the statement in work have been
// noted if it was rewritten token by token; those of another one whose text still tells are found
// by rewriting it once more, unless the rules are other ones now.
std::vector<const tBaseXChg*> KorelPreYaccClass::rulesAppliedTo(int line) {
  if (!shared_.walking || line < 1 || line > source_.count()) return {};
  while (line > 1 && source_.kind(line) == tSourceCode::kNothing) --line;
  const tRewriting& last = shared_.rewriting;
  if (last.file == this && last.line == line) return last.rules;
  if (source_.kind(line) != tSourceCode::kPlain) return {};
  const int mainLine = root_ == this ? line : root_->currentLine_;
  if (mainLine < last.replacedAt) return {};
  std::vector<const tBaseXChg*> rules = rulesOfPlain(line);
  const bool same = std::all_of(rules.begin(), rules.end(),
                                [&](const tBaseXChg* rule) { return appliesTo(*rule, mainLine); });
  if (!same) rules.clear();
  return rules;
}

// Rules of the main file are entered when their line is reached, all others ahead of that.
bool KorelPreYaccClass::appliesTo(const tBaseXChg& rule, int mainLine) const {
  return rule.originLine() <= mainLine || rule.originFile() != root_->openedName_;
}

}  // namespace precomp
