// The forms of messages for programs. They are always in English.

#include <cstddef>
#include <nlohmann/json.hpp>

#include "cli/diagnosticparts.h"
#include "cli/diagnostics.h"
#include "cli/sourcequote.h"

namespace {

using tJson = nlohmann::ordered_json;

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

std::string jsonOf(const krpre_rule& rule) {
  return tJsonObject()
      .add("directive", directiveOf(rule))
      .add("key", rule.key)
      .add("listing", rule.listing)
      .add("file", rule.file)
      .add("line", rule.line)
      .text();
}

std::string jsonOf(const krpre_note& note) {
  return tJsonObject()
      .add("file", note.file)
      .add("line", note.line)
      .add("column", note.column)
      .add("endColumn", note.endColumn)
      .add("message", note.message)
      .text();
}

}  // namespace

std::string jsonLine(const krpre_diagnostic& diagnostic) {
  std::string places;
  for (int i = 0; i < diagnostic.includeCount; ++i) {
    const krpre_place& place = diagnostic.includedFrom[i];
    addElement(places, tJsonObject().add("file", place.file).add("line", place.line).text());
  }
  std::string rules;
  for (int i = 0; i < diagnostic.ruleCount; ++i) addElement(rules, jsonOf(diagnostic.rules[i]));
  std::string notes;
  for (int i = 0; i < diagnostic.noteCount; ++i) addElement(notes, jsonOf(diagnostic.notes[i]));
  tJsonObject object;
  object.add("file", diagnostic.file).add("line", diagnostic.line).add("column", diagnostic.column);
  if (diagnostic.endColumn > 0) object.add("endColumn", diagnostic.endColumn);
  object.add("code", diagnostic.code)
      .add("slug", diagnostic.slug)
      .add("severity", severityOf(diagnostic))
      .add("message", diagnostic.message)
      .addText("includedFrom", '[' + places + ']')
      .addText("rules", '[' + rules + ']');
  if (!notes.empty()) object.addText("notes", '[' + notes + ']');
  return object.text() + "\n";
}

std::string gccLines(const krpre_diagnostic& diagnostic) {
  if (diagnostic.severity == KRPRE_SEVERITY_RESULT) return {};
  const bool trace = diagnostic.severity == KRPRE_SEVERITY_TRACE;
  const char* const file = *diagnostic.file == '\0' ? "krpre" : diagnostic.file;
  const std::string place = placed(file, diagnostic.line, diagnostic.column);
  std::string text = place + ": " + (trace ? "note" : severityOf(diagnostic)) + ": " +
                     printable(bareMessage(diagnostic)) +
                     (trace ? "" : " [" + codeOf(diagnostic) + "]") + "\n";
  const auto note = [&](const std::string& where, const std::string& what) {
    text += where + ": note: " + what + "\n";
  };
  for (int i = 0; i < diagnostic.includeCount; ++i) {
    const krpre_place& from = diagnostic.includedFrom[i];
    note(placed(from.file, from.line), "included from here");
  }
  walkRules(
      diagnostic,
      [&](const krpre_rule& rule) {
        note(*rule.file == '\0' ? "krpre" : placed(rule.file, rule.line),
             "in the expansion of " + nameOf(rule));
      },
      [&](int count) { note(printable(file), std::to_string(count) + " more rules"); });
  for (int i = 0; i < diagnostic.noteCount; ++i) {
    const krpre_note& told = diagnostic.notes[i];
    note(*told.file == '\0' ? place : placed(told.file, told.line, told.column),
         printable(told.message));
  }
  return text;
}
