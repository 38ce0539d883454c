// The directive is first cut into pieces, the tokens and the gaps in front of them, by the
// scanner's own automaton; then the pieces are put together by hand as the grammar would. Both
// parts give up at the first thing that is not plain: a comment between tokens, an escaped
// character, a directive at the end of the result, a "<" that opens no complete marker.

#include "korelpre/rulereader.h"

#include <cstring>
#include <memory>

#include "korelpre/bytekinds.h"
#include "korelpre/resultmarker.h"
#include "korelpre/tokenise.h"
#include "korelpre/tokenkinds.h"
#include "lib_base/misc.h"
#include "ssvp40xpf/korelprelex.h"
#include "ssvp40xpf/sslexdense.h"

namespace precomp {

using namespace korelpre;

namespace {

constexpr std::uint32_t kKindLess = 78;
constexpr std::uint32_t kKindGreater = 76;
constexpr std::uint32_t kKindHash = 84;
constexpr std::uint32_t kKindStar = 90;
constexpr std::uint32_t kKindColon = 111;
constexpr std::uint32_t kKindFileName = 124;

// Longer directives are left to the grammar.
constexpr std::size_t kMostPieces = 4096;

struct tDirectiveWord {
  std::string_view word;
  bool command;
  bool abbreviate;
};

constexpr tDirectiveWord kWords[] = {
    {"#command", true, true},
    {"#xcommand", true, false},
    {"#translate", false, true},
    {"#xtranslate", false, false},
};

bool isRuleToken(std::uint32_t kind) {
  return kind != 0 && kind != kKindFileName && kind <= kKindKeyword &&
         (kind < kKindEscaped || kind > kKindIgnoreComment);
}

bool endsDirective(const char* p) {
  return *p == '\r' || *p == '\n' || ((*p == '/' || *p == '&') && p[0] == p[1]);
}

const char* lineFeedFrom(const char* p, const char* end) {
  return static_cast<const char*>(std::memchr(p, '\n', static_cast<std::size_t>(end - p)));
}

}  // namespace

bool tRuleReader::tPiece::isName() const {
  return kind == kKindIdentifier || kind == kKindKeyword;
}

bool tRuleReader::tPiece::isString() const {
  return kind == kKindString || kind == kKindSingleQuoted;
}

bool tRuleReader::read(const char* start, const char* end, tMarkerArena* arena) {
  const char* p = skipBlanks(start, end);
  const char* const directive = p;
  if (!readWord(p, end) || !readPieces(p, end)) return false;
  const char* const last = pieces_.back().text.data() + pieces_.back().text.size();
  text_ = {directive, static_cast<std::size_t>(last - directive)};
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
  const std::string_view rest(p, static_cast<std::size_t>(end - p));
  for (const tDirectiveWord& entry : kWords) {
    if (!startsWithNoCase(rest, entry.word)) continue;
    p += entry.word.size();
    command_ = entry.command;
    abbreviate_ = entry.abbreviate;
    return isBlank(*p);
  }
  return false;
}

bool tRuleReader::readPieces(const char* p, const char* end) {
  pieces_.clear();
  joinedGaps_.Destroy();
  lines_ = 1;
  for (;;) {
    tPiece piece;
    if (!readGap(p, end, piece)) return false;
    if (endsDirective(p)) break;
    if (pieces_.size() == kMostPieces || !readPiece(p, end, piece)) return false;
    pieces_.push_back(piece);
  }
  const char* feed = lineFeedFrom(p, end);
  if (feed == nullptr || pieces_.empty()) return false;
  lineEnd_ = feed + 1;
  return true;
}

// Passes blanks and continuations.
bool tRuleReader::readGap(const char*& p, const char* end, tPiece& piece) {
  const char* const gap = p;
  p = skipBlanks(p, end);
  piece.spacing = {gap, static_cast<std::size_t>(p - gap)};
  if (*p != ';') return true;
  tString blanks(piece.spacing);
  bool joined = false;
  while (*p == ';') {
    const char* after = skipBlanks(p + 1, end);
    if (!endsDirective(after)) break;
    after = lineFeedFrom(after, end);
    if (after == nullptr || after + 1 == end) return false;
    p = skipBlanks(after + 1, end);
    blanks.append({after + 1, static_cast<std::size_t>(p - after - 1)});
    ++lines_;
    joined = true;
  }
  if (!joined) return true;
  if (blanks.empty()) blanks.append(' ');
  joinedGaps_.add(new tString(blanks));
  piece.spacing = joinedGaps_.last()->view();
  return true;
}

bool tRuleReader::readPiece(const char*& p, const char* end, tPiece& piece) {
  const char* tokenEnd = nullptr;
  if (*p == '\\' || (*p == '/' && p[1] == '*')) return false;
  if ((*p == '"' || *p == '\'') && p[1] != *p) {
    tokenEnd = p + 1;
    while (*tokenEnd != *p) {
      if (*tokenEnd == '\r' || *tokenEnd == '\n') return false;
      ++tokenEnd;
    }
    ++tokenEnd;
    piece.token = *p == '"' ? kTokString : kTokSqString;
  } else {
    static const SSLexDense kDense =
        KorelPreLexClass::builtinTable().expressionList(kListStatement)->dense();
    const SSLexMatch match = kDense.longestMatch(p, end);
    if (match.final == nullptr || match.final->drops() || match.final->switchesList()) return false;
    piece.token = match.final->token;
    const std::string_view matched(p, static_cast<std::size_t>(match.end - p));
    tokenEnd = p + KorelPreLexClass::tokenLength(piece.token, matched);
  }
  piece.kind = kindOfToken(piece.token);
  const bool inMarkers = piece.token == kTokResultArrow || piece.token == kTokEllipsis;
  if (!inMarkers && !isRuleToken(piece.kind)) return false;
  piece.text = {p, static_cast<std::size_t>(tokenEnd - p)};
  p = tokenEnd;
  return true;
}

bool tRuleReader::buildPattern() {
  while (at_ < pieces_.size() && pieces_[at_].token != kTokResultArrow) {
    if (!buildElement(pattern_, &tRuleReader::patternMarker)) return false;
  }
  if (at_ == pieces_.size()) return false;
  ++at_;
  return pattern_.isBalanced() && pattern_.head() != nullptr && pattern_.head()->isIdentifier();
}

bool tRuleReader::buildResult() {
  while (at_ < pieces_.size()) {
    if (!buildElement(result_, &tRuleReader::resultMarker)) return false;
  }
  return result_.isBalanced();
}

bool tRuleReader::buildElement(tChainBuilder& chain,
                               tMatchMarker* (tRuleReader::*marker)(std::size_t&)) {
  const tPiece& first = pieces_[at_];
  if (first.kind == 0) return false;
  if (!first.spacing.empty()) {
    chain.addSpacing(spacingOf(first));
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

tString tRuleReader::spacingOf(const tPiece& piece) {
  const std::string_view spacing = piece.spacing;
  const bool inText =
      text_.data() <= spacing.data() && spacing.data() < text_.data() + text_.size();
  if (inText) return tString::borrow(spacing);
  return arena_ != nullptr ? tString::borrow(arena_->join(spacing, {})) : tString(spacing);
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

tMatchMarker* tRuleReader::patternMarker(std::size_t& at) {
  const std::size_t open = at;
  if (encloses(open, kKindParenOpen, kKindParenClose)) {
    at += 5;
    return makeMarker<tMatchMarkerExt>(arena_, piece(open + 2).make());
  }
  if (encloses(open, kKindStar, kKindStar)) {
    at += 5;
    return makeMarker<tMatchMarkerWild>(arena_, piece(open + 2).make());
  }
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
  at += 5;
  if (encloses(open, kKindParenOpen, kKindParenClose)) {
    return makeMarker<tResultMarkerSmartStr>(arena_, piece(open + 2).make());
  }
  if (encloses(open, kKindBraceOpen, kKindBraceClose)) {
    return makeMarker<tResultMarkerBlock>(arena_, piece(open + 2).make());
  }
  if (encloses(open, kKindDot, kKindDot))
    return makeMarker<tResultMarkerBool>(arena_, piece(open + 2).make());
  return nullptr;
}

tMatchMarker* tRuleReader::dumbMarker(std::size_t& at) {
  const tPiece& name = piece(at + 2);
  if (!name.isName() || !piece(at + 3).is(kKindGreater)) return nullptr;
  at += 4;
  return makeMarker<tResultMarkerDumbStr>(arena_, name.make());
}

}  // namespace precomp
