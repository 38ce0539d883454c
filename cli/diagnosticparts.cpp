#include "cli/diagnosticparts.h"

#include <cstddef>

#include "cli/sourcequote.h"

std::string severityOf(const krpre_diagnostic& diagnostic) {
  constexpr const char* kSeverities[] = {"", "error", "trace", "result", "warning"};
  return kSeverities[diagnostic.severity];
}

std::string codeOf(const krpre_diagnostic& diagnostic) {
  return diagnostic.code != 0 ? std::to_string(diagnostic.code) : std::string(diagnostic.slug);
}

std::string bareMessage(const krpre_diagnostic& diagnostic) {
  std::string_view text = diagnostic.message;
  const std::size_t blanks = text.find("  ");
  const bool numbered = diagnostic.code != 0 && text.starts_with('C') && blanks == 5;
  if (numbered) text.remove_prefix(blanks + 2);
  if (text.ends_with(':')) text.remove_suffix(1);
  return std::string(text);
}

std::string placed(const char* file, int line, int column) {
  std::string text = printable(file);
  if (line > 0) text += ":" + std::to_string(line);
  if (line > 0 && column > 0) text += ":" + std::to_string(column);
  return text;
}

const char* directiveOf(const krpre_rule& rule) {
  if (rule.kind == KRPRE_DEFINE) return "#define";
  if (rule.kind == KRPRE_COMMAND) return rule.abbreviates != 0 ? "#command" : "#xcommand";
  return rule.abbreviates != 0 ? "#translate" : "#xtranslate";
}

std::string nameOf(const krpre_rule& rule) {
  return std::string(directiveOf(rule)) + " " + printable(rule.key);
}
