#include "cli/coverage.h"

#include <cstdio>
#include <cstring>

#include "cli/exitstatus.h"
#include "cli/librarycall.h"
#include "cli/messagelanguage.h"
#include "cli/printer.h"
#include "cli/ruleuse.h"
#include "cli/wholefile.h"

namespace {

constexpr const char* kSlug = "unused";
constexpr const char* kNoRule = "no source uses %1";
constexpr const char* kNoPart = "no source uses %2 of %1";

// One file of lcov's form: a rule is a line, and each of its groups a branch of it.
std::string recordOf(const std::string& file, const std::vector<const tUsedRule*>& rules) {
  std::string text = "TN:\nSF:" + file + "\n";
  int branches = 0;
  int taken = 0;
  int hit = 0;
  for (const tUsedRule* rule : rules) {
    const std::string line = std::to_string(rule->rule.line);
    int group = 0;
    for (const tPartUse& part : rule->parts) {
      if (!part.isGroup()) continue;
      const std::string times = rule->applied == 0 ? "-" : std::to_string(part.taken);
      text.append("BRDA:").append(line).append(",0,").append(std::to_string(group++));
      text.append(",").append(times).append("\n");
      ++branches;
      if (part.taken > 0) ++taken;
    }
    text += "DA:" + line + "," + std::to_string(rule->applied) + "\n";
    if (rule->applied > 0) ++hit;
  }
  text += "BRF:" + std::to_string(branches) + "\nBRH:" + std::to_string(taken) + "\n";
  text += "LF:" + std::to_string(rules.size()) + "\nLH:" + std::to_string(hit) + "\n";
  return text + "end_of_record\n";
}

std::string lcovText(const tRuleUse& use) {
  std::map<std::string, std::vector<const tUsedRule*>> byFile;
  for (const auto& [place, rule] : use.rules()) {
    if (!rule.isFlag()) byFile[rule.rule.file].push_back(&rule);
  }
  std::string text;
  for (const auto& [file, rules] : byFile) text += recordOf(file, rules);
  return text;
}

std::string unusedLine(const tMessageStyle& style, const tUsedRule& rule, const tPartUse* part) {
  const std::string& directive = rule.rule.directive;
  const std::string name = directive.substr(0, directive.find(' ')) + " " + rule.rule.key;
  const auto fill = [&](std::string words) {
    const auto put = [&](const char* mark, const std::string& what) {
      const std::size_t at = words.find(mark);
      if (at != std::string::npos) words.replace(at, 2, what);
    };
    if (part != nullptr) put("%2", part->text);
    put("%1", name);
    return words;
  };
  const char* const words = part == nullptr ? kNoRule : kNoPart;
  const std::string message = fill(words);
  const std::string shown = fill(translated(style.language, words));
  krpre_diagnostic diagnostic{};
  diagnostic.severity = KRPRE_SEVERITY_WARNING;
  diagnostic.slug = kSlug;
  diagnostic.message = message.c_str();
  diagnostic.translated = shown.c_str();
  diagnostic.file = rule.rule.file.c_str();
  diagnostic.line = rule.rule.line;
  diagnostic.source = directive.c_str();
  diagnostic.sourceLength = directive.size();
  return shownDiagnostic(diagnostic, style);
}

}  // namespace

int writeCoverage(const tCommandLine& line) {
  const std::string headers = shippedHeaders();
  tRuleUse use(headers);
  bool done = true;
  for (const std::string& source : line.files) {
    std::string messages;
    if (use.add(line, source, headers, messages)) continue;
    std::fputs(messages.c_str(), stderr);
    done = false;
  }
  const int error = writeFile(line.output, lcovText(use));
  if (error != 0) complainAbout(line.output + ": " + std::strerror(error));
  return done && error == 0 ? kAllDone : kSomeFailed;
}

tSourceResult unusedRules(const tCommandLine& line, const tMessageStyle& style,
                          const std::string& shippedHeaders) {
  tRuleUse use(shippedHeaders);
  tSourceResult result;
  result.done = true;
  for (const std::string& source : line.files) {
    std::string messages;
    if (use.add(line, source, shippedHeaders, messages)) continue;
    result.complaint = "--unused: what " + source + " uses is not known, since it has an error";
    result.done = false;
    return result;
  }
  for (const auto& [place, rule] : use.rules()) {
    if (rule.isFlag()) continue;
    if (rule.applied == 0) result.messages += unusedLine(style, rule, nullptr);
    for (const tPartUse& part : rule.parts) {
      const bool missed = part.isGroup() ? rule.applied > 0 : part.met > 0;
      if (missed && part.taken == 0) result.messages += unusedLine(style, rule, &part);
    }
  }
  return result;
}
