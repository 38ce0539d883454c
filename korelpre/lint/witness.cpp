#include "korelpre/lint/witness.h"

#include "korelpre/rules/restrictmarker.h"
#include "korelpre/statements/rewrite.h"
#include "korelpre/text/cursor.h"
#include "korelpre/text/tokenise.h"

namespace precomp {

tWitness::tWitness(tRuleSet& rules, const tBaseXChg& rule, int groups, std::uint64_t& steps)
    : rules_(rules),
      steps_(steps),
      text_(rule.isCmd() ? "" : "x :="),
      start_(rule.isCmd() ? -1 : 2) {
  append(rule.firstMatch(), groups);
  line_ = text_ + "\r\n";
  cut(statement_);
}

// A value is a name that hardly any program has. Groups in groups would double the text again and
// again.
void tWitness::append(const tMatchMarker* head, int groups) {
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
        if (!words.empty()) append(words[0], groups);
        break;
      }
      default:
        put("value" + std::to_string(++values_), apart);
        break;
    }
    for (const tMatchMarker* group : marker->groups()) {
      for (int i = 0; i < groups; ++i) append(group, groups);
    }
  }
}

void tWitness::put(std::string_view piece, bool apart) {
  const bool first = text_.empty();
  const bool behindKeyword = !first && text_.back() == '=';
  const bool grown = !first && !piece.empty() && isNameByte(text_.back()) && isNameByte(piece[0]);
  if (!first && (apart || behindKeyword || grown)) text_ += ' ';
  text_ += piece;
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
