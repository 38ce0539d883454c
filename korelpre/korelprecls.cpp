#include "korelpre/korelprecls.h"

#include <utility>
#include <vector>

#include "korelpre/directives/conditional.h"
#include "korelpre/directives/include.h"
#include "korelpre/directives/linewalk.h"
#include "korelpre/directives/syntaxnotes.h"
#include "korelpre/rules/ruleobserver.h"
#include "lib_base/misc.h"
#include "lib_base/output.h"
#include "lib_base/pathname.h"
#include "lib_base/translate.h"
#include "ssvp40xpf/builtintables.h"

namespace precomp {

namespace {

const SSYaccTable& parserTable() {
  static const SSYaccTable table(builtin::korelpreLlr.index, builtin::korelpreLlr.name);
  return table;
}

// Kept on purpose: only the first occurrence of the extension counts, so "a.zorb.zorb" is no
// extended source.
bool hasExtension(const tString& name, std::string_view extension) {
  const std::size_t first = name.findNoCase(extension);
  return first != tString::npos && first + extension.size() == name.size();
}

constexpr const char* kMissingHeaders = "KRSQLDEF.CH or KRCTLDEF.CH";
constexpr std::string_view kOptionalHeaders[] = {"std.ch", "KRCTLDEF.CH", "KRSQLDEF.CH"};

// Whether an extended source does without the header.
bool isOptionalHeader(const tString& name) {
  for (const std::string_view header : kOptionalHeaders) {
    if (equalNoCase(name, header)) return true;
  }
  return false;
}

}  // namespace

KorelPreYaccClass::KorelPreYaccClass(tDiskMan* files)
    : ownShared_(std::make_unique<tSharedState>(*this, files)),
      shared_(*ownShared_),
      ownFile_(std::make_unique<tProgramFile>(shared_)),
      file_(*ownFile_) {
  setTable(parserTable());
}

KorelPreYaccClass::KorelPreYaccClass(tProgramFile& file)
    : shared_(file.shared()), file_(file), headerDone_(true) {
  setTable(parserTable());
}

KorelPreYaccClass::~KorelPreYaccClass() = default;

void KorelPreYaccClass::clear() {
  reset();
  feed_.reset();
  shared_.rules.dropWaiting();  // the file owns them
  file_.clear();
  shared_.clear();
  currentDirectory_ = tString();
  headerDone_ = false;
}

void KorelPreYaccClass::setRuleObserver(tRuleObserver* observer) {
  constexpr std::uint64_t kSpareSteps = 400'000'000;
  if (observer != nullptr) observer->spareSteps = kSpareSteps;
  shared_.observer = observer;
  shared_.rules.setObserver(observer);
}

// Headers can nest deeply, so the processors that wait for others stand in a list.
bool KorelPreYaccClass::compileInclude(tProgramFile& file, const tString& name) {
  std::vector<std::unique_ptr<KorelPreYaccClass>> open;
  const auto enter = [&open](tProgramFile& included, const tString& requested) {
    if (requested.find(std::string_view("\0", 1)) != tString::npos) {
      // The file layer would cut the name to that of another file.
      included.names.requested = requested;
      included.raise(eSourceError::kIncludeNotFound, 0, visibleControls(requested).c_str());
    }
    std::unique_ptr<KorelPreYaccClass> processor(new KorelPreYaccClass(included));
    tString scratch;
    if (!processor->begin(requested.c_str(), nullptr, scratch)) return false;
    open.push_back(std::move(processor));
    return true;
  };
  if (!enter(file, name)) return false;
  while (!open.empty()) {
    KorelPreYaccClass& innermost = *open.back();
    if (innermost.parseOn()) {
      innermost.finishText();
      open.pop_back();
      if (!open.empty()) open.back()->endAwaited(true);
      continue;
    }
    tInclude& next = *innermost.awaited_;
    const bool taken = !tHeaderReader(innermost.file_).begin(next, innermost.work_);
    if (taken || !enter(next.start(), next.name())) innermost.endAwaited(taken);
  }
  return true;
}

void KorelPreYaccClass::include(const tString& name, int line) {
  if (file_.isMain()) return carryOutInclude(file_, name, line);
  awaited_ = beginInclude(file_, name, line);
  if (awaited_ != nullptr) pause();
}

void KorelPreYaccClass::endAwaited(bool done) {
  if (done) tHeaderReader(file_).finish(*awaited_, work_);
  work_ = {};
  endInclude(file_, *awaited_, done);
}

tString KorelPreYaccClass::toldOf(const SSException& failure, const tString& name) {
  return tString::format("%s(%d) %s %s\n", visibleControls(name).c_str(), errLine(),
                         translate("Error").c_str(), visibleControls(failure.message()).c_str());
}

/// Carries out `action` on the main source `name`; what is thrown sets errString().
template <class tAction>
bool KorelPreYaccClass::keepingError(const char* name, const tAction& action) {
  try {
    errString().clear();
    return action();
  } catch (const SSException& failure) {
    errString() = toldOf(failure, bareName(name));
    throw;
  } catch (const tFatalError& failure) {
    errString() = ::toldOf(failure).append('\n');
    throw;
  }
}

bool KorelPreYaccClass::compile(const char* name, const char* directory, tString& passedOn,
                                unsigned char includeMode) {
  file_.isIncluded = includeMode != 0;
  const auto compiled = [&] { return compileFile(name, directory, passedOn); };
  return ownFile_ == nullptr ? compiled() : keepingError(name, compiled);
}

bool KorelPreYaccClass::compileFile(const char* name, const char* directory, tString& passedOn) {
  if (!file_.isIncluded) markExtendedSource(name);
  const tString savedDirectory = currentDirectory_;
  if (!begin(name, directory, passedOn)) return false;
  parseOn();
  if (!savedDirectory.empty()) SetCurDir(savedDirectory);
  finishText();
  return true;
}

// Up to where the parser begins. False when there is nothing to compile.
bool KorelPreYaccClass::begin(const char* name, const char* directory, tString& passedOn) {
  tString scratch;
  const bool found = loadfile(name, directory, passedOn, scratch);
  if (!found && (file_.isMain() || !shared_.extendedSource || !isOptionalHeader(scratch))) {
    file_.raiseMissing(tString(name));
  }
  if (!found) shared_.headerMissing = true;
  if (!found || file_.inCycle()) {
    if (shared_.recorder != nullptr) shared_.recorder->spoil();
    return false;
  }
  file_.takeText(true);
  beginText();
  return true;
}

bool KorelPreYaccClass::compileStr(const char* name, std::string_view text, tString& /*output*/) {
  file_.isIncluded = false;
  return keepingError(name, [&] {
    file_.names.requested = file_.names.opened = file_.names.shown = tString(name);
    file_.text = tString();
    file_.text.append(text);
    file_.takeText(false);
    beginText();
    parseOn();
    finishText();
    return true;
  });
}

bool KorelPreYaccClass::loadfile(const char* name, const char* directory, tString& /*passedOn*/,
                                 tString& scratch) {
  const tString requested(name);
  if (directory == nullptr) {
    tPathParts parts;
    SplitPath(requested, parts);
    SetCurDir(tString(parts.drive).append(parts.directory));
  } else {
    SetCurDir(tString(directory));
    if (*directory != '\0') IncludePath().insertAt(0, new tString(directory));
  }
  scratch = bareName(requested);
  scratch.toUpper();
  return file_.read(requested);
}

// Kept on purpose: deciding about the extended source also forgets that a header was missing.
void KorelPreYaccClass::markExtendedSource(const char* name) {
  const tString text(name);
  shared_.extendedSource = hasExtension(text, ".zorb") || hasExtension(text, ".pzorb_");
  const bool headerMissing = file_.isMain() && shared_.headerMissing;
  shared_.headerMissing = false;
  if (shared_.extendedSource || !headerMissing) return;
  file_.currentLine = 0;
  file_.raise(eSourceError::kIncludeNotFound, 0, kMissingHeaders);
}

void KorelPreYaccClass::beginText() {
  // What a text that failed has left behind.
  if (file_.isMain()) {
    shared_.rules.dropWaiting();
    shared_.error.placed = false;
  }
  file_.conditionals = {};
  file_.lines.clear();
  file_.lines.expect(file_.text.size());
  shared_.walking = false;
  innerDirective_ = 0;
  sql_ = {};
  reset();
  feed_ = std::make_unique<tLexemeFeed>(file_, sql_);
  setLex(feed_->lexer());
  if (!headerDone_) {
    headerDone_ = true;
    if (file_.includes.empty()) tHeaderReader(file_).includeStandard();
  }
}

// False when an include has to be read first.
bool KorelPreYaccClass::parseOn() {
  try {
    if (parse() == kParsePaused) return false;
  } catch (const SSException& failure) {
    if (shared_.watcher != nullptr) shared_.watcher->fileFailed(file_, feed_->line());
    file_.raiseAgain(failure, feed_->line());
    throw;
  }
  if (file_.isMain() || file_.lines.hasStatements()) file_.lines.extendTo(feed_->lineCount());
  reset();
  feed_.reset();
  return true;
}

void KorelPreYaccClass::finishText() {
  if (!file_.conditionals.empty()) {
    if (shared_.watcher != nullptr) shared_.watcher->fileFailed(file_, 0);
    file_.raise(eSourceError::kUnclosedConditional, file_.conditionals.innermostLine());
  }
  if (shared_.watcher != nullptr) shared_.watcher->fileCompiled(file_);
  if (!file_.isMain()) file_.releaseText();
}

// The first that is heard of a syntax error, when the parser still has its stack.
void KorelPreYaccClass::ClearprintCmdList() {
  const auto takes = [this](unsigned token) { return wouldTake(token); };
  feed_->raiseSyntax(*lookahead(), notesOfLookaheads(takes, lookahead()->token()));
}

void KorelPreYaccClass::exception(int code, const tSpcString* token, const char* extra) {
  const bool placed = token != nullptr && token->line() > 0;
  file_.raise(static_cast<eSourceError>(code),
              placed ? static_cast<int>(token->line()) : file_.currentLine, extra,
              placed ? file_.columnOf(*token) : 0);
}

void KorelPreYaccClass::processLines(tString& output, int& depth) {
  tLineWalk(file_).run(output, depth);
}

void KorelPreYaccClass::processLine(tTknString& statement, tString& output) {
  tLineWalk(file_).rewrite(statement, output);
}

bool KorelPreYaccClass::loadPchFile() {
  return tHeaderReader(file_).loadSaved();
}

bool KorelPreYaccClass::prepch(const char* header) {
  if (!file_.isMain()) return false;
  headerDone_ = true;
  setStandardHeader(tString(header));
  return tHeaderReader(file_).precompile();
}

std::uint8_t KorelPreYaccClass::doIfDef(const tSpcString* name, int line) {
  const std::string_view text = name != nullptr ? name->view() : std::string_view();
  openConditional(file_, eDirective::kIfdef, name != nullptr ? &text : nullptr, line);
  return skipping() ? 1 : 0;
}

std::uint8_t KorelPreYaccClass::doIfNDef(const tSpcString* name, int line) {
  const std::string_view text = name != nullptr ? name->view() : std::string_view();
  openConditional(file_, eDirective::kIfndef, name != nullptr ? &text : nullptr, line);
  return skipping() ? 1 : 0;
}

void KorelPreYaccClass::doElseIF(int line) {
  turnConditional(file_, line);
}

void KorelPreYaccClass::doEndIF(int line) {
  closeConditional(file_, line);
}

tKorelPreStackElement* KorelPreYaccClass::ifValid(tKorelPreStackElement* element) {
  if (skipping() && element != nullptr) element->clearValues();
  return element;
}

void KorelPreYaccClass::printLine(const tTknString& statement, unsigned char original) {
  tString text;
  statement.appendText(text, original != 0);
  const tAutoArray<tTknString>& continuations = statement.continuations();
  for (int i = 0; i < continuations.count(); ++i) {
    if (text.empty() || text[text.size() - 1] != ';') text.append(';');
    continuations[i].appendText(text, false);
  }
  qdprintf("%s", text.c_str());
  qdprintf("\n");
}

}  // namespace precomp
