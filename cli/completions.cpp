#include "cli/optiontexts.h"

#include <string_view>
#include <vector>

namespace {

constexpr const char* kSourcePattern = "prw|prg|prx|zorb|krh|khu";

void append(std::string& list, const std::string& word, const char* separator = " ") {
  if (!word.empty()) list += (list.empty() ? "" : separator) + word;
}

/// The names of the subcommands, or of those only that take files of any kind.
std::string commandNames(const char* separator, bool anyFileOnly = false) {
  std::string names;
  for (const tCommand& command : programCommands()) {
    if (command.anyFile || !anyFileOnly) append(names, command.name, separator);
  }
  return names;
}

// How a value is completed, by its kind; words are listed instead.
constexpr const char* kBashActions[] = {"", "_krpre_words -f; ", "_krpre_words -d; "};
constexpr const char* kFishActions[] = {" -x", " -r -F", " -x -a '(__fish_complete_directories)'"};
constexpr const char* kZshActions[] = {"", "_files", "_files -/"};

std::string bashAction(const tValue& value) {
  return value.kind != tValue::kWords ? kBashActions[value.kind]
                                      : std::string("_krpre_words -W '") + value.words + "'; ";
}

std::string zshAction(const tValue& value) {
  return value.kind != tValue::kWords ? kZshActions[value.kind]
                                      : std::string("(") + value.words + ")";
}

// The value of an option is completed alike for all commands that have it.
std::string bashValues() {
  std::string cases;
  for (const tOption& option : programOptions()) {
    if (option.value == nullptr) continue;
    std::string forms;
    append(forms, option.shortForm());
    append(forms, option.longForm(), "|");
    forms.insert(0, "    ").append(") ");
    if (cases.find(forms) != std::string::npos) continue;
    const bool optional = option.value->optional;
    cases.append(forms).append(optional ? "if [[ $joined ]]; then " : "");
    cases.append(bashAction(*option.value)).append(optional ? "return; fi ;;\n" : "return ;;\n");
  }
  return cases;
}

std::string bashOptions() {
  std::string cases;
  // The program itself comes last: its pattern is every other first word.
  std::string rest;
  for (const tCommand& command : programCommands()) {
    std::string words;
    for (const tOption* option : optionsOf(command.set)) {
      append(words, option->shortForm());
      append(words, option->longForm());
    }
    const std::string line = std::string("      ") + (command.isProgram() ? "*" : command.name) +
                             ") _krpre_words -W '" + words + "' ;;\n";
    (command.isProgram() ? rest : cases) += line;
  }
  return cases + rest;
}

std::string forBash() {
  return "# bash completion of krpre; made by \"krpre --completions=bash\".\n"
         "_krpre() {\n"
         "  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} joined=\n"
         "  # Bash takes the \"=\" of a long option for a word.\n"
         "  if [[ $cur == = ]]; then cur= joined=1\n"
         "  elif [[ $prev == = ]]; then prev=${COMP_WORDS[COMP_CWORD-2]} joined=1; fi\n"
         "  _krpre_words() { mapfile -t COMPREPLY < <(compgen \"$@\" -- \"$cur\"); }\n"
         "  case $prev in\n" +
         bashValues() +
         "  esac\n"
         "  if [[ $cur == -* ]]; then\n"
         "    case ${COMP_WORDS[1]} in\n" +
         bashOptions() +
         "    esac\n"
         "    return\n"
         "  fi\n"
         "  if ((COMP_CWORD > 1)); then\n"
         "    case ${COMP_WORDS[1]} in\n"
         "      " +
         commandNames("|", true) +
         ") _krpre_words -f; return ;;\n"
         "    esac\n"
         "  fi\n"
         "  mapfile -t COMPREPLY < <(\n"
         "    ((COMP_CWORD > 1)) || compgen -W '" +
         commandNames(" ") +
         "' -- \"$cur\"\n"
         "    compgen -d -- \"$cur\"\n"
         "    compgen -f -- \"$cur\" | grep -iE '\\.(" +
         kSourcePattern +
         ")$')\n"
         "}\n"
         "complete -o filenames -F _krpre krpre\n";
}

// For an argument of _arguments in single quotes; `special` are the characters that end a part of
// it.
std::string escapedForZsh(std::string_view text, std::string_view special) {
  std::string escaped;
  for (const char c : text) {
    if (c == '\'') {
      escaped += "'\\''";
      continue;
    }
    if (special.find(c) != std::string_view::npos) escaped += '\\';
    escaped += c;
  }
  return escaped;
}

std::string zshOptions(const tCommand& command) {
  std::string lines;
  for (const tOption* option : optionsOf(command.set)) {
    const std::string help = "[" + escapedForZsh(option->help, "[]:\\") + "]";
    std::string value;
    const bool optional = option->value != nullptr && option->value->optional;
    if (option->value != nullptr) {
      value = (optional ? "::" : ":") + escapedForZsh(option->value->name, ":\\") + ":" +
              zshAction(*option->value);
    }
    // Options may be repeated. The value of a letter may be joined to it, that of a name by "=".
    const auto add = [&](const std::string& form, const char* joint) {
      if (form.empty()) return;
      lines.append("        '*").append(form).append(value.empty() ? "" : joint);
      lines.append(help).append(value).append("'\n");
    };
    const bool family = std::string_view(option->letters).size() > 1;
    add(option->shortForm(), option->isWord() ? "=-" : family ? "" : "+");
    add(option->longForm(), optional ? "=-" : "=");
  }
  return lines;
}

std::string forZsh() {
  std::string cases;
  for (const tCommand& command : programCommands()) {
    cases += std::string("    ") + (command.isProgram() ? "''" : command.name) + ")\n" +
             (command.anyFile ? "      files=_files\n" : "") + "      options=(\n" +
             zshOptions(command) + "      ) ;;\n";
  }
  const std::string names = commandNames("|");
  return "#compdef krpre\n"
         "# zsh completion of krpre; made by \"krpre --completions=zsh\".\n"
         "_krpre_sources() {\n"
         "  local -a kinds=('sources:source:_files -g \"(#i)*.(" +
         std::string(kSourcePattern) +
         ")\"')\n"
         "  [[ -n $command ]] || ((CURRENT > 2)) || kinds+=('commands:command:(" +
         commandNames(" ") +
         ")')\n"
         "  _alternative $kinds\n"
         "}\n"
         "_krpre() {\n"
         "  local command= files=_krpre_sources\n"
         "  local -a options\n"
         "  if ((CURRENT > 2)) && [[ $words[2] == (" +
         names +
         ") ]]; then\n"
         "    command=$words[2]\n"
         "    shift words\n"
         "    ((CURRENT -= 1))\n"
         "  fi\n"
         "  case $command in\n" +
         cases +
         "  esac\n"
         "  _arguments -s -S $options \"*: :$files\"\n"
         "}\n"
         "_krpre \"$@\"\n";
}

// An argument in single quotes.
std::string quotedForFish(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + "'";
}

std::string fishAction(const tValue& value) {
  // Behind "=" fish offers what may stand in place of the option, too: sources and directories.
  if (value.optional) return {};
  return value.kind != tValue::kWords ? kFishActions[value.kind]
                                      : std::string(" -x -a ") + quotedForFish(value.words);
}

// "krpre" stands for the program without a subcommand.
std::string fishCondition(unsigned commands) {
  std::string words = "__krpre_is";
  for (const tCommand& command : programCommands()) {
    if ((command.set & commands) != 0) append(words, command.isProgram() ? "krpre" : command.name);
  }
  return "complete -c krpre -n " + quotedForFish(words);
}

std::string forFish() {
  const std::string names = commandNames(" ");
  unsigned sources = 0;
  unsigned files = 0;
  for (const tCommand& command : programCommands()) {
    (command.anyFile ? files : sources) |= command.set;
  }
  std::string text =
      "# fish completion of krpre; made by \"krpre --completions=fish\".\n"
      "function __krpre_is\n"
      "    set -l words (commandline -opc)\n"
      "    if contains -- \"$words[2]\" " +
      names +
      "\n"
      "        contains -- $words[2] $argv\n"
      "    else\n"
      "        contains krpre $argv\n"
      "    end\n"
      "end\n"
      "function __krpre_sources\n"
      "    complete -C '__krpre_files '(commandline -ct) | string match -ri '.*(?:/|\\.(?:" +
      std::string(kSourcePattern) +
      "))$'\n"
      "end\n"
      "complete -c krpre -f\n"
      "complete -c krpre -n 'test (count (commandline -opc)) -eq 1' -a '" +
      names + "'\n" + fishCondition(sources) + " -a '(__krpre_sources)'\n" + fishCondition(files) +
      " -F\n";
  for (const tOption& option : programOptions()) {
    text += fishCondition(option.commands);
    const bool family = std::string_view(option.letters).size() > 1;
    if (*option.letters != '\0') text.append(family ? " -o " : " -s ").append(option.letters);
    if (option.name != nullptr) text.append(" -l ").append(option.name);
    if (option.value != nullptr) text += fishAction(*option.value);
    text += " -d " + quotedForFish(option.help) + "\n";
  }
  return text;
}

}  // namespace

std::string completionsFor(const std::string& shell) {
  if (shell == "fish") return forFish();
  return shell == "bash" ? forBash() : forZsh();
}
