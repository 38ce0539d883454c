#include "cli/sourcerun.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>

#include "cli/diagnosticparts.h"
#include "cli/diagnostics.h"
#include "cli/librarycall.h"
#include "cli/messagelanguage.h"
#include "cli/paint.h"
#include "cli/sarif.h"
#include "include/krpre.h"

namespace {

/// What the library reports of one run.
struct tTold {
  explicit tTold(tSourceResult& ofSource) : result(ofSource) {}

  tSourceResult& result;
  tCallbackGuard guard;
  const tMessageStyle* style = nullptr;
  std::vector<std::string>* read = nullptr;
  bool wantsResults = true;
  std::size_t told = 0;  // the messages up to the last diagnostic
};

tTold& told(void* context) {
  return *static_cast<tTold*>(context);
}

void takeMessage(void* context, const char* text, std::size_t length) {
  told(context).guard.run([&] { told(context).result.messages.append(text, length); });
}

void addDiagnostic(const krpre_diagnostic& diagnostic, tTold& heard) {
  const tMessageStyle& style = *heard.style;
  std::string& messages = heard.result.messages;
  const auto words = [&](const char* text) { return translated(style.language, text); };
  const bool replaced =
      style.form == eDiagnosticForm::kLong && !longHead(diagnostic, tPaint(false), words).empty();
  if (replaced) messages.resize(heard.told);
  messages += shownDiagnostic(diagnostic, style);
}

// Errors without a number end the run of their source, what -Werror makes of warnings aside.
bool isWarningOfHeader(const krpre_diagnostic& diagnostic) {
  const bool error = diagnostic.severity == KRPRE_SEVERITY_ERROR && diagnostic.code == 0;
  return diagnostic.includeCount > 0 && (error || diagnostic.severity == KRPRE_SEVERITY_WARNING);
}

std::string keyOf(const krpre_diagnostic& diagnostic) {
  return placed(diagnostic.file, diagnostic.line, diagnostic.column) + " " + diagnostic.slug + " " +
         diagnostic.message;
}

void takeDiagnostic(void* context, const krpre_diagnostic* diagnostic) {
  tTold& heard = told(context);
  heard.guard.run([&] {
    std::string& messages = heard.result.messages;
    const bool result = diagnostic->severity == KRPRE_SEVERITY_RESULT;
    if (diagnostic->severity == KRPRE_SEVERITY_ERROR) {
      heard.result.codes += " " + std::to_string(diagnostic->code) + " " + diagnostic->slug + " ";
    }
    if (result && !heard.wantsResults) messages.resize(heard.told);
    if (!result || heard.wantsResults) addDiagnostic(*diagnostic, heard);
    if (isWarningOfHeader(*diagnostic)) {
      heard.result.ofHeaders.push_back({heard.told, messages.size(), keyOf(*diagnostic)});
    }
    heard.told = messages.size();
  });
}

// Forms for machines replace the lines of the library.
void dropMessage(void* /*context*/, const char* /*text*/, std::size_t /*length*/) {}

bool isForMachines(eDiagnosticForm form) {
  return form >= eDiagnosticForm::kJson;
}

void takeOutput(void* context, const char* /*source*/, const char* text, std::size_t length) {
  told(context).guard.run([&] { told(context).result.text.assign(text, length); });
}

void takeFile(void* context, int event, const char* /*source*/, const char* name) {
  if (event != KRPRE_FILE_READ) return;
  told(context).guard.run([&] { told(context).read->emplace_back(name); });
}

krpre_host hostFor(const tCommandLine& line, const tBuildJob& job, const tMessageStyle& style,
                   tTold& heard) {
  krpre_host host{};
  host.size = sizeof host;
  host.context = &heard;
  host.flags = KRPRE_TAKE_TURNS;
  if (line.saveTemps) host.flags |= KRPRE_SAVE_TEMPS;
  if (!line.alwaysWrite) host.flags |= KRPRE_KEEP_UNCHANGED;
  heard.style = &style;
  host.message = isForMachines(style.form) ? dropMessage : takeMessage;
  const bool warns = !line.warnings.empty();
  if (warns) host.warnings = line.warnings.c_str();
  host.mostErrors = line.checks && line.mostErrors == 0 ? kMostErrors : line.mostErrors;
  if (warns || style.form != eDiagnosticForm::kClassic) host.diagnostic = takeDiagnostic;
  if (!style.language.empty()) host.language = style.language.c_str();
  heard.wantsResults =
      style.form != eDiagnosticForm::kLong && !line.checks && !(line.quiet && warns);
  if (line.writesNothing()) {
    host.flags |= KRPRE_NO_OUTPUT;
    return host;
  }
  if (job.output.empty()) {
    host.output = takeOutput;
  } else {
    host.outputName = job.output.c_str();
  }
  if (job.outputIsChosen) host.flags |= KRPRE_OUTPUT_CHOSEN;
  if (job.dependencies.empty()) return host;
  host.dependencyName = job.dependencies.c_str();
  const tDependencyOptions& wanted = line.dependencies;
  if (!wanted.file.empty()) host.flags |= KRPRE_DEPENDENCIES_CHOSEN;
  if (!wanted.targets.empty()) host.dependencyTargets = wanted.targets.c_str();
  if (wanted.phony) host.flags |= KRPRE_PHONY_TARGETS;
  return host;
}

}  // namespace

std::string shownDiagnostic(const krpre_diagnostic& diagnostic, const tMessageStyle& style) {
  const auto words = [&](const char* text) { return translated(style.language, text); };
  const tPaint paint(style.colour);
  switch (style.form) {
    case eDiagnosticForm::kJson:
      return jsonLine(diagnostic);
    case eDiagnosticForm::kGcc:
      return gccLines(diagnostic);
    case eDiagnosticForm::kMsvc:
      return msvcLines(diagnostic);
    case eDiagnosticForm::kSarif:
      return sarifResult(diagnostic);
    case eDiagnosticForm::kClassic:
      // The library prints all lines but those of warnings.
      return diagnostic.severity == KRPRE_SEVERITY_WARNING
                 ? longHead(diagnostic, tPaint(false), words)
                 : std::string();
    default:
      return longHead(diagnostic, paint, words) + longDetails(diagnostic, paint, words);
  }
}

tMessageStyle messageStyle(const tCommandLine& line, int messages) {
  tMessageStyle style{.form = line.diagnostics, .colour = false, .language = {}};
  if (!isForMachines(style.form)) style.language = messageLanguage();
  style.colour = line.colour.value_or(mayColour(messages));
  return style;
}

tSourceRun::tSourceRun(const tCommandLine& line, const tBuildJob& job,
                       const std::string& shippedHeaders, const tMessageStyle& style,
                       krpre_headers* headers)
    : line_(line),
      job_(job),
      style_(style),
      headers_(headers),
      call_(line, job.source, shippedHeaders, job.tag) {}

tSourceResult tSourceRun::run(const std::string* text, std::vector<std::string>* read) noexcept {
  tSourceResult result;
  try {
    runInto(result, text, read);
  } catch (...) {
    // A build must not accept an output of which it has not been told all.
    struct stat output {};
    if (result.done && lstat(job_.output.c_str(), &output) == 0 && S_ISREG(output.st_mode)) {
      unlink(job_.output.c_str());
    }
    result.done = false;
    result.outOfMemory = true;
    result.text.clear();
  }
  return result;
}

void tSourceRun::runInto(tSourceResult& result, const std::string* text,
                         std::vector<std::string>* read) {
  tTold heard(result);
  krpre_host host = hostFor(line_, job_, style_, heard);
  host.headers = headers_;
  heard.read = read;
  if (read != nullptr) host.file = takeFile;
  call_.prepare(host);
  const int code = text == nullptr
                       ? krpre_run(call_.count(), call_.vector(), &host)
                       // The last argument names the source.
                       : krpre_text(call_.count() - 1, call_.vector(), &host,
                                    nameInRun(job_.source).c_str(), text->data(), text->size());
  result.done = code == KRPRE_OK;
  heard.guard.check();
}
