#include "cli/diagnostics.h"

#include <algorithm>
#include <iterator>

#include "cli/diagnosticparts.h"
#include "cli/sourcequote.h"

namespace {

std::string originOf(const krpre_rule& rule) {
  return *rule.file == '\0' ? "-D" : placed(rule.file, rule.line);
}

// A translation has the encoding of the user's language, and is printed as it is.
std::string shownText(const char* translated, const char* message) {
  return std::string_view(translated) == message ? printable(message) : translated;
}

// These lines of the library name the copy that it makes of a source, another line, or no source,
// or there is none.
bool misleads(const krpre_diagnostic& diagnostic) {
  constexpr std::string_view kSlugs[] = {"file-not-found", "cannot-read",   "output-is-source",
                                         "same-file",      "line-too-long", "converter-failed"};
  return diagnostic.severity == KRPRE_SEVERITY_ERROR && diagnostic.code == 0 &&
         std::find(std::begin(kSlugs), std::end(kSlugs), diagnostic.slug) != std::end(kSlugs);
}

// Unless the line that is quoted below the note says it.
std::string placeBehind(const krpre_note& note, const krpre_diagnostic& diagnostic) {
  const bool sameFile = std::string_view(note.file) == diagnostic.file;
  if (*note.file == '\0' || (sameFile && note.sourceLength > 0)) return {};
  return " (" + placed(note.file, note.line, note.column) + ")";
}

}  // namespace

std::string longHead(const krpre_diagnostic& diagnostic, const tPaint& paint,
                     const tWords& translated) {
  const bool warning = diagnostic.severity == KRPRE_SEVERITY_WARNING;
  if (!warning && !misleads(diagnostic)) return {};
  std::string text = printable(diagnostic.file);
  if (diagnostic.line > 0) text += "(" + std::to_string(diagnostic.line) + ")";
  text += " " + (warning ? paint(tPaint::kYellow, translated("Warning")) : translated("Error"));
  text += " " + shownText(diagnostic.translated, diagnostic.message);
  return text + (warning ? std::string(" [") + diagnostic.slug + "]\n" : "\n");
}

std::string longDetails(const krpre_diagnostic& diagnostic, const tPaint& paint,
                        const tWords& translated) {
  const bool warning = diagnostic.severity == KRPRE_SEVERITY_WARNING;
  if (!warning && diagnostic.severity != KRPRE_SEVERITY_ERROR) return {};
  std::string text;
  const auto note = [&](const std::string& words, const std::string& what) {
    text += "  " + paint(tPaint::kCyan, words) + " " + what + "\n";
  };
  if (diagnostic.includeCount > 0 && !warning) {
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
  for (int i = 0; i < diagnostic.noteCount; ++i) {
    const krpre_note& told = diagnostic.notes[i];
    const std::string place = placeBehind(told, diagnostic);
    note(translated("note:"), shownText(told.translated, told.message) + place);
    const bool shownAbove =
        told.line == diagnostic.line && std::string_view(told.file) == diagnostic.file;
    if (told.sourceLength == 0 || shownAbove) continue;
    text += quoted({told.source, told.sourceLength}, told.line, told.column, paint);
  }
  return text;
}
