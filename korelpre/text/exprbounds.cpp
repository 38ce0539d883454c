// An expression is bounded by what the language's parser makes of its text: the tokens, printed one
// after the other in parentheses. The parser fails at the first lexeme that cannot continue the
// list of expressions, and the place of that lexeme tells the token in front of which to cut.
//
// Note [one character more]
// A lexeme belongs to the token that begins where it begins or one character before it, because the
// lexeme of a string begins behind the quote. Of two such tokens the first counts: in `x[1]y` the
// name fails, and as "]" is one character long and nothing stands between, the cut is before "]".
//
// validateExpr gets the same answer without the text. The scanner's automaton runs over the pieces
// of the text where they lie, in the tokens (a lexeme may well begin in one token and end in
// another), and the parser's table is followed without lexemes and stack elements. Neither
// allocates. A piece is the spacing or the text of a token; the last one is the ")" and the line
// feed that compile() appends. The first failure settles the end, and the text is finite.
//
// Most captures of several tokens are sums, lists and calls of names and literals. A look at the
// kinds of their tokens tells that they are whole, and neither scanner nor parser is asked.
#include "korelpre/text/exprbounds.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "korelpre/text/cursor.h"
#include "korelpre/text/statementopening.h"
#include "korelpre/text/tokenkinds.h"
#include "ssvp40xpf/sslexdense.h"

namespace precomp {

namespace {

constexpr std::string_view kTail = ")\n";

/// The end that an unbalanced ")" sets: true when there is one, `last` is then in front of it.
bool endsAtParenthesis(tTknString& tokens, int first, int& last) {
  int depth = 0;
  for (int i = first; i <= last; ++i) {
    const std::uint32_t kind = tokens.getToken(i).kind();
    if (kind == kKindParenOpen) ++depth;
    if (kind == kKindParenClose && --depth < 0) {
      last = i - 1;
      return true;
    }
  }
  return false;
}

bool isNumber(std::string_view text) {
  const std::string_view fraction = text.substr(std::min(text.find('.'), text.size()));
  const std::string_view whole = text.substr(0, text.size() - fraction.size());
  return !whole.empty() && std::all_of(whole.begin(), whole.end(), isDigit) &&
         (fraction.empty() ||
          (fraction.size() > 1 && std::all_of(fraction.begin() + 1, fraction.end(), isDigit)));
}

bool isClosedString(std::string_view text) {
  return text.size() > 1 && isQuote(text[0]) && text.find(text[0], 1) == text.size() - 1;
}

/// Whether the token is a whole term, whatever stands beside it.
bool isTerm(const tSpcString& token) {
  const std::string_view text = token;
  switch (token.kind()) {
    case kKindIdentifier:
      return isName(text) && isNameStart(text[0]);
    case kKindNumber:
      return isNumber(text);
    case kKindString:
    case kKindSingleQuoted:
      return isClosedString(text);
    default:
      return false;
  }
}

/// Whether the token is one of "+", "-", "*", "/" and ",".
bool joinsTerms(std::string_view token) {
  return token.size() == 1 && std::string_view("+-*/,").find(token[0]) != std::string_view::npos;
}

/// Whether the tokens are terms and calls with something that joins them in between.
bool isPlain(tTknString& tokens, int first, int last) {
  int depth = 0;
  bool open = true;  // a term is wanted
  for (int i = first; i <= last; ++i) {
    const tSpcString& token = tokens.getToken(i);
    if (open) {
      if (!isTerm(token)) return false;
      open = false;
    } else if (token.kind() == kKindParenClose) {
      if (--depth < 0) return false;
    } else if (token.kind() == kKindParenOpen) {
      if (tokens.getToken(i - 1).kind() != kKindIdentifier || token.size() != 1) return false;
      ++depth;
      open = true;
    } else {
      if (!joinsTerms(token)) return false;
      open = true;
    }
  }
  return !open && depth == 0;
}

/// A place in the text that the tokens `first` to `last` would make.
class tPlace {
 public:
  tPlace(tTknString& tokens, int first, int last) : tokens_(&tokens), token_(first), last_(last) {
    enter(spacing());
  }

  /// Goes on to the next piece with characters when this one has none left. False at the end.
  bool settle() { return p_ != end_ || nextPiece(); }
  unsigned char character() const { return static_cast<unsigned char>(*p_); }
  void step() { ++p_; }
  /// Passes characters of this piece that keep the automaton in a state.
  void stepWithin(const SSLexDense& dense, unsigned state) {
    while (p_ != end_ && dense.next(state, character()) == state) ++p_;
  }
  /// Passes blanks in this piece.
  void skipBlanks() { p_ = precomp::skipBlanks(p_, end_); }
  bool inTail() const { return token_ > last_; }
  /// The token in front of which to cut for a lexeme that begins here; past the last one when the
  /// lexeme belongs to no token. See note [one character more].
  int tokenToCut(int first) const;

 private:
  std::string_view spacing() const {
    return token_ <= last_ ? tokens_->getToken(token_).spacing().view() : std::string_view();
  }
  std::string_view text() const {
    return token_ <= last_ ? tokens_->getToken(token_).view() : kTail;
  }
  void enter(std::string_view piece) {
    p_ = piece.data();
    end_ = p_ + piece.size();
  }
  bool nextPiece();

  tTknString* tokens_;
  const char* p_ = nullptr;
  const char* end_ = nullptr;
  int token_;  // beyond last_ in the tail
  int last_;
  bool inSpacing_ = true;
};

bool tPlace::nextPiece() {
  do {
    if (inSpacing_) {
      enter(text());
    } else if (token_ > last_) {
      return false;
    } else {
      ++token_;
      enter(spacing());
    }
    inSpacing_ = !inSpacing_;
  } while (p_ == end_);
  return true;
}

int tPlace::tokenToCut(int first) const {
  // Where the text of a token begins, seen from this place.
  std::ptrdiff_t begin = inSpacing_ ? end_ - p_ : text().data() - p_;
  int token = token_;
  while (token > first) {
    const std::ptrdiff_t size =
        static_cast<std::ptrdiff_t>(tokens_->getToken(token - 1).size()) +
        (token <= last_ ? static_cast<std::ptrdiff_t>(tokens_->getToken(token).spacing().size())
                        : 0);
    if (begin - size < -1) break;
    begin -= size;
    --token;
  }
  return begin == 0 || begin == -1 ? token : last_ + 1;
}

/// Makes lexemes of the text behind a place.
class tPieceScanner {
 public:
  explicit tPieceScanner(const tPlace& start)
      : table_(ALexClass::builtinTable()), dense_(list(korel::kListStatement)), at_(start) {}

  /// The next lexeme's token; kNone at the end and at a character that begins no lexeme.
  std::uint32_t next();
  /// Where that lexeme begins.
  const tPlace& lexeme() const { return lexeme_; }

 private:
  SSLexDense list(unsigned index) const { return table_.expressionList(index)->dense(); }
  const SSLexFinal* longestMatch();
  const SSLexFinal* lastAccepted();

  const SSLexTable& table_;
  SSLexDense dense_;
  tPlace at_;
  tPlace lexeme_ = at_;
  bool inStatement_ = true;
};

std::uint32_t tPieceScanner::next() {
  for (;;) {
    if (inStatement_) at_.skipBlanks();
    if (!at_.settle()) return sstable::kNone;
    lexeme_ = at_;
    const SSLexFinal* const final = longestMatch();
    if (final == nullptr) return sstable::kNone;
    if (final->switchesList()) {
      // Only the first list leads to others, and they only lead back.
      dense_ = list(final->pushes() ? final->list : korel::kListStatement);
      inStatement_ = final->pops();
    }
    if (!final->drops()) return final->token;
  }
}

const SSLexFinal* tPieceScanner::longestMatch() {
  unsigned state = 0;
  while (at_.settle()) {
    const unsigned entered = dense_.next(state, at_.character());
    if (entered == sstable::kNoState) break;
    at_.step();
    if (entered == state) at_.stepWithin(dense_, state);
    state = entered;
  }
  const SSLexFinal& final = dense_.final(state);
  return final.accepts() && state != 0 ? &final : lastAccepted();
}

const SSLexFinal* tPieceScanner::lastAccepted() {
  const SSLexFinal* found = nullptr;
  tPlace here = lexeme_;
  unsigned state = 0;
  while (here.settle()) {
    state = dense_.next(state, here.character());
    if (state == sstable::kNoState) break;
    here.step();
    if (!dense_.final(state).accepts()) continue;
    found = &dense_.final(state);
    at_ = here;
  }
  return found;
}

}  // namespace

void validateExpr(AYaccClass* parser, tTknString* tokens, int& first, int& last) {
  if (isPlain(*tokens, first, last)) return;
  if (endsAtParenthesis(*tokens, first, last)) return;
  SSYaccWalk& walk = parser->walk();
  walk.restart();
  walk.take(korel::kTokLeftParen);
  tPieceScanner scanner(tPlace(*tokens, first, last));
  for (;;) {
    const std::uint32_t token = scanner.next();
    if (token == sstable::kNone) return;
    // Behind the tokens only a failure that would cut one off is of interest.
    if (scanner.lexeme().inTail() && scanner.lexeme().tokenToCut(first) > last) return;
    if (walk.take(token)) continue;
    const int cut = scanner.lexeme().tokenToCut(first);
    if (cut <= last) last = cut - 1;
    return;
  }
}

void validateExprByText(AYaccClass* parser, tTknString* tokens, int& first, int& last) {
  if (endsAtParenthesis(*tokens, first, last)) return;
  tString& text = parser->textBuffer();
  text.clear();
  text.append('(');
  std::vector<std::size_t> begins;
  for (int i = first; i <= last; ++i) {
    const tSpcString& token = tokens->getToken(i);
    text.append(token.spacing());
    begins.push_back(text.size());
    text.append(token);
  }
  text.append(')');
  int line = 0;
  int offset = 0;
  if (parser->compile(text.view(), line, offset)) return;
  for (std::size_t i = 0; i < begins.size(); ++i) {
    const int begin = static_cast<int>(begins[i]);
    if (begin != offset && begin != offset - 1) continue;
    last = first + static_cast<int>(i) - 1;
    return;
  }
}

}  // namespace precomp
