#include "korelpre/rule.h"

#include <algorithm>

#include "korelpre/resultmarker.h"

namespace precomp {

tBaseXChg::tBaseXChg(KorelPreYaccClass* processor, tWordRule wordRule, tMatchMarker* firstMatch,
                     tMatchMarker* firstResult, const tString& key)
    : firstResult_(firstResult), key_(key), wordRule_(wordRule), processor_(processor) {
  setFirstMatch(firstMatch);
}

tBaseXChg::~tBaseXChg() = default;

void tBaseXChg::setFirstMatch(tMatchMarker* marker) {
  firstMatch_.reset(marker);
  for (; marker != nullptr; marker = marker->next()) marker->setRule(this);
}

int tBaseXChg::matchCount(int start, tTknString* t) {
  t->curTokenIdx(std::max(start, 0));
  return rmatchCount(firstMatch(), t);
}

bool tBaseXChg::replace(KorelPreYaccClass* processor, int start, tTknString* t) {
  t->setReplacementStart(start);
  t->curTokenIdx(std::max(start, 0));
  if (!rmatch(firstMatch(), t) || !rreplace(firstResult(), t, 0)) {
    t->newTokens().Destroy();
    t->setReplacementStart(-1);
    return false;
  }
  t->doReset(processor, start);
  t->setReplacementStart(-1);
  return true;
}

tTranslate::tTranslate(KorelPreYaccClass* processor, const tSpcString& name,
                       const tAutoArray<tSpcString>& value)
    : tBaseXChg(processor, {.abbreviate = false, .caseSensitive = true}, name) {
  setFirstMatch(new tMatchIdentifier(name));
  tMatchMarker* last = nullptr;
  for (int i = 0; i < value.count(); ++i) {
    auto* marker = new tResultIdentifier(tSpcString());
    marker->token() = value[i];
    if (last == nullptr) {
      setFirstResult(marker);
    } else {
      last->setNext(marker);
    }
    last = marker;
  }
}

}  // namespace precomp
