#include "preprocessor/run/filerun.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "korelpre/directives/missingfile.h"
#include "korelpre/errors/errortexts.h"
#include "korelpre/errors/notes.h"
#include "korelpre/korelpre.h"
#include "lib_base/misc.h"
#include "lib_base/replacement.h"
#include "preprocessor/convert/foreign.h"
#include "preprocessor/convert/inlineblock.h"
#include "preprocessor/convert/page.h"
#include "preprocessor/convert/sourcekind.h"
#include "preprocessor/copy/fileparts.h"
#include "preprocessor/copy/linemarkers.h"
#include "preprocessor/copy/linewriter.h"
#include "preprocessor/copy/normalise.h"
#include "preprocessor/recovery/errorsearch.h"
#include "preprocessor/run/filenames.h"
#include "preprocessor/run/report.h"
#include "preprocessor/run/textfile.h"

namespace {

enum eResult { kDone = 0, kSessionError = 1, kNotNormalised = 15, kInternalFailure = -1 };

tReplacement::eName whose(bool chosen) {
  return chosen ? tReplacement::kChosen : tReplacement::kDerived;
}

using tWarnings = std::vector<precomp::tDiagnosis>;

/// The run of one file. Each step tells what went wrong in it and returns a result.
class tFileRun {
 public:
  tFileRun(tDiskMan& disk, const tRunOptions& options, const tFileNames& names, tRunHost& host,
           precomp::tHeaderCache* headers) noexcept
      : disk_(disk),
        options_(options),
        host_(host),
        headers_(headers),
        names_(names),
        readName_(names.source),
        isForeign_(sourceKindOf(names.source).converter == eConverter::kForeign),
        report_(host, names_.source) {}

  int run() noexcept;

 private:
  int process();
  int convertForeign();
  int produceOnce(tString& text);
  int produce(tString& text);
  int convert(tDiskManOverlay& files);
  int normalise(tDiskManOverlay& files);
  int saveCopy(tDiskManOverlay& files);
  int preprocess(tDiskManOverlay& files, tString& text);
  void begin(precomp::KorelPre16& session, bool first);
  int conclude(precomp::KorelPre16& session, tWarnings warnings, const tString& text, bool failed,
               tDiskManOverlay& files);
  int searchErrors(tDiskManOverlay& files, tString& text);
  void addIncludePaths(precomp::KorelPre16& session, bool told);
  tWarnings warningsOfBlocks();
  bool tellWarnings(tWarnings warnings, const precomp::KorelPre16& session, tDiskManOverlay& files);
  int write(const tString& text);
  bool prepare(tReplacement& file, const tString& name);
  bool publish(tReplacement& file, const tString& name);
  void handOver(const tString& text);
  void finish(int result) noexcept;
  void removeOutput();
  bool writesFile() const { return host_.wantsOutput() && !host_.takesOutput(); }

  /// Tells of a failure and returns its result.
  int fail(int result, eMessage message, tMessageArguments arguments) {
    report_.tell(message, arguments);
    return result;
  }
  int failNormalising(tDiskManOverlay& files, const tNormaliseFailure& failure);
  int failReading(eMessage message, int reason);
  std::vector<precomp::tNote> notesOfMissing();
  void trace(eMessage message, tMessageArguments arguments = {}) {
    if (options_.trace) report_.tell(message, arguments);
  }
  void traceLines(std::string_view text);

  tDiskMan& disk_;
  const tRunOptions& options_;
  tRunHost& host_;
  precomp::tHeaderCache* headers_;
  const tFileNames& names_;
  tString readName_;  // the source, or the file that a foreign one was converted to
  const bool isForeign_;
  tRunReport report_;
  tForeignConversion foreign_;
  tBlockFaults blockFaults_;
  std::size_t longestLine_ = kLongestLine;  // of what is normalised
  bool outputIsOurs_ = false;               // and may be removed after a failure
};

int tFileRun::run() noexcept {
  int result = kInternalFailure;
  try {
    result = process();
    finish(result);
    if (result == kDone) report_.tellDone();
  } catch (...) {
    report_.tellException();
    result = kInternalFailure;
    finish(result);
  }
  if (result != kDone) report_.tellFailed(result);
  return result;
}

int tFileRun::process() {
  // A name with a zero byte would be cut by the file layer and mean another file.
  if (readName_.find(std::string_view("\0", 1)) != tString::npos) {
    return fail(kNotNormalised, eMessage::kSourceNotFound, {names_.source, names_.output});
  }
  if (!host_.takesOutput() && outputIsSource(disk_, names_, readName_, host_.outputIsChosen())) {
    return fail(kNotNormalised, eMessage::kOutputIsSource, {names_.source, names_.output});
  }
  outputIsOurs_ = writesFile();
  const tDependencies* const wanted = host_.dependencies();
  if (wanted != nullptr && leadsToSource(disk_, wanted->file().name, wanted->file().isChosen)) {
    return fail(kNotNormalised, eMessage::kOutputIsSource, {names_.source, wanted->file().name});
  }
  if (const int result = convertForeign(); result != kDone) return result;
  tString text;
  if (const int result = produceOnce(text); result != kDone) return result;
  if (!host_.wantsOutput()) return kDone;
  if (!finishLineMarkers(text, names_.copy, names_.source, options_.prefixes)) {
    report_.tell(eMessage::kOutputTooBig, {names_.source, "0"},
                 precomp::errorTextOf(precomp::eSourceError::kLimitExceeded).code);
    return kSessionError;
  }
  if (writesFile()) return write(text);
  handOver(text);
  return kDone;
}

/// A saved header that turns out to be damaged is not used when the source is read once more.
int tFileRun::produceOnce(tString& text) {
  try {
    return produce(text);
  } catch (const precomp::tDamagedImage&) {
    headers_->setTryAgain(true);
    text = tString();
    return produce(text);
  }
}

int tFileRun::produce(tString& text) {
  tDiskManOverlay files(disk_);
  files.keepInMemory(names_.copy);
  if (const int result = convert(files); result != kDone) return result;
  if (const int result = normalise(files); result != kDone) return result;
  if (const int result = saveCopy(files); result != kDone) return result;
  host_.sourceRead(names_.source);
  return preprocess(files, text);
}

int tFileRun::saveCopy(tDiskManOverlay& files) {
  if (!host_.savesCopy() || !writesFile()) return kDone;
  const tString& name = names_.savedCopy;
  if (disk_.resolve(name.c_str()) == disk_.resolve(names_.source.c_str())) {
    return fail(kNotNormalised, eMessage::kOutputIsSource, {names_.source, name});
  }
  tReplacement saved(disk_, name, tReplacement::kDerived, bareName(names_.copy), [&](tFile& file) {
    const std::unique_ptr<tFile> copy = files.open(names_.copy.c_str());
    return copy != nullptr && copyFile(*copy, file);
  });
  return prepare(saved, name) && publish(saved, name) ? kDone : kInternalFailure;
}

int tFileRun::convertForeign() {
  if (!isForeign_ || !disk_.exists(readName_.c_str())) return kDone;
  const tAutoArray<tString>& path = options_.includePath;
  const tForeignSource source = {readName_, path.empty() ? tString() : path[path.count() - 1],
                                 names_.directory};
  const int code = foreign_.run(host_.converterDirectory(), source);
  if (code == tForeignConversion::kNotRun) {
    return fail(code, eMessage::kConverterNotRun, {foreign_.command()});
  }
  if (code != 0) return fail(code, eMessage::kConverterFailed, {});
  readName_ = foreign_.converted();
  return kDone;
}

/// Puts the converted text of a page, or of a program with inline blocks, in front of the source.
int tFileRun::convert(tDiskManOverlay& files) {
  if (isForeign_) return kDone;
  tPageError error;
  int reason = 0;
  eConversion done =
      DoKRHPreprocessor(files, readName_, options_.pageDebugInfo, options_.httpSend, error, reason);
  if (done == eConversion::kDone) longestLine_ = tLineWriter::kAnyLength;
  if (done == eConversion::kNone) done = DoBCPreprocessor(files, readName_, reason, &blockFaults_);
  if (done == eConversion::kUnreadable) return failReading(eMessage::kSourceUnreadable, reason);
  if (done == eConversion::kError) {
    const tString line = tString::format("%d", error.line);
    report_.tell(error.what, {names_.source, line}, {files, readName_, error.line});
    return kSessionError;
  }
  if (done != eConversion::kTooLarge) return kDone;
  return fail(kNotNormalised, eMessage::kConvertedTooBig, {names_.source, names_.copy});
}

int tFileRun::normalise(tDiskManOverlay& files) {
  trace(eMessage::kTraceCopy, {names_.source, names_.copy});
  unsigned char dialogFound = 0;
  tNormaliseFailure failure;
  const bool done = AdjustCRLF_and_CreateTemp(files, readName_.c_str(), names_.copy.c_str(),
                                              dialogFound, longestLine_, &failure, options_.clock);
  const int result = done ? kDone : failNormalising(files, failure);
  files.release(readName_);  // includes of that name mean the file itself
  return result;
}

int tFileRun::failNormalising(tDiskManOverlay& files, const tNormaliseFailure& failure) {
  const tString line = tString::format("%d", failure.line);
  if (failure.what == eMessage::kLineTooLong) {
    const tString before = tString::format("%d", failure.line - 1);
    report_.tell(failure.what, {names_.source, before},
                 {files, readName_, failure.line, static_cast<int>(kLongestLine) + 1});
    return kNotNormalised;
  }
  if (failure.what == eMessage::kExpandedTooBig) {
    report_.tell(failure.what, {names_.source, line}, {files, readName_, failure.line},
                 precomp::errorTextOf(precomp::eSourceError::kLimitExceeded).code);
    return kNotNormalised;
  }
  return failReading(failure.what, failure.error);
}

int tFileRun::failReading(eMessage message, int reason) {
  std::vector<precomp::tNote> notes;
  if (message == eMessage::kSourceNotFound && host_.wantsDiagnoses()) notes = notesOfMissing();
  report_.tell(message, {names_.source, names_.copy, reasonOf(reason)}, 0, std::move(notes));
  return kNotNormalised;
}

std::vector<precomp::tNote> tFileRun::notesOfMissing() {
  if (disk_.look(readName_.c_str()) != eStanding::kNothing) {
    return {precomp::noted("it is no regular file")};
  }
  std::vector<precomp::tNote> notes;
  notes.emplace_back().message = tString(reasonOf(ENOENT));
  precomp::noteNearFile(notes, disk_, {readName_.c_str()});
  return notes;
}

int tFileRun::preprocess(tDiskManOverlay& files, tString& text) {
  if (host_.mostErrors() > 1) return searchErrors(files, text);
  precomp::KorelPre16 session(files);
  begin(session, true);
  tString errorText;
  session.doIt(text, errorText);
  const bool failed = session.errorCount() > 0 || !errorText.empty();
  if (failed) report_.pass(session.diagnosis(), session, names_.copy, files);
  return conclude(session, session.takeWarnings(), text, failed, files);
}

/// Makes a session ready; `first`: it is the first one over this source.
void tFileRun::begin(precomp::KorelPre16& session, bool first) {
  tAutoArray<tString> sessionOptions;
  for (int i = 0; i < options_.sessionOptions.count(); ++i) {
    sessionOptions.add(new tString(options_.sessionOptions[i]));
  }
  sessionOptions.add(new tString(tString("-F") += names_.copy));
  session.Init(sessionOptions, 0);
  session.setShownName(names_.source);
  session.setHeaderCache(headers_);
  session.setWarnings(options_.warnings);
  addIncludePaths(session, first);
  for (const tOptionDefine& define : options_.defines) session.define(define.name, define.value);
  if (!first) return host_.sessionBeginsAgain(session);
  host_.sessionBegins(session, names_.copy, names_.source);
  trace(eMessage::kTraceSession, {names_.source});
}

/// Tells what else is to be told of a source that the session has been over.
int tFileRun::conclude(precomp::KorelPre16& session, tWarnings warnings, const tString& text,
                       bool failed, tDiskManOverlay& files) {
  const bool refused = tellWarnings(std::move(warnings), session, files);
  if (failed) trace(eMessage::kTraceError, {trimmedRight(session.errString())});
  if (failed || refused) return kSessionError;
  traceLines(text);
  host_.sessionDone(session);
  return kDone;
}

tWarnings tFileRun::warningsOfBlocks() {
  tWarnings warnings;
  const precomp::tWarningSet& wanted = options_.warnings;
  for (const tBlockFault& fault : blockFaults_) {
    if (!wanted.has(fault.what)) continue;
    warnings.push_back(precomp::diagnosisOf(fault.what, wanted.isError(fault.what), {}));
    precomp::tDiagnosis& warning = warnings.back();
    warning.file = names_.source;
    warning.line = fault.line;
    warning.sourceLine = fault.text;
    const std::size_t first = fault.text.view().find_first_not_of(" \t");
    warning.column = static_cast<int>(first) + 1;
  }
  return warnings;
}

/// Whether one of them is an error.
bool tFileRun::tellWarnings(tWarnings warnings, const precomp::KorelPre16& session,
                            tDiskManOverlay& files) {
  bool refused = false;
  tWarnings blocks = warningsOfBlocks();
  warnings.insert(warnings.begin(), std::make_move_iterator(blocks.begin()),
                  std::make_move_iterator(blocks.end()));
  for (const precomp::tDiagnosis& warning : warnings) {
    if (warning.severity == precomp::tDiagnosis::kError) {
      refused = true;
      const tString& name = warning.file == names_.copy ? names_.source : warning.file;
      printMessage(eMessage::kWarningAsError,
                   {name, tString::format("%d", warning.line), warning.translated, warning.slug});
    }
    report_.pass(warning, session, names_.copy, files);
  }
  return refused;
}

int tFileRun::searchErrors(tDiskManOverlay& files, tString& text) {
  tErrorSearch search(
      files, names_.copy,
      [&](precomp::KorelPre16& session, bool first, bool edited) {
        begin(session, first);
        if (edited) session.setHeaderCache(nullptr);
      },
      [&](const precomp::tDiagnosis& error, const precomp::KorelPre16& session) {
        report_.pass(error, session, names_.copy, files);
      });
  const bool found = search.run(host_.mostErrors(), text);
  return conclude(search.session(), search.takeWarnings(), text, found, files);
}

void tFileRun::traceLines(std::string_view text) {
  if (!options_.trace) return;
  const auto count = std::count(text.begin(), text.end(), '\n') + (text.empty() ? 0 : 1);
  trace(eMessage::kTraceLines, {tString::format("%d", static_cast<int>(count))});
}

void tFileRun::addIncludePaths(precomp::KorelPre16& session, bool told) {
  if (options_.includePath.empty()) return;
  if (told) trace(eMessage::kTraceIncludePath);
  for (int i = 0; i < options_.includePath.count(); ++i) {
    const tString& directory = options_.includePath[i];
    if (!directory.empty()) session.IncludePath().add(new tString(directory));
  }
}

// Note [rule before output]
// A build tells by the times of the files that a rule names whether an output is up to date, so an
// output must never stand beside the rule of another one. A new output beside an old rule would be
// taken for up to date when a header changes that only the new rule names; an old output beside a
// new rule, when a header is gone that only the old rule names. Both files are written under their
// temporary names; if both change, the old output goes, then the rule gets its name, then the
// output does. Whoever is killed in between leaves no output, and every build makes it.

int tFileRun::write(const tString& text) {
  trace(eMessage::kTraceCreate, {names_.output});
  const tDependencies* const wanted = host_.dependencies();
  const std::string* const bad = wanted != nullptr ? wanted->nameWithLineBreak() : nullptr;
  if (bad != nullptr) return fail(kInternalFailure, eMessage::kNameNotInRule, {*bad});
  const std::string ruleText = wanted != nullptr ? wanted->rule(names_.output) : std::string();

  tReplacement output(disk_, names_.output, whose(host_.outputIsChosen()), names_.temporaryOutput,
                      [&text](tFile& file) {
                        tLineWriter lines(file);
                        return lines.write(text) && lines.finish();
                      });
  const bool kept = host_.keepsUnchanged() && output.isUpToDate();
  std::optional<tReplacement> rule;
  if (wanted != nullptr) {
    rule.emplace(disk_, wanted->file().name, whose(wanted->file().isChosen), names_.temporaryRule,
                 [&ruleText](tFile& file) { return file.write(ruleText); });
    if (rule->isUpToDate()) rule.reset();
  }

  if (!kept && !prepare(output, names_.output)) return kInternalFailure;
  if (rule && !prepare(*rule, wanted->file().name)) return kInternalFailure;
  if (rule && !kept) output.removeOld();  // See note [rule before output].
  if (rule && !publish(*rule, wanted->file().name)) return kInternalFailure;
  if (!kept) trace(eMessage::kTraceRename, {output.temporaryName(), names_.output});
  if (!kept && !publish(output, names_.output)) return kInternalFailure;
  host_.outputDone(names_.source, names_.output, !kept);
  return kDone;
}

bool tFileRun::prepare(tReplacement& file, const tString& name) {
  const bool created = file.create(host_.takesTurns());
  if (created && file.write()) return true;
  fail(kInternalFailure, created ? eMessage::kOutputNotWritten : eMessage::kOutputNotCreated,
       {name, reasonOf(file.error())});
  return false;
}

bool tFileRun::publish(tReplacement& file, const tString& name) {
  if (file.publish()) return true;
  fail(kInternalFailure, eMessage::kOutputNotWritten, {name, reasonOf(file.error())});
  return false;
}

void tFileRun::handOver(const tString& text) {
  tTextFile file(text.size() + text.size() / 8);
  tLineWriter lines(file);
  lines.write(text);
  lines.finish();
  host_.takeOutput(names_.source, file.text());
}

/// Leaves nothing of a failed run behind.
void tFileRun::finish(int result) noexcept {
  try {
    if (result != kDone && outputIsOurs_) removeOutput();
    if (disk_.exists(names_.temporaryErrors.c_str())) {
      disk_.rename(names_.temporaryErrors.c_str(), names_.errors.c_str());
    }
  } catch (...) {  // no memory for a name
  }
}

void tFileRun::removeOutput() {
  try {
    tReplacement(disk_, names_.output, whose(host_.outputIsChosen()), {}, {}).removeOld();
  } catch (...) {  // no memory to see where a link leads
    if (disk_.exists(names_.output.c_str())) disk_.remove(names_.output.c_str());
  }
}

}  // namespace

int preprocessFile(tDiskMan& disk, const tRunOptions& options, const tFileNames& names,
                   tRunHost& host, precomp::tHeaderCache* headers) noexcept {
  return tFileRun(disk, options, names, host, headers).run();
}
