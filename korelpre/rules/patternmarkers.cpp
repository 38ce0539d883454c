#include "korelpre/rules/patternmarkers.h"

#include <utility>

#include "korelpre/text/tokenkinds.h"

namespace precomp {

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
    const bool added = t->addNew(boundary);
    t->boundaries().add(boundary);
    return added;
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

bool tMatchMarkerExt::match(tTknString* t, tMatchMarker* parent) {
  const int cursor = t->curTokenIdx();
  const bool isFileName = cursor >= 0 && t->getToken(cursor).kind() == kKindIdentifier &&
                          t->getToken(cursor + 1).kind() == kKindDot &&
                          t->getToken(cursor + 2).kind() == kKindIdentifier;
  if (!isFileName) return tMatchMarker::match(t, parent);
  clearIsMacro();
  setCapture(cursor, cursor + 2);
  t->curTokenIdx(cursor + 2);
  return true;
}

}  // namespace precomp
