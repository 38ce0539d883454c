#include "korelpre/rules/ruleobserver.h"

#include "korelpre/rules/restrictmarker.h"

namespace precomp {

namespace {

tString textOf(const tMatchMarker& marker, int first, int last, const tTknString& statement) {
  tString text;
  if (marker.kind() == kMatchMarkerRestrict) {
    const auto& alternatives = static_cast<const tMatchMarkerRestrict&>(marker).alternatives();
    if (last < 0) return text;
    for (const tMatchMarker* word = alternatives[last]; word != nullptr; word = word->next()) {
      text.append(word->token().spacing()).append(word->token());
    }
    return text;
  }
  for (int i = first; i >= 0 && i <= last; ++i) {
    const tSpcString& token = statement.tokens()[i];
    if (i > first) text.append(token.spacing());
    text.append(token);
  }
  return text;
}

void collect(const tMatchMarker* head, const tTknString& statement,
             std::vector<tCapture>& captures) {
  for (const tMatchMarker* marker = head; marker != nullptr; marker = marker->next()) {
    if (marker->kind() != kMatchIdentifier && marker->kind() != kMatchMarkerOpt) {
      tCapture capture{marker, {}};
      for (const tMatchInfo& info : marker->infos()) {
        capture.texts.push_back(textOf(*marker, info.first, info.last, statement));
      }
      if (marker->infos().empty() && marker->isMatchOk()) {
        capture.texts.push_back(textOf(*marker, marker->first(), marker->last(), statement));
      }
      captures.push_back(std::move(capture));
    }
    for (int i = 0; i < marker->groups().count(); ++i) {
      collect(marker->groups()[i], statement, captures);
    }
  }
}

}  // namespace

void tRuleObserver::statementBegins(const tTknString& /*statement*/, const tString& /*file*/) {}
void tRuleObserver::ruleTried(const tRuleTrial& /*trial*/) {}
void tRuleObserver::ruleMatched(const tBaseXChg& /*rule*/, int /*start*/,
                                const tTknString& /*statement*/) {}
void tRuleObserver::ruleApplied(const tBaseXChg& /*rule*/, int /*start*/,
                                const tTknString& /*statement*/) {}
void tRuleObserver::statementEnds(const tTknString& /*statement*/) {}

std::vector<tCapture> capturesOf(const tBaseXChg& rule, const tTknString& statement) {
  std::vector<tCapture> captures;
  collect(rule.firstMatch(), statement, captures);
  return captures;
}

}  // namespace precomp
