#include "korelpre/resultmarker.h"

namespace precomp {

bool tResultIdentifier::match(tTknString* /*t*/, tMatchMarker* /*parent*/) {
  return false;
}

bool tResultIdentifier::replace(tTknString* t, int /*level*/) {
  auto* copy = new tSpcString;
  *copy = token();
  if (t->replacementStart() >= 0) {
    copy->setSpacing(t->getToken(t->replacementStart()).spacing());
    t->setReplacementStart(-1);
  }
  t->newTokens().add(copy);
  return true;
}

bool rreplace(tMatchMarker* head, tTknString* t, int level) {
  for (tMatchMarker* marker = head; marker != nullptr; marker = marker->next()) {
    if (!marker->replace(t, level)) return false;
  }
  return true;
}

}  // namespace precomp
