// What rules hardly mean. In go the tables of a program behind its last line; out come warnings.
//
//   [text]    Some of it shows in a rule alone: a marker that leads nowhere, a lone bracket.
//   [pairs]   Of rules of one key those are compared whose second words may be one: others never
//             meet. Each is tried with the statement that the other one is made for.
//   [circle]  Each rule is applied to the statement that it is made for, until nothing applies.
//
// No rule is compared with more than kMostRivals others, so the work grows with the rules. What a
// statement shows is tried with the engine before it is told: where it does otherwise, for whatever
// reason, nothing is told. What the engine may take for that is bounded too.

#include "korelpre/lint/rulelint.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "korelpre/directives/openbracket.h"
#include "korelpre/errors/notes.h"
#include "korelpre/lint/directivelines.h"
#include "korelpre/lint/foldedword.h"
#include "korelpre/rules/resultmarker.h"
#include "korelpre/text/cursor.h"
#include "lib_base/misc.h"

namespace precomp {

namespace {

constexpr std::size_t kMostRivals = 64;
constexpr std::uint64_t kMostWitnessSteps = 50'000'000;  // of the matcher, for all witnesses

bool hasGroups(const tBaseXChg& rule) {
  const tMatchMarker* marker = rule.firstMatch();
  while (marker != nullptr && !marker->hasGroups()) marker = marker->next();
  return marker != nullptr;
}

bool isDefine(const tBaseXChg& rule) {
  return rule.wordRule().caseSensitive;
}

// The word that must stand behind the key, cut to what an abbreviation of it has at least; empty
// when anything may.
std::string secondWordOf(const tBaseXChg& rule) {
  const tMatchMarker* const second = rule.firstMatch()->next();
  const bool literal =
      second != nullptr && second->isIdentifier() && !rule.firstMatch()->hasGroups();
  return literal ? foldedWord(second->token()).substr(0, kShortestAbbreviation) : std::string();
}

// Whether each word that `narrow` takes is taken by `wide` too.
bool coversWord(const tMatchMarker& wide, const tMatchMarker& narrow, tWordRule wideRule,
                tWordRule narrowRule) {
  if (equalNoCase(wide.token(), narrow.token())) {
    return wideRule.abbreviate || !narrowRule.abbreviate;
  }
  return compareKeyword(wide.token(), narrow.token(), wideRule) == 0;
}

// Whether each statement that `narrow` takes is taken by `wide` with the same score: marker by
// marker a word that is taken, or a value where there is a word or a value of the same kind. A word
// behind a value ends that, so it must be the same; and what ends a value must be a word.
bool covers(const tBaseXChg& wide, const tBaseXChg& narrow) {
  const tMatchMarker* a = wide.firstMatch();
  const tMatchMarker* b = narrow.firstMatch();
  bool behindValue = false;
  for (; a != nullptr && b != nullptr; a = a->next(), b = b->next()) {
    if (a->hasGroups() || b->hasGroups()) return false;
    if (behindValue &&
        !(a->isIdentifier() && b->isIdentifier() && equalNoCase(a->token(), b->token()) &&
          wide.wordRule().abbreviate == narrow.wordRule().abbreviate)) {
      return false;
    }
    behindValue = !a->isIdentifier();
    const bool taken =
        a->isIdentifier()
            ? b->isIdentifier() && coversWord(*a, *b, wide.wordRule(), narrow.wordRule())
            : a->kind() == b->kind() && a->kind() != kMatchMarkerRestrict;
    const bool word =
        a->kind() == kMatchMarker && b->isIdentifier() && isNameStart(b->token().data()[0]);
    if (!taken && !word) return false;
  }
  return a == nullptr && b == nullptr;
}

// Whether only directives, comments and empty lines stand between two lines of a file. An included
// file may hold statements.
bool onlyDirectives(const tLintedFile& file, int first, int last) {
  bool continued = false;
  for (int line = first; line < last; ++line) {
    const std::string_view text = trimmed(lineOf(file, line));
    const bool idle = text.empty() || text[0] == '#' || text[0] == '*' || text.starts_with("//") ||
                      text.starts_with("&&");
    const bool includes =
        directiveAt(text.data(), text.data() + text.size()).directive == eDirective::kInclude;
    if (includes || (!idle && !continued)) return false;
    continued = text.ends_with(';') && (continued || text[0] == '#');
  }
  return true;
}

tString listingOf(const tBaseXChg& rule) {
  tString text;
  rule.print(&text);
  return text;
}

}  // namespace

void tRuleLint::run() {
  for (const tLintedFile& file : findings_.files()) judgeParameters(file);
  judgeTable(rules_.commands);
  judgeTable(rules_.translates);
  judgeTable(rules_.defines);
}

void tRuleLint::judgeTable(tXChgArray& table) {
  table.arrange();
  std::map<std::string, tRanks> byKey;
  for (int i = 0; i < table.count(); ++i) {
    tBaseXChg& rule = table[i];
    if (rule.firstMatch() == nullptr || !isTold(rule)) continue;
    judgeResult(rule, rule.firstResult());
    judgeBrackets(rule);
    judgePattern(rule);
    judgeCircle(rule);
    if (!isDefine(rule)) byKey[foldedWord(rule.key())].push_back({&rule, i});
  }
  for (const auto& [key, rules] : byKey) judgePairs(rules);
  if (table.abbreviating()) judgeKeys(table);
}

// Whether rules that are made to cost much have taken what there was to spend on them.
bool tRuleLint::isWorn() const {
  return steps_ > kMostWitnessSteps;
}

// Only of rules whose text is at hand.
bool tRuleLint::isTold(const tBaseXChg& rule) const {
  return rule.originLine() > 0 && findings_.fileNamed(rule.originFile()) != nullptr;
}

// That of a piece of the rule's text, otherwise that of its directive.
tLintPlace tRuleLint::placeOf(const tBaseXChg& rule, std::string_view piece) const {
  tLintPlace place{rule.originFile(), rule.originLine(), 0, 0};
  const std::string_view directive = rule.directive();
  if (piece.empty() || piece.data() < directive.data() ||
      piece.data() >= directive.data() + directive.size()) {
    return place;
  }
  const std::string_view before =
      directive.substr(0, static_cast<std::size_t>(piece.data() - directive.data()));
  place.line += static_cast<int>(std::count(before.begin(), before.end(), '\n'));
  const tLintedFile* const file = findings_.fileNamed(rule.originFile());
  const std::string_view line = lineOf(*file, place.line);
  // The first line may have blanks in front of its directive.
  const std::size_t start = before.find('\n') == std::string_view::npos
                                ? line.find('#') + before.size()
                                : before.size() - before.rfind('\n') - 1;
  place.column = static_cast<int>(start) + 1;
  place.size = piece.size();
  return place;
}

// [text]
void tRuleLint::judgeResult(const tBaseXChg& rule, const tMatchMarker* head) {
  for (const tMatchMarker* marker = head; marker != nullptr; marker = marker->next()) {
    const bool names = marker->kind() != kResultIdentifier && marker->kind() != kResultMarkerOpt;
    if (names && !static_cast<const tResultMarker*>(marker)->isLinked()) {
      findings_.tell(eWarning::kUnknownResultMarker, placeOf(rule, marker->token()),
                     {marker->token()});
    }
    for (const tMatchMarker* clause : marker->groups()) judgeResult(rule, clause);
  }
}

// Two defines may open and close something together; the parts of a command rarely do.
void tRuleLint::judgeBrackets(const tBaseXChg& rule) {
  const bool isName = isDefine(rule) && rule.firstMatch()->next() == nullptr;
  const tSpcString* const bracket = isName ? nullptr : loneBracketOf(rule.firstResult());
  if (bracket == nullptr) return;
  findings_.tell(eWarning::kUnbalancedResult, placeOf(rule, *bracket), {});
}

void tRuleLint::judgePattern(const tBaseXChg& rule) {
  for (const tMatchMarker* marker = rule.firstMatch(); marker != nullptr; marker = marker->next()) {
    if (marker->kind() == kMatchMarkerWild && marker->next() != nullptr) {
      findings_.tell(eWarning::kUnreachablePattern, placeOf(rule, marker->token()),
                     {marker->token()});
      return;
    }
  }
  judgeGroups(rule);
  if (!rule.isCmd() && !isDefine(rule)) judgeEnd(rule);
}

// A group that takes any words is told of when one of two words gets lost.
void tRuleLint::judgeGroups(const tBaseXChg& rule) {
  if (!findings_.wants(eWarning::kMarkerOnlyGroup)) return;
  for (const tMatchMarker* marker = rule.firstMatch(); marker != nullptr; marker = marker->next()) {
    for (const tMatchMarker* group : marker->groups()) {
      const bool alone = group->next() == nullptr && !group->hasGroups() &&
                         (group->kind() == kMatchMarker || group->kind() == kMatchMarkerExt);
      if (!alone || isWorn()) continue;
      tWitness witness(rules_, rule, *group, steps_);
      const tWitness::tRewritten rewritten = witness.rewritten();
      const bool used = !rewritten.applied.empty() && rewritten.applied.front() == &rule;
      if (!used || !rewritten.ended || witness.hasAllValues(rewritten.text)) continue;
      findings_.tell(eWarning::kMarkerOnlyGroup, placeOf(rule, group->token()), {group->token()},
                     {noted("for example, %1 becomes %2", {witness.text(), rewritten.text})});
    }
  }
}

void tRuleLint::judgeEnd(const tBaseXChg& rule) {
  const tMatchMarker* last = rule.firstMatch();
  while (last->next() != nullptr) last = last->next();
  const bool open = last->kind() == kMatchMarker || last->kind() == kMatchMarkerExt;
  if (!open || last->hasGroups()) return;
  findings_.tell(eWarning::kOpenEndedTranslation, placeOf(rule, last->token()), {last->token()});
}

// [circle] The rules at the end of a rewriting that does not end are those that go round.
void tRuleLint::judgeCircle(const tBaseXChg& rule) {
  if (!findings_.wants(eWarning::kEndlessRule) || circular_.count(&rule) > 0 || isWorn()) {
    return;
  }
  const tWitness::tRewritten rewritten =
      tWitness(rules_, rule, tWitness::kNone, steps_).rewritten();
  const std::vector<const tBaseXChg*>& applied = rewritten.applied;
  constexpr std::size_t kRound = 50;
  if (rewritten.ended || applied.size() < 2 * kRound) return;
  const auto round = applied.end() - kRound;
  if (std::find(round, applied.end(), &rule) == applied.end()) return;
  circular_.insert(round, applied.end());
  const auto again = std::find(round, applied.end(), &rule);
  std::string way(rule.key().view());
  for (auto next = again + 1; next != applied.end(); ++next) {
    way.append(" -> ").append((*next)->key().view());
    if (*next == &rule) break;
  }
  findings_.tell(eWarning::kEndlessRule, placeOf(rule), {way});
}

// [text] "#define AREA (a, b) a * b": names in brackets that the value uses.
void tRuleLint::judgeParameters(const tLintedFile& file) {
  if (!findings_.wants(eWarning::kBlankBeforeParameters)) return;
  for (const tDirectiveLine& define : directiveLinesOf(file.text)) {
    if (define.directive != eDirective::kDefine || define.name.empty()) continue;
    const char* p = define.name.data() + define.name.size();
    const char* const bracket = skipBlanks(p);
    if (bracket == p || *bracket != '(') continue;
    const char* const feed = lineFeedFrom(bracket, file.text.data() + file.text.size());
    const std::string_view rest(bracket + 1, static_cast<std::size_t>(feed - bracket - 1));
    const std::size_t close = rest.find(')');
    const std::string_view names = rest.substr(0, close);
    if (close == std::string_view::npos || names.find_first_of("(\"'") != std::string_view::npos) {
      continue;
    }
    const std::string_view first = trimmed(names.substr(0, names.find(',')));
    const std::string_view value = rest.substr(close + 1);
    const bool isNames = std::all_of(
        names.begin(), names.end(), [](char c) { return isWordByte(c) || isBlank(c) || c == ','; });
    if (first.empty() || !isNames || !isNameStart(first[0])) continue;
    for (std::size_t at = value.find(first); at != std::string_view::npos;
         at = value.find(first, at + 1)) {
      const bool whole =
          !isWordByte(at == 0 ? ' ' : value[at - 1]) &&
          !isWordByte(at + first.size() < value.size() ? value[at + first.size()] : ' ');
      if (!whole) continue;
      findings_.tell(eWarning::kBlankBeforeParameters,
                     {file.name, define.line, define.column, define.name.size()}, {define.name});
      break;
    }
  }
}

// [pairs]
void tRuleLint::judgePairs(const tRanks& rules) {
  const bool wanted = findings_.wants(eWarning::kNeverWins) ||
                      findings_.wants(eWarning::kRulesTie) ||
                      findings_.wants(eWarning::kAbbreviatedWord);
  if (rules.size() < 2 || !wanted) return;
  std::map<std::string, tRanks> bySecond;
  for (const tRanked& ranked : rules) bySecond[secondWordOf(*ranked.rule)].push_back(ranked);
  for (const tRanked& ranked : rules) {
    std::optional<tWitness> witness;
    std::size_t rivals = 0;
    const std::string second = secondWordOf(*ranked.rule);
    for (const std::string& other : {second, std::string()}) {
      const auto found = bySecond.find(other);
      if (found == bySecond.end()) continue;
      for (const tRanked& rival : found->second) {
        if (rivals == kMostRivals || isWorn()) break;
        if (rival.rule == ranked.rule) continue;
        ++rivals;
        if (!witness) witness.emplace(rules_, *ranked.rule, tWitness::kNone, steps_);
        judgePair(ranked, rival, *witness);
      }
      if (second.empty()) break;
    }
  }
}

// `witness` has the form of the rule `one`.
void tRuleLint::judgePair(const tRanked& one, const tRanked& other, tWitness& witness) {
  // Rules of other files replace rules on purpose.
  if (one.rule->originFile() != other.rule->originFile()) return;
  if (pairs_.count({one.rule, other.rule}) > 0 || pairs_.count({other.rule, one.rule}) > 0) return;
  const int score = witness.scoreOf(*other.rule);
  if (score == 0 || witness.scoreOf(*one.rule) != score) return;
  if (listingOf(*one.rule) == listingOf(*other.rule)) return;  // whichever is taken
  const tRanked& winner = one.index > other.index ? one : other;
  const tRanked& loser = one.index > other.index ? other : one;
  const std::vector<const tBaseXChg*> applied = witness.rewritten().applied;
  if (applied.empty() || applied.front() != winner.rule) return;
  // A form with optional groups and a later one for the statements without them: that is meant.
  if (hasGroups(*loser.rule)) {
    tWitness whole(rules_, *loser.rule, tWitness::kEach, steps_);
    if (whole.scoreOf(*loser.rule) > whole.scoreOf(*winner.rule)) return;
  }
  pairs_.insert({one.rule, other.rule});
  const std::string& example = witness.text();
  const tLintedFile& file = *findings_.fileNamed(winner.rule->originFile());
  const int loserLine = loser.rule->originLine();
  if (covers(*winner.rule, *loser.rule) &&
      onlyDirectives(file, loserLine, winner.rule->originLine())) {
    findings_.tell(eWarning::kNeverWins, placeOf(*loser.rule), {},
                   {noteAt(*winner.rule, noted("this rule is used for all of them")),
                    noted("for example: %1", {example})});
    return;
  }
  findings_.tell(
      eWarning::kRulesTie, placeOf(*winner.rule), {},
      {noteAt(*loser.rule, noted("the other one")), noted("for example: %1", {example})});
}

// A key that is the beginning of another one is found first, whatever follows it.
void tRuleLint::judgeKeys(const tXChgArray& table) {
  if (!findings_.wants(eWarning::kAbbreviatedWord)) return;
  std::map<std::string, const tBaseXChg*> keys;
  for (int i = 0; i < table.count(); ++i) {
    tBaseXChg& rule = table[i];
    if (rule.wordRule().abbreviate) keys.emplace(foldedWord(rule.key()), &rule);
  }
  for (auto key = keys.begin(); key != keys.end(); ++key) {
    if (key->first.size() < kShortestAbbreviation || !isTold(*key->second)) continue;
    const auto next = std::next(key);
    if (next == keys.end() || !next->first.starts_with(key->first)) continue;
    if (next->second->originFile() != key->second->originFile()) continue;
    findings_.tell(eWarning::kAbbreviatedWord, placeOf(*key->second),
                   {key->second->key(), next->second->key()},
                   {noteAt(*next->second, noted("the longer word"))});
  }
}

}  // namespace precomp
