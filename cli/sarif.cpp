#include "cli/sarif.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <vector>

#include "cli/chapters.h"
#include "cli/diagnosticparts.h"
#include "cli/jsontext.h"
#include "cli/optiontable.h"
#include "cli/sourcequote.h"
#include "include/krpre.h"

namespace {

/// A place in a file; the line is 0 when it is the file as a whole.
struct tPlace {
  const char* file;
  int line = 0;
  int column = 0;
  int endColumn = 0;
  std::string_view source{};  // the line
};

// A relative or absolute reference. Bytes that are no ASCII are taken as they are in the name.
std::string uriOf(std::string_view file) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string uri = file.starts_with('/') ? "file://" : "";
  for (const char c : file) {
    const auto byte = static_cast<unsigned char>(c);
    const bool plain = byte < 0x80 && (std::isalnum(byte) != 0 ||
                                       std::string_view("-._~/").find(c) != std::string_view::npos);
    if (plain) {
      uri += c;
    } else {
      uri.append({'%', kDigits[byte >> 4], kDigits[byte & 15]});
    }
  }
  return uri;
}

std::string messageOf(const std::string& text) {
  return tJsonObject().add("text", text).text();
}

// Columns count characters; without its line a column cannot be told.
std::string regionOf(const tPlace& place) {
  tJsonObject region;
  region.add("startLine", place.line);
  if (place.column > 0 && !place.source.empty()) {
    region.add("startColumn", characterColumn(place.source, place.column));
    if (place.endColumn > place.column) {
      region.add("endColumn", characterColumn(place.source, place.endColumn));
    }
  }
  return region.text();
}

tJsonObject locationOf(const tPlace& place) {
  tJsonObject location;
  if (*place.file == '\0') return location;
  tJsonObject physical;
  physical.addText("artifactLocation", tJsonObject().add("uri", uriOf(place.file)).text());
  if (place.line > 0) physical.addText("region", regionOf(place));
  return location.addText("physicalLocation", physical.text());
}

tPlace placeOf(const krpre_diagnostic& diagnostic) {
  return {diagnostic.file,
          diagnostic.line,
          diagnostic.column,
          diagnostic.endColumn,
          {diagnostic.source, diagnostic.sourceLength}};
}

std::string locationWith(const tPlace& place, const std::string& message) {
  return locationOf(place).addText("message", messageOf(message)).text();
}

// The slugs that the manual knows, each once; a rule's index is its place among them.
struct tKind {
  std::string slug;
  const tChapter* chapter;
};

std::vector<tKind> kinds() {
  std::vector<tKind> all;
  for (const tChapter& chapter : chapters()) {
    for (const std::string& key : wordsOf(chapter.keys)) {
      const bool number = key.find_first_not_of("-0123456789") == std::string::npos;
      const bool known =
          std::any_of(all.begin(), all.end(), [&](const tKind& kind) { return kind.slug == key; });
      if (!number && !known) all.push_back({key, &chapter});
    }
  }
  return all;
}

std::string ruleOf(const tKind& kind) {
  std::string help;
  for (const tChapterPart* part = kind.chapter->parts; part->name != nullptr; ++part) {
    help.append(help.empty() ? "" : "\n").append(part->name).append(": ").append(part->text);
  }
  tJsonObject rule;
  rule.add("id", kind.slug).addText("shortDescription", messageOf(kind.chapter->title));
  if (!help.empty()) rule.addText("help", messageOf(help));
  return rule.text();
}

// What has no place of its own is told in the message.
std::string wholeMessage(const krpre_diagnostic& diagnostic) {
  std::string text = bareMessage(diagnostic);
  for (int i = 0; i < diagnostic.noteCount; ++i) {
    const krpre_note& note = diagnostic.notes[i];
    if (*note.file == '\0') text.append("\n").append(note.message);
  }
  return text;
}

std::string relatedTo(const krpre_diagnostic& diagnostic) {
  tJsonArray related;
  for (int i = 0; i < diagnostic.includeCount; ++i) {
    const krpre_place& place = diagnostic.includedFrom[i];
    related.add(locationWith({place.file, place.line}, "included from here"));
  }
  for (int i = 0; i < diagnostic.noteCount; ++i) {
    const krpre_note& note = diagnostic.notes[i];
    if (*note.file == '\0') continue;
    related.add(locationWith(
        {note.file, note.line, note.column, note.endColumn, {note.source, note.sourceLength}},
        note.message));
  }
  return related.empty() ? "" : related.text();
}

std::string flowOf(const krpre_diagnostic& diagnostic) {
  if (diagnostic.ruleCount == 0) return {};
  const auto step = [](const std::string& location) {
    return tJsonObject().addText("location", location).text();
  };
  tJsonArray steps;
  for (int i = 0; i < diagnostic.ruleCount; ++i) {
    const krpre_rule& rule = diagnostic.rules[i];
    steps.add(step(locationWith({rule.file, rule.line}, "in the expansion of " + nameOf(rule))));
  }
  steps.add(step(locationWith(placeOf(diagnostic), bareMessage(diagnostic))));
  const std::string thread = tJsonObject().addText("locations", steps.text()).text();
  const std::string flow =
      tJsonObject().addText("threadFlows", tJsonArray().add(thread).text()).text();
  return tJsonArray().add(flow).text();
}

}  // namespace

std::string sarifResult(const krpre_diagnostic& diagnostic) {
  const bool error = diagnostic.severity == KRPRE_SEVERITY_ERROR;
  if (!error && diagnostic.severity != KRPRE_SEVERITY_WARNING) return {};
  const std::vector<tKind> all = kinds();
  const auto kind = std::find_if(all.begin(), all.end(),
                                 [&](const tKind& each) { return each.slug == diagnostic.slug; });
  tJsonObject result;
  result.add("ruleId", diagnostic.slug);
  if (kind != all.end()) result.add("ruleIndex", kind - all.begin());
  result.add("level", severityOf(diagnostic))
      .addText("message", messageOf(wholeMessage(diagnostic)));
  if (*diagnostic.file != '\0') {
    result.addText("locations", tJsonArray().add(locationOf(placeOf(diagnostic)).text()).text());
  }
  const std::string related = relatedTo(diagnostic);
  if (!related.empty()) result.addText("relatedLocations", related);
  const std::string flow = flowOf(diagnostic);
  if (!flow.empty()) result.addText("codeFlows", flow);
  if (diagnostic.code != 0) {
    result.addText("properties", tJsonObject().add("code", diagnostic.code).text());
  }
  return result.text() + ",";
}

std::string sarifDocument(std::string results, bool successful) {
  if (!results.empty()) results.pop_back();
  tJsonArray rules;
  for (const tKind& kind : kinds()) rules.add(ruleOf(kind));
  const std::string driver = tJsonObject()
                                 .add("name", "krpre")
                                 .add("version", KRPRE_VERSION)
                                 .addText("rules", rules.text())
                                 .text();
  const std::string invocation = tJsonObject().add("executionSuccessful", successful).text();
  const std::string run = tJsonObject()
                              .addText("tool", tJsonObject().addText("driver", driver).text())
                              .addText("invocations", tJsonArray().add(invocation).text())
                              .add("columnKind", "unicodeCodePoints")
                              .addText("results", "[" + results + "]")
                              .text();
  return tJsonObject()
             .add("$schema", "https://json.schemastore.org/sarif-2.1.0.json")
             .add("version", "2.1.0")
             .addText("runs", tJsonArray().add(run).text())
             .text() +
         "\n";
}
