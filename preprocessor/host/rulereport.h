#pragma once

#include <memory>
#include <string>
#include <vector>

#include "include/krpre.h"
#include "korelpre/rules/ruleobserver.h"

/// Translates file names to what the user knows: the run reads a source under another name.
struct tShownSource {
  tString copy;
  tString source;

  const tString& shown(const tString& name) const { return name == copy ? source : name; }
};

/// A rule in the form of the C interface. The texts that `rule()` points to are owned by this
/// object and the rule, which must both outlive its use.
class tRuleReport {
 public:
  tRuleReport(const precomp::tBaseXChg& rule, const tShownSource& names);
  tRuleReport(const tRuleReport&) = delete;
  tRuleReport& operator=(const tRuleReport&) = delete;

  const krpre_rule& rule() const { return rule_; }

 private:
  tString listing_;
  tString directive_;
  krpre_rule rule_{};
};

/// What the markers of a rule matched, in the form of the C interface.
class tCaptureReport {
 public:
  tCaptureReport(const precomp::tBaseXChg& rule, const precomp::tTknString& statement);
  tCaptureReport(const tCaptureReport&) = delete;
  tCaptureReport& operator=(const tCaptureReport&) = delete;

  int count() const { return static_cast<int>(captures_.size()); }
  const krpre_capture* captures() const { return captures_.data(); }

 private:
  std::vector<precomp::tCapture> taken_;
  std::vector<std::vector<const char*>> texts_;
  std::vector<tString> names_;
  std::vector<krpre_capture> captures_;
};

/// The marker as printed in a listing, without surrounding blanks; empty for null.
tString listedMarker(const precomp::tMatchMarker* marker);
