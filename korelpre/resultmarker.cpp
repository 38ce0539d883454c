#include "korelpre/resultmarker.h"

#include <algorithm>

#include "lib_base/misc.h"

namespace precomp {

bool tResultMarker::match(tTknString* /*t*/, tMatchMarker* /*parent*/) {
  return false;
}

void tResultMarker::link(tBaseXChg* /*rule*/, tMatchMarker& marker) {
  if (equalNoCase(token(), marker.token())) links_.add(&marker);
}

int tResultMarker::getRecurLevel() const {
  const tArray<tMatchMarker>& links = driver_->links_;
  if (links.empty()) return 1;
  int level = 0;
  for (int i = 0; i < links.count(); ++i) level = std::max(level, links[i].getRecurLevel());
  return level;
}

bool tResultMarker::copyLinks(tTknString* t, int level) {
  for (int i = 0; i < links_.count(); ++i) {
    tMatchMarker& marker = links_[i];
    if (i == 0) marker.token().setSpacing(token().spacing());
    // Heads of a clause lend the flag for this replacement only.
    const bool wasHead = marker.isGroupHead();
    marker.setGroupHead(isGroupHead());
    const bool copied = marker.replace(t, level);
    marker.setGroupHead(wasHead);
    if (!copied && (isGroupHead() || t->overrun())) return false;
  }
  return true;
}

bool tResultMarker::replace(tTknString* t, int level) {
  return copyLinks(t, level);
}

bool tResultIdentifier::replace(tTknString* t, int /*level*/) {
  auto* copy = new tSpcString;
  *copy = token();
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
