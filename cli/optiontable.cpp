#include "cli/optiontable.h"

namespace {

bool refuseEmpty(tCommandLine& line, const tGivenOption& given, const char* what) {
  if (*given.value == '\0')
    line.complain(given.spelling + ": the name of the " + what + " is empty");
  return *given.value == '\0';
}

void takeOutput(tCommandLine& line, const tGivenOption& given) {
  if (refuseEmpty(line, given, "directory")) return;
  if (!line.outputDirectory.empty()) return line.complain(given.spelling + ": given twice");
  line.outputDirectory = given.value;
}

void takeInclude(tCommandLine& line, const tGivenOption& given) {
  if (refuseEmpty(line, given, "directory")) return;
  line.includeDirectories.emplace_back(given.value);
}

void takeDefine(tCommandLine& line, const tGivenOption& given) {
  line.defines.emplace_back(given.value);
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
    {"o", "output", "DIR", "write the outputs into DIR instead of beside\ntheir sources",
     takeOutput},
    {"I", "include", "DIR", "search DIR for include files; may be repeated", takeInclude},
    {"D", "define", "NAME[=VALUE]", "define NAME before the first line; may be repeated",
     takeDefine},
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
