// The directive is cut into pieces, which are put together by hand as the grammar would. This gives
// up at the first thing that is not plain: a directive at the end of the result, a "<" that opens
// no complete marker.

#include "korelpre/rules/rulereader.h"

#include <memory>

#include "korelpre/rules/patternmarkers.h"
#include "korelpre/rules/restrictmarker.h"
#include "korelpre/rules/resultmarker.h"
#include "korelpre/text/cursor.h"
#include "korelpre/text/tokenkinds.h"
#include "lib_base/misc.h"
#include "ssvp40xpf/korelpretokens.h"

namespace precomp {

using namespace korelpre;

bool tRuleReader::read(const char* start, const char* end, tMarkerArena* arena) {
  const char* p = skipBlanks(start, end);
  const char* const directive = p;
  if (!readWord(p, end) || !readPieces(directive, p, end) || count() == 0) return false;
  arena_ = arena;
  if (build()) return true;
  drop();
  return false;
}

void tRuleReader::drop() {
  pattern_ = tChainBuilder(tChainBuilder::kPattern);
  result_ = tChainBuilder(tChainBuilder::kResult);
}

bool tRuleReader::build() {
  pattern_ = tChainBuilder(tChainBuilder::kPattern, arena_);
  result_ = tChainBuilder(tChainBuilder::kResult, arena_);
  at_ = 0;
  return buildPattern() && buildResult();
}

bool tRuleReader::readWord(const char*& p, const char* end) {
  const tDirectiveWord word = directiveAt(p, end);
  if (!makesPattern(word.directive)) return false;
  directive_ = word.directive;
  p += word.length;
  return isBlank(*p);
}

tRuleDirective tRuleReader::directive(int line) {
  return {.directive = directive_,
          .line = line,
          .text = text(),
          .pattern = &pattern_,
          .result = &result_};
}

bool tRuleReader::buildPattern() {
  while (at_ < count() && piece(at_).token != kTokResultArrow) {
    if (!buildElement(pattern_, &tRuleReader::patternMarker)) return false;
  }
  if (at_ == count()) return false;
  ++at_;
  return pattern_.isBalanced() && pattern_.head() != nullptr && pattern_.head()->isIdentifier();
}

bool tRuleReader::buildResult() {
  while (at_ < count()) {
    if (!buildElement(result_, &tRuleReader::resultMarker)) return false;
  }
  return result_.isBalanced();
}

bool tRuleReader::buildElement(tChainBuilder& chain,
                               tMatchMarker* (tRuleReader::*marker)(std::size_t&)) {
  const tPiece& first = piece(at_);
  if (first.kind == 0) return false;
  if (!first.spacing.empty()) {
    chain.addSpacing(spacingOf(first, arena_));
  }
  const bool dumb = &chain == &result_ && first.is(kKindHash) && piece(at_ + 1).isTight(kKindLess);
  if (!first.is(kKindLess) && !dumb) {
    addToken(chain, first);
    ++at_;
    return true;
  }
  std::size_t next = at_;
  tMatchMarker* const made = dumb ? dumbMarker(next) : (this->*marker)(next);
  if (made == nullptr) return false;
  chain.add(made);
  at_ = next;
  return true;
}

void tRuleReader::addToken(tChainBuilder& chain, const tPiece& token) {
  if (token.is(kKindBracketOpen)) {
    chain.openGroup();
  } else if (token.is(kKindBracketClose)) {
    chain.closeGroup();
  } else {
    chain.addLiteral(token.make());
  }
}

// Whether a name stands in brackets inside the marker that opens at `at`.
bool tRuleReader::encloses(std::size_t at, std::uint32_t before, std::uint32_t after) const {
  return piece(at + 1).isTight(before) && piece(at + 2).isName() && piece(at + 3).is(after) &&
         piece(at + 4).isTight(kKindGreater);
}

// The marker that opens at `at` and has a name between two tokens; null when there is none.
tMatchMarker* tRuleReader::enclosedMarker(eMarkerSide side, std::size_t& at) {
  const tMarkerRow* const row = enclosingMarker(
      side, [&](std::uint32_t before, std::uint32_t after) { return encloses(at, before, after); });
  if (row == nullptr) return nullptr;
  const tPiece& name = piece(at + 2);
  at += 5;
  return row->make(arena_, name.make());
}

tMatchMarker* tRuleReader::patternMarker(std::size_t& at) {
  const std::size_t open = at;
  if (tMatchMarker* const made = enclosedMarker(eMarkerSide::kPattern, at)) return made;
  const tPiece& name = piece(open + 1);
  if (!name.isName()) return nullptr;
  if (piece(open + 2).is(kKindGreater)) {
    at += 3;
    return makeMarker<tMatchMarker>(arena_, name.make());
  }
  if (piece(open + 2).is(kKindColon)) return restrictedMarker(at);
  const bool list = piece(open + 2).is(kKindComma) && piece(open + 3).token == kTokEllipsis &&
                    piece(open + 3).spacing.empty() && piece(open + 4).isTight(kKindGreater);
  if (!list) return nullptr;
  at += 5;
  return makeMarker<tMatchMarkerList>(arena_, name.make());
}

tMatchMarker* tRuleReader::restrictedMarker(std::size_t& at) {
  std::unique_ptr<tMatchMarkerRestrict> marker(
      makeMarker<tMatchMarkerRestrict>(arena_, piece(at + 1).make()));
  bool newAlternative = true;
  for (at += 3; piece(at).isName(); ++at) {
    tSpcString word = piece(at).make();
    if (!newAlternative) word.setSpacing(tString::borrow(" "));
    marker->addWord(word, newAlternative, arena_);
    newAlternative = piece(at + 1).is(kKindComma);
    if (newAlternative) ++at;
  }
  if (newAlternative || !piece(at).is(kKindGreater)) return nullptr;
  ++at;
  return marker.release();
}

tMatchMarker* tRuleReader::resultMarker(std::size_t& at) {
  const std::size_t open = at;
  const tPiece& name = piece(open + 1);
  if (piece(open + 2).is(kKindGreater)) {
    at += 3;
    if (name.isName()) return makeMarker<tResultMarker>(arena_, name.make());
    if (!name.isString()) return nullptr;
    return makeMarker<tResultMarkerRegStr>(arena_,
                                           name.make(name.text.substr(1, name.text.size() - 2)));
  }
  return enclosedMarker(eMarkerSide::kResult, at);
}

tMatchMarker* tRuleReader::dumbMarker(std::size_t& at) {
  const tPiece& name = piece(at + 2);
  if (!name.isName() || !piece(at + 3).is(kKindGreater)) return nullptr;
  at += 4;
  return makeMarker<tResultMarkerDumbStr>(arena_, name.make());
}

}  // namespace precomp
