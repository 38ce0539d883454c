// The forms of messages for programs. They are always in English.

#include "cli/diagnosticparts.h"
#include "cli/diagnostics.h"
#include "cli/jsontext.h"
#include "cli/sourcequote.h"

namespace {

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
  tJsonArray places;
  for (int i = 0; i < diagnostic.includeCount; ++i) {
    const krpre_place& place = diagnostic.includedFrom[i];
    places.add(tJsonObject().add("file", place.file).add("line", place.line).text());
  }
  tJsonArray rules;
  for (int i = 0; i < diagnostic.ruleCount; ++i) rules.add(jsonOf(diagnostic.rules[i]));
  tJsonArray notes;
  for (int i = 0; i < diagnostic.noteCount; ++i) notes.add(jsonOf(diagnostic.notes[i]));
  tJsonObject object;
  object.add("file", diagnostic.file).add("line", diagnostic.line).add("column", diagnostic.column);
  if (diagnostic.endColumn > 0) object.add("endColumn", diagnostic.endColumn);
  object.add("code", diagnostic.code)
      .add("slug", diagnostic.slug)
      .add("severity", severityOf(diagnostic))
      .add("message", diagnostic.message)
      .addText("includedFrom", places.text())
      .addText("rules", rules.text());
  if (!notes.empty()) object.addText("notes", notes.text());
  return object.text() + "\n";
}

namespace {

/// How a form writes the lines of a message.
struct tLineForm {
  std::string (*place)(const char* file, int line, int column, int endColumn);
  std::string (*code)(const krpre_diagnostic& diagnostic);    // behind the severity
  std::string (*behind)(const krpre_diagnostic& diagnostic);  // the text
};

std::string linesOf(const krpre_diagnostic& diagnostic, const tLineForm& form) {
  if (diagnostic.severity == KRPRE_SEVERITY_RESULT) return {};
  const bool trace = diagnostic.severity == KRPRE_SEVERITY_TRACE;
  const char* const file = *diagnostic.file == '\0' ? "krpre" : diagnostic.file;
  const std::string place =
      form.place(file, diagnostic.line, diagnostic.column, diagnostic.endColumn);
  std::string text =
      place + ": " + (trace ? "note" : severityOf(diagnostic) + form.code(diagnostic)) + ": " +
      printable(bareMessage(diagnostic)) + (trace ? "" : form.behind(diagnostic)) + "\n";
  const auto note = [&](const std::string& where, const std::string& what) {
    text += where + ": note: " + what + "\n";
  };
  for (int i = 0; i < diagnostic.includeCount; ++i) {
    const krpre_place& from = diagnostic.includedFrom[i];
    note(form.place(from.file, from.line, 0, 0), "included from here");
  }
  walkRules(
      diagnostic,
      [&](const krpre_rule& rule) {
        note(*rule.file == '\0' ? "krpre" : form.place(rule.file, rule.line, 0, 0),
             "in the expansion of " + nameOf(rule));
      },
      [&](int count) { note(printable(file), std::to_string(count) + " more rules"); });
  for (int i = 0; i < diagnostic.noteCount; ++i) {
    const krpre_note& told = diagnostic.notes[i];
    note(*told.file == '\0' ? place : form.place(told.file, told.line, told.column, told.endColumn),
         printable(told.message));
  }
  return text;
}

std::string placeInBrackets(const char* file, int line, int column, int endColumn) {
  std::string text = printable(file);
  if (line == 0) return text;
  const std::string number = std::to_string(line);
  text += "(" + number;
  if (column > 0) text += "," + std::to_string(column);
  if (column > 0 && endColumn > 0) text += "," + number + "," + std::to_string(endColumn);
  return text + ")";
}

}  // namespace

// The form has no place for an end column.
std::string gccLines(const krpre_diagnostic& diagnostic) {
  return linesOf(
      diagnostic,
      {[](const char* file, int line, int column, int) { return placed(file, line, column); },
       [](const krpre_diagnostic&) { return std::string(); },
       [](const krpre_diagnostic& each) { return " [" + codeOf(each) + "]"; }});
}

std::string msvcLines(const krpre_diagnostic& diagnostic) {
  return linesOf(diagnostic, {placeInBrackets,
                              [](const krpre_diagnostic& each) {
                                return each.code > 0 ? " C" + std::to_string(each.code) : " KRPRE0";
                              },
                              [](const krpre_diagnostic& each) {
                                return each.code > 0 ? "" : " [" + codeOf(each) + "]";
                              }});
}
