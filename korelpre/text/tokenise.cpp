#include "korelpre/text/tokenise.h"

#include <array>
#include <string_view>
#include <utility>

#include "korelpre/text/cursor.h"
#include "ssvp40xpf/directivescanner.h"
#include "ssvp40xpf/korelpreproductions.h"
#include "ssvp40xpf/sslexdense.h"
#include "ssvp40xpf/sslexlexeme.h"

namespace precomp {

using namespace korelpre;

namespace {

constexpr std::array<std::uint8_t, 256> makeKinds() {
  std::array<std::uint8_t, 256> kinds{};
  for (std::uint32_t token = 0; token < kinds.size(); ++token) {
    kinds[token] = static_cast<std::uint8_t>(productionOf(kSymToken, token));
  }
  return kinds;
}

constexpr std::array<std::uint8_t, 256> kKinds = makeKinds();

// Passes blanks, comments and continuations; collects the blanks.
class tGap {
 public:
  tGap(const char* p, const char* end) : p_(p), end_(end) {}

  // The spacing of the token behind the gap. `betweenTokens`: there is a token in front of it.
  tString pass(bool betweenTokens) {
    const char* first = p_;
    p_ = skipBlanks(p_, end_);
    tString blanks = tString::borrow({first, static_cast<std::size_t>(p_ - first)});
    if (*p_ != ';' && *p_ != '/') return blanks;
    bool joined = false;
    while (passJoint()) {
      joined = true;
      first = p_;
      p_ = skipBlanks(p_, end_);
      blanks.append(std::string_view(first, static_cast<std::size_t>(p_ - first)));
    }
    if (joined && blanks.empty() && betweenTokens) blanks.append(' ');
    return blanks;
  }
  const char* position() const { return p_; }
  int lines() const { return lines_; }

 private:
  bool passJoint() {
    if (startsBlockComment(p_)) {
      p_ = behindBlockComment(p_, end_, lines_);
      return true;
    }
    if (*p_ != ';') return false;
    const char* after = behindContinuation(p_, end_);
    if (after == nullptr) return false;
    p_ = after;
    ++lines_;
    return true;
  }

  const char* p_;
  const char* end_;
  int lines_ = 0;
};

}  // namespace

std::uint32_t kindOfToken(std::uint32_t token) {
  if (token >= kKinds.size()) return 0;
  return kKinds[token];
}

void readToken(const SSLexLexeme& lexeme, std::uint32_t kind, std::string_view text,
               tSpcString& token) {
  token.setKind(kind);
  token.setAux(lexeme.token());
  token.setLine(lexeme.line());
  std::size_t begin = lexeme.absoluteOffset();
  std::size_t length = lexeme.length();
  if (lexeme.token() == kTokEspCh) {
    --begin;
    ++length;
  } else if (lexeme.token() == kTokString || lexeme.token() == kTokSqString) {
    --begin;
    const bool closed = text[begin] == text[begin + 1 + length];
    length += closed ? 2 : 1;
  }
  token.setText(tString::borrow(text.substr(begin, length)));
}

// Most gaps are one blank.
tString spacingOf(const SSLexLexeme& lexeme) {
  const bool oneBlank = lexeme.length() == 1 && *lexeme.text() == ' ';
  return oneBlank ? tString::borrow(" ") : tString(lexeme.text(), lexeme.length());
}

bool tokenisePlain(const char* start, const char* end, int line, tTknString& statement) {
  const SSLexDense dense = KorelPreLexClass::builtinTable().expressionList(kListStatement)->dense();
  const char* p = start;
  for (;;) {
    tGap gap(p, end);
    tString spacing = gap.pass(statement.count() > 0);
    p = gap.position();
    if (statement.count() > 0) line += gap.lines();
    if (endsCode(p)) return true;
    if (statement.count() == kMostSourceTokens) return false;
    std::uint32_t token = 0;
    const char* tokenEnd = nullptr;
    if (isQuote(*p) && p[1] != *p) {
      token = *p == '"' ? kTokString : kTokSqString;
      tokenEnd = behindClosedString(p, end);
    } else {
      const SSLexMatch match = dense.longestMatch(p, end);
      token = match.final->token;
      const std::string_view matched(p, static_cast<std::size_t>(match.end - p));
      tokenEnd = p + KorelPreLexClass::tokenLength(token, matched);
    }
    const std::string_view text(p, static_cast<std::size_t>(tokenEnd - p));
    statement.tokens().add(new tSpcString(text, std::move(spacing), kindOfToken(token), token,
                                          static_cast<std::uint32_t>(line)));
    p = tokenEnd;
  }
}

}  // namespace precomp
