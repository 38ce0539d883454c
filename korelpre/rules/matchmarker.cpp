#include "korelpre/rules/matchmarker.h"

#include <memory>

#include "korelpre/text/tokenkinds.h"

namespace precomp {

constinit const tMarkerList tMatchMarker::kNoChains;
constinit const tArenaList<tMatchInfo> tMatchMarker::kNoInfos;

void tMatchInfo::restore(tMatchMarker& marker) const {
  marker.setCapture(first, last);
  marker.clearIsMacro();
  if (macro) marker.setIsMacro(nullptr);
  marker.macroDot_ = macroDot;
}

tMatchMarker::tMatchMarker(const tSpcString& token, eRuleType kind)
    : token_(token), kind_(kind), state_() {
  token_.setAux(token.aux());
}

tMatchMarker::tMatchMarker(const tSpcString& token, eRuleType kind, const tResultLinks& links)
    : token_(token), kind_(kind), result_(true), links_(links) {
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
  if (inArena_) return;
  if (result_) {
    tMarkerList::release(links_.more);
  } else {
    tArenaList<tMatchInfo>::release(state_.infos);
  }
}

void tMatchMarker::destroyList(tMarkerList* list) const noexcept {
  if (list == nullptr) return;
  for (int i = 0; i < list->count(); ++i) delete (*list)[i];
  if (!inArena_) tMarkerList::release(list);
}

void tMatchMarker::addGroup(tMatchMarker* head, tMarkerArena* arena) {
  std::unique_ptr<tMatchMarker> owner(head);
  tMarkerList::add(groups_, head, arena);
  static_cast<void>(owner.release());
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
    marker->setCapture(-1, -1);
    marker->matched_ = false;
    if (deep == 0 || !marker->hasGroups()) continue;
    for (int i = 0; i < marker->groups().count(); ++i) marker->groups()[i]->resetMatch(deep);
  }
}

void tMatchMarker::resetAll() {
  for (tMatchMarker* marker = this; marker != nullptr; marker = marker->next_) {
    marker->repetitions_ = 0;
    marker->macro_ = marker->macroDot_ = false;
    marker->setCapture(-1, -1);
    marker->matched_ = false;
    if (marker->state_.infos != nullptr) marker->state_.infos->clear();
    if (!marker->hasGroups()) continue;
    for (int i = 0; i < marker->groups().count(); ++i) marker->groups()[i]->resetAll();
  }
}

void tMatchMarker::resetRepetitions(tMatchMarker* head) {
  for (tMatchMarker* marker = head; marker != nullptr; marker = marker->next_) {
    marker->repetitions_ = 0;
    for (tMatchMarker* clause : marker->groups()) resetRepetitions(clause);
  }
}

void tMatchMarker::setRecMatch(const tTknString& t) {
  for (tMatchMarker* marker = this; marker != nullptr; marker = marker->next_) {
    if (marker->kind_ != kMatchIdentifier) {
      tArenaList<tMatchInfo>::add(
          marker->state_.infos,
          {marker->first(), marker->last(), marker->macro_, marker->macroDot_, t.steps()},
          marker->rule()->arena());
    }
    marker->matched_ = false;
    marker->state_.first = -1;
    marker->clearIsMacro();
  }
}

void tMatchMarker::forgetSince(std::uint32_t step) {
  for (tMatchMarker* marker = this; marker != nullptr; marker = marker->next_) {
    for (int i = 0; i < marker->groups().count(); ++i) {
      for (tMatchMarker* inner = marker->groups()[i]; inner != nullptr; inner = inner->next_) {
        while (!inner->infos().empty() && inner->infos().end()[-1].step > step) {
          inner->state_.infos->removeLast();
        }
      }
      marker->groups()[i]->forgetSince(step);
    }
  }
}

void tMatchMarker::setIsMacro(tTknString* t) {
  macro_ = true;
  if (t == nullptr) return;
  macroDot_ = last() == first() + 2 && t->getToken(first()).kind() == kKindAmpersand &&
              t->getToken(first() + 1).kind() == kKindIdentifier &&
              t->getToken(first() + 2).kind() == kKindDot;
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
  if (!t->addNew(new tSpcString(t->getToken(first()), token_.spacing()))) return false;
  for (int i = first() + 1; i <= last(); ++i) {
    if (!t->addNew(new tSpcString(t->getToken(i)))) return false;
  }
  return true;
}

bool tMatchMarker::replace(tTknString* t, int level) {
  replay(level);
  return takesNothing() || copyCapture(t);
}

}  // namespace precomp
