#pragma once

#include <string>
#include <string_view>

#include "include/krpre.h"

// What the forms of messages are made of.

/// "error", "trace", "result" or "warning".
std::string severityOf(const krpre_diagnostic& diagnostic);
/// The number of an error, or its slug if it has none.
std::string codeOf(const krpre_diagnostic& diagnostic);
/// The text without its leading number, which is shown elsewhere, and without a colon at its end.
std::string bareMessage(const krpre_diagnostic& diagnostic);

/// "file:line:column", without what is 0.
std::string placed(const char* file, int line, int column = 0);

/// "#command", "#xcommand" and so on.
const char* directiveOf(const krpre_rule& rule);
/// "#command CLOSE".
std::string nameOf(const krpre_rule& rule);

/// Calls `show` for each rule that is shown, those at both ends of a long chain, and `skip` with
/// the number of those left out.
template <class Show, class Skip>
void walkRules(const krpre_diagnostic& diagnostic, Show show, Skip skip) {
  constexpr int kShownRules = 4;  // at each end
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
