// In goes a logical line that scanLine has called plain, with the rules in force. Out comes the
// text that rewriting its tokens would give, or "false" with the output as it was, when only that
// rewriting can tell. "false" is always a right answer; it costs time.
//
// The statement is copied in stretches as long as possible; `copied` is the point up to which the
// source has been written. On the way
//
//   [start]   a first token that a command may start with ends the attempt;
//   [bytes]   ordinary bytes are passed a block at a time, and brackets counted, since a statement
//             whose brackets do not nest is an error that the tokens tell;
//   [words]   a word is looked up only when its first two bytes pass the gates of the tables,
//             which dismiss nearly all. One that a translation may start with ends the attempt;
//   [names]   a name is replaced by what its definition makes of it, a macro with the arguments of
//             its call. The result is looked at as the line is where a rule may start in it. A
//             macro that may find its "(", if only behind other names, ends the attempt;
//   [gaps]    a comment or a continuation opens a gap: the blanks around it are collected in the
//             output and count as the spacing of the token that follows. At the statement's end
//             they vanish.
//
// It ends because every step moves on in the line, and because scanLine has seen the line's end:
// strings and comments are closed, so that no loop over them can leave the text.

#include "korelpre/statements/plainwrite.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "korelpre/tables/nameexpansion.h"
#include "korelpre/tables/ruleset.h"
#include "korelpre/text/byteset.h"
#include "korelpre/text/cursor.h"
#include "lib_base/misc.h"

namespace precomp {

namespace {

// What a byte can do to a statement. Only the first byte of a word counts.
enum eByte : std::uint8_t {
  kOther,
  kBracket,
  kWordStart,
  kDigit,
  kQuote,
  kMaybeComment,
  kSemicolon,
  kReference,
  kLineEnd,
  kRuleStart  // no name, and a translation starts with it
};

constexpr std::array<eByte, 256> makeBytes() {
  std::array<eByte, 256> bytes{};
  for (unsigned c = 0; c < 256; ++c) {
    const char byte = static_cast<char>(c);
    if (isNameStart(byte)) bytes[c] = kWordStart;
    if (isDigit(byte)) bytes[c] = kDigit;
  }
  bytes['"'] = bytes['\''] = kQuote;
  bytes['/'] = bytes['&'] = kMaybeComment;
  bytes[';'] = kSemicolon;
  bytes['('] = bytes['['] = bytes[')'] = bytes[']'] = kBracket;
  bytes['@'] = kReference;
  bytes['\r'] = bytes['\n'] = kLineEnd;
  return bytes;
}

constexpr std::array<eByte, 256> kBytes = makeBytes();

eByte byteAt(const char* p) {
  return kBytes[static_cast<unsigned char>(*p)];
}

// Words that are part of a longer token: ".T.", "FIELD->", "M->", "->END". The tables know the
// token, not the word in it.
bool joinsLongerToken(const char* word, const char* wordEnd, const char* start) {
  const std::string_view text(word, static_cast<std::size_t>(wordEnd - word));
  if (word > start && word[-1] == '.' && *wordEnd == '.') return true;
  if (word > start && word[-1] == '>' && equalNoCase(text, "end")) return true;
  return wordEnd[0] == '-' && wordEnd[1] == '>' &&
         (equalNoCase(text, "field") || equalNoCase(text, "m"));
}

// [bytes] The open brackets of a statement, one bit each: 63 levels are more than people write.
class tNesting {
 public:
  // False when the bracket does not nest or there are too many.
  bool pass(char bracket) {
    const std::uint64_t square = bracket == '[' || bracket == ']' ? 1 : 0;
    if (bracket == '(' || bracket == '[') {
      if (bits_ >> 63 != 0) return false;
      bits_ = bits_ << 1 | square;
    } else {
      if (bits_ == 1 || (bits_ & 1) != square) return false;
      bits_ >>= 1;
    }
    return true;
  }
  bool open() const { return bits_ != 1; }

 private:
  // Innermost lowest: 1 for "[", 0 for "("; a 1 stands above the outermost.
  std::uint64_t bits_ = 1;
};

// A statement in which more than this was read and written goes the slow way, which knows the
// limits, if it holds a defined name. They are judged after each rewrite, so what it becomes in the
// end is not enough to go by.
constexpr std::size_t kLargestQuick = 65536;

// How deep results with names may nest: each level takes stack.
constexpr std::size_t kDeepestResult = 16;

// The size of the output without the blanks at its end, which go back to `from` at most.
std::size_t sizeWithoutBlanks(const tString& output, std::size_t from) {
  const char* const text = output.data();
  return static_cast<std::size_t>(backOverBlanks(text + output.size(), text + from) - text);
}

void stripBlanks(tString& output, std::size_t from) {
  output.resize(sizeWithoutBlanks(output, from));
}

}  // namespace

struct tPlainWriter::tCursor {
  tText text;
  const char* p;       // the next byte to look at
  const char* copied;  // the source up to here has been written
  tString& output;
  std::size_t begin;                // of the statement in the output
  std::size_t gap = tString::npos;  // where the open gap begins in the output
  bool gapBehindToken = false;
  tNesting nesting{};
  std::size_t level = 0;  // of results in results
  int rewrites = 0;
  bool defined = false;     // it holds a name with a definition
  std::size_t written = 0;  // bytes that its rewrites write

  bool mayExceedLimits() const {
    return defined && static_cast<std::size_t>(p - text.start) + written > kLargestQuick;
  }
  void copyTo(const char* to) {
    if (to > copied) output.append({copied, static_cast<std::size_t>(to - copied)});
    copied = to;
  }
  void skipTo(const char* to) { p = copied = to; }
  // Blanks at the end vanish.
  void endLine() {
    const char* const last = backOverBlanks(p, copied);
    if (last == copied) stripBlanks(output, begin);
    const auto size = static_cast<std::size_t>(last - copied);
    char* to = output.extend(size + 1);
    std::memcpy(to, copied, size);
    to[size] = '\n';
  }
};

tPlainWriter::tPlainWriter(tRuleSet& rules)
    : defines_(rules.defines), translates_(rules.translates), commands_(rules.commands) {}

// A translation may start with a token that is no word, "->" say. Its first byte then stops the
// loop over ordinary bytes. The table of bytes is made anew only when the translations change.
void tPlainWriter::learnRules() {
  const std::uint64_t generation = std::uint64_t{1} + translates_.lookup().generation();
  if (generation_ == generation) return;
  generation_ = generation;
  std::array<bool, 256> special{};
  for (unsigned c = 0; c < 256; ++c) {
    const bool starts = translates_.lookup().startsOddToken(static_cast<char>(c));
    bytes_[c] = starts && !translates_.empty() ? kRuleStart : kBytes[c];
    special[c] = bytes_[c] != kOther && !isWordByte(static_cast<char>(c));
  }
  special_ = tByteSet(special);
}

// [start] A name, or the first byte of another token, decides. What stands behind a comment is not
// looked at.
bool tPlainWriter::mayStartCommand(const char* start, const char* end) {
  const char* p = skipBlanks(start, end);
  if (byteAt(p) == kSemicolon || startsBlockComment(p)) return true;
  const tWordLookup& lookup = commands_.lookup();
  if (byteAt(p) != kWordStart) return lookup.startsOddToken(*p);
  const char* const word = p;
  p = behindWord(p + 1);
  const std::string_view text(word, static_cast<std::size_t>(p - word));
  if (!lookup.passes(text)) return false;
  return joinsLongerToken(word, p, start) ||
         commands_.foresee(text, {p, static_cast<std::size_t>(end - p)});
}

// Passes the text up to its end.
[[gnu::always_inline]] inline bool tPlainWriter::pass(tCursor& at) {
  tStops<true> stops(special_, at.p, at.text.end);
  for (bool passed = true; passed;) {
    at.p = stops.next();
    switch (bytes_[static_cast<unsigned char>(*at.p)]) {
      case kBracket:
        passed = at.nesting.pass(*at.p);
        break;
      case kDigit:
        // "1a" is a name, and "1.5a" a number and a name: left to the scanner.
        passed = !isWordByte(*behindDigits(at.p));
        [[fallthrough]];
      case kWordStart:
        if (!mayBeInTables(at.p)) break;
        passed = passed && passWord(at);
        if (passed) stops.goTo(at.p);
        break;
      case kLineEnd:
        return true;
      case kRuleStart:
        return false;
      default:
        passed = passSpecial(at);
        if (passed) stops.goTo(at.p);
    }
  }
  return false;
}

bool tPlainWriter::write(const char* start, const char* end, tString& output) {
  learnRules();
  if (!commands_.empty() && mayStartCommand(start, end)) return false;
  tCursor at{{start, end}, start, start, output, output.size()};
  untouched_ = tString::npos;
  if (!pass(at) || at.nesting.open() || at.mayExceedLimits()) {
    output.resize(at.begin);
    return false;
  }
  at.endLine();
  return true;
}

// [words] The order of the questions is that of their cost: gates, then the index of defines, then
// the table of translations.
inline bool tPlainWriter::mayBeInTables(const char* word) const {
  const char second = isWordByte(word[1]) ? word[1] : '\0';
  return translates_.lookup().passes(word[0], second) ||
         defines_.index().gate().passes(word[0], second);
}

bool tPlainWriter::passWord(tCursor& at) {
  const char* const word = at.p;
  const char second = isWordByte(word[1]) ? word[1] : '\0';
  const bool mayTranslate = translates_.lookup().passes(word[0], second);
  const bool mayDefine = defines_.index().gate().passes(word[0], second);
  const char* const p = at.p = behindWord(word + 1);
  const std::string_view text(word, static_cast<std::size_t>(p - word));
  tIndexedName* name = mayDefine ? defines_.index().find(text) : nullptr;
  if (name == nullptr && !mayTranslate) return true;
  // Digits may be part of a number, and a word part of a longer token.
  if (isDigit(*word) || joinsLongerToken(word, p, at.text.start)) return false;
  const std::string_view behind(p, static_cast<std::size_t>(at.text.end - p));
  if (mayTranslate && translates_.foresee(text, behind)) return false;
  if (name == nullptr) return true;
  at.defined = true;
  if (isMacro(*name) && *p != '(') return !mayOpenArguments(p, at);
  // What the first word becomes may be the key of a command.
  const bool first = at.level == 0 && skipBlanks(at.text.start, at.text.end) == word;
  return !(first && !commands_.empty()) && replaceUse(at, word, *name);
}

// [names] Whether the token behind a name may be a "(" once everything is replaced: what comes out
// of a definition, and what stands behind a gap or the result of a call, the tokens tell.
bool tPlainWriter::mayOpenArguments(const char* p, const tCursor& at) {
  p = skipBlanks(p);
  if (byteAt(p) != kWordStart) {
    return *p == '(' || (byteAt(p) == kLineEnd && at.level > 0) || byteAt(p) == kMaybeComment ||
           byteAt(p) == kSemicolon;
  }
  const std::string_view word(p, static_cast<std::size_t>(behindWord(p + 1) - p));
  return defines_.index().find(word) != nullptr;
}

// [names] The result is a text that is looked at as the line is, unless no rule can start in it.
// The bound on rewrites is one for the statement. Past it the tokens raise the error.
bool tPlainWriter::replaceUse(tCursor& at, const char* word, tIndexedName& name) {
  const char* behind = at.p;
  calls_.readNone();
  if (isMacro(name)) behind = calls_.read(behind, at.text.end);
  // A word right behind a ")" may make one with the end of the result.
  if (behind == nullptr || isNameByte(*behind) || at.level == kDeepestResult) return false;
  const tNameExpansion* const expansion = expandName({defines_, translates_}, name);
  if (expansion == nullptr || expansion->parameters != calls_.arguments()) return false;
  at.rewrites += expansion->rewrites;
  at.written += expansion->written;
  if (at.rewrites > kMostRewrites) return false;
  const bool literal = expansion->final && !expansion->text.empty();
  // The blanks of a gap have been written.
  if (!literal && word == at.copied && word != at.text.start) return false;
  const char* const blanks = literal ? word : backOverBlanks(word, at.copied);
  at.copyTo(blanks);
  const std::size_t place = at.output.size() - at.begin;
  if (untouched_ == tString::npos) untouched_ = place;
  if (literal) {
    at.output.append(expansion->text);
  } else if (!passResult(at, calls_.text(*expansion, {blanks, word}, at.level))) {
    return false;
  }
  at.skipTo(behind);
  // The statement begins with another token then, on another line perhaps.
  return place != 0 || !trimmed(at.output.view().substr(at.begin)).empty();
}

bool tPlainWriter::passResult(tCursor& at, std::string_view result) {
  at.written += result.size();
  if (at.written > kLargestQuick) return false;
  const tText outer = std::exchange(at.text, {result.data(), result.data() + result.size()});
  at.skipTo(at.text.start);
  ++at.level;
  if (!pass(at)) return false;
  --at.level;
  at.copyTo(at.p);
  at.text = outer;
  return true;
}

// Passes a byte that is neither ordinary nor part of a word. A reference is passed right behind the
// bracket or comma of its call; elsewhere the tokens tell.
bool tPlainWriter::passSpecial(tCursor& at) {
  const char* p = at.p;
  switch (byteAt(p)) {
    case kQuote:
      at.p = behindClosedString(p, at.text.end);
      return true;
    case kMaybeComment:
      if (startsLineComment(p)) return openGap(at, lineFeedFrom(p, at.text.end));
      if (startsBlockComment(p)) return openGap(at, behindBlockComment(p, at.text.end));
      break;
    case kSemicolon: {
      // One that continues nothing separates statements: what follows has to be checked too.
      const char* const after = behindContinuation(p, at.text.end);
      return after != nullptr && openGap(at, after);
    }
    case kReference: {
      const char* const before = backOverBlanks(p, at.text.start);
      if (before == at.text.start || std::strchr("(,{", before[-1]) == nullptr) return false;
      break;
    }
    default:
      break;
  }
  if (at.gap != tString::npos) closeGap(at);
  ++at.p;
  return true;
}

// [gaps] Several comments and continuations in a row are one gap. The blanks in front of it are in
// the output already; `gap` is where they begin. What looks like one in a result is tokens.
bool tPlainWriter::openGap(tCursor& at, const char* gapEnd) {
  if (at.level > 0) return false;
  const bool behindToken = at.copied != at.text.start || skipBlanks(at.text.start, at.p) != at.p;
  at.copyTo(at.p);
  if (at.gap == tString::npos) {
    at.gapBehindToken = behindToken;
    at.gap = sizeWithoutBlanks(at.output, at.begin);
  }
  at.skipTo(gapEnd);
  at.p = skipBlanks(at.p, at.text.end);
  // The gap stays open where another one, or the end, follows.
  const eByte byte = byteAt(at.p);
  if (byte != kLineEnd && byte != kMaybeComment && byte != kSemicolon) closeGap(at);
  return true;
}

// A token follows. Two tokens with only a comment between them must not grow together.
void tPlainWriter::closeGap(tCursor& at) {
  at.copyTo(at.p);
  if (at.output.size() == at.gap && at.gapBehindToken) at.output.append(' ');
  at.gap = tString::npos;
}

}  // namespace precomp
