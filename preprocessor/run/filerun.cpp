#include "preprocessor/run/filerun.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include "korelpre/korelpre.h"
#include "lib_base/language.h"
#include "lib_base/misc.h"
#include "lib_base/output.h"
#include "lib_base/pathname.h"
#include "lib_base/translate.h"
#include "preprocessor/convert/foreign.h"
#include "preprocessor/convert/inlineblock.h"
#include "preprocessor/convert/page.h"
#include "preprocessor/convert/sourcekind.h"
#include "preprocessor/convert/sourcetext.h"
#include "preprocessor/copy/linemarkers.h"
#include "preprocessor/copy/linewriter.h"
#include "preprocessor/copy/normalise.h"
#include "preprocessor/run/failure.h"
#include "preprocessor/run/filediagnosis.h"
#include "preprocessor/run/outputfile.h"

namespace {

enum eResult { kDone = 0, kSessionError = 1, kNotNormalised = 15, kInternalFailure = -1 };

/// The names of one file's run. The temporary ones are made from the run's tag.
struct tFileNames {
  tString source;           // as the user knows it
  tString directory;        // where the output goes
  tString copy;             // the normalised copy, which never leaves the memory
  tString temporaryOutput;  // until the output is whole
  tString output;
  tString temporaryErrors;  // of a host that collects error texts
  tString errors;
  bool foreign = false;
};

tString outputDirectory(const tRunOptions& options, const tPathParts& source) {
  tString directory = options.outputDirectory;
  if (directory.empty()) directory = tString(source.drive).append(source.directory);
  if (!directory.empty() && !directory.view().ends_with('/')) directory += '/';
  return directory;
}

tFileNames composeNames(const tRunOptions& options, const tString& sourceName,
                        const tString& outputName) {
  tPathParts parts;
  SplitPath(sourceName, parts);
  const tSourceKind& kind = sourceKind(parts.extension);
  const tString directory = outputDirectory(options, parts);

  const auto composed = [&](const char* pattern, const tString& name, const char* extension) {
    return tString::format(pattern, directory.c_str(), name.c_str(), extension);
  };
  constexpr const char* kTagged = "%skrpre%s%s";
  constexpr const char* kNamed = "%s%s%s";
  tFileNames names;
  names.source = sourceName;
  names.directory = directory;
  // The session takes the name of the copy as an option and cleans it like one.
  names.copy = normaliseFileName(composed(kTagged, options.tag, kind.temporary));
  names.temporaryOutput = composed(kTagged, options.tag, ".ppo");
  names.output = composed(kNamed, parts.base, kind.output);
  names.temporaryErrors = composed(kTagged, options.tag, kind.error);
  names.errors = composed(kNamed, parts.base, kind.error);
  names.foreign = kind.converter == eConverter::kForeign;
  if (!outputName.empty()) {
    tPathParts named;
    SplitPath(outputName, named);
    names.output = outputName;
    names.temporaryOutput =
        tString(named.directory).append("krpre").append(options.tag).append(".ppo");
  }
  return names;
}

/// The last message about a source.
tString composeReport(const tString& source, int result) {
  const tString korel = translate("KOREL");
  const tString preprocessor = translate("Preprocessor");
  const tString precompilation = translate("Precompilation of file");
  if (result == kDone) {
    return tString::format("%s %s: %s %s %s.\n", korel.c_str(), preprocessor.c_str(),
                           precompilation.c_str(), source.c_str(), translate("ok").c_str());
  }
  return tString::format("%s %s. %s %s %s. %s %d\n", korel.c_str(), preprocessor.c_str(),
                         precompilation.c_str(), source.c_str(), translate("with error").c_str(),
                         translate("Exitecode equal to").c_str(), result);
}

/// The run of one file. Each step prints what went wrong in it and returns a result.
class tFileRun {
 public:
  tFileRun(tDiskMan& disk, const tRunOptions& options, const tString& sourceName, tRunHost& host,
           precomp::tHeaderCache* headers)
      : disk_(disk),
        options_(options),
        host_(host),
        headers_(headers),
        readName_(sourceName),
        names_(composeNames(options, sourceName, host.outputName())) {}

  int run();

 private:
  int process();
  int convert(tDiskManOverlay& files);
  int normalise(tDiskManOverlay& files);
  int preprocess(tDiskManOverlay& files, tString& text);
  void addIncludePaths(precomp::KorelPre16& session);
  int write(const tString& text);
  void finish(int result);
  void reportNoCopy(const tString& target);
  bool writesFile() const { return host_.wantsOutput() && !host_.takesOutput(); }
  bool outputIsSource();
  void handOver(const tString& text);

  int fail(int result, const char* slug, std::string_view message);
  template <class Compose>
  void tell(precomp::tDiagnosis::eSeverity severity, int code, const char* slug, Compose compose);
  template <class Compose>
  void trace(Compose compose) {
    if (options_.trace) tell(precomp::tDiagnosis::kTrace, 0, "trace", compose);
  }

  tDiskMan& disk_;
  const tRunOptions& options_;
  tRunHost& host_;
  precomp::tHeaderCache* headers_;
  tString readName_;
  tFileNames names_;
  tForeignConversion foreign_;
  std::size_t longestLine_ = kLongestLine;  // of what is normalised
  bool outputIsOurs_ = false;               // and may be removed after a failure
};

int tFileRun::run() {
  int result = kInternalFailure;
  try {
    result = process();
  } catch (...) {
    fail(result, "internal-error", reportException());
  }
  finish(result);
  return result;
}

/// Tells the host of a failure that has been printed. Returns `result`.
int tFileRun::fail(int result, const char* slug, std::string_view message) {
  if (host_.wantsDiagnoses()) host_.diagnosed(fileDiagnosis(names_.source, slug, message));
  return result;
}

/// Prints a text and tells the host of it, always in English. `compose` makes the text.
template <class Compose>
void tFileRun::tell(precomp::tDiagnosis::eSeverity severity, int code, const char* slug,
                    Compose compose) {
  writeOutput(compose());
  if (!host_.wantsDiagnoses()) return;
  const tLanguageScope english((tLanguage()));
  tString message = compose();
  message.trim();
  precomp::tDiagnosis diagnosis = fileDiagnosis(names_.source, slug, message);
  diagnosis.severity = severity;
  diagnosis.code = code;
  host_.diagnosed(diagnosis);
}

int tFileRun::process() {
  // A name with a zero byte would be cut by the file layer and mean another file.
  if (readName_.find(std::string_view("\0", 1)) != tString::npos) {
    reportNoCopy(names_.output);
    return fail(kNotNormalised, "file-not-found", "File not found");
  }
  if (!host_.takesOutput() && outputIsSource()) {
    reportNoCopy(names_.output);
    return fail(kNotNormalised, "output-is-source", "The output would take the source's place");
  }
  outputIsOurs_ = writesFile();
  if (names_.foreign && disk_.exists(readName_.c_str())) {
    const tForeignSource source = {readName_, options_.includePath, names_.directory};
    const int code = foreign_.run(host_.converterDirectory(), source);
    if (code != 0) return fail(code, "converter-failed", "The converter failed");
    readName_ = foreign_.converted();
  }
  tString text;
  {
    tDiskManOverlay files(disk_);
    files.keepInMemory(names_.copy);
    if (const int result = convert(files); result != kDone) return result;
    if (const int result = normalise(files); result != kDone) return result;
    host_.sourceRead(names_.source);
    if (const int result = preprocess(files, text); result != kDone) return result;
  }
  if (!host_.wantsOutput()) return kDone;
  finishLineMarkers(text, names_.copy, names_.source);
  if (writesFile()) return write(text);
  handOver(text);
  return kDone;
}

void tFileRun::handOver(const tString& text) {
  tDiskManOverlay memory(disk_);
  memory.keepInMemory(names_.output);
  tString whole;
  {
    const std::unique_ptr<tFile> file = memory.create(names_.output.c_str());
    file->expect(static_cast<std::int64_t>(text.size() + text.size() / 8));
    tLineWriter lines(*file);
    lines.write(text);
    lines.finish();
  }
  memory.open(names_.output.c_str())->readAll(whole);
  host_.takeOutput(names_.source, whole);
}

/// Puts the converted text of a page, or of a program with inline blocks, in front of the source.
int tFileRun::convert(tDiskManOverlay& files) {
  if (names_.foreign) return kDone;
  tPageError error;
  eConversion done =
      DoKRHPreprocessor(files, readName_, options_.pageDebugInfo, options_.httpSend, &error);
  if (done == eConversion::kDone) longestLine_ = tLineWriter::kAnyLength;
  if (done == eConversion::kNone) done = DoBCPreprocessor(files, readName_);
  if (done == eConversion::kError) {
    if (host_.wantsDiagnoses()) host_.diagnosed(pageDiagnosis(files, readName_, error));
    return kSessionError;
  }
  if (done != eConversion::kTooLarge) return kDone;
  reportNoCopy(names_.copy);
  return fail(kNotNormalised, "cannot-read", "The converted source is too big");
}

int tFileRun::normalise(tDiskManOverlay& files) {
  trace([&] {
    return tString::format("%s %s %s %s...\n", translate("[TRACE] copying").c_str(),
                           names_.source.c_str(), translate("to").c_str(), names_.copy.c_str());
  });
  unsigned char dialogFound = 0;
  tNormaliseFailure failure;
  const bool done =
      AdjustCRLF_and_CreateTemp(files, readName_.c_str(), names_.copy.c_str(), dialogFound,
                                names_.source.c_str(), longestLine_, &failure);
  if (!done && host_.wantsDiagnoses()) {
    host_.diagnosed(normaliseDiagnosis(files, readName_, names_.source, failure));
  }
  files.release(readName_);  // includes of that name mean the file itself
  return done ? kDone : kNotNormalised;
}

int tFileRun::preprocess(tDiskManOverlay& files, tString& text) {
  tAutoArray<tString> sessionOptions;
  for (int i = 0; i < options_.sessionOptions.count(); ++i) {
    sessionOptions.add(new tString(options_.sessionOptions[i]));
  }
  sessionOptions.add(new tString(tString("-F") += names_.copy));

  precomp::KorelPre16 session(files);
  session.Init(sessionOptions, 0);
  session.setShownName(names_.source);
  session.setHeaderCache(headers_);
  addIncludePaths(session);
  host_.sessionBegins(session, names_.copy, names_.source);
  trace([&] {
    return tString::format("%s... %s\n", translate("[TRACE] preprocessing").c_str(),
                           names_.source.c_str());
  });
  tString errorText;
  session.doIt(text, errorText);
  const bool failed = session.errorCount() > 0 || !errorText.empty();
  if (failed) {
    host_.diagnosed(session.diagnosis());
    trace([&] {
      return tString::format("%s %s\n", translate("[TRACE] pre-processor error msg").c_str(),
                             errorText.c_str());
    });
    return kSessionError;
  }
  trace([&] {
    const std::string_view lines = text;
    const auto count = std::count(lines.begin(), lines.end(), '\n') + (lines.empty() ? 0 : 1);
    return tString::format("%s %d\n", translate("[TRACE] generated lines").c_str(),
                           static_cast<int>(count));
  });
  host_.sessionDone(session);
  return kDone;
}

void tFileRun::addIncludePaths(precomp::KorelPre16& session) {
  if (options_.includePath.empty()) return;
  trace([] { return translate("[TRACE] adding include paths").append('\n'); });
  tAutoArray<tString> directories;
  splitAt(options_.includePath, ';', directories);
  while (!directories.empty()) {
    std::unique_ptr<tString> directory(directories.takeAt(0));
    if (!directory->empty()) session.IncludePath().add(directory.release());
  }
}

int tFileRun::write(const tString& text) {
  trace([&] {
    return tString::format("%s %s...\n", translate("[TRACE] creating file").c_str(),
                           names_.output.c_str());
  });
  tOutputFile output(disk_, names_.temporaryOutput, names_.output);
  if (host_.keepsUnchanged() && output.isUpToDate(text)) {
    host_.outputDone(names_.source, names_.output, false);
    return kDone;
  }
  if (!output.create(host_.takesTurns())) {
    qdprintf("%s %s. %s %s.\n", translate("KOREL").c_str(), translate("Preprocessor").c_str(),
             translate("Error creating out file").c_str(), names_.output.c_str());
    return fail(kInternalFailure, "output-failed",
                tString("Error creating out file ").append(names_.output));
  }
  bool done = output.write(text);
  if (done) {
    // Kept on purpose: no line end, the report on the file follows on the same line.
    trace([&] {
      return tString::format("%s %s %s %s...", translate("[TRACE] Renaming files").c_str(),
                             names_.temporaryOutput.c_str(), translate("to").c_str(),
                             names_.output.c_str());
    });
    done = output.rename();
  }
  if (done) {
    host_.outputDone(names_.source, names_.output, true);
    return kDone;
  }
  qdprintf("%s %s: %s %s.\n", translate("KOREL").c_str(), translate("Preprocessor").c_str(),
           translate("Error creating").c_str(), names_.output.c_str());
  return fail(kInternalFailure, "output-failed", tString("Error creating ").append(names_.output));
}

/// Prints the report on the file and leaves nothing of a failed run behind.
void tFileRun::finish(int result) {
  if (result != kDone && outputIsOurs_) disk_.remove(names_.output.c_str());
  if (disk_.exists(names_.temporaryErrors.c_str())) {
    disk_.rename(names_.temporaryErrors.c_str(), names_.errors.c_str());
  }
  tell(precomp::tDiagnosis::kResult, result, result == kDone ? "preprocessed" : "failed",
       [&] { return composeReport(names_.source, result); });
}

void tFileRun::reportNoCopy(const tString& target) {
  qdprintf("KOREL %s %s %s %s...\n", translate("Preprocessor: Cannot copy").c_str(),
           names_.source.c_str(), translate("to").c_str(), target.c_str());
}

/// True when the output would take the place of the source, or of any source when it has a name of
/// the host's choice.
bool tFileRun::outputIsSource() {
  const bool chosen = !host_.outputName().empty();
  tPathParts output;
  if (chosen) SplitPath(names_.output, output);
  if (chosen && isSourceExtension(output.extension)) return true;
  if (!chosen && !equalNoCase(bareName(names_.source), bareName(names_.output))) return false;
  const tString source = disk_.resolve(readName_.c_str());
  return !source.empty() && source == disk_.resolve(names_.output.c_str());
}

}  // namespace

tString outputNameOf(const tRunOptions& options, const tString& sourceName) {
  return composeNames(options, sourceName, {}).output;
}

int preprocessFile(tDiskMan& disk, const tRunOptions& options, const tString& sourceName,
                   tRunHost& host, precomp::tHeaderCache* headers) {
  return tFileRun(disk, options, sourceName, host, headers).run();
}
