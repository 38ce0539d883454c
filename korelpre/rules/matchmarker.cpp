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

}  // namespace precomp
