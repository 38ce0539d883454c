// Most lines of a program are statements without any surprise for the directive scanner. This
// scan finds out which: it follows strings, comments and continuations to the end of the logical
// line and stops at anything that could make the scanner or the directive grammar do more than
// turn the line into the tokens one sees: a directive, an embedded SQL block, a character that is
// dropped or starts no token, a quote that is not closed. It never calls such a line plain; what
// it calls kOther in vain only costs time.

#include "korelpre/text/linescan.h"

#include <array>
#include <cstring>
#include <string_view>

#include "korelpre/text/byteset.h"
#include "korelpre/text/cursor.h"
#include "lib_base/misc.h"

namespace precomp {

namespace {

// What a byte can do to a line; all others are ordinary.
enum eByte : std::uint8_t {
  kOrdinary,
  kLineEnd,  // a carriage return or a line feed
  kQuote,
  kSlash,      // may open a comment
  kAmpersand,  // may open a comment
  kSemicolon,  // may continue the line
  kHash,       // may open a directive
  kDot,        // may begin "..."
  kGreater,    // may end "=>"
  kPercent,    // may open an SQL marker
  kLetterQ,    // may be the one of "beginsql" and "endsql"
  kStrange,    // dropped by the scanner, an escape, or an error
};

constexpr std::array<eByte, 256> makeBytes() {
  std::array<eByte, 256> bytes{};
  for (unsigned c = 0; c < 256; ++c) {
    if (c < 0x20 || c >= 0x7F) bytes[c] = kStrange;
  }
  bytes['\t'] = kOrdinary;
  bytes['\r'] = bytes['\n'] = kLineEnd;
  bytes['"'] = bytes['\''] = kQuote;
  bytes['/'] = kSlash;
  bytes['&'] = kAmpersand;
  bytes[';'] = kSemicolon;
  bytes['#'] = kHash;
  bytes['.'] = kDot;
  bytes['>'] = kGreater;
  bytes['%'] = kPercent;
  bytes['q'] = bytes['Q'] = kLetterQ;
  bytes['`'] = bytes['~'] = bytes['\\'] = kStrange;
  return bytes;
}

constexpr std::array<eByte, 256> kBytes = makeBytes();

constexpr tByteSet stopsOf(const std::array<eByte, 256>& bytes) {
  std::array<bool, 256> stops{};
  for (unsigned c = 0; c < 256; ++c) stops[c] = bytes[c] != kOrdinary;
  return tByteSet(stops);
}

constexpr tByteSet kStops = stopsOf(kBytes);

eByte byteAt(const char* p) {
  return kBytes[static_cast<unsigned char>(*p)];
}

bool startsSqlWord(const char* q, const char* start, const char* end) {
  const auto endsWith = [&](std::string_view word) {
    const std::size_t before = word.size() - 2;  // of "ql"
    return static_cast<std::size_t>(q - start) >= before && end - q > 1 &&
           equalNoCase({q - before, word.size()}, word);
  };
  return endsWith("beginsql") || endsWith("endsql");
}

// Whether a line holds nothing from `p` on but a continuation, which then joins nothing.
bool isLoneContinuation(const char* p, const char* end) {
  if (*p != ';') return false;
  const char* const next = skipBlanks(p + 1, end);
  return endsCode(next) || (*next == ';' && startsLineComment(skipBlanks(next + 1, end)));
}

bool startsSqlMarker(const char* p) {
  return std::strchr("EXOTNextotn", p[1]) != nullptr;
}

class tLineScan {
 public:
  tLineScan(const char* start, const char* end) : start_(start), end_(end), p_(start) {}

  [[gnu::always_inline]] tScannedLine run() {
    const bool content = passLeadingBlanks();
    if (*p_ == '#' && isLetter(p_[1])) return other();
    if (!content) return lineDone(eLineKind::kEmpty);
    before_ = lines_ - 1;
    tStops<false> stops(kStops, p_, end_);
    do {
      p_ = stops.next();
    } while (passSpecial(stops));
    return strange_ ? other() : lineDone(eLineKind::kPlain);
  }

 private:
  tScannedLine other() const { return {p_, 1, 0, eLineKind::kOther}; }
  // p_ stands at what ends the statement: a line end or a line comment.
  tScannedLine lineDone(eLineKind kind) {
    if (strange_) return other();
    return {lineFeedFrom(p_, end_) + 1, lines_, before_, kind};
  }

  // Passes blanks and block comments at the start; false when nothing that counts follows.
  bool passLeadingBlanks() {
    p_ = skipBlanks(p_, end_);
    if (*p_ == '*') return false;
    while (startsBlockComment(p_) && passBlockComment()) p_ = skipBlanks(p_, end_);
    return !strange_ && !endsCode(p_) && !isLoneContinuation(p_, end_);
  }

  // Passes the special byte at p_ and what belongs to it. False when the statement ends there, or
  // when something strange was met.
  [[gnu::always_inline]] bool passSpecial(tStops<false>& stops) {
    switch (byteAt(p_)) {
      case kLineEnd:
        return false;
      case kQuote: {
        const char quote = *p_;
        do {
          p_ = stops.next();
        } while (*p_ != quote && !isLineEnd(*p_));
        return *p_ == quote || stop();
      }
      case kSlash:
        if (p_[1] == '*') return passBlockComment() && goOn(stops);
        return p_[1] != '/';
      case kAmpersand:
        return p_[1] != '&';
      case kSemicolon:
        return passSemicolon() && goOn(stops);
      case kHash:
        return !isLetter(p_[1]) || stop();
      case kDot:
        return p_[1] != '.' || stop();
      case kGreater:
        return p_ == start_ || p_[-1] != '=' || stop();
      case kPercent:
        return !startsSqlMarker(p_) || stop();
      case kLetterQ:
        return !startsSqlWord(p_, start_, end_) || stop();
      default:
        return stop();
    }
  }

  bool passBlockComment() {
    const char* after = behindBlockComment(p_, end_, lines_);
    return after != end_ ? goTo(after) : stop();
  }

  // Only the scanner judges two semicolons in a row and a continuation at the end of the text.
  bool passSemicolon() {
    const char* after = behindContinuation(p_, end_);
    if (after == nullptr) return *skipBlanks(p_ + 1, end_) == ';' ? stop() : goTo(p_ + 1);
    if (after == end_) return stop();
    ++lines_;
    return goTo(after);
  }

  bool goTo(const char* p) {
    p_ = p;
    return true;
  }
  bool goOn(tStops<false>& stops) const {
    stops.goTo(p_);
    return true;
  }
  bool stop() {
    strange_ = true;
    return false;
  }

  const char* start_;
  const char* end_;
  const char* p_;
  int lines_ = 1;
  int before_ = 0;
  bool strange_ = false;
};

}  // namespace

tScannedLine scanLine(const char* start, const char* end) {
  return tLineScan(start, end).run();
}

tSkippedLine scanSkippedLine(const char* start, const char* end) {
  tSkippedLine line{end, 1, eDirective::kNone};
  const char* p = skipBlanks(start, end);
  if (p < end && *p == '*') p = lineFeedFrom(p, end);
  while (p < end && startsBlockComment(p)) {
    p = skipBlanks(behindBlockComment(p, end, line.lines), end);
  }
  if (p < end && isLoneContinuation(p, end)) p = lineFeedFrom(p, end);
  if (p < end && *p == '#') line.directive = conditionalAt(p, end).directive;
  tStops<false> stops(kStops, p, end);
  while (p < end && *(p = stops.next()) != '\n') {
    switch (byteAt(p)) {
      case kQuote: {
        const char* after = behindString(p);
        p = after != nullptr ? after : lineFeedFrom(p, end);
        break;
      }
      case kSlash:
        if (p[1] == '*') {
          p = behindBlockComment(p, end, line.lines);
          break;
        }
        [[fallthrough]];
      case kAmpersand:
        p = startsLineComment(p) ? lineFeedFrom(p, end) : p + 1;
        break;
      case kSemicolon: {
        const char* after = behindContinuation(p, end);
        if (after != nullptr) {
          ++line.lines;
          p = after;
        } else {
          ++p;
        }
        break;
      }
      default:
        // What stands behind a backslash is an ordinary character.
        if (*p == '\\' && !isLineEnd(p[1])) ++p;
        ++p;
    }
    stops.goTo(p);
  }
  if (p < end) line.end = p + 1;
  return line;
}

}  // namespace precomp
