#include "cli/optiontexts.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace {

constexpr const char* kNotes =
    "\n"
    "Include files are searched for in the directories of the environment variable\n"
    "INCLUDE, then in those of -I, then among the headers that come with the program.\n"
    "\n"
    "Exit status: 0 if every source was preprocessed, 1 if any failed, 2 if the usage\n"
    "was wrong and nothing was done.\n";

constexpr std::size_t kWidth = 79;
constexpr std::size_t kHelpColumn = 29;

// The forms of one option: "  -o, --output=DIR", "      --help", "  -MF FILE".
std::string forms(const tOption& option) {
  const std::string letters = option.shortForm();
  const std::string name = option.longForm();
  std::string text = letters.empty() ? "      " : "  " + letters;
  if (!letters.empty() && !name.empty()) text += ", ";
  text += name;
  return text + option.valueForm();
}

void describe(std::string& text, const tOption& option) {
  const std::string shown = forms(option);
  text += shown;
  // At least two blanks separate the forms from the description.
  const bool fits = shown.size() + 2 <= kHelpColumn;
  text +=
      fits ? std::string(kHelpColumn - shown.size(), ' ') : '\n' + std::string(kHelpColumn, ' ');
  appendWrapped(text, option.help, kHelpColumn);
}

}  // namespace

void appendWrapped(std::string& text, std::string_view words, std::size_t indent) {
  std::size_t column = text.size() - (text.rfind('\n') + 1);
  for (const std::string& word : wordsOf(words)) {
    if (column > indent && column + 1 + word.size() > kWidth) {
      text += '\n' + std::string(indent, ' ');
      column = indent;
    } else if (column > indent) {
      text += ' ';
      ++column;
    }
    text += word;
    column += word.size();
  }
  text += '\n';
}

std::string helpText(const tCommand& command) {
  const bool program = command.isProgram();
  std::string text = "Usage: " + command.usage() + "\n";
  for (const tCommand& other : programCommands()) {
    if (program && !other.isProgram()) text += "   or: " + other.usage() + "\n";
  }
  if (program) text += "   or: krpre --classic ARGUMENT...\n";
  appendWrapped(text, command.description, 0);

  std::string_view group;
  for (const tOption* option : optionsOf(command.set)) {
    // The few options of a subcommand need no headings.
    if (program && group != option->group) text.append("\n").append(option->group).append(":\n");
    if (!program && group.empty()) text += '\n';
    group = option->group;
    describe(text, *option);
  }
  return program ? text + kNotes : text;
}
