#include "preprocessor/host/hostbridge.h"

#include <algorithm>

#include "korelpre/text/cursor.h"
#include "lib_base/pathname.h"
#include "preprocessor/host/diagnosticreport.h"
#include "preprocessor/run/options.h"
#include "preprocessor/run/preprocessor.h"
#include "preprocessor/run/report.h"

namespace {

const char* faultOf(const krpre_define& define) {
  const std::string_view name = define.name == nullptr ? "" : define.name;
  if (name.empty() || !std::all_of(name.begin(), name.end(), precomp::isWordByte)) {
    return "a name is made of letters, digits and underscores";
  }
  const std::string_view value = define.value == nullptr ? "" : define.value;
  // The output must stay in step with its source.
  return value.find_first_of("\r\n") == std::string_view::npos ? nullptr : "a value is one line";
}

const char* faultOf(const krpre_prefix& prefix) {
  if (prefix.prefix == nullptr || prefix.replacement == nullptr) return "a prefix is null";
  // A marker must stay one.
  return std::string_view(prefix.replacement).find_first_of("\r\n\"") == std::string_view::npos
             ? nullptr
             : "what replaces a prefix holds a line end or a quote";
}

const char* faultOf(const krpre_file& file) {
  if (file.name == nullptr) return "the name of a file is null";
  if (file.text == nullptr && file.length > 0) return "the text of a file is null";
  return file.length < kLongestText ? nullptr : "the text of a file is too long";
}

// Steps that a host hears of for one statement.
constexpr int kMostTrials = 100'000;

// The host's text, not copied: what reports that memory is short must not need any.
tString textOf(const char* text) {
  return text == nullptr ? tString() : tString::borrow(text);
}

int lastLineOf(const precomp::tTknString& statement) {
  int last = statement.origin();
  for (int i = 0; i < statement.count(); ++i) {
    last = std::max(last, static_cast<int>(statement.tokens()[i].line()));
  }
  return last;
}

}  // namespace

tHostBridge::tHostBridge(const krpre_host& host)
    : host_(host),
      dependencies_({textOf(host.dependencyName), (host.flags & KRPRE_DEPENDENCIES_CHOSEN) != 0,
                     textOf(host.dependencyTargets), (host.flags & KRPRE_PHONY_TARGETS) != 0}) {}

tString tHostBridge::fault() const {
  if (host_.includeDirectoryCount > 0 && host_.includeDirectories == nullptr) {
    return tString::borrow("the array of include directories is null");
  }
  for (std::size_t i = 0; i < host_.includeDirectoryCount; ++i) {
    if (host_.includeDirectories[i] == nullptr) {
      return tString::borrow("an include directory is null");
    }
  }
  if (host_.mostErrors < 0) return tString::borrow("the number of errors is negative");
  const long long* const time = host_.timeStamp;
  if (time != nullptr && (*time < 0 || *time > KRPRE_LATEST_TIME)) {
    return tString::borrow("the time stamp is not within the years 1970 to 9999");
  }
  if (host_.defineCount > 0 && host_.defines == nullptr) {
    return tString::borrow("the array of defines is null");
  }
  for (std::size_t i = 0; i < host_.defineCount; ++i) {
    const krpre_define& define = host_.defines[i];
    const char* const fault = faultOf(define);
    if (fault == nullptr) continue;
    return tString::format("define \"%s\": %s", define.name == nullptr ? "" : define.name, fault);
  }
  if (host_.fileCount > 0 && host_.files == nullptr) {
    return tString::borrow("the array of files is null");
  }
  for (std::size_t i = 0; i < host_.fileCount; ++i) {
    if (const char* const fault = faultOf(host_.files[i])) return tString::borrow(fault);
  }
  if (host_.prefixCount > 0 && host_.prefixes == nullptr) {
    return tString::borrow("the array of prefixes is null");
  }
  for (std::size_t i = 0; i < host_.prefixCount; ++i) {
    if (const char* const fault = faultOf(host_.prefixes[i])) return tString::borrow(fault);
  }
  return host_.warnings == nullptr ? tString() : precomp::tWarningSet().take(host_.warnings);
}

void tHostBridge::refuse(const tString& fault) {
  const tString none;
  tRunReport(*this, none).tell(eMessage::kInvalidHost, {fault});
}

void tHostBridge::addOptions(tRunOptions& options) const {
  for (std::size_t i = 0; i < host_.includeDirectoryCount; ++i) {
    options.includePath.add(new tString(host_.includeDirectories[i]));
  }
  for (std::size_t i = 0; i < host_.prefixCount; ++i) {
    const krpre_prefix& prefix = host_.prefixes[i];
    options.prefixes.push_back({tString(prefix.prefix), tString(prefix.replacement)});
  }
  if (host_.timeStamp != nullptr) options.clock = clockAt(*host_.timeStamp);
  if (host_.warnings != nullptr) options.warnings.take(host_.warnings);
  for (std::size_t i = 0; i < host_.defineCount; ++i) {
    const krpre_define& define = host_.defines[i];
    options.defines.push_back({tString(define.name), std::nullopt});
    if (define.value != nullptr) options.defines.back().value = tString(define.value);
  }
}

void tHostBridge::write(std::string_view text) {
  // No memory is allocated for the zero behind a piece.
  char piece[1024];
  while (!text.empty()) {
    const std::size_t size = text.copy(piece, sizeof piece - 1);
    piece[size] = '\0';
    host_.message(host_.context, piece, size);
    text.remove_prefix(size);
  }
}

void tHostBridge::takeOutput(const tString& source, const std::string& text) {
  host_.output(host_.context, source.c_str(), text.c_str(), text.size());
}

void tHostBridge::sessionBegins(precomp::KorelPre16& session, const tString& copy,
                                const tString& source) {
  names_ = {copy, source};
  if (host_.step != nullptr) session.setRuleObserver(this);
  if (host_.file != nullptr || dependencies() != nullptr) session.setFileObserver(this);
}

void tHostBridge::sessionBeginsAgain(precomp::KorelPre16& session) {
  if (host_.step != nullptr) session.setRuleObserver(this);
}

void tHostBridge::sessionDone(precomp::KorelPre16& session) {
  if (host_.rule == nullptr) return;
  for (precomp::tXChgArray* rules : {session.defines(), session.translates(), session.commands()}) {
    rules->arrange();
    listRules(*rules);
  }
}

void tHostBridge::sourceRead(const tString& source) {
  dependencies_.begin(containerOf(source));
  tellOfFile(KRPRE_FILE_READ, source, source);
}

/// What a dependency file names for a file.
std::string_view tHostBridge::containerOf(const tString& name) {
  if (host_.fileCount == 0) return name;
  if (!containers_) {
    containers_.emplace();
    for (std::size_t i = 0; i < host_.fileCount; ++i) {
      const krpre_file& file = host_.files[i];
      if (file.container != nullptr) containers_->emplace(plainPath(file.name), file.container);
    }
  }
  const auto found = containers_->find(plainPath(name.view()));
  return found == containers_->end() ? name.view() : found->second;
}

void tHostBridge::fileRead(const tString& name) {
  dependencies_.add(containerOf(name));
  tellOfFile(KRPRE_FILE_READ, names_.source, name);
}

void tHostBridge::outputDone(const tString& source, const tString& name, bool written) {
  tellOfFile(written ? KRPRE_OUTPUT_WRITTEN : KRPRE_OUTPUT_UNCHANGED, source, name);
}

void tHostBridge::tellOfFile(int event, const tString& source, const tString& name) {
  if (host_.file != nullptr) host_.file(host_.context, event, source.c_str(), name.c_str());
}

void tHostBridge::diagnosed(const precomp::tDiagnosis& diagnosis) {
  if (host_.diagnostic == nullptr) return;
  const tDiagnosticReport report(diagnosis, names_);
  host_.diagnostic(host_.context, &report.diagnostic());
}

void tHostBridge::diagnosedInBrief(int code) noexcept {
  if (host_.diagnostic == nullptr) return;
  krpre_diagnostic brief{};
  brief.severity = code == 0 ? KRPRE_SEVERITY_ERROR : KRPRE_SEVERITY_RESULT;
  brief.code = code;
  brief.slug = code == 0 ? "internal-error" : "failed";
  brief.message = "Memory Allocation Failure";
  brief.translated = brief.message;
  brief.file = brief.source = "";
  host_.diagnostic(host_.context, &brief);
}

void tHostBridge::listRules(const precomp::tXChgArray& rules) {
  for (int i = 0; i < rules.count(); ++i) {
    const tRuleReport report(rules[i], names_);
    host_.rule(host_.context, &report.rule());
  }
}

void tHostBridge::statementBegins(const precomp::tTknString& statement, const tString& file) {
  file_ = names_.shown(file);
  lastLine_ = lastLineOf(statement);
  reports_.clear();
  trials_ = 0;
  render(statement);
  send({}, KRPRE_STEP_BEGINS, statement);
}

void tHostBridge::ruleTried(const precomp::tRuleTrial& trial) {
  if (++trials_ > kMostTrials) return;
  krpre_step step{};
  step.score = trial.score;
  const bool failed = trial.score == 0;
  const tString marker = failed ? listedMarker(trial.failedMarker) : tString();
  step.failedMarker = marker.c_str();
  const int at = failed ? trial.failedToken : -1;
  step.failedIndex = at;
  const bool known = at >= 0 && at < trial.statement.count();
  step.failedToken = known ? trial.statement.tokens()[at].c_str() : "";
  sendWithRule(step, KRPRE_STEP_TRIED, trial.rule, trial.start, trial.statement);
}

void tHostBridge::ruleMatched(const precomp::tBaseXChg& rule, int start,
                              const precomp::tTknString& statement) {
  const tCaptureReport captures(rule, statement);
  krpre_step step{};
  step.captureCount = captures.count();
  step.captures = captures.captures();
  sendWithRule(step, KRPRE_STEP_MATCHED, rule, start, statement);
}

void tHostBridge::ruleApplied(const precomp::tBaseXChg& rule, int start,
                              const precomp::tTknString& statement) {
  render(statement);
  sendWithRule({}, KRPRE_STEP_APPLIED, rule, start, statement);
}

void tHostBridge::statementEnds(const precomp::tTknString& statement) {
  send({}, KRPRE_STEP_ENDS, statement);
}

void tHostBridge::sendWithRule(krpre_step step, int kind, const precomp::tBaseXChg& rule, int start,
                               const precomp::tTknString& statement) {
  std::unique_ptr<tRuleReport>& report = reports_[&rule];
  if (report == nullptr) report = std::make_unique<tRuleReport>(rule, names_);
  step.rule = &report->rule();
  step.token = std::max(start, 0);
  send(step, kind, statement);
}

void tHostBridge::render(const precomp::tTknString& statement) {
  text_.clear();
  statement.appendText(text_);
  text_.trim();
}

void tHostBridge::send(krpre_step step, int kind, const precomp::tTknString& statement) {
  step.kind = kind;
  step.file = file_.c_str();
  step.line = statement.origin();
  step.lastLine = lastLine_;
  step.statement = text_.c_str();
  if (kind != KRPRE_STEP_TRIED) step.failedIndex = -1;
  if (step.failedMarker == nullptr) step.failedMarker = "";
  if (step.failedToken == nullptr) step.failedToken = "";
  host_.step(host_.context, &step);
}
