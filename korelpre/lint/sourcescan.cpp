// The text of a file is read once more, by logical lines, when it has been compiled: its list of
// lines then tells which of them hold something. What a conditional skips holds nothing there, and
// neither do comments, so that nothing is told of them.

#include "korelpre/lint/sourcescan.h"

#include <algorithm>
#include <array>
#include <utility>

#include "korelpre/directives/programfile.h"
#include "korelpre/errors/notes.h"
#include "korelpre/lint/nameuse.h"
#include "korelpre/text/cursor.h"
#include "korelpre/text/linescan.h"
#include "lib_base/misc.h"
#include "lib_base/nearest.h"

namespace precomp {

namespace {

// The bytes that the scanner drops; see korelpre.lex.
bool isDropped(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte == '`' || byte > 0x80 ||
         (byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r');
}

constexpr std::array<bool, 256> makeStops() {
  std::array<bool, 256> stops{};
  for (unsigned c = 0; c < 256; ++c) {
    stops[c] = c < 0x20 || c >= 0x7F || isWordByte(static_cast<char>(c));
  }
  for (const char c : {'"', '\'', '/', '&', '\\', '`'}) stops[static_cast<unsigned char>(c)] = true;
  stops['\t'] = stops['\r'] = false;
  return stops;
}
constexpr std::array<bool, 256> kStops = makeStops();

std::string_view textBetween(const char* begin, const char* end) {
  return {begin, static_cast<std::size_t>(end - begin)};
}

// Behind what stands at the start of a logical line in front of its first token.
const char* firstToken(const char* p, const char* end) {
  for (;;) {
    while (p < end && (isBlank(*p) || isLineEnd(*p) || isDropped(*p))) ++p;
    if (p == end || !startsBlockComment(p)) return p;
    p = behindBlockComment(p, end);
  }
}

std::string nearestDirective(std::string_view word) {
  static const std::vector<std::string> words = {
#define DIRECTIVE(name, word, skipped) word,
#include "korelpre/text/directives.def"
#undef DIRECTIVE
  };
  std::string low(word);
  std::transform(low.begin(), low.end(), low.begin(), lowerAscii);
  return nearestTo(low, words);
}

constexpr std::string_view kSqlMarkers[] = {
    "Exp:", "xFilial:", "Order:", "Table:", "NotDel%", "Temp-Table:", "NoParser%"};

constexpr std::ptrdiff_t kLongestMarker = 1000;

}  // namespace

tSourceScan::tSourceScan(tFindings& findings, tProgramFile& file, tNameUse* names, int readTo)
    : findings_(findings),
      file_(file),
      names_(names != nullptr && names->any() ? names : nullptr),
      text_(file.text.data()),
      end_(text_ + file.text.size()),
      readTo_(file.conditionals.skipping() ? 0 : readTo) {}

void tSourceScan::run() {
  int line = 1;
  for (const char* at = text_; at < end_;) {
    const tSkippedLine scanned = scanSkippedLine(at, end_);
    line_ = line;
    if (inSql_) {
      takeSql(at, scanned.end);
    } else if (isActive(line, scanned.lines)) {
      takeLine(at, scanned.end);
    }
    line += scanned.lines;
    at = scanned.end;
  }
  if (names_ != nullptr) names_->finish();
}

bool tSourceScan::isActive(int line, int lines) const {
  const tSourceCode& known = file_.lines;
  const int last = line + lines - 1;
  for (int at = line; at <= std::min(last, known.count()); ++at) {
    if (known.kind(at) != tSourceCode::kNothing) return true;
  }
  // The grammar takes a line when it has seen what follows.
  return readTo_ > 0 && line <= readTo_ && last >= readTo_ - 1;
}

void tSourceScan::takeLine(const char* start, const char* end) {
  const char* const first = firstToken(start, end);
  if (first == end || *first == '*') return;
  line_ += static_cast<int>(std::count(start, first, '\n'));
  inStatement_ = *first != '#';
  begins_ = true;
  if (!inStatement_) takeHash(first, end);
  if (isNameStart(*first) && equalNoCase(textBetween(first, behindWord(first)), "beginsql")) {
    inSql_ = true;
  }
  takeWords(first, end);
}

void tSourceScan::takeHash(const char* start, const char* end) {
  if (directiveAt(start, end).directive != eDirective::kNone) return;
  if (!findings_.hears(eWarning::kUnknownDirective)) return;
  const char* const word = skipBlanks(start + 1, end);
  const char* const behind = isNameStart(*word) ? behindWord(word) : start + 1;
  const std::string_view shown = textBetween(start, behind);
  std::vector<tNote> notes;
  const tString joined = tString("#").append(textBetween(word, behind));
  if (word > start + 1 &&
      directiveAt(joined.c_str(), joined.c_str() + joined.size()).directive != eDirective::kNone) {
    notes.push_back(noted("no blank may stand behind the #: write %1", {joined}));
  } else if (const std::string nearest = nearestDirective(joined); !nearest.empty()) {
    notes.push_back(noted("did you mean %1?", {nearest}));
  }
  findings_.tell(eWarning::kUnknownDirective, placeOf(start, shown.size()), {shown},
                 std::move(notes));
}

// Passes the code of a statement or directive, word by word.
void tSourceScan::takeWords(const char* start, const char* end) {
  for (const char* p = start; p < end;) {
    if (!kStops[static_cast<unsigned char>(*p)]) {
      ++p;
    } else if (isWordByte(*p)) {
      p = takeWord(p, end);
    } else if (isQuote(*p)) {
      const char* const behind = behindString(p);
      p = behind != nullptr ? behind : lineFeedFrom(p, end);
    } else if (startsLineComment(p)) {
      p = lineFeedFrom(p, end);
    } else if (startsBlockComment(p)) {
      p = behindBlockComment(p, end, line_);
    } else if (isDropped(*p)) {
      p = takeDropped(p, start, end);
    } else {
      if (*p == '\n') ++line_;
      p += *p == '\\' && !isLineEnd(p[1]) ? 2 : 1;
    }
  }
}

const char* tSourceScan::takeWord(const char* word, const char* end) {
  const char* behind = word;
  while (behind < end && isNameByte(*behind)) ++behind;
  if (names_ == nullptr || !inStatement_) return behind;
  const std::string_view text = textBetween(word, behind);
  if (std::exchange(begins_, false)) names_->statementBegins(text);
  names_->word(text, line_);
  return behind;
}

// The word around the bytes shows what is left of it.
const char* tSourceScan::takeDropped(const char* at, const char* start, const char* end) {
  const char* begin = at;
  while (begin > start && isNameByte(begin[-1])) --begin;
  const char* behind = at;
  while (behind < end && (isNameByte(*behind) || isDropped(*behind))) ++behind;
  const bool endOfText = *at == '\x1A' && endsText(behind);
  if (endOfText || (at == text_ && textBetween(at, end).starts_with("\xEF\xBB\xBF"))) return behind;
  if (!findings_.hears(eWarning::kDroppedBytes)) return behind;
  const std::string_view whole = textBetween(begin, behind);
  tString left;
  for (const char c : whole) {
    if (!isDropped(c)) left.append(c);
  }
  if (left.empty()) left = tString::borrow("nothing");
  findings_.tell(eWarning::kDroppedBytes, placeOf(begin, whole.size()), {whole, left});
  return behind;
}

// Whether nothing but white space follows: the end of a file was marked by a byte once.
bool tSourceScan::endsText(const char* at) const {
  return trimmed(textBetween(at, end_)).empty();
}

// A marker has the form "%name:...%" or "%name%", outside of quotes. Others are read as operators.
void tSourceScan::takeSql(const char* start, const char* end) {
  const char* const first = skipBlanks(start, end);
  if (startsWithNoCase(textBetween(first, end), "endsql")) {
    inSql_ = false;
    return;
  }
  for (const char* p = first; p < end; ++p) {
    if (isQuote(*p)) {
      const char* const behind = behindString(p);
      p = (behind != nullptr ? behind : lineFeedFrom(p, end)) - 1;
    } else if (*p == '\n') {
      ++line_;
    } else if (*p == '%' && isLetter(p[1])) {
      const char* const last = p + std::min<std::ptrdiff_t>(end - p, kLongestMarker);
      const std::string_view rest = textBetween(p + 1, lineFeedFrom(p, last));
      const std::size_t close = rest.find('%');
      const std::size_t name = rest.find_first_not_of(
          "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-");
      const bool form = name != std::string_view::npos && (rest[name] == ':' || name == close);
      if (close == std::string_view::npos || !form) continue;
      const auto known = [&](std::string_view marker) { return startsWithNoCase(rest, marker); };
      const std::string_view marker = textBetween(p, p + close + 2);
      if (std::none_of(std::begin(kSqlMarkers), std::end(kSqlMarkers), known) &&
          findings_.hears(eWarning::kUnknownSqlMarker)) {
        findings_.tell(eWarning::kUnknownSqlMarker, placeOf(p, marker.size()), {marker});
      }
      p += close + 1;
    }
  }
}

tLintPlace tSourceScan::placeOf(const char* at, std::size_t size) const {
  return {file_.names.opened, line_, file_.columnAt(static_cast<std::size_t>(at - text_)), size};
}

}  // namespace precomp
