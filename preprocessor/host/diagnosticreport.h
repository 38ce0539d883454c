#pragma once

#include <deque>
#include <vector>

#include "include/krpre.h"
#include "korelpre/errors/diagnostic.h"
#include "preprocessor/host/rulereport.h"

/// A diagnosis as hosts see it. The texts that `diagnostic()` points to belong to this object, to
/// the diagnosis and to `names`, which must outlive its use.
class tDiagnosticReport {
 public:
  tDiagnosticReport(const precomp::tDiagnosis& diagnosis, const tShownSource& names);
  tDiagnosticReport(const tDiagnosticReport&) = delete;
  tDiagnosticReport& operator=(const tDiagnosticReport&) = delete;

  const krpre_diagnostic& diagnostic() const { return diagnostic_; }

 private:
  std::vector<krpre_place> places_;
  std::deque<tRuleReport> reports_;
  std::vector<krpre_rule> rules_;
  krpre_diagnostic diagnostic_{};
};
