// Phase 2: the walk over the lines. Every line gives one output line; "#line" markers are written
// only where the output stops following the source: where an included file begins, and behind it.

#include "korelpre/directives/linewalk.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "korelpre/directives/programfile.h"
#include "korelpre/directives/ruleentry.h"
#include "korelpre/headers/headerimage.h"
#include "korelpre/headers/headerrecorder.h"
#include "korelpre/rules/ruleobserver.h"
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

// Steps that the matcher may take for the statements of one program.
constexpr std::uint64_t kMostStepsInAll = 400'000'000;

}  // namespace

tLineWalk::tLineWalk(tProgramFile& file)
    : file_(file), shared_(file.shared()), writer_(shared_.rules) {}

[[gnu::always_inline]] inline void tLineWalk::append(std::string_view text, int line,
                                                     tString& output) {
  if (text.size() > tString::maxSize() - output.size()) file_.raiseLimit("output size", line);
  output.append(text);
}

// Headers can nest deeply, so the walks that wait for others stand in a list.
void tLineWalk::run(tString& output, int& depth) {
  if (++depth == 1) {
    shared_.checks.begin();
    shared_.walking = true;
    shared_.rewriting = {};
    shared_.matcherSteps = 0;
  }
  std::vector<std::unique_ptr<tLineWalk>> inner;
  tLineWalk* walk = this;
  begin(output);
  for (;;) {
    tInclude* const include = walk->goOn(output);
    if (include != nullptr && include->image() != nullptr) {
      walk->writeMarkers(*include->image(), output);
    } else if (include != nullptr) {
      walk = inner.emplace_back(std::make_unique<tLineWalk>(include->file())).get();
      walk->begin(output);
    } else {
      removeTrailingLineFeeds(output);
      if (inner.empty()) break;
      inner.pop_back();
      walk = inner.empty() ? this : inner.back().get();
    }
  }
  if (--depth == 0) shared_.checks.finish();
}

void tLineWalk::begin(tString& output) {
  headerOnly_ = file_.isIncluded && !file_.lines.hasStatements();
  passed_ = 0;
  behindInclude_ = false;
  if (file_.isMain()) {
    // All conditionals are decided.
    shared_.rules.dropWaiting();
    const std::size_t expected = output.size() + file_.text.size() + file_.text.size() / 2;
    output.reserve(std::min(expected, tString::maxSize()));
  }
  if (file_.isIncluded) {
    removeTrailingLineFeeds(output);
    appendMarker(1, file_.names.shown, output);
  }
}

// Walks on up to the next include, or to the end: then null.
tInclude* tLineWalk::goOn(tString& output) {
  return headerOnly_ ? walkStops(output) : walkLines(output);
}

// Of a header that an image stands for only the markers are written.
void tLineWalk::writeMarkers(const tHeaderImage& image, tString& output) {
  for (const tHeaderMarker& marker : image.notes().markers) {
    removeTrailingLineFeeds(output);
    appendMarker(static_cast<int>(marker.line), marker.name, output);
  }
  removeTrailingLineFeeds(output);
}

bool noteMarkers(tProgramFile& file, tHeaderRecorder& recorder) {
  if (file.lines.hasStatements()) return false;
  recorder.marker(1, file.names.shown);
  for (const tHeaderStop& stop : file.lines.headerStops()) {
    if (stop.behindInclude) recorder.marker(stop.line, file.names.requested);
    if (stop.include != nullptr && !noteMarkers(stop.include->file(), recorder)) return false;
  }
  return true;
}

tInclude* tLineWalk::walkStops(tString& output) {
  const std::vector<tHeaderStop>& stops = file_.lines.headerStops();
  while (passed_ < static_cast<int>(stops.size())) {
    const tHeaderStop& stop = stops[static_cast<std::size_t>(passed_++)];
    if (stop.behindInclude) appendMarker(stop.line, file_.names.requested, output);
    if (stop.include != nullptr) return stop.include;
  }
  return nullptr;
}

tInclude* tLineWalk::walkLines(tString& output) {
  const tString& name = file_.isMain() ? file_.names.shown : file_.names.requested;
  tSourceCode& lines = file_.lines;
  while (passed_ < lines.count()) {
    const int line = ++passed_;
    if (behindInclude_ && lines.hasContent(line)) {
      appendMarker(line, name, output);
      behindInclude_ = false;
    }
    switch (lines.kind(line)) {
      case tSourceCode::kPlain:
        walkStatement(line, output);
        break;
      case tSourceCode::kScanned:
        writeScanned(line, output);
        break;
      case tSourceCode::kEntry:
        if (tInclude* const include = walkEntry(lines.entryAt(line), output)) {
          behindInclude_ = true;
          return include;
        }
        break;
      default:
        append("\n", line, output);
        break;
    }
  }
  if (std::exchange(behindInclude_, false)) appendMarker(lines.count() + 1, name, output);
  return nullptr;
}

// The include that the entry of the line just reached stands for, or null when it is done.
tInclude* tLineWalk::walkEntry(tSourceLine& entry, tString& output) {
  file_.currentLine = passed_;
  const bool entered = enterPending(file_, entry);
  if (entry.include != nullptr) return entry.include;
  if (entered) {
    append("\n", passed_, output);
  } else {
    scratch_.setOrigin(passed_);
    scratch_.tokens().Destroy();
    scratch_.tokens().swap(entry.tokens);
    rewrite(scratch_, output);
  }
  return nullptr;
}

// A statement whose text might not fit is written on its own first.
void tLineWalk::walkStatement(int line, tString& output) {
  const std::size_t most = file_.text.size() - file_.lines.offset(line) + kLargestStatement;
  if (most <= tString::maxSize() - output.size()) return writePlain(line, output);
  tString written;
  writePlain(line, written);
  append(written, line, output);
}

void tLineWalk::appendMarker(int line, std::string_view name, tString& output) {
  endLine(output);
  append(tString::format("#line %d \"", line).append(name).append("\"\n"), line, output);
}

void tLineWalk::writePlain(int line, tString& output) {
  const char* const end = file_.text.data() + file_.text.size();
  const char* const start = file_.text.data() + file_.lines.offset(line);
  const std::size_t begin = output.size();
  // Who looks on sees statements that have tokens.
  const bool unseen = shared_.observer == nullptr && shared_.watcher == nullptr;
  if (unseen && writer_.write(start, end, output)) {
    const std::string_view written = output.view().substr(begin);
    // What is much longer may have too many tokens.
    if (written.size() < kMostSourceTokens / 2 &&
        shared_.checks.checkPlain(written, writer_.untouched(), file_, line))
      return;
    output.resize(begin);
  }
  file_.currentLine = line;
  scratch_.setOrigin(line);
  scratch_.tokens().Destroy();
  if (!tokenisePlain(start, end, line, scratch_)) file_.raiseLimit(kStatementSize, line);
  rewrite(scratch_, output);
}

void tLineWalk::writeScanned(int line, tString& output) {
  file_.currentLine = line;
  const char* const start = file_.text.data() + file_.lines.offset(line);
  if (*start == '#' && quick_.take(file_, start, line)) return append("\n", line, output);
  if (feed_ == nullptr) feed_ = std::make_unique<tLexemeFeed>(file_, sql_);
  scratch_.setOrigin(line);
  scratch_.tokens().Destroy();
  feed_->readAgain(file_.lines.offset(line), line, scratch_);
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
  shared_.matcherSteps += statement.steps();
  if (shared_.matcherSteps > kMostStepsInAll) file_.raiseLimit("matcher steps", statement.origin());
  if (observer != nullptr) observer->statementEnds(statement);
  if (shared_.watcher != nullptr) shared_.watcher->statementRewritten(file_, statement);
  if (!statement.appendWithin(tString::maxSize(), output)) {
    file_.raiseLimit("output size", statement.origin());
  }
  output.append('\n');
  shared_.checks.check(statement, file_);
}

}  // namespace precomp
