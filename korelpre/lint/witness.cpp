#include "korelpre/lint/witness.h"

#include "korelpre/rules/restrictmarker.h"
#include "korelpre/statements/rewrite.h"
#include "korelpre/text/cursor.h"
#include "korelpre/text/tokenise.h"

namespace precomp {

tWitness::tWitness(tRuleSet& rules, const tBaseXChg& rule, std::uint64_t& steps)
    : rules_(rules),
      steps_(steps),
      text_(rule.isCmd() ? "" : "x := "),
      start_(rule.isCmd() ? -1 : 2) {}

tWitness::tWitness(tRuleSet& rules, const tBaseXChg& rule, eGroups groups, std::uint64_t& steps)
    : tWitness(rules, rule, steps) {
  fill(rule, [&](const tMatchMarker& /*group*/) { return groups == kEach ? 1 : 0; });
}

tWitness::tWitness(tRuleSet& rules, const tBaseXChg& rule, const tMatchMarker& group,
                   std::uint64_t& steps)
    : tWitness(rules, rule, steps) {
  fill(rule, [&](const tMatchMarker& met) { return &met == &group ? 2 : 0; });
}

void tWitness::fill(const tBaseXChg& rule, const tTimes& times) {
  append(rule.firstMatch(), times);
  line_ = text_ + "\r\n";
  cut(statement_);
}

// A value is a name that hardly any program has. A pattern may be long, and its groups many.
void tWitness::append(const tMatchMarker* head, const tTimes& times) {
  constexpr std::size_t kLongest = 2000;
  for (const tMatchMarker* marker = head; marker != nullptr; marker = marker->next()) {
    if (text_.size() > kLongest) return;
    const bool apart = !marker->token().spacing().empty();
    switch (marker->kind()) {
      case kMatchIdentifier:
        put(marker->token(), apart);
        break;
      case kMatchMarkerOpt:
        break;
      case kMatchMarkerRestrict: {
        const auto& words = static_cast<const tMatchMarkerRestrict&>(*marker).alternatives();
        if (!words.empty()) append(words[0], times);
        break;
      }
      default:
        put("value" + std::to_string(++values_), apart);
        break;
    }
    for (const tMatchMarker* group : marker->groups()) {
      for (int i = times(*group); i > 0; --i) append(group, times);
    }
  }
}

void tWitness::put(std::string_view piece, bool apart) {
  const bool open = text_.empty() || text_.back() == ' ';
  const bool grown = !open && !piece.empty() && isNameByte(text_.back()) && isNameByte(piece[0]);
  if (!open && (apart || grown)) text_ += ' ';
  text_ += piece;
}

bool tWitness::hasAllValues(std::string_view text) const {
  for (int i = 1; i <= values_; ++i) {
    const std::string value = "value" + std::to_string(i);
    std::size_t at = text.find(value);
    while (at != std::string_view::npos && at + value.size() < text.size() &&
           isDigit(text[at + value.size()])) {
      at = text.find(value, at + 1);
    }
    if (at == std::string_view::npos) return false;
  }
  return true;
}

void tWitness::cut(tTknString& statement) const {
  tokenisePlain(line_.data(), line_.data() + line_.size(), 1, statement);
  statement.startSteps();
}

int tWitness::scoreOf(tBaseXChg& rule) {
  statement_.startSteps();
  const int score = rule.matchCount(start_, &statement_);
  steps_ += statement_.steps();
  return score;
}

tWitness::tRewritten tWitness::rewritten() {
  tTknString statement(1);
  cut(statement);
  tRewriter::tNotes notes;
  tRewritten result;
  result.ended = tRewriter(rules_, statement, notes).run();
  steps_ += statement.steps();
  tString text;
  if (result.ended) statement.appendText(text);
  result.text = text.view();
  result.applied = std::move(notes.applied);
  return result;
}

}  // namespace precomp
