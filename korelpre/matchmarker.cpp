#include "korelpre/matchmarker.h"

#include "korelpre/keyword.h"
#include "korelpre/rule.h"

namespace precomp {

tMatchMarker::~tMatchMarker() {
  // A chain can be very long, so it is taken apart link by link and not by recursion.
  tMatchMarker* marker = next_;
  while (marker != nullptr) {
    tMatchMarker* following = marker->next_;
    marker->next_ = nullptr;
    delete marker;
    marker = following;
  }
}

bool tMatchIdentifier::match(tTknString* t, tMatchMarker* /*parent*/) {
  return compareKeyword(token(), t->curToken(), rule()->wordRule()) == 0;
}

bool tMatchIdentifier::replace(tTknString* t, int /*level*/) {
  t->newTokens().add(new tSpcString(token()));
  return true;
}

bool rmatch(tMatchMarker* head, tTknString* t) {
  return head == nullptr || rmatchCount(head, t) > 0;
}

int rmatchCount(tMatchMarker* head, tTknString* t) {
  int score = 0;
  for (tMatchMarker* marker = head; marker != nullptr; marker = marker->next()) {
    if (t->curTokenIdx() < 0 || !marker->match(t, nullptr)) return 0;
    ++score;
    t->nextTokenIdx();
  }
  return score;
}

}  // namespace precomp
