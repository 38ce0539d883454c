#include "korelpre/rules/restrictmarker.h"

#include <memory>

#include "korelpre/rules/markerrecords.h"
#include "korelpre/rules/patternmarkers.h"
#include "korelpre/rules/rulestream.h"
#include "korelpre/text/tokenkinds.h"
#include "lib_base/misc.h"

namespace precomp {

void tMatchMarkerRestrict::addWord(const tSpcString& word, bool newAlternative,
                                   tMarkerArena* arena) {
  auto* marker = makeMarker<tMatchIdentifier>(arena, word);
  std::unique_ptr<tMatchMarker> owner(marker);
  marker->token().setKind(kKindIdentifier);
  marker->token().setLine(0);
  if (newAlternative || lastWord_ == nullptr) {
    tMarkerList::add(alternatives_, marker, arena);
  } else {
    lastWord_->setNext(marker);
  }
  lastWord_ = marker;
  static_cast<void>(owner.release());
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

void tMatchMarkerRestrict::print(tString* out) const {
  printForm(out, "<", ":");
  for (int i = 0; i < alternatives().count(); ++i) {
    const tMatchMarker* const first = alternatives()[i];
    for (const tMatchMarker* word = first; word != nullptr; word = word->next()) {
      put(out, word != first ? " " : i > 0 ? "," : "");
      put(out, word->token());
    }
  }
  put(out, "> ");
}

void tMatchMarkerRestrict::save(tPCHStream* stream) const {
  tMatchMarker::save(stream);
  stream->putNumber(static_cast<std::uint64_t>(alternatives().count()));
  for (int i = 0; i < alternatives().count(); ++i) saveChain(stream, alternatives()[i]);
}

bool tMatchMarkerRestrict::load(tPCHStream* stream, std::uint8_t first) {
  if (!tMatchMarker::load(stream, first)) return false;
  const std::uint64_t count = stream->number();
  for (std::uint64_t i = 0; i < count && !stream->failed(); ++i) {
    bool newAlternative = true;
    for (bool more = true; more && !stream->failed(); newAlternative = false) {
      tSpcString word;
      more = loadWord(stream, word);
      if (!stream->failed()) addWord(word, newAlternative);
    }
  }
  return !stream->failed();
}

}  // namespace precomp
