#pragma once

#include <deque>
#include <vector>

#include "include/krpre.h"
#include "korelpre/errors/diagnostic.h"
#include "preprocessor/host/rulereport.h"

/// A diagnosis in the form of the C interface. The texts that `diagnostic()` points to are owned by
/// this object, the diagnosis and `names`, which must all outlive its use.
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
  std::vector<krpre_note> notes_;
  krpre_diagnostic diagnostic_{};
};
