// How far a regular or list marker reaches.
//
// The scan goes from token to token until something ends the capture: a ";", a comma (for a regular
// marker), or a token that starts what may follow in the pattern, which the stop test tells. Inside
// brackets nothing of the kind is looked for. What was found is then cut to one expression by the
// language's parser, unless it is a single token or the rest of the statement at the pattern's end.
//
// The scan moves the statement's own cursor, which the stop test looks at and may move.
// Note [wild stop]
// A wild marker behind a regular one moves the cursor to the last token when it is asked whether it
// starts there. The capture then reaches up to that token and the expression check cuts it.

#include <algorithm>

#include "korelpre/rules/match.h"
#include "korelpre/text/exprbounds.h"
#include "korelpre/text/tokenkinds.h"
#include "lib_base/misc.h"

namespace precomp {

namespace {

char lastByte(const tSpcString& token) {
  return token.empty() ? '\0' : token.data()[token.size() - 1];
}

bool isByte(const tSpcString& token, char c) {
  return token.size() == 1 && token.data()[0] == c;
}

// A function of that name must not be mistaken for the word of a rule.
bool isCallOfLeft(tTknString& t) {
  const tSpcString& token = t.curToken();
  return token.kind() == kKindIdentifier && token.size() == 4 && equalNoCase(token, "LEFT") &&
         t.nextToken().kind() == kKindParenOpen;
}

bool startsHere(tMatchMarker* marker, tTknString& t) {
  return marker != nullptr && t.step() && marker->checkMatch(&t);
}

constexpr std::uint32_t kStepsPerParsedToken = 16;

}  // namespace

// Named as a class so that markers can let it at their state.
class tExpressionScan {
 public:
  tExpressionScan(tMatchMarker& marker, tTknString& t, tMatchMarker* parent)
      : marker_(marker), t_(t), parent_(parent) {}

  bool run() {
    first_ = t_.curTokenIdx();
    if (first_ < 0) return fail();
    if (first_ == t_.count() - 1) return takeLastToken();
    switch (scan()) {
      case kAtEnd:
        return takeToEnd();
      case kAtSemicolon:
        return check(t_.curTokenIdx() - 1);
      default:
        return takeUpToCursor();
    }
  }

 private:
  enum eEnd { kAtEnd, kAtSemicolon, kAtStop };

  bool fail() {
    marker_.setCapture(-1, -1);
    return false;
  }

  bool succeed(int last) {
    marker_.setCapture(first_, last);
    t_.curTokenIdx(last);
    if (isByte(t_.getToken(first_), '&')) marker_.setIsMacro(&t_);
    return true;
  }

  bool parentStops() {
    return parent_ != nullptr &&
           (searchOpt(&t_, parent_->groups()) || startsHere(parent_->next(), t_));
  }
  bool ownStops() { return searchOpt(&t_, marker_.groups()) || startsHere(marker_.next(), t_); }

  bool takeLastToken() {
    if (!parentStops() && !ownStops()) return succeed(first_);
    t_.nextTokenIdx();
    return fail();
  }

  eEnd scan() {
    depth_ = 0;
    for (; t_.curTokenIdx() >= 0; t_.nextTokenIdx()) {
      if (!t_.step()) return kAtStop;
      const tSpcString& token = t_.curToken();
      if (token.kind() == kKindSemicolon) return kAtSemicolon;
      if (isCallOfLeft(t_)) continue;
      if (token.kind() == kKindComma && marker_.isList()) continue;
      if (lastByte(token) == '(') {
        if (parentStops() || ownStops()) {
          if (endsBefore(token)) return kAtStop;
          continue;
        }
        ++depth_;
      } else if (depth_ == 0) {
        if (endsBefore(token)) return kAtStop;
        continue;
      }
      passBracket(token);
    }
    return kAtEnd;
  }

  void passBracket(const tSpcString& token) {
    const char last = lastByte(token);
    if (isByte(token, ')') || isByte(token, '}') || isByte(token, ']')) {
      --depth_;
    } else if (last == '{' || last == '[') {
      ++depth_;
    }
  }

  // Outside of brackets: whether the capture ends before the token; otherwise it is taken.
  bool endsBefore(const tSpcString& token) {
    const char last = lastByte(token);
    if (last == '{' || last == '[') {
      depth_ = 1;
      return false;
    }
    if (token.kind() == kKindComma && !marker_.isList()) return true;
    if (parentStops()) return true;
    if (parent_ == nullptr && t_.curTokenIdx() == first_) return false;
    return ownStops();
  }

  bool takeToEnd() {
    const int last = t_.count() - 1;
    const bool endsPattern =
        parent_ == nullptr && marker_.next() == nullptr && !marker_.hasGroups();
    return endsPattern && first_ < last ? succeed(last) : check(last);
  }

  // See note [wild stop].
  bool takeUpToCursor() {
    const int last = t_.curTokenIdx() - 1;
    if (last < first_) {
      if (!marker_.mayBeEmpty_) return fail();
      t_.prevTokenIdx();
      marker_.setCapture(first_, first_ - 1);
      return true;
    }
    return last == first_ ? succeed(last) : check(last);
  }

  bool check(int last) {
    tRuleContext* const context = marker_.rule()->context();
    if (last >= first_ && context != nullptr) {
      const int end = last;
      validateExpr(context->KorelYacc(), &t_, first_, last);
      const int parsed = std::min(last + 1, end) - first_ + 1;
      if (!t_.step(static_cast<std::uint32_t>(parsed) * kStepsPerParsedToken)) return fail();
    }
    if (last >= first_) return succeed(last);
    t_.setRawCursor(last);
    return fail();
  }

  tMatchMarker& marker_;
  tTknString& t_;
  tMatchMarker* parent_;
  int first_ = -1;
  int depth_ = 0;
};

// Kept on purpose: a capture that starts at the first token of a statement counts as none. Every
// pattern begins with a literal, so there is none.
bool tMatchMarker::match(tTknString* t, tMatchMarker* parent) {
  clearIsMacro();
  return tExpressionScan(*this, *t, parent).run() && first() != 0;
}

}  // namespace precomp
