#include "korelpre/rules/markerrecords.h"

#include "korelpre/rules/matchmarker.h"
#include "korelpre/rules/rulestream.h"

namespace precomp {

using namespace markerrecords;

// A kind has four bits in a saved header.
#define MARKER(class, kind, number, side, production, open, close, before, behind) \
  static_assert((number) <= kKindBits);
#include "korelpre/rules/markers.def"
#undef MARKER

void saveToken(tPCHStream* stream, const tSpcString& token, std::uint8_t first) {
  const bool oneBlank = token.spacing() == " ";
  const bool unusual = token.line() != 0 || !(oneBlank || token.spacing().empty());
  stream->putByte(static_cast<std::uint8_t>(first | (unusual    ? kUnusual
                                                     : oneBlank ? kOneBlank
                                                                : 0)));
  if (unusual) {
    stream->putText(token.spacing());
    stream->putNumber(token.line());
  }
  stream->putNumber(token.kind());
  stream->putNumber(token.aux());
  stream->putText(token);
}

void loadToken(tPCHStream* stream, tSpcString& token, std::uint8_t first) {
  token.setSpacing(tString::borrow((first & kOneBlank) != 0 ? " " : ""));
  if ((first & kUnusual) != 0) {
    token.setSpacing(tString::borrow(stream->text()));
    token.setLine(stream->number32());
  }
  token.setKind(stream->number16());
  token.setAux(stream->number16());
  token.setText(tString::borrow(stream->text()));
}

void saveChain(tPCHStream* stream, const tMatchMarker* head) {
  for (const tMatchMarker* marker = head; marker != nullptr; marker = marker->next()) {
    marker->save(stream);
  }
}

bool loadWord(tPCHStream* stream, tSpcString& word) {
  const std::uint8_t first = stream->byte();
  if ((first & (kKindBits | kHasGroups)) != kMatchIdentifier) stream->fail();
  loadToken(stream, word, first);
  return (first & kHasNext) != 0;
}

}  // namespace precomp
