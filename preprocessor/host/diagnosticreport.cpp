#include "preprocessor/host/diagnosticreport.h"

#include "korelpre/rules/rule.h"

namespace {

// In the order of tDiagnosis::eSeverity.
constexpr int kSeverities[] = {KRPRE_SEVERITY_ERROR, KRPRE_SEVERITY_TRACE, KRPRE_SEVERITY_RESULT};

}  // namespace

tDiagnosticReport::tDiagnosticReport(const precomp::tDiagnosis& diagnosis,
                                     const tShownSource& names) {
  for (const precomp::tIncludePlace& place : diagnosis.includedFrom) {
    places_.push_back({names.shown(place.file).c_str(), place.line});
  }
  for (const precomp::tBaseXChg* rule : diagnosis.rules) {
    rules_.push_back(reports_.emplace_back(*rule, names).rule());
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
}
