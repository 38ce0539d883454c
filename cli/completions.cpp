#include "cli/completions.h"

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include "cli/commandline.h"
#include "cli/exitstatus.h"
#include "cli/optiontable.h"

namespace {

// What the value of an option can be, for those that are no free text.
struct tValueKind {
  const char* value;  // as the table of options calls it
  const char* bash;   // of compgen
  const char* zsh;    // an action of _arguments
};

constexpr tValueKind kValueKinds[] = {
    {"DIR", "-d", "_files -/"},
    {"NAME", "-f", "_files"},
    {"FILE", "-f", "_files"},
    {"FORM", "-W 'auto classic long json gcc'", "(auto classic long json gcc)"},
};

constexpr const char* kSourcePattern = "prw|prg|prx|zorb|krh|khu";
constexpr const char* kCommands = "explain rules pack unpack";  // as the first word only

const tValueKind* kindOf(const tOption& entry) {
  for (const tValueKind& kind : kValueKinds) {
    if (entry.value != nullptr && std::strcmp(kind.value, entry.value) == 0) return &kind;
  }
  return nullptr;
}

std::string shortForm(const tOption& entry) {
  return *entry.letters == '\0' ? std::string() : std::string("-") + entry.letters;
}

std::string longForm(const tOption& entry) {
  return entry.name == nullptr ? std::string() : std::string("--") + entry.name;
}

std::string joined(std::string_view help) {
  std::string text(help);
  for (char& c : text) {
    if (c == '\n') c = ' ';
  }
  return text;
}

std::string forBash() {
  std::string cases;
  std::string words;
  for (const tOption& entry : programOptions()) {
    for (const std::string& form : {shortForm(entry), longForm(entry)}) {
      if (!form.empty()) words += (words.empty() ? "" : " ") + form;
    }
    if (entry.value == nullptr) continue;
    const std::string shorter = shortForm(entry);
    const std::string longer = longForm(entry);
    const tValueKind* kind = kindOf(entry);
    cases.append("    ").append(shorter).append(shorter.empty() || longer.empty() ? "" : "|");
    cases.append(longer).append(") ");
    cases += kind == nullptr ? "return ;;\n"
                             : "_krpre_words " + std::string(kind->bash) + "; return ;;\n";
  }
  return "# bash completion of krpre; made by \"krpre --completions bash\".\n"
         "_krpre() {\n"
         "  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}\n"
         "  # Bash takes the \"=\" of a long option for a word.\n"
         "  if [[ $cur == = ]]; then cur=\n"
         "  elif [[ $prev == = ]]; then prev=${COMP_WORDS[COMP_CWORD-2]}; fi\n"
         "  _krpre_words() { mapfile -t COMPREPLY < <(compgen \"$@\" -- \"$cur\"); }\n"
         "  case $prev in\n" +
         cases +
         "  esac\n"
         "  if [[ $cur == -* ]]; then\n"
         "    _krpre_words -W '" +
         words +
         "'\n"
         "    return\n"
         "  fi\n"
         "  mapfile -t COMPREPLY < <(\n"
         "    ((COMP_CWORD > 1)) || compgen -W '" +
         std::string(kCommands) +
         "' -- \"$cur\"\n"
         "    compgen -d -- \"$cur\"\n"
         "    compgen -f -- \"$cur\" | grep -iE '\\.(" +
         std::string(kSourcePattern) +
         ")$')\n"
         "}\n"
         "complete -o filenames -F _krpre krpre\n";
}

// Inside the single quotes of what _arguments takes; `special` ends a part of it.
std::string escapedForZsh(const std::string& text, std::string_view special) {
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

std::string forZsh() {
  std::string lines;
  for (const tOption& entry : programOptions()) {
    const std::string help = "[" + escapedForZsh(joined(entry.help), "[]:\\") + "]";
    const tValueKind* kind = kindOf(entry);
    std::string value;
    if (entry.value != nullptr) {
      value = ":" + escapedForZsh(entry.value, ":\\") + ":" + (kind == nullptr ? "" : kind->zsh);
    }
    // Options may be repeated. The value of a letter may be joined to it, that of a name by "=".
    const auto add = [&](const std::string& form, const char* joint) {
      if (form.empty()) return;
      lines.append("  '*").append(form).append(value.empty() ? "" : joint);
      lines.append(help).append(value).append("' \\\n");
    };
    add(shortForm(entry), std::strlen(entry.letters) > 1 ? "" : "+");
    add(longForm(entry), "=");
  }
  return "#compdef krpre\n"
         "# zsh completion of krpre; made by \"krpre --completions zsh\".\n"
         "_krpre_sources() {\n"
         "  local -a kinds=('sources:source:_files -g \"(#i)*.(" +
         std::string(kSourcePattern) +
         ")\"')\n"
         "  ((CURRENT > 2)) || kinds+=('commands:command:(" +
         std::string(kCommands) +
         ")')\n"
         "  _alternative $kinds\n"
         "}\n"
         "_arguments -s -S \\\n" +
         lines + "  '*: :_krpre_sources'\n";
}

// A hyphen that is typed, and no dot or quote that begins a request.
std::string escapedForMan(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '-') escaped += '\\';
    escaped += c == '\\' ? "\\e" : std::string(1, c);
  }
  return escaped.starts_with('.') || escaped.starts_with('\'') ? "\\&" + escaped : escaped;
}

std::string forMan() {
  std::string text = ".SH OPTIONS\n";
  for (const tOption& entry : programOptions()) {
    const std::string letters = shortForm(entry);
    const std::string name = longForm(entry);
    text += ".TP\n.B " + escapedForMan(letters);
    if (!letters.empty() && !name.empty()) text += ", ";
    text += escapedForMan(name);
    if (entry.value != nullptr) text += (name.empty() ? " " : "=") + escapedForMan(entry.value);
    text += "\n" + escapedForMan(joined(entry.help)) + ".\n";
  }
  return text;
}

struct tTarget {
  const char* name;
  std::string (*make)();
};

constexpr tTarget kTargets[] = {{"bash", forBash}, {"zsh", forZsh}, {"man", forMan}};

}  // namespace

int completionsCommand(int count, char** arguments) {
  for (const tTarget& target : kTargets) {
    if (count != 2 || std::strcmp(arguments[1], target.name) != 0) continue;
    return std::fputs(target.make().c_str(), stdout) < 0 ? kSomeFailed : kAllDone;
  }
  return refuseUsage("--completions needs one of bash, zsh and man");
}
