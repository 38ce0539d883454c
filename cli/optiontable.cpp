#include "cli/optiontable.h"

#include <charconv>
#include <cstring>
#include <system_error>

namespace {

bool refuseEmpty(tCommandLine& line, const tGivenOption& given, const char* what) {
  if (*given.value == '\0')
    line.complain(given.spelling + ": the name of the " + what + " is empty");
  return *given.value == '\0';
}

void takeOutput(tCommandLine& line, const tGivenOption& given) {
  if (refuseEmpty(line, given, "output")) return;
  if (!line.output.empty()) return line.complain(given.spelling + ": given twice");
  line.output = given.value;
}

void takeInclude(tCommandLine& line, const tGivenOption& given) {
  if (refuseEmpty(line, given, "directory")) return;
  line.includeDirectories.emplace_back(given.value);
}

void takeDefine(tCommandLine& line, const tGivenOption& given) {
  line.addDefine(given.spelling, given.value);
}

void takeJobs(tCommandLine& line, const tGivenOption& given) {
  constexpr unsigned kMost = 4096;
  const char* end = given.value + std::strlen(given.value);
  unsigned jobs = 0;
  const auto [stop, error] = std::from_chars(given.value, end, jobs);
  if (given.value != end && (stop != end || error != std::errc() || jobs > kMost)) {
    return line.complain(given.spelling + ": no number of jobs: " + given.value);
  }
  line.jobs = jobs;
}

void takeRules(tCommandLine& line, const tGivenOption&) {
  line.dependencies.wanted = true;
}

void takeRuleFile(tCommandLine& line, const tGivenOption& given) {
  if (refuseEmpty(line, given, "file")) return;
  if (!line.dependencies.file.empty()) return line.complain(given.spelling + ": given twice");
  line.dependencies.file = given.value;
}

void takeTarget(tCommandLine& line, const tGivenOption& given) {
  if (refuseEmpty(line, given, "target")) return;
  std::string& targets = line.dependencies.targets;
  targets.append(targets.empty() ? "" : " ").append(given.value);
}

void takePhony(tCommandLine& line, const tGivenOption&) {
  line.dependencies.phony = true;
}

void takeAlwaysWrite(tCommandLine& line, const tGivenOption&) {
  line.alwaysWrite = true;
}

void takePrecompiled(tCommandLine& line, const tGivenOption&) {
  line.precompiled = true;
}

void takeInputName(tCommandLine& line, const tGivenOption& given) {
  if (refuseEmpty(line, given, "source")) return;
  line.standardInputName = given.value;
}

struct tFormName {
  const char* name;
  eDiagnosticForm form;
};

constexpr tFormName kFormNames[] = {
    {"auto", eDiagnosticForm::kAuto}, {"classic", eDiagnosticForm::kClassic},
    {"long", eDiagnosticForm::kLong}, {"json", eDiagnosticForm::kJson},
    {"gcc", eDiagnosticForm::kGcc},
};

void takeDiagnostics(tCommandLine& line, const tGivenOption& given) {
  for (const tFormName& known : kFormNames) {
    if (std::strcmp(known.name, given.value) != 0) continue;
    line.diagnostics = known.form;
    return;
  }
  line.complain(given.spelling + ": no form of messages: " + given.value);
}

void takeTrace(tCommandLine& line, const tGivenOption&) {
  line.trace = true;
}

void takeQuiet(tCommandLine& line, const tGivenOption&) {
  line.quiet = true;
}

void takeClassic(tCommandLine& line, const tGivenOption& given) {
  line.complain(given.spelling + " must be the first argument");
}

void takeHelp(tCommandLine& line, const tGivenOption&) {
  line.request = tCommandLine::kShowHelp;
}

void takeVersion(tCommandLine& line, const tGivenOption&) {
  line.request = tCommandLine::kShowVersion;
}

const tOption kOptions[] = {
    {"o", "output", "NAME",
     "write the outputs into the directory NAME; the\noutput of one source also to a file of that "
     "NAME",
     takeOutput},
    {"I", "include", "DIR", "search DIR for include files; may be repeated", takeInclude},
    {"D", "define", "NAME[=VALUE]", "define NAME before the first line; may be repeated",
     takeDefine},
    {"j", "jobs", "N",
     "preprocess N files at once; 0, as without this: as\nmany as there are cores", takeJobs},
    {"MD", nullptr, nullptr,
     "write beside each output a .d file: a rule for\nmake or ninja with all that it was made from",
     takeRules},
    {"MF", nullptr, "FILE", "write the rule of the one source to FILE", takeRuleFile},
    {"MT", nullptr, "TARGET", "name TARGET in the rule instead of the output", takeTarget},
    {"MP", nullptr, nullptr, "add an empty rule for every header", takePhony},
    {"", "always-write", nullptr, "write outputs that do not change too", takeAlwaysWrite},
    {"", "precompiled", nullptr,
     "keep the standard header in a file beside it that\nlater runs use", takePrecompiled},
    {"", "stdin-name", "NAME", "what the source from standard input is called\n(stdin.prw)",
     takeInputName},
    {"", "diagnostics", "FORM",
     "print messages as classic lines, long (with the\nsource and how it was reached), json or gcc;"
     "\nauto, the default: long on a terminal",
     takeDiagnostics},
    {"T", "trace", nullptr, "trace the steps of the run", takeTrace},
    {"q", "quiet", nullptr, "print no messages unless a file fails", takeQuiet},
    {"", "classic", nullptr,
     "hand every further argument to the library as it\nstands; must be the first argument",
     takeClassic},
    {"", "help", nullptr, "print this text and exit", takeHelp},
    {"", "version", nullptr, "print the version and exit", takeVersion},
};

}  // namespace

std::span<const tOption> programOptions() {
  return kOptions;
}

const tOption* optionOfLetters(const std::string& letters) {
  for (const tOption& entry : kOptions) {
    if (!letters.empty() && entry.letters == letters) return &entry;
  }
  return nullptr;
}
