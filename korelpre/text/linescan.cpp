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

eByte byteAt(const char* p) {
  return kBytes[static_cast<unsigned char>(*p)];
}

const char* lineFeedFrom(const char* p, const char* end) {
  const void* found = std::memchr(p, '\n', static_cast<std::size_t>(end - p));
  return found != nullptr ? static_cast<const char*>(found) : end;
}

bool startsLineComment(const char* p, const char* end) {
  return end - p > 1 && p[0] == p[1] && (*p == '/' || *p == '&');
}

// Behind the "*/" of the block comment that opens at `p`, or `end` when nothing closes it; counts
// the line feeds passed.
const char* behindBlockComment(const char* p, const char* end, int& lines) {
  for (p += 2; p < end; ++p) {
    if (*p == '\n') {
      ++lines;
    } else if (*p == '*' && end - p > 1 && p[1] == '/') {
      return p + 2;
    }
  }
  return end;
}

// Behind the closing quote of the string that opens at `p`, or null when the line ends first.
const char* behindString(const char* p) {
  const char quote = *p;
  for (++p; *p != quote; ++p) {
    if (*p == '\n' || *p == '\r') return nullptr;
  }
  return p + 1;
}

// What a ";" at `p` does: returns behind the line feed when the line continues, `p` when it does
// not, null for the forms that only the scanner judges.
const char* behindContinuation(const char* p, const char* end) {
  const char* after = skipBlanks(p + 1, end);
  if (after == end) return nullptr;
  if (*after == ';') return nullptr;
  if (*after != '\r' && *after != '\n' && !startsLineComment(after, end)) return p;
  after = lineFeedFrom(after, end);
  return after == end ? nullptr : after + 1;
}

bool startsSqlWord(const char* q, const char* start, const char* end) {
  const auto endsWith = [&](std::string_view word) {
    const std::size_t before = word.size() - 2;  // of "ql"
    return static_cast<std::size_t>(q - start) >= before && end - q > 1 &&
           equalNoCase({q - before, word.size()}, word);
  };
  return endsWith("beginsql") || endsWith("endsql");
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
    while (passOrdinary()) {
    }
    return strange_ ? other() : lineDone(eLineKind::kPlain);
  }

 private:
  tScannedLine other() const { return {p_, 1, 0, eLineKind::kOther}; }
  // p_ stands at what ends the statement: a line end or a line comment.
  tScannedLine lineDone(eLineKind kind) {
    if (strange_) return other();
    return {lineFeedFrom(p_, end_) + 1, lines_, before_, kind};
  }

  // Passes blanks, block comments and continuations at the start; false when only a comment or
  // nothing follows.
  bool passLeadingBlanks() {
    p_ = skipBlanks(p_, end_);
    if (*p_ == '*') return false;
    while (passLeadingJoint()) p_ = skipBlanks(p_, end_);
    return !strange_ && byteAt(p_) != kLineEnd && !startsLineComment(p_, end_);
  }

  bool passLeadingJoint() {
    if (*p_ == '/' && p_[1] == '*') {
      const char* after = behindBlockComment(p_, end_, lines_);
      return after != end_ ? goTo(after) : stop();
    }
    if (*p_ != ';') return false;
    const char* at = p_;
    return passSemicolon() && p_ != at + 1;
  }

  // Passes ordinary bytes and one special one. False when the statement ends at p_, or when
  // something strange was met.
  [[gnu::always_inline]] bool passOrdinary() {
    while (byteAt(p_) == kOrdinary) ++p_;
    switch (byteAt(p_)) {
      case kLineEnd:
        return false;
      case kQuote: {
        const char* after = behindString(p_);
        return after != nullptr ? goTo(after) : stop();
      }
      case kSlash:
        if (p_[1] == '*') {
          const char* after = behindBlockComment(p_, end_, lines_);
          return after != end_ ? goTo(after) : stop();
        }
        return p_[1] != '/' && goTo(p_ + 1);
      case kAmpersand:
        return p_[1] != '&' && goTo(p_ + 1);
      case kSemicolon:
        return passSemicolon();
      case kHash:
        return isLetter(p_[1]) ? stop() : goTo(p_ + 1);
      case kDot:
        return p_[1] == '.' ? stop() : goTo(p_ + 1);
      case kGreater:
        return p_ > start_ && p_[-1] == '=' ? stop() : goTo(p_ + 1);
      case kPercent:
        return startsSqlMarker(p_) ? stop() : goTo(p_ + 1);
      case kLetterQ:
        return startsSqlWord(p_, start_, end_) ? stop() : goTo(p_ + 1);
      default:
        return stop();
    }
  }

  bool passSemicolon() {
    const char* after = behindContinuation(p_, end_);
    if (after == nullptr || after == end_) return stop();
    if (after == p_) return goTo(p_ + 1);
    ++lines_;
    return goTo(after);
  }

  bool goTo(const char* p) {
    p_ = p;
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
  while (p < end && *p == '/' && end - p > 1 && p[1] == '*') {
    p = skipBlanks(behindBlockComment(p, end, line.lines), end);
  }
  if (p < end && *p == '#') line.directive = conditionalAt(p, end).directive;
  while (p < end && *p != '\n') {
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
        p = startsLineComment(p, end) ? lineFeedFrom(p, end) : p + 1;
        break;
      case kSemicolon: {
        const char* after = behindContinuation(p, end);
        if (after != nullptr && after != p) {
          ++line.lines;
          p = after;
        } else {
          ++p;
        }
        break;
      }
      default:
        ++p;
    }
  }
  if (p < end) line.end = p + 1;
  return line;
}

}  // namespace precomp
