#include "cli/optiontexts.h"

#include <string_view>

namespace {

// Hyphens as typed on a keyboard, and no dot or quote that would begin a request.
std::string escapedForMan(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '-') escaped += '\\';
    escaped += c == '\\' ? "\\e" : std::string(1, c);
  }
  return escaped.starts_with('.') || escaped.starts_with('\'') ? "\\&" + escaped : escaped;
}

std::string manEntry(const tOption& option) {
  const std::string letters = option.shortForm();
  const std::string name = option.longForm();
  std::string text = ".TP\n.B " + escapedForMan(letters);
  if (!letters.empty() && !name.empty()) text += ", ";
  text += escapedForMan(name);
  return text + escapedForMan(option.valueForm()) + "\n" + escapedForMan(option.help) + ".\n";
}

}  // namespace

std::string manualSections() {
  std::string text;
  for (const tCommand& command : programCommands()) {
    const bool program = command.isProgram();
    if (!program && text.find(".SH SUBCOMMANDS\n") == std::string::npos) {
      text += ".SH SUBCOMMANDS\n";
    }
    text += program ? ".SH OPTIONS\n"
                    : ".SS " + escapedForMan(command.usage()) + "\n" +
                          escapedForMan(command.description) + "\n";
    std::string_view group;
    for (const tOption* option : optionsOf(command.set)) {
      if (program && group != option->group) text.append(".SS ").append(option->group).append("\n");
      group = option->group;
      text += manEntry(*option);
    }
  }
  return text;
}
