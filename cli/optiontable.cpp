#include "cli/optiontable.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <optional>
#include <system_error>
#include <utility>

#include "cli/warninglist.h"

namespace {

constexpr tCommand kCommands[] = {
    {kPreprocess, "", "FILE", false, false,
     "Preprocess Korel sources: each FILE becomes a .ppo file. If FILE is -, read standard input "
     "and "
     "write standard output."},
    {kCheck, "check", "FILE", false, false,
     "Look for what is wrong or hardly meant in sources: errors, and all warnings. Writes no file, "
     "and prints nothing for a source without findings. Fails if a source has an error, or a "
     "warning that -Werror makes one."},
    {kCoverage, "coverage", "FILE", false, false,
     "Write which rules of their headers the sources use, in the form of lcov, for genhtml: a rule "
     "is a line of its header, and each of its optional groups a branch. Headers that come with "
     "the "
     "program are left out."},
    {kExplain, "explain", "FILE:LINE", true, false,
     "Show how the statement on a line of a source is rewritten: every rewrite in order, the rule "
     "behind it, where that rule is defined and what each of its markers matched, and which other "
     "rules were tried and why they did not apply. Writes no file."},
    {kRules, "rules", "FILE", true, false,
     "List the rules in force at the end of a source: defines, translations and commands, each "
     "with "
     "the place where it is defined. Writes no file."},
    {kBundle, "bundle", "FILE", true, false,
     "Write a source, all that it includes, the options and the output or the messages to one "
     "archive, to send with a report or to keep with a release. krpre --bundle runs from it, here "
     "or elsewhere."},
    {kReduce, "reduce", "FILE", true, false,
     "Shrink a source and its headers line by line while they show the same error or output, and "
     "write what is left as a bundle. The files themselves stay as they are."},
    {kPack, "pack", "FILE", false, true,
     "Compress sources and headers in place. The preprocessor reads a packed file as its text. A "
     "file that is already packed is left alone."},
    {kUnpack, "unpack", "FILE", false, true,
     "Restore packed sources and headers in place. A file that is not packed is left alone."},
};

constexpr const char* kFormats =
    "classic long json gcc msvc sarif";  // in the order of eDiagnosticForm
constexpr const char* kColourModes = "always never auto";
constexpr const char* kCompletionFormats = "bash zsh fish man";

constexpr tValue kDefinition = {"NAME[=VALUE]", nullptr, tValue::kText, ""};
constexpr tValue kDirectory = {"DIR", "directory name", tValue::kDirectories, ""};
constexpr tValue kCache = {"DIR", "directory name", tValue::kDirectories, "", true};
constexpr tValue kFile = {"FILE", "file name", tValue::kFiles, ""};
constexpr tValue kOutput = {"NAME", "output name", tValue::kFiles, ""};
constexpr tValue kSource = {"NAME", "source name", tValue::kFiles, ""};
constexpr tValue kTarget = {"TARGET", "target", tValue::kText, ""};
constexpr tValue kPrefixMap = {"OLD=NEW", nullptr, tValue::kText, ""};
constexpr tValue kNumber = {"N", nullptr, tValue::kText, ""};
constexpr tValue kCode = {"CODE", "code", tValue::kText, ""};
constexpr tValue kWarning = {"SLUG", "warning", tValue::kText, ""};
constexpr tValue kCount = {"N", "number of errors", tValue::kText, ""};
constexpr tValue kWanted = {"TEXT", "text", tValue::kText, ""};
constexpr tValue kWord = {"WORD", nullptr, tValue::kText, ""};
constexpr tValue kFormat = {"FORMAT", "format", tValue::kWords, kFormats};
constexpr tValue kWhen = {"WHEN", "colour mode", tValue::kWords, kColourModes};
constexpr tValue kCompletions = {"FORMAT", "format", tValue::kWords, kCompletionFormats};

constexpr unsigned kQueries = kExplain | kRules;
constexpr unsigned kPackers = kPack | kUnpack;
constexpr unsigned kRuns = kPreprocess | kCheck;
constexpr unsigned kBundlers = kBundle | kReduce;
constexpr unsigned kEvery = kRuns | kCoverage | kQueries | kBundlers | kPackers;

constexpr const char* kInputs = "Input";
constexpr const char* kOutputs = "Output";
constexpr const char* kDependencies = "Dependency files";
constexpr const char* kMessages = "Messages";
constexpr const char* kOthers = "Other";

void setOnce(std::string& text, tCommandLine& line, const tGivenOption& given) {
  if (!text.empty()) return line.complain(given.spelling + ": given more than once");
  text = given.value;
}

template <bool tCommandLine::*flag>
void setFlag(tCommandLine& line, const tGivenOption& /*given*/) {
  line.*flag = true;
}

template <std::string tCommandLine::*text>
void setText(tCommandLine& line, const tGivenOption& given) {
  line.*text = given.value;
}

template <tCommandLine::eRequest wanted>
void request(tCommandLine& line, const tGivenOption& given) {
  line.request = wanted;
  if (given.value != nullptr) line.completions = given.value;
}

void takeOutput(tCommandLine& line, const tGivenOption& given) {
  setOnce(line.output, line, given);
}

void takeDefine(tCommandLine& line, const tGivenOption& given) {
  constexpr const char* kNameCharacters =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
  const std::string definition = given.value;
  const std::size_t equals = definition.find('=');
  tDefine define{definition.substr(0, equals), std::nullopt};
  if (equals != std::string::npos) define.value = definition.substr(equals + 1);
  const auto refuse = [&](const char* reason) {
    line.complain(given.spelling + " " + definition + ": " + reason);
  };
  if (define.name.empty() || define.name.find_first_not_of(kNameCharacters) != std::string::npos) {
    return refuse("a name consists of letters, digits and underscores");
  }
  if (definition.find_first_of("\r\n") != std::string::npos) return refuse("a value is one line");
  line.defines.push_back(std::move(define));
}

// Each word is checked by itself, so that the complaint can name what was meant.
void takeWarning(tCommandLine& line, const tGivenOption& given) {
  const std::string word = given.value;
  const std::string reason = faultOfWarning(word);
  if (!reason.empty()) return line.complain(given.spelling + " " + word + ": " + reason);
  line.warnings.append(line.warnings.empty() ? "" : ",").append(word);
}

void takePrefixMap(tCommandLine& line, const tGivenOption& given) {
  const std::string map = given.value;
  const std::size_t equals = map.find('=');
  const auto refuse = [&](const char* reason) {
    line.complain(given.spelling + "=" + map + ": " + reason);
  };
  if (equals == std::string::npos) return refuse("expected OLD=NEW");
  line.prefixes.push_back({map.substr(0, equals), map.substr(equals + 1)});
  if (line.prefixes.back().to.find_first_of("\r\n\"") != std::string::npos) {
    refuse("a name in #line cannot hold a line end or a double quote");
  }
}

void takeJobs(tCommandLine& line, const tGivenOption& given) {
  constexpr unsigned kMost = 4096;
  const char* end = given.value + std::strlen(given.value);
  unsigned jobs = 0;
  const auto [stop, error] = std::from_chars(given.value, end, jobs);
  if (given.value != end && (stop != end || error != std::errc() || jobs > kMost)) {
    return line.complain(given.spelling + ": invalid number of jobs '" + given.value + "'");
  }
  line.jobs = jobs;
}

void takeMostErrors(tCommandLine& line, const tGivenOption& given) {
  constexpr int kMost = 1000;
  const char* end = given.value + std::strlen(given.value);
  int most = 0;
  const auto [stop, error] = std::from_chars(given.value, end, most);
  if (stop != end || error != std::errc() || most < 1 || most > kMost) {
    return line.complain(given.spelling + ": invalid number of errors '" + given.value + "'");
  }
  line.mostErrors = most;
}

const tOption kOptions[] = {
    {"I", "include", &kDirectory, kRuns | kCoverage | kQueries | kBundlers, kInputs,
     "search DIR, a directory or an archive (zip or tar), for include files; may be repeated",
     [](tCommandLine& line, const tGivenOption& given) {
       line.includeDirectories.emplace_back(given.value);
     }},
    {"D", "define", &kDefinition, kRuns | kCoverage | kQueries | kBundlers, kInputs,
     "define NAME before the first line of each source; may be repeated", takeDefine},
    {"", "files-from", &kFile, kRuns | kCoverage, kInputs,
     "read the names of more sources from FILE (- for standard input), one to a line",
     [](tCommandLine& line, const tGivenOption& given) { setOnce(line.fileList, line, given); }},
    {"0", "null", nullptr, kRuns | kCoverage, kInputs,
     "the names in the file of --files-from are separated by zero bytes",
     setFlag<&tCommandLine::zeroSeparated>},
    {"", "bundle", &kFile, kRuns, kInputs,
     "run from what krpre bundle has written, and write to standard output unless -o is given",
     setText<&tCommandLine::bundle>},
    {"", "stdin-name", &kSource, kRuns, kInputs,
     "treat standard input as a source called NAME (default: stdin.prw)",
     setText<&tCommandLine::standardInputName>},
    {"", "precompiled", &kCache, kPreprocess, kInputs,
     "cache the standard header in DIR for later runs (default: krpre in $XDG_CACHE_HOME, or in "
     "~/.cache)",
     [](tCommandLine& line, const tGivenOption& given) {
       line.cache = given.value == nullptr ? "" : given.value;
     }},
    {"o", "output", &kOutput, kPreprocess, kOutputs,
     "write outputs to the directory NAME, or the output of a single source to the file NAME "
     "(- for standard output)",
     takeOutput},
    {"o", "output", &kFile, kBundle, kOutputs,
     "write to FILE (- for standard output) instead of the name of the source with .zip behind it",
     takeOutput},
    {"o", nullptr, &kFile, kReduce, kOutputs,
     "write to FILE (- for standard output) instead of the name of the source with .reduced.zip "
     "behind it",
     setText<&tCommandLine::reducedFile>},
    {"", "error", &kCode, kReduce, kOutputs, "keep an error, by its number or slug",
     setText<&tCommandLine::wantedError>},
    {"", "output", &kWanted, kReduce, kOutputs, "keep a text in the output",
     setText<&tCommandLine::wantedText>},
    {"o", "output", &kFile, kPackers, kOutputs,
     "write the result to FILE instead of replacing the input, which must be a single file",
     takeOutput},
    {"o", "output", &kFile, kCoverage, kOutputs,
     "write to FILE (- for standard output, the default)", takeOutput},
    {"", "always-write", nullptr, kPreprocess, kOutputs,
     "rewrite outputs even when their content is unchanged", setFlag<&tCommandLine::alwaysWrite>},
    {"", "save-temps", nullptr, kPreprocess, kOutputs,
     "keep what is read in place of each source (.pw_), in which pages, inline blocks and foreign "
     "sources are converted, beside its output",
     setFlag<&tCommandLine::saveTemps>},
    {"ffile-prefix-map", nullptr, &kPrefixMap, kPreprocess | kBundle, kOutputs,
     "where a file name in #line begins with OLD, write NEW instead of that; may be repeated, and "
     "the last that fits counts",
     takePrefixMap},
    {"fsyntax-only", nullptr, nullptr, kPreprocess, kOutputs,
     "write no output and no dependency file, whatever other options say of them",
     setFlag<&tCommandLine::syntaxOnly>},
    {"MD", nullptr, nullptr, kPreprocess, kDependencies,
     "write a dependency file (.d), for make or ninja, beside each output",
     [](tCommandLine& line, const tGivenOption&) { line.dependencies.wanted = true; }},
    {"MF", nullptr, &kFile, kPreprocess, kDependencies,
     "write the dependency file of a single source to FILE",
     [](tCommandLine& line, const tGivenOption& given) {
       setOnce(line.dependencies.file, line, given);
     }},
    {"MT", nullptr, &kTarget, kPreprocess, kDependencies,
     "make TARGET the target of the rule instead of the output; may be repeated",
     [](tCommandLine& line, const tGivenOption& given) {
       std::string& targets = line.dependencies.targets;
       targets.append(targets.empty() ? "" : " ").append(given.value);
     }},
    {"MP", nullptr, nullptr, kPreprocess, kDependencies,
     "add an empty rule for each header, so that make does not fail when one is gone",
     [](tCommandLine& line, const tGivenOption&) { line.dependencies.phony = true; }},
    {"", "key", &kWord, kRules, kOutputs, "list only the rules that WORD in a statement would find",
     setText<&tCommandLine::key>},
    {"", "listing", nullptr, kRules, kOutputs,
     "show each rule as the library lists it, with its kind, instead of as it is written",
     setFlag<&tCommandLine::listing>},
    {"", "json", nullptr, kQueries, kOutputs, "print JSON", setFlag<&tCommandLine::json>},
    {"", "color", &kWhen, kRuns | kQueries, kMessages,
     "colour what is printed: always, never or auto (the default: only on a terminal)",
     [](tCommandLine& line, const tGivenOption& given) {
       line.colour = given.word == 2 ? std::nullopt : std::optional(given.word == 0);
     }},
    {"W", "warn", &kWarning, kRuns | kBundle, kMessages,
     "look for what a warning is about, or for all; no-SLUG switches it off again, and error=SLUG, "
     "or error for all that are on, makes it an error; may be repeated",
     takeWarning},
    {"", "unused", nullptr, kCheck, kMessages,
     "also name the rules of headers, their optional groups and words, that none of the sources "
     "uses",
     setFlag<&tCommandLine::unused>},
    {"", "all-errors", nullptr, kRuns, kMessages,
     "go on after an error and tell the others of the source too, 20 at most; krpre check always "
     "does",
     [](tCommandLine& line, const tGivenOption&) {
       if (line.mostErrors == 0) line.mostErrors = kMostErrors;
     }},
    {"", "max-errors", &kCount, kRuns | kBundle, kMessages, "tell at most N errors of each source",
     takeMostErrors},
    {"", "diagnostics", &kFormat, kRuns, kMessages,
     "print messages as classic lines, long (with the source line, the includes and the rules "
     "behind an error; the default), json, gcc, msvc or sarif",
     [](tCommandLine& line, const tGivenOption& given) {
       line.diagnostics = static_cast<eDiagnosticForm>(given.word);
     }},
    {"T", "trace", nullptr, kPreprocess, kMessages, "trace the steps of each run",
     setFlag<&tCommandLine::trace>},
    {"", "progress", nullptr, kRuns, kMessages,
     "tell from the start how many of several sources are done, also where standard error is no "
     "terminal; without it only on a terminal, and after a second",
     setFlag<&tCommandLine::progress>},
    {"q", "quiet", nullptr, kPreprocess, kMessages, "print no messages unless a source fails",
     setFlag<&tCommandLine::quiet>},
    {"j", "jobs", &kNumber, kRuns, kOthers,
     "run N jobs in parallel; 0 (the default) means one per core", takeJobs},
    {"", "classic", nullptr, kPreprocess, kOthers,
     "pass all further arguments to the library unchanged; must be the first argument",
     [](tCommandLine& line, const tGivenOption& given) {
       line.complain(given.spelling + " must be the first argument");
     }},
    {"", "explain", &kCode, kPreprocess, kOthers,
     "explain an error or another message, by its number or slug, and exit",
     [](tCommandLine& line, const tGivenOption& given) {
       line.request = tCommandLine::kShowChapter;
       line.chapter = given.value;
     }},
    {"", "completions", &kCompletions, kPreprocess, kOthers,
     "print the completions for bash, zsh or fish, or the option sections of the manual page "
     "(man), and exit",
     request<tCommandLine::kShowCompletions>},
    {"", "list-warnings", nullptr, kRuns, kOthers, "print the warnings and exit",
     request<tCommandLine::kListWarnings>},
    {"h", "help", nullptr, kEvery, kOthers, "print this help and exit",
     request<tCommandLine::kShowHelp>},
    {"V", "version", nullptr, kPreprocess, kOthers, "print the version and exit",
     request<tCommandLine::kShowVersion>},
};

}  // namespace

std::string tCommand::spelling() const {
  return std::string(isProgram() ? "krpre" : "krpre ") + name;
}

std::string tCommand::usage() const {
  return spelling() + " [OPTION]... " + file + (oneFile ? "" : "...");
}

std::string tOption::shortForm() const {
  return *letters == '\0' ? std::string() : std::string("-") + letters;
}

std::string tOption::longForm() const {
  return name == nullptr ? std::string() : std::string("--") + name;
}

std::string tOption::valueForm() const {
  if (value == nullptr) return {};
  if (value->optional) return std::string("[=") + value->name + "]";
  return std::string(name == nullptr && !isWord() ? " " : "=") + value->name;
}

std::span<const tCommand> programCommands() {
  return kCommands;
}

std::span<const tOption> programOptions() {
  return kOptions;
}

std::vector<const tOption*> optionsOf(unsigned set) {
  std::vector<const tOption*> options;
  for (const tOption& option : kOptions) {
    if ((option.commands & set) != 0) options.push_back(&option);
  }
  return options;
}

std::vector<std::string> wordsOf(std::string_view text) {
  std::vector<std::string> words;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    words.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return words;
}
