#include "preprocessor/host/rulereport.h"

#include <algorithm>
#include <string_view>

namespace {

// Of the rules that are no commands, only those of #define mind upper and lower case.
int kindOf(const precomp::tBaseXChg& rule) {
  if (rule.isCmd()) return KRPRE_COMMAND;
  return rule.wordRule().caseSensitive ? KRPRE_DEFINE : KRPRE_TRANSLATION;
}

// Runs of blanks become one, and so do the ends of lines with the ";" before them.
tString onOneLine(std::string_view directive) {
  constexpr std::string_view kBlanks = " \t\r\n";
  tString line;
  while (!directive.empty()) {
    const std::size_t end = std::min(directive.find_first_of(kBlanks), directive.size());
    const std::size_t next = std::min(directive.find_first_not_of(kBlanks, end), directive.size());
    const std::string_view gap = directive.substr(end, next - end);
    std::string_view word = directive.substr(0, end);
    const bool continued = gap.find('\n') != std::string_view::npos && word.ends_with(';');
    if (continued) word.remove_suffix(1);
    if (!line.empty() && !word.empty()) line.append(' ');
    line.append(word);
    directive.remove_prefix(next);
  }
  return line;
}

}  // namespace

tRuleReport::tRuleReport(const precomp::tBaseXChg& rule, const tShownSource& names) {
  rule.print(&listing_);
  listing_.trim();
  directive_ = onOneLine(rule.directive());
  rule_.kind = kindOf(rule);
  rule_.key = rule.key().c_str();
  rule_.listing = listing_.c_str();
  rule_.directive = directive_.c_str();
  rule_.file = names.shown(rule.originFile()).c_str();
  rule_.line = rule.originLine();
  rule_.abbreviates = rule.wordRule().abbreviate ? 1 : 0;
}

tCaptureReport::tCaptureReport(const precomp::tBaseXChg& rule, const precomp::tTknString& statement)
    : taken_(precomp::capturesOf(rule, statement)), texts_(taken_.size()) {
  for (std::size_t i = 0; i < taken_.size(); ++i) {
    for (const tString& text : taken_[i].texts) texts_[i].push_back(text.c_str());
    names_.push_back(taken_[i].marker->token());
    captures_.push_back({names_.back().c_str(), static_cast<int>(texts_[i].size()),
                         texts_[i].empty() ? nullptr : texts_[i].data()});
  }
}

tString listedMarker(const precomp::tMatchMarker* marker) {
  tString listed;
  if (marker != nullptr) marker->print(&listed);
  listed.trim();
  return listed;
}
