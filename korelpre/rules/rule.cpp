#include "korelpre/rules/rule.h"

#include <algorithm>
#include <cstring>
#include <unordered_set>
#include <utility>

#include "korelpre/errors/diagnostic.h"
#include "korelpre/rules/definereader.h"
#include "korelpre/rules/match.h"
#include "korelpre/rules/patternmarkers.h"
#include "korelpre/rules/restrictmarker.h"
#include "korelpre/rules/resultmarker.h"
#include "korelpre/rules/rulereader.h"
#include "korelpre/rules/write.h"
#include "lib_base/fatal.h"
#include "lib_base/output.h"
#include "lib_base/translate.h"

namespace precomp {

namespace {

template <class Visitor>
void visitChain(tMatchMarker* head, const Visitor& visit) {
  for (tMatchMarker* marker = head; marker != nullptr; marker = marker->next()) {
    visit(*marker);
    for (int i = 0; i < marker->groups().count(); ++i) visitChain(marker->groups()[i], visit);
    if (marker->kind() != kMatchMarkerRestrict) continue;
    const tMarkerList& alternatives = static_cast<tMatchMarkerRestrict&>(*marker).alternatives();
    for (int i = 0; i < alternatives.count(); ++i) visitChain(alternatives[i], visit);
  }
}

// Leaves nothing of a replacement behind that did not come to its end.
class tReplacement {
 public:
  tReplacement(tTknString& t, int start) : t_(t) { t_.setReplacementStart(start); }
  ~tReplacement() {
    t_.newTokens().Destroy();
    t_.setReplacementStart(-1);
    t_.endBoundaries();
  }
  tReplacement(const tReplacement&) = delete;
  tReplacement& operator=(const tReplacement&) = delete;

 private:
  tTknString& t_;
};

tSpcString bareToken(std::string_view text) {
  return tSpcString(tString::borrow(text));
}

// Appends markers to a chain.
class tChain {
 public:
  void add(tMatchMarker* marker) {
    if (last_ == nullptr) {
      head_.reset(marker);
    } else {
      last_->setNext(marker);
    }
    last_ = marker;
  }
  std::unique_ptr<tMatchMarker> take() { return std::move(head_); }
  tMatchMarker* last() const { return last_; }

 private:
  std::unique_ptr<tMatchMarker> head_;
  tMatchMarker* last_ = nullptr;
};

// The parameters of a define; mostly few.
class tParameterNames {
 public:
  explicit tParameterNames(const tAutoArray<tSpcString>& parameters) : parameters_(parameters) {
    if (parameters.count() <= kFew) return;
    for (int i = 0; i < parameters.count(); ++i) names_.insert(parameters[i].view());
  }
  bool have(std::string_view name) const {
    if (parameters_.count() > kFew) return names_.count(name) > 0;
    for (int i = 0; i < parameters_.count(); ++i) {
      if (parameters_[i] == name) return true;
    }
    return false;
  }

 private:
  static constexpr int kFew = 8;

  const tAutoArray<tSpcString>& parameters_;
  std::unordered_set<std::string_view> names_;  // where they are many
};

// `name` may have a "(" behind the key.
std::unique_ptr<tMatchMarker> definePattern(const tSpcString& name, const tString& key,
                                            const tAutoArray<tSpcString>& parameters,
                                            tMarkerArena* arena) {
  const auto literal = [arena](std::string_view text) {
    return makeMarker<tMatchIdentifier>(arena, bareToken(text));
  };
  tSpcString word;
  word = name;
  word.setText(key);
  tChain pattern;
  pattern.add(makeMarker<tMatchIdentifier>(arena, word));
  if (key.size() < name.size()) pattern.add(literal("("));
  for (int i = 0; i < parameters.count(); ++i) {
    if (i > 0) pattern.add(literal(","));
    pattern.add(makeMarker<tMatchMarker>(arena, parameters[i]));
  }
  pattern.add(literal(")"));
  return pattern.take();
}

std::unique_ptr<tMatchMarker> defineResult(const tAutoArray<tSpcString>& parameters,
                                           const tAutoArray<tSpcString>& value,
                                           tMarkerArena* arena) {
  const tParameterNames names(parameters);
  tChain result;
  for (int i = 0; i < value.count(); ++i) {
    if (names.have(value[i])) {
      result.add(makeMarker<tResultMarker>(arena, value[i]));
    } else {
      result.add(makeMarker<tResultIdentifier>(arena, value[i]));
    }
    result.last()->token().setLine(0);
  }
  return result.take();
}

}  // namespace

tBaseXChg::tBaseXChg(tRuleContext* context, tWordRule wordRule, tMatchMarker* firstMatch,
                     tMatchMarker* firstResult, const tString& key, tMarkerArena* arena)
    : tRuleHome(context, wordRule, arena), key_(key) {
  setChains(std::unique_ptr<tMatchMarker>(firstMatch), std::unique_ptr<tMatchMarker>(firstResult));
}

tBaseXChg::~tBaseXChg() = default;

void tBaseXChg::operator delete(tBaseXChg* rule, std::destroying_delete_t) noexcept {
  const bool inArena = rule->arena() != nullptr;
  if (inArena) {
    static_cast<void>(rule->firstMatch_.release());
    static_cast<void>(rule->firstResult_.release());
  }
  rule->~tBaseXChg();
  if (!inArena) ::operator delete(rule);
}

void tBaseXChg::buildChains() {
  unread_ = false;
  const char* const end = text_.data() + text_.size();
  tDefineReader define;
  tRuleReader rule;
  if (define.read(directive_.data(), end, originLine_, nullptr)) {
    setChains(define.hasParameters()
                  ? definePattern(define.name(), key_, define.parameters(), nullptr)
                  : std::make_unique<tMatchIdentifier>(define.name()),
              defineResult(define.parameters(), define.value(), nullptr));
  } else if (rule.read(directive_.data(), end, nullptr)) {
    setChains(std::unique_ptr<tMatchMarker>(rule.pattern().release()),
              std::unique_ptr<tMatchMarker>(rule.result().release()));
  } else {
    fatalError("A directive was sound and is not", "korelpre/rules/rule", __LINE__);
  }
}

void tBaseXChg::setChains(std::unique_ptr<tMatchMarker> pattern,
                          std::unique_ptr<tMatchMarker> result) {
  firstMatch_ = std::move(pattern);
  firstResult_ = std::move(result);
  if (firstMatch_ == nullptr) return;
  bool behindMarker = false;
  for (const tMatchMarker* marker = firstMatch_.get(); marker != nullptr; marker = marker->next()) {
    if (marker->isIdentifier() && behindMarker) neededWord_ = marker;
    behindMarker = behindMarker || !marker->isIdentifier();
  }
  visitChain(firstMatch_.get(), [this](tMatchMarker& marker) { marker.setRule(this); });
  rlink(this, firstMatch_.get(), firstResult_.get(), linkCount_);
  for (const tMatchMarker* marker = firstResult_.get(); marker != nullptr;
       marker = marker->next()) {
    hasClauses_ = hasClauses_ || marker->hasGroups();
  }
}

// A match leaves nothing in the markers of a result but how often clauses were written.
void tBaseXChg::resetMatch() {
  if (!matchLeft_) return;
  firstMatch_->resetAll();
  if (hasClauses_) tMatchMarker::resetRepetitions(firstResult_.get());
  matchLeft_ = false;
}

int tBaseXChg::matchCount(int start, tTknString* t) {
  __builtin_prefetch(directive_.data());
  t->curTokenIdx(std::max(start, 0));
  // Most patterns that do not match fail in the words that they begin with, where nothing is
  // captured and so nothing has to be forgotten.
  int words = 0;
  tMatchMarker* marker = firstMatch();
  for (; marker->isIdentifier() && !marker->hasGroups() && marker->next() != nullptr; ++words) {
    const int cursor = t->curTokenIdx();
    if (cursor < 0 || !t->step() || !marker->match(t, nullptr)) {
      t->noteFailure(marker, cursor);
      return 0;
    }
    t->nextTokenIdx();
    marker = marker->next();
  }
  if (t->curTokenIdx() < 0) {
    t->noteFailure(marker, -1);
    return 0;
  }
  resetMatch();
  matchLeft_ = true;
  const int score = rmatchCount(this, marker, t, nullptr);
  return score > 0 ? words + score : 0;
}

bool tBaseXChg::lacksWord(int start, tTknString* t) const {
  constexpr int kLong = 64;
  if (t->count() - start < kLong || firstMatch() == nullptr || neededWord_ == nullptr) return false;
  const int* known = t->lastPlaceOf(neededWord_);
  if (known == nullptr) {
    const auto& word = static_cast<const tMatchIdentifier&>(*neededWord_);
    int last = t->count() - 1;
    while (last >= 0 && !word.matchesWord(t->tokens()[last])) --last;
    t->step(static_cast<std::uint32_t>(t->count() - last));
    t->noteLastPlace(neededWord_, last);
    return last <= start;
  }
  return *known <= start;
}

bool tBaseXChg::replace(tRuleContext* context, int start, tTknString* t) {
  try {
    return matchCount(start, t) > 0 && replaceMatched(context, start, t);
  } catch (const tFatalError& failure) {
    qdprintf("%s\n", toldOf(failure).c_str());
    return false;
  }
}

bool tBaseXChg::replaceMatched(tRuleContext* context, int start, tTknString* t) {
  const tReplacement scope(*t, start);
  if (!buildReplacement(start, t)) return false;
  t->doReset(context, start);
  return true;
}

bool tBaseXChg::buildReplacement(int start, tTknString* t) {
  if (!rreplace(this, firstResult(), t, 0)) return false;
  if (start >= 0) return true;
  for (; t->curTokenIdx() >= 0; t->nextTokenIdx()) {
    if (!t->addNew(new tSpcString(t->curToken()))) return false;
  }
  return true;
}

tNote noteAt(const tBaseXChg& rule, tNote note) {
  note.file = rule.originFile();
  note.line = rule.originLine();
  return note;
}

tTranslate::tTranslate(tRuleContext* context, const tSpcString& name,
                       const tAutoArray<tSpcString>& value, tMarkerArena* arena)
    : tBaseXChg(context, {.abbreviate = false, .caseSensitive = true}, name, arena) {
  setChains(std::unique_ptr<tMatchMarker>(makeMarker<tMatchIdentifier>(arena, name)),
            defineResult({}, value, arena));
}

tTranslate::tTranslate(tRuleContext* context, const tSpcString& name,
                       const tAutoArray<tSpcString>& parameters,
                       const tAutoArray<tSpcString>& value, tMarkerArena* arena)
    : tBaseXChg(context, {.abbreviate = false, .caseSensitive = true},
                name.substr(0, name.size() - (name.view().ends_with('(') ? 1 : 0)), arena) {
  setChains(definePattern(name, key(), parameters, arena), defineResult(parameters, value, arena));
}

}  // namespace precomp
