// A whole run over files in memory, with a host that looks at everything. Whatever the source is,
// the run ends with one of its results. A new output takes the place of an older one when it
// succeeded, else there is none. No temporary file stays. What the program krpre prints of the
// reports is sound, its JSON above all.
//
// The first byte of the input chooses the name of the source and the arguments, the second the
// host, the third the line that is explained. The source and headers follow, as text or as choices
// of productions.

#include <cstdint>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "cli/diagnostics.h"
#include "cli/explain.h"
#include "cli/sarif.h"
#include "fuzz/check.h"
#include "fuzz/program.h"
#include "lib_base/language.h"
#include "preprocessor/host/hostbridge.h"
#include "preprocessor/host/hostdisk.h"
#include "preprocessor/host/textencoding.h"
#include "tests/preprocessor/testrun.h"

namespace {

constexpr struct {
  const char* source;
  const char* output;
} kNames[] = {
    {"a.prw", "out/a.ppo"},
    {"a.prg", "out/a.ppo"},
    {"a.zorb", "out/a.ppx_"},
    {"a.ch", "out/a.ppo"},
};

constexpr std::string_view kOlder = "x := \"of an earlier run\"\n";

enum eArgument : unsigned {
  kTrace = 4,
  kDefine = 8,
  kTwoFiles = 16,
  kPrecompiled = 32,
  kGrammar = 64,
  kFullDisk = 128,
};

enum eHost : unsigned {
  kReports = 1,
  kFlags = 2 | 4,  // KRPRE_NO_OUTPUT, KRPRE_KEEP_UNCHANGED
  kTakesOutput = 8,
  kShares = 16,
  kGerman = 32,
  kDefines = 64,
  kColour = 128,  // and warnings, and several errors
};

class tFiles : public tDiskManMemory {
 public:
  /// Puts a file there that the run must leave alone.
  void give(const std::string& name, std::string_view bytes) {
    put(name, bytes);
    given_[name] = bytes;
  }
  std::size_t givenCount() const { return given_.size(); }
  void checkGiven() const {
    for (const auto& [name, text] : given_) {
      require(bytes(name) != nullptr, "no source is removed");
      requireEqual(*bytes(name), text, "sources stay as they are");
    }
  }

 private:
  std::map<std::string, std::string> given_;
};

void checkJson(const std::string& text) {
  require(isUtf8(text), "JSON is UTF-8");
  require(nlohmann::json::accept(text), "JSON can be parsed");
}

/// Takes every report as the program does.
class tListener {
 public:
  tListener(const std::string& source, int line, bool colour)
      : source_(source), paint_(colour), story_(source, line) {}

  void listen(krpre_host& host) {
    host.context = this;
    host.rule = [](void* me, const krpre_rule* rule) { of(me).rules_.push_back(infoOf(*rule)); };
    host.step = [](void* me, const krpre_step* step) { of(me).meet(*step); };
    host.file = [](void*, int event, const char* source, const char* name) {
      require(event >= KRPRE_FILE_READ && event <= KRPRE_OUTPUT_UNCHANGED, "events are known");
      require(*source != '\0' && *name != '\0', "files have names");
    };
    host.diagnostic = [](void* me, const krpre_diagnostic* report) { of(me).show(*report); };
  }
  void finish() const {
    checkJson(sarifDocument(results_, errors_ == 0));
    checkJson(listedJson(rules_));
    listedText(rules_, false, paint_);
    checkJson(explainedJson(story_, source_));
    require(explainedText(story_, source_, paint_).ends_with('\n'), "a story ends its last line");
  }
  int errors() const { return errors_; }

 private:
  static tListener& of(void* me) { return *static_cast<tListener*>(me); }

  void meet(const krpre_step& step) {
    require(step.line >= 1 && step.lastLine >= step.line, "a statement has lines");
    require(
        (step.rule != nullptr) == (step.kind != KRPRE_STEP_BEGINS && step.kind != KRPRE_STEP_ENDS),
        "a rule is told when there is one");
    story_.meet(step);
  }
  void show(const krpre_diagnostic& report) {
    const bool error = report.severity == KRPRE_SEVERITY_ERROR;
    if (error) ++errors_;
    checkJson(jsonLine(report));
    const bool result = report.severity == KRPRE_SEVERITY_RESULT;
    require(gccLines(report).empty() == result, "errors show");
    require(msvcLines(report).empty() == result, "errors show");
    results_ += sarifResult(report);
    const auto same = [](const char* text) { return std::string(text); };
    const std::string details = longDetails(report, paint_, same);
    const bool warning = report.severity == KRPRE_SEVERITY_WARNING;
    require(error || warning || details.empty(), "only errors and warnings have details");
    require(report.line >= 0 && report.column >= 0, "a place is none below 0");
    require(
        report.column == 0 || static_cast<std::size_t>(report.column) <= report.sourceLength + 1,
        "a column is one of the line");
    require(report.endColumn == 0 || report.endColumn > report.column, "an end is behind");
    for (int i = 0; i < report.noteCount; ++i) {
      const krpre_note& note = report.notes[i];
      require(*note.message != '\0', "a note says something");
      require(note.line == 0 || *note.file != '\0', "a line is one of a file");
      require(
          note.sourceLength == 0 || static_cast<std::size_t>(note.column) <= note.sourceLength + 1,
          "a note's column is one of its line");
    }
  }

  const std::string& source_;
  const tPaint paint_;
  tRuleStory story_;
  std::vector<tRuleInfo> rules_;
  std::string results_;  // of SARIF
  int errors_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  tByteReader input(bytes, size);
  const unsigned options = input.byte();
  const unsigned wishes = input.byte();
  const int line = static_cast<int>(input.byte());
  const auto& [name, output] = kNames[options % std::size(kNames)];
  const std::string source = name;

  tFiles files;
  const tProgramTexts texts(input, (options & kGrammar) != 0);
  for (std::size_t i = 0; i < std::size(texts.headers); ++i) {
    files.give(std::string(tProgramTexts::kHeaders[i]), texts.headers[i]);
  }
  files.give("h.ch", "#define One 1 + Two\n#ifndef Two\n#define Two(a) a\n#endif\nx := One\n");
  files.give(source, texts.main);
  files.put(output, kOlder);
  std::vector<std::string> arguments = {"@F" + source, "@Oout"};
  if ((options & kTwoFiles) != 0) {
    files.give("second.prw", "y := 1\n");
    arguments.emplace_back("@Fsecond.prw");
  }
  if ((options & kTrace) != 0) arguments.emplace_back("-T");
  if ((options & kDefine) != 0) arguments.emplace_back("-DOne=1");
  if ((options & kPrecompiled) != 0) arguments.emplace_back("@@PRECOMPILED=kept");
  if ((options & kFullDisk) != 0) files.limitWrites("out/a.ppo", static_cast<std::size_t>(line));

  tListener listener(source, line, (wishes & kColour) != 0);
  krpre_headers headers(tString((options & kPrecompiled) != 0 ? "kept" : ""));
  const krpre_define defines[] = {{"Host", "1"}, {"Three", nullptr}};
  const krpre_prefix prefixes[] = {{"", "p/"}, {"a", ""}};
  constexpr long long kTime = KRPRE_LATEST_TIME;
  // In place of the one on disk.
  constexpr std::string_view kGiven = "#include \"a.ch\"\n#define Given h + 1\n";
  constexpr krpre_file kGivenFile = {"h.ch", kGiven.data(), kGiven.size(), nullptr};
  krpre_host host{};
  host.flags = (wishes & kFlags) / 2;
  if ((wishes & kReports) != 0) listener.listen(host);
  if ((wishes & kTakesOutput) != 0)
    host.output = [](void*, const char*, const char*, std::size_t) {};
  if ((wishes & kShares) != 0) host.headers = &headers;
  if ((wishes & kColour) != 0) host.warnings = "all", host.mostErrors = 4;
  if ((wishes & kDefines) != 0) {
    host.defineCount = std::size(defines), host.defines = defines;
    host.prefixCount = std::size(prefixes), host.prefixes = prefixes;
    host.timeStamp = &kTime;
    host.fileCount = 1, host.files = &kGivenFile;
  }

  const tLanguageScope language(languageNamed((wishes & kGerman) != 0 ? "de_DE.ISO-8859-1" : ""));
  tHostBridge bridge(host);
  require(bridge.fault().empty(), "the host is sound");
  tHostDisk disk(files, host);
  const int result = runOver(disk, arguments, bridge).result;
  require(result == 0 || result == 1 || result == 15 || result == -1, "a result of the run");
  files.checkGiven();
  if ((wishes & kReports) != 0) {
    listener.finish();
    require((listener.errors() == 0) == (result == 0), "a failure has an error");
  }
  const std::string* const written = files.bytes(output);
  const bool writes = host.output == nullptr && (host.flags & KRPRE_NO_OUTPUT) == 0;
  if (!writes) {
    require(written != nullptr && *written == kOlder, "without output an older one stays");
    return 0;
  }
  const bool second = files.bytes("out/second.ppo") != nullptr;
  const bool all = written != nullptr && second == ((options & kTwoFiles) != 0);
  require(all == (result == 0), "an output is there exactly after a success");
  require(written == nullptr || *written != kOlder, "an older output does not stay");
  std::size_t others = (written != nullptr ? 1U : 0U) + (second ? 1U : 0U);
  for (const std::string& saved : files.namesIn("kept"))
    others += saved.ends_with(".pch") ? 1U : 0U;
  require(files.fileCount() == files.givenCount() + others, "no temporary file stays");
  return 0;
}
