#include "cli/optiontexts.h"

#include <string_view>

namespace {

// Hyphens as typed on a keyboard, and no word that could begin a line as a request.
std::string escapedForMan(std::string_view text) {
  std::string escaped;
  char before = ' ';
  for (const char c : text) {
    if (before == ' ' && (c == '.' || c == '\'')) escaped += "\\&";
    if (c == '-') escaped += '\\';
    escaped += c == '\\' ? "\\e" : std::string(1, c);
    before = c;
  }
  return escaped;
}

void appendProse(std::string& text, std::string_view prose) {
  appendWrapped(text, escapedForMan(prose), 0);
}

void appendEntry(std::string& text, const tOption& option) {
  const std::string letters = option.shortForm();
  const std::string name = option.longForm();
  text += ".TP\n.B " + escapedForMan(letters);
  if (!letters.empty() && !name.empty()) text += ", ";
  text += escapedForMan(name) + escapedForMan(option.valueForm()) + "\n";
  appendProse(text, std::string(option.help) + ".");
}

}  // namespace

std::string manualSections() {
  std::string text;
  for (const tCommand& command : programCommands()) {
    const bool program = command.isProgram();
    if (!program && text.find(".SH SUBCOMMANDS\n") == std::string::npos) {
      text += ".SH SUBCOMMANDS\n";
    }
    text += program ? ".SH OPTIONS\n" : ".SS " + escapedForMan(command.usage()) + "\n";
    if (!program) appendProse(text, command.description);
    std::string_view group;
    for (const tOption* option : optionsOf(command.set)) {
      if (program && group != option->group) text.append(".SS ").append(option->group).append("\n");
      group = option->group;
      appendEntry(text, *option);
    }
  }
  return text;
}
