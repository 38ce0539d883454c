// How an error of a source is raised. The exception and the session's error line carry what the
// classic message says; the diagnosis beside them carries all that can be told, since at this point
// the file, its text and the statement are still at hand.

#include <algorithm>
#include <cstdint>
#include <utility>

#include "korelpre/directives/missingfile.h"
#include "korelpre/directives/openbracket.h"
#include "korelpre/directives/programfile.h"
#include "korelpre/errors/errortexts.h"
#include "korelpre/errors/notes.h"
#include "korelpre/text/cursor.h"
#include "korelpre/text/tokenise.h"
#include "lib_base/diskman.h"
#include "lib_base/pathname.h"
#include "lib_base/translate.h"

namespace precomp {

namespace {

bool takesExtra(eSourceError error) {
  return error == eSourceError::kIncludeNotFound || error == eSourceError::kInvalidFunctionName ||
         error == eSourceError::kLimitExceeded;
}

int firstColumn(std::string_view line) {
  const std::size_t at = line.find_first_not_of(" \t");
  return at == std::string_view::npos ? 0 : static_cast<int>(at) + 1;
}

// One behind the last byte of the token at a column, from 1; 0 when there is none.
int endOfToken(std::string_view line, int column) {
  const std::size_t begin = static_cast<std::size_t>(column) - 1;
  if (column < 1 || begin >= line.size()) return 0;
  const auto isInName = [](char c) {
    return isWordByte(c) || static_cast<unsigned char>(c) >= 0x80;
  };
  std::size_t end = begin + 1;
  if (line[begin] == '"' || line[begin] == '\'') {
    end = std::min(line.find(line[begin], end), line.size() - 1) + 1;
  } else if (isInName(line[begin]) || line[begin] == '#') {
    while (end < line.size() && isInName(line[end])) ++end;
  }
  return static_cast<int>(end) + 1;
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

void tProgramFile::raise(eSourceError error, int line, const char* extra, int column,
                         std::vector<tNote> notes) {
  const tErrorText& entry = errorTextOf(error);
  tString message(entry.text);
  if (extra != nullptr && takesExtra(error)) message.append(extra);
  // A file that is not there has no line: the error belongs to the directive of the main file.
  if (error == eSourceError::kIncludeNotFound) {
    diagnoseInclude(entry.code, entry.slug, message, std::move(notes));
    shared_.error.placed = true;
    shared_.error.line = main_->currentLine;
  } else {
    diagnose(entry.code, entry.slug, message, line, column, std::move(notes));
    if (error == eSourceError::kUnterminated && column == 0) pointAtOpen(line);
    placeError(line, column, message);
  }
  throw SSException(entry.code, message.c_str());
}

void tProgramFile::throwError(eSourceError error, const tStatementPlace& place, const char* extra,
                              std::vector<tNote> notes) {
  main_->currentLine = place.mainLine;
  static_cast<tProgramFile*>(place.file)
      ->raise(error, place.line, extra, place.column, std::move(notes));
}

tNote tProgramFile::noteAt(const tStatementPlace& place, tNote note) const {
  note.file = names.opened;
  note.line = place.line;
  note.sourceLine = tString(lineText(place.line));
  note.column = place.column > 0 ? place.column : firstColumn(note.sourceLine);
  note.endColumn = endOfToken(note.sourceLine, note.column);
  return note;
}

// The line of a message is a line of the file that the message names, the main file. What happened
// in an included file is told in front of the text.
void tProgramFile::placeError(int line, int column, tString& message) {
  tRaisedError& error = shared_.error;
  if (error.placed) return;
  error.placed = true;
  if (isMain()) {
    error.line = line;
    error.column = column;
    return;
  }
  error.line = main_->currentLine;
  error.column = 0;
  message.insert(
      0, tString::format("%s(%d) %s ", names.shown.c_str(), line, translate("Error").c_str()));
}

void tProgramFile::raiseMissing(const tString& name) {
  std::vector<tNote> notes;
  if (!isMain()) notes = notesOfMissing(shared_.finder, name);
  if (bareName(name) == bareName(shared_.standardHeader)) {
    notes.push_back(noted("add the directory of the shipped headers to the include directories"));
  }
  raise(eSourceError::kIncludeNotFound, currentLine, name.c_str(), 0, std::move(notes));
}

void tProgramFile::raiseLimit(const char* limit) {
  raiseOfInclude(errorTextOf(eSourceError::kLimitExceeded).slug, limit);
}

void tProgramFile::raiseUnreadable(const tString& name, int error) {
  raiseOfInclude("cannot-read", tString(name).append(": ").append(reasonOf(error)));
}

void tProgramFile::raiseOfInclude(const char* slug, std::string_view what) {
  const tErrorText& entry = errorTextOf(eSourceError::kLimitExceeded);
  tString message(entry.text);
  message.append(": ").append(what);
  diagnoseInclude(entry.code, slug, message);
  shared_.error.placed = true;
  shared_.error.line = main_->currentLine;
  throw SSException(entry.code, message.c_str());
}

void tProgramFile::raiseLimit(const char* limit, int line) {
  raise(eSourceError::kLimitExceeded, line, tString(": ").append(limit).c_str());
}

void tProgramFile::raiseAgain(const SSException& failure, int line) {
  if (shared_.error.placed) return;
  const bool invalidToken = failure.errorId() == SSErrorToken;
  if (invalidToken) line = static_cast<int>(failure.argument(0).number());
  const int column = invalidToken ? static_cast<int>(failure.argument(1).number()) : 0;
  tString message(failure.message());
  diagnose(failure.errorId(), invalidToken ? "invalid-character" : "runtime-error", message, line,
           column);
  placeError(line, column, message);
  throw SSException(failure.errorId(), message.c_str());
}

void tProgramFile::diagnose(int code, const char* slug, const tString& message, int line,
                            int column, std::vector<tNote> notes) {
  if (shared_.error.placed) return;
  tDiagnosis& diagnosis = shared_.error.diagnosis;
  diagnosis = {};
  diagnosis.code = code;
  diagnosis.slug = tString::borrow(slug);
  diagnosis.message = message;
  diagnosis.file = names.opened;
  diagnosis.line = line;
  diagnosis.sourceLine = tString(lineText(line));
  diagnosis.column = column > 0 ? column : firstColumn(diagnosis.sourceLine);
  diagnosis.endColumn = endOfToken(diagnosis.sourceLine, diagnosis.column);
  diagnosis.notes = std::move(notes);
  for (const tProgramFile* file = this; file->includer_ != nullptr; file = file->includer_) {
    diagnosis.includedFrom.push_back({file->includer_->names.opened, file->includedAt_});
  }
  diagnosis.rules = rulesAppliedTo(line);
}

// A rule has written the bracket that is left open, but the one that lacks its partner may stand in
// the source, or in the result of a rule.
void tProgramFile::pointAtOpen(int line) {
  if (shared_.error.placed || !shared_.walking || line < 1 || line > lines.count()) return;
  tDiagnosis& diagnosis = shared_.error.diagnosis;
  while (line > 1 && lines.kind(line) == tSourceCode::kNothing) --line;
  tTknString statement(line);
  const tSpcString* bracket = nullptr;
  if (lines.kind(line) == tSourceCode::kPlain) {
    tokenisePlain(text.data() + lines.offset(line), text.data() + text.size(), line, statement);
    bracket = loneBracketOf(statement);
  }
  if (bracket == nullptr) {
    diagnosis.notes = notesOfUnbalanced(diagnosis.rules);
    return;
  }
  tStatementPlace place = placeOf(static_cast<int>(bracket->line()));
  place.column = columnOf(*bracket);
  if (place.line == diagnosis.line) {
    diagnosis.column = place.column;
    diagnosis.endColumn = place.column + 1;
  } else {
    diagnosis.notes = {noteAt(place, noted("the '%1' has no partner", {*bracket}))};
  }
}

// What is wrong with a whole file is told of the directive that includes it.
void tProgramFile::diagnoseInclude(int code, const char* slug, const tString& message,
                                   std::vector<tNote> notes) {
  if (includer_ == nullptr) return diagnose(code, slug, message, 0, 0, std::move(notes));
  const std::string_view directive = includer_->lineText(includedAt_);
  includer_->diagnose(code, slug, message, includedAt_, columnOfName(directive, names.requested),
                      std::move(notes));
}

std::string_view tProgramFile::lineText(int line) const {
  std::string_view rest = text;
  if (line < 1) return {};
  while (--line > 0) {
    const std::size_t end = rest.find('\n');
    if (end == std::string_view::npos) return {};
    rest.remove_prefix(end + 1);
  }
  rest = rest.substr(0, rest.find('\n'));
  if (rest.ends_with('\r')) rest.remove_suffix(1);
  return rest;
}

int tProgramFile::columnOf(const tSpcString& token) const {
  const auto at = reinterpret_cast<std::uintptr_t>(token.data());
  const auto begin = reinterpret_cast<std::uintptr_t>(text.data());
  if (token.line() == 0 || at < begin || at >= begin + text.size()) return 0;
  return columnAt(at - begin);
}

int tProgramFile::columnAt(std::size_t offset) const {
  const std::string_view before = text.view().substr(0, offset);
  return static_cast<int>(offset - (before.rfind('\n') + 1)) + 1;
}

// The rules that have made of a statement what it is. Those of the statement in work have been
// noted if it was rewritten token by token; those of another one whose text still tells are found
// by rewriting it once more, unless the rules are other ones now.
std::vector<const tBaseXChg*> tProgramFile::rulesAppliedTo(int line) {
  if (!shared_.walking || line < 1 || line > lines.count()) return {};
  while (line > 1 && lines.kind(line) == tSourceCode::kNothing) --line;
  const tRewriting& last = shared_.rewriting;
  if (last.file == this && last.line == line) return last.notes.applied;
  if (lines.kind(line) != tSourceCode::kPlain) return {};
  const int mainLine = isMain() ? line : main_->currentLine;
  if (mainLine < last.replacedAt) return {};
  std::vector<const tBaseXChg*> rules = rulesOfPlain(line);
  const bool same = std::all_of(rules.begin(), rules.end(),
                                [&](const tBaseXChg* rule) { return appliesTo(*rule, mainLine); });
  if (!same) rules.clear();
  return rules;
}

// Finds out once more how a plain statement is rewritten; no observer shall hear of it.
std::vector<const tBaseXChg*> tProgramFile::rulesOfPlain(int line) {
  tRewriter::tNotes notes;
  tTknString statement(line);
  const char* const start = text.data() + lines.offset(line);
  tokenisePlain(start, text.data() + text.size(), line, statement);
  shared_.rules.setObserver(nullptr);
  tRewriter(shared_.rules, statement, notes).run();
  shared_.rules.setObserver(shared_.observer);
  return std::move(notes.applied);
}

// Rules of the main file are entered when their line is reached, all others ahead of that.
bool tProgramFile::appliesTo(const tBaseXChg& rule, int mainLine) const {
  return rule.originLine() <= mainLine || rule.originFile() != main_->names.opened;
}

}  // namespace precomp
