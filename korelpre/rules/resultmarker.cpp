#include "korelpre/rules/resultmarker.h"

#include <algorithm>

#include "lib_base/misc.h"

namespace precomp {

bool tResultMarker::match(tTknString* /*t*/, tMatchMarker* /*parent*/) {
  return false;
}

void tResultMarker::link(tRuleHome* rule, tMatchMarker& marker) {
  if (!equalNoCase(token(), marker.token())) return;
  if (firstLink_ == nullptr) {
    firstLink_ = &marker;
    return;
  }
  if (moreLinks_ == nullptr) {
    moreLinks_ = std::make_unique<tArray<tMatchMarker>>();
    rule->setNeedsDestructors();
  }
  moreLinks_->add(&marker);
}

int tResultMarker::getRecurLevel() const {
  if (!driver_->isLinked()) return 1;
  int level = driver_->firstLink_->getRecurLevel();
  if (driver_->moreLinks_ == nullptr) return level;
  const tArray<tMatchMarker>& more = *driver_->moreLinks_;
  for (int i = 0; i < more.count(); ++i) level = std::max(level, more[i].getRecurLevel());
  return level;
}

bool tResultMarker::copyLinks(tTknString* t, int level) {
  if (firstLink_ == nullptr) return true;
  firstLink_->token().setSpacing(token().spacing());
  if (!copyLink(*firstLink_, t, level)) return false;
  if (moreLinks_ == nullptr) return true;
  for (int i = 0; i < moreLinks_->count(); ++i) {
    if (!copyLink((*moreLinks_)[i], t, level)) return false;
  }
  return true;
}

// The match marker has this marker's flag of a clause's head for this replacement only.
bool tResultMarker::copyLink(tMatchMarker& marker, tTknString* t, int level) {
  const bool wasHead = marker.isGroupHead();
  marker.setGroupHead(isGroupHead());
  const bool copied = marker.replace(t, level);
  marker.setGroupHead(wasHead);
  return copied || !(isGroupHead() || t->overrun());
}

bool tResultMarker::replace(tTknString* t, int level) {
  return copyLinks(t, level);
}

bool tResultIdentifier::replace(tTknString* t, int /*level*/) {
  auto* copy = new tSpcString(token());
  copy->setAux(token().aux());
  copy->setLine(0);  // that of the statement, not that of the rule
  if (t->replacementStart() >= 0) {
    copy->setSpacing(t->getToken(t->replacementStart()).spacing());
    t->setReplacementStart(-1);
  }
  return t->addNew(copy);
}

bool tResultMarkerOpt::replace(tTknString* /*t*/, int /*level*/) {
  return true;
}

bool tResultMarkerBool::replace(tTknString* t, int /*level*/) {
  return t->addNew(new tSpcString(tString::borrow(firstLinkMatched() ? ".T." : ".F.")));
}

}  // namespace precomp
