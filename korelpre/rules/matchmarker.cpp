#include "korelpre/rules/matchmarker.h"

#include <utility>

#include "korelpre/text/keyword.h"
#include "korelpre/text/tokenkinds.h"
#include "lib_base/misc.h"

namespace precomp {

constinit const tMarkerList tMatchMarker::kNoChains;
constinit const tArenaList<tMatchInfo> tMatchMarker::kNoInfos;

void tMatchInfo::restore(tMatchMarker& marker) const {
  marker.setCapture(first, last);
  marker.clearIsMacro();
  if (macro) marker.setIsMacro(nullptr);
  marker.macroDot_ = macroDot;
}

tMatchMarker::tMatchMarker(const tSpcString& token, eRuleType kind) : token_(token), kind_(kind) {
  token_.setAux(token.aux());
}

void tMatchMarker::operator delete(tMatchMarker* marker, std::destroying_delete_t,
                                   std::size_t size) noexcept {
  const bool inArena = marker->inArena_;
  marker->~tMatchMarker();
  if (!inArena) ssPoolRelease(marker, size);
}

tMatchMarker::~tMatchMarker() {
  // A chain can be very long, so it is taken apart link by link and not by recursion.
  tMatchMarker* marker = next_;
  while (marker != nullptr) {
    tMatchMarker* following = marker->next_;
    marker->next_ = nullptr;
    delete marker;
    marker = following;
  }
  destroyList(groups_);
  if (!inArena_) tArenaList<tMatchInfo>::release(infos_);
}

void tMatchMarker::destroyList(tMarkerList* list) const noexcept {
  if (list == nullptr) return;
  for (int i = 0; i < list->count(); ++i) delete (*list)[i];
  if (!inArena_) tMarkerList::release(list);
}

void tMatchMarker::addGroup(tMatchMarker* head, tMarkerArena* arena) {
  tMarkerList::add(groups_, head, arena);
}

int tMatchMarker::getRecurLevel() const {
  if (!infos().empty()) return infos().count();
  return matched_ ? 1 : 0;
}

void tMatchMarker::link(tRuleHome* /*rule*/, tMatchMarker& /*marker*/) {}

bool tMatchMarker::checkMatch(tTknString* /*t*/) {
  return false;
}

void tMatchMarker::resetMatch(unsigned char deep) {
  for (tMatchMarker* marker = this; marker != nullptr; marker = marker->next_) {
    marker->repetitions_ = 0;
    marker->macro_ = marker->macroDot_ = false;
    marker->first_ = marker->last_ = -1;
    marker->matched_ = false;
    if (deep == 0 || !marker->hasGroups()) continue;
    for (int i = 0; i < marker->groups().count(); ++i) marker->groups()[i]->resetMatch(deep);
  }
}

void tMatchMarker::resetAll() {
  for (tMatchMarker* marker = this; marker != nullptr; marker = marker->next_) {
    marker->repetitions_ = 0;
    marker->macro_ = marker->macroDot_ = false;
    marker->first_ = marker->last_ = -1;
    marker->matched_ = false;
    if (marker->infos_ != nullptr) marker->infos_->clear();
    if (!marker->hasGroups()) continue;
    for (int i = 0; i < marker->groups().count(); ++i) marker->groups()[i]->resetAll();
  }
}

void tMatchMarker::setRecMatch(const tTknString& t) {
  for (tMatchMarker* marker = this; marker != nullptr; marker = marker->next_) {
    if (marker->kind_ != kMatchIdentifier) {
      tArenaList<tMatchInfo>::add(
          marker->infos_,
          {marker->first_, marker->last_, marker->macro_, marker->macroDot_, t.steps()},
          marker->rule_->arena());
    }
    marker->matched_ = false;
    marker->first_ = -1;
    marker->clearIsMacro();
  }
}

void tMatchMarker::forgetSince(std::uint32_t step) {
  for (tMatchMarker* marker = this; marker != nullptr; marker = marker->next_) {
    for (int i = 0; i < marker->groups().count(); ++i) {
      for (tMatchMarker* inner = marker->groups()[i]; inner != nullptr; inner = inner->next_) {
        while (!inner->infos().empty() && inner->infos().end()[-1].step > step) {
          inner->infos_->removeLast();
        }
      }
      marker->groups()[i]->forgetSince(step);
    }
  }
}

void tMatchMarker::setIsMacro(tTknString* t) {
  macro_ = true;
  if (t == nullptr) return;
  macroDot_ = last_ == first_ + 2 && t->getToken(first_).kind() == kKindAmpersand &&
              t->getToken(first_ + 1).kind() == kKindIdentifier &&
              t->getToken(first_ + 2).kind() == kKindDot;
}

void tMatchMarker::replay(int level) {
  if (infos().empty()) return;
  if (level < infos().count()) {
    infos()[level].restore(*this);
  } else {
    setCapture(-1, -1);
    clearIsMacro();
  }
}

bool tMatchMarker::copyCapture(tTknString* t) const {
  if (!t->addNew(new tSpcString(t->getToken(first_), token_.spacing()))) return false;
  for (int i = first_ + 1; i <= last_; ++i) {
    if (!t->addNew(new tSpcString(t->getToken(i)))) return false;
  }
  return true;
}

bool tMatchMarker::replace(tTknString* t, int level) {
  replay(level);
  return takesNothing() || copyCapture(t);
}

bool tMatchIdentifier::matchesWord(std::string_view word) const {
  // Most words differ in the first byte.
  const tSpcString& keyword = token();
  if (!word.empty() && !keyword.empty() && ((word[0] ^ keyword.data()[0]) & 0xDF) != 0) {
    return false;
  }
  return compareKeyword(keyword, word, rule()->wordRule()) == 0;
}

bool tMatchIdentifier::replace(tTknString* t, int /*level*/) {
  return t->addNew(new tSpcString(token()));
}

bool tMatchMarkerList::replace(tTknString* t, int level) {
  if (!t->collectsBoundaries()) return tMatchMarker::replace(t, level);
  replay(level);
  return takesNothing() || copyElements(t);
}

// Each comma between two elements gets an empty token on either side, which the quotes are later
// written into. The blanks in front of an element belong in front of its opening quote.
bool tMatchMarkerList::copyElements(tTknString* t) {
  int depth = 0;
  bool opensElement = false;
  tString spacing = token().spacing();
  const auto addBoundary = [&] {
    auto* boundary = new tSpcString;
    boundary->setSpacing(spacing);
    spacing = tString();
    t->boundaries().add(boundary);
    return t->addNew(boundary);
  };
  for (int i = first(); i <= last(); ++i) {
    const tSpcString& taken = t->getToken(i);
    const bool separates = depth == 0 && taken.kind() == kKindComma;
    if (taken == "(" || taken == "[" || taken == "{") ++depth;
    if (taken == ")" || taken == "]" || taken == "}") --depth;
    if (i > first()) spacing = taken.spacing();
    if (opensElement && !addBoundary()) return false;
    if (separates) {
      tString before;
      if (i > first() && !opensElement) std::swap(before, spacing);
      if (!addBoundary()) return false;
      spacing = before;
    }
    auto* copy = new tSpcString(taken);
    copy->setSpacing(spacing);
    if (!t->addNew(copy)) return false;
    opensElement = separates;
  }
  spacing = tString();
  return !opensElement || addBoundary();
}

void tMatchMarkerRestrict::addWord(const tSpcString& word, bool newAlternative,
                                   tMarkerArena* arena) {
  auto* marker = makeMarker<tMatchIdentifier>(arena, word);
  if (newAlternative || lastWord_ == nullptr) {
    tMarkerList::add(alternatives_, marker, arena);
  } else {
    lastWord_->setNext(marker);
  }
  lastWord_ = marker;
}

int tMatchMarkerRestrict::findAlternative(tTknString* t) const {
  const int start = t->curTokenIdx();
  const tWordRule wordRule = rule()->wordRule();
  for (int i = 0; i < alternatives().count() && t->step(); ++i) {
    for (const tMatchMarker* word = alternatives()[i];; word = word->next()) {
      if (t->curTokenIdx() < 0) break;
      const std::string_view token = t->curToken();
      if (!equalNoCase(word->token(), token) &&
          compareKeyword(word->token(), token, wordRule) != 0) {
        break;
      }
      if (word->next() == nullptr) return i;
      t->nextTokenIdx();
    }
    t->curTokenIdx(start);
  }
  return -1;
}

bool tMatchMarkerRestrict::checkMatch(tTknString* t) {
  const int start = t->curTokenIdx();
  if (findAlternative(t) < 0) return false;
  t->curTokenIdx(start);
  return true;
}

bool tMatchMarkerRestrict::match(tTknString* t, tMatchMarker* /*parent*/) {
  clearIsMacro();
  setCapture(-1, -1);
  const int alternative = findAlternative(t);
  if (alternative < 0) return false;
  setCapture(-1, alternative);
  return true;
}

bool tMatchMarkerRestrict::replace(tTknString* t, int level) {
  replay(level);
  if (last() < 0) return true;
  const tMatchMarker* word = alternatives()[last()];
  for (bool opens = true; word != nullptr; word = word->next(), opens = false) {
    auto* copy = new tSpcString(word->token());
    if (opens) copy->setSpacing(token().spacing());
    if (!t->addNew(copy)) return false;
  }
  return true;
}

bool tMatchMarkerWild::match(tTknString* t, tMatchMarker* /*parent*/) {
  const int first = t->curTokenIdx();
  setCapture(first, first < 0 ? -1 : t->count() - 1);
  if (first < 0) return false;
  t->curTokenIdx(t->count() - 1);
  return true;
}

bool tMatchMarkerOpt::replace(tTknString* /*t*/, int /*level*/) {
  return true;
}

}  // namespace precomp
