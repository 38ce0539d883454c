#include "korelpre/rules/resultmarker.h"

#include <algorithm>

#include "lib_base/misc.h"

namespace precomp {

bool tResultMarker::match(tTknString* /*t*/, tMatchMarker* /*parent*/) {
  return false;
}

void tResultMarker::link(tRuleHome* rule, tMatchMarker& marker) {
  if (!equalNoCase(token(), marker.token())) return;
  if (links().first == nullptr) {
    links().first = &marker;
  } else {
    tMarkerList::add(links().more, &marker, rule->arena());
  }
}

int tResultMarker::getRecurLevel() const {
  const tResultLinks& followed = links().driver->links();
  if (followed.first == nullptr) return 1;
  int level = followed.first->getRecurLevel();
  if (followed.more == nullptr) return level;
  for (const tMatchMarker* marker : *followed.more) {
    level = std::max(level, marker->getRecurLevel());
  }
  return level;
}

bool tResultMarker::copyLinks(tTknString* t, int level) {
  if (links().first == nullptr) return true;
  links().first->token().setSpacing(token().spacing());
  if (!copyLink(*links().first, t, level)) return false;
  if (links().more == nullptr) return true;
  for (tMatchMarker* marker : *links().more) {
    if (!copyLink(*marker, t, level)) return false;
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
