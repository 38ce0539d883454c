#include "preprocessor/host/diagnosticreport.h"

#include "korelpre/rules/rule.h"

namespace {

// In the order of tDiagnosis::eSeverity.
constexpr int kSeverities[] = {KRPRE_SEVERITY_ERROR, KRPRE_SEVERITY_TRACE, KRPRE_SEVERITY_RESULT,
                               KRPRE_SEVERITY_WARNING};

const tString& orElse(const tString& text, const tString& other) {
  return text.empty() ? other : text;
}

}  // namespace

tDiagnosticReport::tDiagnosticReport(const precomp::tDiagnosis& diagnosis,
                                     const tShownSource& names) {
  for (const precomp::tIncludePlace& place : diagnosis.includedFrom) {
    places_.push_back({names.shown(place.file).c_str(), place.line});
  }
  for (const precomp::tBaseXChg* rule : diagnosis.rules) {
    rules_.push_back(reports_.emplace_back(*rule, names).rule());
  }
  for (const precomp::tNote& note : diagnosis.notes) {
    notes_.push_back({.message = note.message.c_str(),
                      .file = names.shown(note.file).c_str(),
                      .line = note.line,
                      .column = note.column,
                      .endColumn = note.endColumn,
                      .source = note.sourceLine.c_str(),
                      .sourceLength = note.sourceLine.size(),
                      .translated = orElse(note.translated, note.message).c_str()});
  }
  diagnostic_.severity = kSeverities[diagnosis.severity];
  diagnostic_.code = diagnosis.code;
  diagnostic_.slug = diagnosis.slug.c_str();
  diagnostic_.message = diagnosis.message.c_str();
  diagnostic_.file = names.shown(diagnosis.file).c_str();
  diagnostic_.line = diagnosis.line;
  diagnostic_.column = diagnosis.column;
  diagnostic_.source = diagnosis.sourceLine.c_str();
  diagnostic_.sourceLength = diagnosis.sourceLine.size();
  diagnostic_.includeCount = static_cast<int>(places_.size());
  diagnostic_.includedFrom = places_.empty() ? nullptr : places_.data();
  diagnostic_.ruleCount = static_cast<int>(rules_.size());
  diagnostic_.rules = rules_.empty() ? nullptr : rules_.data();
  diagnostic_.endColumn = diagnosis.endColumn;
  diagnostic_.noteCount = static_cast<int>(notes_.size());
  diagnostic_.notes = notes_.empty() ? nullptr : notes_.data();
  diagnostic_.translated = orElse(diagnosis.translated, diagnosis.message).c_str();
}
