// Phase 2: the walk over the lines. Every line gives one output line; "#line" markers are written
// only where the output stops following the source: where an included file begins, and behind it.

#include "korelpre/directives/linewalk.h"

#include <algorithm>

#include "korelpre/directives/programfile.h"
#include "korelpre/directives/ruleentry.h"
#include "korelpre/headers/headerimage.h"
#include "korelpre/headers/headerrecorder.h"
#include "korelpre/rules/ruleobserver.h"
#include "korelpre/statements/plainwrite.h"
#include "korelpre/text/tokenise.h"

namespace precomp {

namespace {

void endLine(tString& output) {
  if (!output.empty() && output[output.size() - 1] != '\n') output.append('\n');
}

void removeTrailingLineFeeds(tString& output) {
  std::size_t size = output.size();
  while (size > 0 && output.data()[size - 1] == '\n') --size;
  output.resize(size);
}

void appendMarker(tString& output, int line, std::string_view name) {
  endLine(output);
  output.append(tString::format("#line %d \"", line)).append(name).append("\"\n");
}

tString openingName(const tProgramFileNames& names) {
  tString name = names.shown;
  if (name.find(names.directory) == tString::npos) name.insert(0, names.directory);
  return name;
}

}  // namespace

tLineWalk::tLineWalk(tProgramFile& file) : file_(file), shared_(file.shared()) {}

void tLineWalk::run(tString& output, int& depth) {
  if (++depth == 1) {
    shared_.checks.begin();
    shared_.walking = true;
    shared_.rewriting = {};
  }
  if (file_.isMain()) {
    // All conditionals are decided.
    shared_.rules.dynDefines.dropRules();
    const std::size_t expected = output.size() + file_.text.size() + file_.text.size() / 2;
    output.reserve(std::min(expected, tString::maxSize()));
  }
  if (file_.isIncluded) {
    removeTrailingLineFeeds(output);
    appendMarker(output, 1, openingName(file_.names));
  }
  if (file_.isIncluded && !file_.lines.hasStatements()) {
    walkIncludesOnly(output, depth);
  } else {
    walkLines(output, depth);
  }
  removeTrailingLineFeeds(output);
  if (--depth == 0) shared_.checks.finish();
}

// Of a header that an image stands for only the markers are written.
void tLineWalk::walkInclude(tInclude& include, tString& output, int& depth) {
  if (include.image() == nullptr) {
    tLineWalk(include.file()).run(output, depth);
    return;
  }
  for (const tHeaderMarker& marker : include.image()->notes().markers) {
    removeTrailingLineFeeds(output);
    appendMarker(output, static_cast<int>(marker.line), marker.name);
  }
  removeTrailingLineFeeds(output);
}

bool noteMarkers(tProgramFile& file, tHeaderRecorder& recorder) {
  tSourceCode& lines = file.lines;
  if (lines.hasStatements()) return false;
  recorder.marker(1, openingName(file.names));
  bool pending = false;
  for (int line = 1; line <= lines.count(); ++line) {
    if (!lines.hasContent(line)) continue;
    if (pending) recorder.marker(line, file.names.requested);
    tInclude* const include =
        lines.kind(line) == tSourceCode::kEntry ? lines.entryAt(line).include : nullptr;
    pending = include != nullptr;
    if (pending && !noteMarkers(include->file(), recorder)) return false;
  }
  return true;
}

void tLineWalk::walkIncludesOnly(tString& output, int& depth) {
  tSourceCode& lines = file_.lines;
  bool pending = false;
  for (int line = 1; line <= lines.count(); ++line) {
    if (!lines.hasContent(line)) continue;
    if (pending) appendMarker(output, line, file_.names.requested);
    pending = false;
    if (lines.kind(line) != tSourceCode::kEntry) continue;
    tInclude* include = lines.entryAt(line).include;
    if (include == nullptr) continue;
    walkInclude(*include, output, depth);
    pending = true;
  }
}

void tLineWalk::walkLines(tString& output, int& depth) {
  const tString& name = file_.isMain() ? file_.names.shown : file_.names.requested;
  tSourceCode& lines = file_.lines;
  tPlainWriter writer(shared_.rules);
  bool pending = false;
  for (int line = 1; line <= lines.count(); ++line) {
    if (pending && lines.hasContent(line)) {
      appendMarker(output, line, name);
      pending = false;
    }
    switch (lines.kind(line)) {
      case tSourceCode::kPlain:
        writePlain(line, writer, output);
        continue;
      case tSourceCode::kEntry:
        break;
      default:
        output.append('\n');
        continue;
    }
    tSourceLine& entry = lines.entryAt(line);
    file_.currentLine = line;
    const bool entered = enterPending(file_, entry);
    if (entry.include != nullptr) {
      walkInclude(*entry.include, output, depth);
      pending = true;
    } else if (entered) {
      output.append('\n');
    } else {
      rewrite(entry, output);
    }
  }
  if (pending) appendMarker(output, lines.count() + 1, name);
}

void tLineWalk::writePlain(int line, tPlainWriter& writer, tString& output) {
  const char* const end = file_.text.data() + file_.text.size();
  const char* const start = file_.text.data() + file_.lines.offset(line);
  const std::size_t begin = output.size();
  // An observer sees statements that have tokens.
  if (shared_.observer == nullptr && writer.write(start, end, output)) {
    const std::string_view written = output.view().substr(begin);
    if (shared_.checks.checkPlain(written, writer.untouched(), file_, line)) return;
    output.resize(begin);
  }
  file_.currentLine = line;
  scratch_.setOrigin(line);
  scratch_.tokens().Destroy();
  tokenisePlain(start, end, line, scratch_);
  rewrite(scratch_, output);
}

void tLineWalk::rewrite(tTknString& statement, tString& output) {
  tRuleObserver* const observer = shared_.observer;
  statement.startSteps();
  if (observer != nullptr) observer->statementBegins(statement, file_.names.opened);
  shared_.rewriting.file = &file_;
  shared_.rewriting.line = statement.origin();
  if (!tRewriter(shared_.rules, statement, shared_.rewriting.notes).run()) {
    file_.raise(eSourceError::kCircularRule, statement.origin());
  }
  if (observer != nullptr) observer->statementEnds(statement);
  statement.appendText(output);
  output.append('\n');
  shared_.checks.check(statement, file_);
}

}  // namespace precomp
