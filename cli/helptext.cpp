#include "cli/helptext.h"

#include <cstddef>

#include "cli/optiontable.h"

namespace {

constexpr const char* kUsage =
    "Usage: krpre [OPTION]... FILE...\n"
    "  or:  krpre explain [OPTION]... FILE:LINE\n"
    "  or:  krpre rules [OPTION]... FILE\n"
    "  or:  krpre pack|unpack [-o FILE] FILE...\n"
    "  or:  krpre --classic ARGUMENT...\n"
    "Preprocess Korel sources: each FILE becomes a .ppo file. With - for its FILE it\n"
    "reads standard input and writes standard output.\n"
    "\n"
    "Mandatory arguments to long options are mandatory for short options too.\n";

constexpr const char* kNotes =
    "\n"
    "Include files are searched in the directories of the variable INCLUDE, then in\n"
    "those of -I, then among the headers that come with the program.\n"
    "\n"
    "Exit status: 0 when every file was preprocessed, 1 when one failed, 2 when the\n"
    "usage is wrong.\n";

constexpr std::size_t kHelpColumn = 29;

// The forms of one option: "  -o, --output=DIR", "      --help", "  -MF FILE".
std::string forms(const tOption& entry) {
  std::string text = "  ";
  const bool isShort = *entry.letters != '\0';
  if (isShort) text.append("-").append(entry.letters);
  if (entry.name != nullptr) text.append(isShort ? ", --" : "    --").append(entry.name);
  if (entry.value != nullptr) text.append(entry.name != nullptr ? "=" : " ").append(entry.value);
  return text;
}

void describe(const tOption& entry, std::string& text) {
  std::string line = forms(entry);
  // Two blanks at least stand between the forms and what they do.
  if (line.size() + 2 > kHelpColumn) {
    text += line + '\n';
    line.clear();
  }
  line.resize(kHelpColumn, ' ');
  text += line;
  for (const char* c = entry.help; *c != '\0'; ++c) {
    text += *c;
    if (*c == '\n') text.append(kHelpColumn + 2, ' ');
  }
  text += '\n';
}

}  // namespace

std::string helpText() {
  std::string text = std::string(kUsage) + '\n';
  for (const tOption& entry : programOptions()) describe(entry, text);
  return text + kNotes;
}
