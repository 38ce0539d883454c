#include "cli/diagnostics.h"

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <vector>

#include "cli/sourcequote.h"

namespace {

using tJson = nlohmann::ordered_json;

constexpr const char* kSeverities[] = {"", "error", "trace", "result"};

// How many rules are shown at each end of a long chain.
constexpr int kShownRules = 4;

const char* directiveOf(const krpre_rule& rule) {
  if (rule.kind == KRPRE_DEFINE) return "#define";
  if (rule.kind == KRPRE_COMMAND) return rule.abbreviates != 0 ? "#command" : "#xcommand";
  return rule.abbreviates != 0 ? "#translate" : "#xtranslate";
}

std::string placed(const char* file, int line, int column = 0) {
  std::string text = printable(file);
  if (line > 0) text += ":" + std::to_string(line);
  if (line > 0 && column > 0) text += ":" + std::to_string(column);
  return text;
}

std::string nameOf(const krpre_rule& rule) {
  return std::string(directiveOf(rule)) + " " + printable(rule.key);
}

std::string originOf(const krpre_rule& rule) {
  return *rule.file == '\0' ? "-D" : placed(rule.file, rule.line);
}

// Calls `show` for each rule that is shown and `skip` with the number of those left out.
template <class Show, class Skip>
void walkRules(const krpre_diagnostic& diagnostic, Show show, Skip skip) {
  const int count = diagnostic.ruleCount;
  const int left = count - 2 * kShownRules;
  for (int i = 0; i < count; ++i) {
    if (left > 0 && i == kShownRules) {
      skip(left);
      i += left;
    }
    show(diagnostic.rules[i]);
  }
}

// The text without its leading number, which is shown elsewhere.
std::string_view withoutNumber(const krpre_diagnostic& diagnostic) {
  const std::string_view text = diagnostic.message;
  const std::size_t blanks = text.find("  ");
  const bool numbered = diagnostic.code != 0 && text.starts_with('C') && blanks == 5;
  return numbered ? text.substr(blanks + 2) : text;
}

/// Written value by value: an object of the JSON library takes memory to be destroyed, and where
/// there is none the program would end amid the output of another source.
class tJsonObject {
 public:
  tJsonObject& add(const char* key, const tJson& value) {
    return addText(key, value.dump(-1, ' ', false, tJson::error_handler_t::replace));
  }
  tJsonObject& addText(const char* key, const std::string& value) {
    text_.append(text_.size() > 1 ? "," : "").append("\"").append(key).append("\":").append(value);
    return *this;
  }
  std::string text() const { return text_ + '}'; }

 private:
  std::string text_ = "{";
};

void addElement(std::string& list, const std::string& element) {
  list.append(list.empty() ? "" : ",").append(element);
}

}  // namespace

std::string longDetails(const krpre_diagnostic& diagnostic, const tPaint& paint,
                        const tWords& translated) {
  if (diagnostic.severity != KRPRE_SEVERITY_ERROR) return {};
  std::string text;
  const auto note = [&](const std::string& words, const std::string& what) {
    text += "  " + paint(tPaint::kCyan, words) + " " + what + "\n";
  };
  if (diagnostic.includeCount > 0) {
    note(translated("at"), placed(diagnostic.file, diagnostic.line, diagnostic.column));
  }
  if (diagnostic.line > 0) {
    text += quoted({diagnostic.source, diagnostic.sourceLength}, diagnostic.line, diagnostic.column,
                   paint);
  }
  for (int i = 0; i < diagnostic.includeCount; ++i) {
    const krpre_place& place = diagnostic.includedFrom[i];
    note(translated("included from"), placed(place.file, place.line));
  }
  walkRules(
      diagnostic,
      [&](const krpre_rule& rule) {
        note(translated("in the expansion of"), nameOf(rule) + " (" + originOf(rule) + ")");
      },
      [&](int count) { note("...", std::to_string(count) + " " + translated("more rules")); });
  return text;
}

std::string jsonLine(const krpre_diagnostic& diagnostic) {
  std::string places;
  for (int i = 0; i < diagnostic.includeCount; ++i) {
    const krpre_place& place = diagnostic.includedFrom[i];
    addElement(places, tJsonObject().add("file", place.file).add("line", place.line).text());
  }
  std::string rules;
  for (int i = 0; i < diagnostic.ruleCount; ++i) {
    const krpre_rule& rule = diagnostic.rules[i];
    addElement(rules, tJsonObject()
                          .add("directive", directiveOf(rule))
                          .add("key", rule.key)
                          .add("listing", rule.listing)
                          .add("file", rule.file)
                          .add("line", rule.line)
                          .text());
  }
  return tJsonObject()
             .add("file", diagnostic.file)
             .add("line", diagnostic.line)
             .add("column", diagnostic.column)
             .add("code", diagnostic.code)
             .add("slug", diagnostic.slug)
             .add("severity", kSeverities[diagnostic.severity])
             .add("message", diagnostic.message)
             .addText("includedFrom", '[' + places + ']')
             .addText("rules", '[' + rules + ']')
             .text() +
         "\n";
}

std::string gccLines(const krpre_diagnostic& diagnostic) {
  if (diagnostic.severity == KRPRE_SEVERITY_RESULT) return {};
  const bool error = diagnostic.severity == KRPRE_SEVERITY_ERROR;
  const std::string file = *diagnostic.file == '\0' ? "krpre" : diagnostic.file;
  const std::string code =
      diagnostic.code != 0 ? std::to_string(diagnostic.code) : std::string(diagnostic.slug);
  std::string text = placed(file.c_str(), diagnostic.line, diagnostic.column) +
                     (error ? ": error: " : ": note: ") + printable(withoutNumber(diagnostic)) +
                     (error ? " [" + code + "]" : "") + "\n";
  for (int i = 0; i < diagnostic.includeCount; ++i) {
    const krpre_place& place = diagnostic.includedFrom[i];
    text += placed(place.file, place.line) + ": note: included from here\n";
  }
  walkRules(
      diagnostic,
      [&](const krpre_rule& rule) {
        const bool option = *rule.file == '\0';
        text += (option ? "krpre" : placed(rule.file, rule.line)) + ": note: in the expansion of " +
                nameOf(rule) + "\n";
      },
      [&](int count) { text += file + ": note: " + std::to_string(count) + " more rules\n"; });
  return text;
}
