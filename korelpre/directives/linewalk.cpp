// Phase 2: the walk over the lines. Every line gives one output line; "#line" markers are written
// only where the output stops following the source: where an included file begins, and behind it.

#include <algorithm>

#include "korelpre/headers/headerrecorder.h"
#include "korelpre/korelprecls.h"
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

}  // namespace

void KorelPreYaccClass::processLines(tString& output, int& depth) {
  if (++depth == 1) {
    shared_.checks.begin();
    shared_.walking = true;
    shared_.rewriting = {};
  }
  if (root_ == this) {
    // All conditionals are decided.
    dynDefines()->dropRules();
    const std::size_t expected = output.size() + text_.size() + text_.size() / 2;
    output.reserve(std::min(expected, tString::maxSize()));
  }
  if (includeMode_ != 0) writeOpeningMarker(output);
  if (includeMode_ != 0 && !source_.hasStatements()) {
    walkIncludesOnly(output, depth);
  } else {
    walkLines(output, depth);
  }
  removeTrailingLineFeeds(output);
  if (--depth == 0) shared_.checks.finish();
}

void KorelPreYaccClass::writeOpeningMarker(tString& output) {
  removeTrailingLineFeeds(output);
  appendMarker(output, 1, openingName());
}

tString KorelPreYaccClass::openingName() const {
  tString name = fileName_;
  if (name.find(foundDirectory_) == tString::npos) name.insert(0, foundDirectory_);
  return name;
}

// Of a header that an image stands for only the markers are written.
void KorelPreYaccClass::processInclude(tInclude& include, tString& output, int& depth) {
  if (include.image() == nullptr) {
    include.processor().processLines(output, depth);
    return;
  }
  for (const tHeaderMarker& marker : include.image()->notes().markers) {
    removeTrailingLineFeeds(output);
    appendMarker(output, static_cast<int>(marker.line), marker.name);
  }
  removeTrailingLineFeeds(output);
}

// Notes what processLines() writes for a header without statements; false when it has some.
bool KorelPreYaccClass::noteMarkers(tHeaderRecorder& recorder) {
  if (source_.hasStatements()) return false;
  recorder.marker(1, openingName());
  bool pending = false;
  for (int line = 1; line <= source_.count(); ++line) {
    if (!source_.hasContent(line)) continue;
    if (pending) recorder.marker(line, requestedName_);
    pending = source_.kind(line) == tSourceCode::kEntry && source_.entryAt(line).include != nullptr;
    if (pending && !source_.entryAt(line).include->processor().noteMarkers(recorder)) return false;
  }
  return true;
}

void KorelPreYaccClass::walkIncludesOnly(tString& output, int& depth) {
  bool pending = false;
  for (int line = 1; line <= source_.count(); ++line) {
    if (!source_.hasContent(line)) continue;
    if (pending) appendMarker(output, line, requestedName_);
    pending = false;
    if (source_.kind(line) != tSourceCode::kEntry) continue;
    tInclude* include = source_.entryAt(line).include;
    if (include == nullptr) continue;
    processInclude(*include, output, depth);
    pending = true;
  }
}

void KorelPreYaccClass::walkLines(tString& output, int& depth) {
  const tString& name = root_ == this ? fileName_ : requestedName_;
  tPlainWriter writer(*this);
  bool pending = false;
  for (int line = 1; line <= source_.count(); ++line) {
    if (pending && source_.hasContent(line)) {
      appendMarker(output, line, name);
      pending = false;
    }
    switch (source_.kind(line)) {
      case tSourceCode::kPlain:
        processPlain(line, writer, output);
        continue;
      case tSourceCode::kEntry:
        break;
      default:
        output.append('\n');
        continue;
    }
    tSourceLine& entry = source_.entryAt(line);
    currentLine_ = line;
    const bool entered = enterPending(entry);
    if (entry.include != nullptr) {
      processInclude(*entry.include, output, depth);
      pending = true;
    } else if (entered) {
      output.append('\n');
    } else {
      processLine(entry, output);
    }
  }
  if (pending) appendMarker(output, source_.count() + 1, name);
}

// Enters the rules of a line into the tables. False when it has none.
bool KorelPreYaccClass::enterPending(tSourceLine& entry) {
  if (entry.pendingDefine == nullptr && entry.pendingRules.empty()) return false;
  if (entry.pendingDefine != nullptr) {
    tBaseXChg* rule = entry.pendingDefine.get();
    rule->setLineEntry(nullptr);
    enterDefine(std::move(entry.pendingDefine));
  }
  for (auto& rule : entry.pendingRules) enterRule(std::move(rule));
  entry.pendingRules.clear();
  return true;
}

void KorelPreYaccClass::processPlain(int line, tPlainWriter& writer, tString& output) {
  const char* const end = text_.data() + text_.size();
  const char* const start = text_.data() + source_.offset(line);
  const std::size_t begin = output.size();
  // An observer sees statements that have tokens.
  if (shared_.observer == nullptr && writer.write(start, end, output)) {
    const std::string_view written = output.view().substr(begin);
    if (shared_.checks.checkPlain(written, writer.joinedTokens(), *this, line)) return;
    output.resize(begin);
  }
  currentLine_ = line;
  scratch_.setOrigin(line);
  scratch_.tokens().Destroy();
  tokenisePlain(start, end, line, scratch_);
  processLine(scratch_, output);
}

}  // namespace precomp
