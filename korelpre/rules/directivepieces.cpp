#include "korelpre/rules/directivepieces.h"

#include "korelpre/text/cursor.h"
#include "korelpre/text/tokenise.h"
#include "korelpre/text/tokenkinds.h"
#include "ssvp40xpf/directivescanner.h"
#include "ssvp40xpf/korelpreproductions.h"
#include "ssvp40xpf/sslexdense.h"

namespace precomp {

using namespace korelpre;

namespace {

// Longer directives are left to the grammar.
constexpr std::size_t kMostPieces = 4096;

}  // namespace

bool tDirectivePieces::tPiece::isName() const {
  return kind == kKindIdentifier || kind == kKindKeyword;
}

bool tDirectivePieces::tPiece::isString() const {
  return kind == kKindString || kind == kKindSingleQuoted;
}

bool tDirectivePieces::readPieces(const char* directive, const char* p, const char* end) {
  const char* last = p;
  pieces_.clear();
  joinedGaps_.Destroy();
  lines_ = 1;
  for (;;) {
    tPiece piece;
    const int line = lines_;
    if (!readGap(p, end, piece)) return false;
    if (endsCode(p)) {
      if (lines_ != line) return false;
      break;
    }
    if (pieces_.size() == kMostPieces || !readPiece(p, end, piece)) return false;
    piece.line = lines_ - 1;
    pieces_.push_back(piece);
    last = p;
  }
  const char* feed = lineFeedFrom(p, end);
  if (feed == end) return false;
  lineEnd_ = feed + 1;
  text_ = {directive, static_cast<std::size_t>(last - directive)};
  return true;
}

tString tDirectivePieces::spacingOf(const tPiece& piece, tMarkerArena* arena) const {
  const char* const spacing = piece.spacing.data();
  const bool inText = text_.data() <= spacing && spacing < text_.data() + text_.size();
  if (inText) return tString::borrow(piece.spacing);
  return arena != nullptr ? tString::borrow(arena->join(piece.spacing, {}))
                          : tString(piece.spacing);
}

// Passes blanks and continuations.
bool tDirectivePieces::readGap(const char*& p, const char* end, tPiece& piece) {
  const char* const gap = p;
  p = skipBlanks(p, end);
  piece.spacing = {gap, static_cast<std::size_t>(p - gap)};
  if (*p != ';') return true;
  tString blanks(piece.spacing);
  bool joined = false;
  while (*p == ';') {
    const char* after = behindContinuation(p, end);
    if (after == nullptr) break;
    if (after == end) return false;
    p = skipBlanks(after, end);
    blanks.append({after, static_cast<std::size_t>(p - after)});
    ++lines_;
    joined = true;
  }
  if (!joined) return true;
  if (blanks.empty()) blanks.append(' ');
  joinedGaps_.add(new tString(blanks));
  piece.spacing = joinedGaps_.last()->view();
  return true;
}

bool tDirectivePieces::readPiece(const char*& p, const char* end, tPiece& piece) {
  const char* tokenEnd = nullptr;
  if (*p == '\\' || startsBlockComment(p)) return false;
  if (isQuote(*p) && p[1] != *p) {
    tokenEnd = behindString(p);
    if (tokenEnd == nullptr) return false;
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
  if (!inMarkers && !isRuleTokenProduction(piece.kind)) return false;
  piece.text = {p, static_cast<std::size_t>(tokenEnd - p)};
  p = tokenEnd;
  return true;
}

}  // namespace precomp
