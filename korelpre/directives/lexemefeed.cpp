// Hands the directive grammar its lexemes. Three things happen on the way from the scanner:
//
//   - Runs of blanks, dropped block comments and continuations become one "spc", which the grammar
//     sees between tokens only, and before a directive or a line feed not at all.
//   - Plain lines never reach the scanner. At the start of a line they are passed over and noted as
//     spans of the text, so the grammar sees directives and unusual lines only. The directives that
//     headers are full of are read without it as well.
//   - In a region that a conditional skips, lines are passed over too; only the conditional
//     directives in it are counted.
//
// Note [line starts]
// Passing lines over is sound because the parser is between two lines whenever a line feed has been
// delivered: the grammar is a list of lines, an embedded SQL block aside.

#include <cstring>
#include <utility>

#include "korelpre/korelprecls.h"
#include "korelpre/text/bytekinds.h"
#include "korelpre/text/linescan.h"
#include "lib_base/misc.h"

namespace precomp {

using namespace korelpre;

namespace {

bool isGap(unsigned token) {
  return token == kTokSpc || token == kTokIgnoreEol || token == kTokIgnoreComment ||
         token == kTokIgnoreCommentEsp;
}

// The blanks of a gap: those of its "spc" lexemes, those in front of a continuation count already.
void addBlanks(tString& blanks, const SSLexLexeme& lexeme) {
  if (lexeme.token() == kTokSpc) blanks.append(std::string_view(lexeme.text(), lexeme.length()));
}

// The scanner knows a comment line by the line feed before it, which is gone when lines have been
// passed over.
bool isStarComment(const char* at, const char* end) {
  return *skipBlanks(at, end) == '*';
}

struct tConditionalLine {
  eConditional directive;
  std::string_view name;
  const char* end;
};

bool isSqlWord(std::string_view word) {
  return equalNoCase(word, "beginsql") || equalNoCase(word, "endsql");
}

// Whether nothing but blanks and a line comment follows up to the line feed; `p` moves behind it.
bool endsLine(const char*& p, const char* end) {
  p = skipBlanks(p, end);
  const bool comment = end - p > 1 && p[0] == p[1] && (*p == '/' || *p == '&');
  if (!comment && *p != '\r' && *p != '\n') return false;
  const void* feed = std::memchr(p, '\n', static_cast<std::size_t>(end - p));
  if (feed == nullptr) return false;
  p = static_cast<const char*>(feed) + 1;
  return true;
}

// Reads a conditional directive in its usual form. False for every other line, which is left to the
// scanner and the grammar.
bool readConditional(const char* p, const char* end, tConditionalLine& line) {
  p = skipBlanks(p, end);
  const tConditionalWord word = conditionalAt(p, end);
  if (word.directive == eConditional::kNone) return false;
  line.directive = word.directive;
  p += word.length;
  if (line.directive == eConditional::kIfdef || line.directive == eConditional::kIfndef) {
    if (!isBlank(*p)) return false;
    p = skipBlanks(p, end);
    const char* name = p;
    if (!isLetter(*p) && *p != '_') return false;
    while (isWordByte(*p)) ++p;
    if (*p != '\r' && !isBlank(*p)) return false;
    line.name = {name, static_cast<std::size_t>(p - name)};
    if (isSqlWord(line.name)) return false;
  }
  const bool usual = endsLine(p, end);
  line.end = p;
  return usual;
}

// Whether the last line of a text, the one that ends at `end`, holds nothing.
[[gnu::noinline]] bool lastLineIsBlank(const char* end) {
  const char* last = end - 1;  // the line feed
  while (last[-1] == '\r' || isBlank(last[-1])) --last;
  return last[-1] == '\n';
}

}  // namespace

SSLexLexeme* KorelPreYaccClass::nextLexeme() {
  if (held_) {
    noteDelivered(*held_);
    return held_.release();
  }
  if (atLineStart_ && (!inSql_ || skipping())) passPlainLines();
  tString blanks;
  bool gap = false;
  for (;;) {
    SSRef<SSLexLexeme> lexeme(scannedLexeme());
    if (!lexeme) return nullptr;
    noteContinuation(*lexeme);
    gap = gap || lexer_->followsComment() || isGap(lexeme->token());
    if (isGap(lexeme->token())) {
      addBlanks(blanks, *lexeme);
      continue;
    }
    const bool swallowsGap =
        lexeme->token() == kTokLineFeed ||
        (atLineStart_ && (isDirectiveToken(lexeme->token()) || blanks.empty()));
    if (!gap || swallowsGap) {
      noteDelivered(*lexeme);
      if (lexeme->token() == kTokLineFeed && std::exchange(sqlEnding_, false)) {
        // See note [block lines] in sqlblock.cpp.
        held_ = SSRef<SSLexLexeme>(SSLexLexeme::make("\n", 1, kTokLineFeed, lexeme->line(), 1));
      }
      return lexeme.release();
    }
    if (blanks.empty()) blanks.append(' ');
    atLineStart_ = false;
    held_ = std::move(lexeme);
    return SSLexLexeme::make(blanks.data(), blanks.size(), kTokSpc, held_->line(), held_->offset());
  }
}

// The next lexeme of the scanner; at the end of a text of plain lines only, a line feed, since the
// grammar wants one line at least.
SSLexLexeme* KorelPreYaccClass::scannedLexeme() {
  SSLexLexeme* lexeme = ++*lexer_;
  if (lexeme != nullptr || anyDelivered_) return lexeme;
  return SSLexLexeme::make("\n", 1, kTokLineFeed, static_cast<unsigned>(lineCount()), 1);
}

void KorelPreYaccClass::noteDelivered(const SSLexLexeme& lexeme) {
  anyDelivered_ = true;
  atLineStart_ = lexeme.token() == kTokLineFeed;
  if (!atLineStart_) lastTokenLine_ = static_cast<int>(lexeme.line());
  if (!atLineStart_ && lexeme.token() != kTokSpc) {
    lastTokenEnd_ = lexeme.absoluteOffset() + lexeme.length();
  }
  if (lexeme.token() == kTokBeginSql) {
    beginSql(static_cast<int>(lexeme.line()));
    inSql_ = true;
  }
  if (lexeme.token() == kTokEndSql) {
    sqlEnding_ = inSql_;
    inSql_ = false;
  }
}

// A continuation joins a statement with nothing when the text, or what was added to it when it was
// loaded, ends behind it.
void KorelPreYaccClass::noteContinuation(const SSLexLexeme& lexeme) {
  const bool continued = continuing_;
  if (lexeme.token() != kTokSpc) continuing_ = isGap(lexeme.token());
  if (atLineStart_ || consumer_->start() != text_.size()) return;
  const bool joinsBlank =
      continued && lexeme.token() == kTokLineFeed && lastLineIsBlank(text_.data() + text_.size());
  if (continuing_ || joinsBlank)
    exceptionAt(2002, lastTokenLine_, nullptr, columnAt(lastTokenEnd_));
}

int KorelPreYaccClass::lineCount() const {
  return static_cast<int>(consumer_->startLine()) - 1;
}

void KorelPreYaccClass::passPlainLines() {
  const char* const text = text_.data();
  const char* const end = text + text_.size();
  const char* const start = text + consumer_->start();
  const auto firstLine = static_cast<int>(consumer_->startLine());
  const char* at = start;
  int line = firstLine;
  const auto passTo = [&](const char* lineEnd, int lines) {
    at = lineEnd;
    line += lines;
  };
  while (at < end) {
    if (skipping()) {
      const tSkippedLine skipped = scanSkippedLine(at, end);
      passTo(skipped.end, skipped.lines);
      countSkippedDirective(skipped.directive, line - skipped.lines);
      continue;
    }
    if (inSql_) break;
    const tScannedLine scanned = scanLine(at, end);
    if (scanned.end == end && scanned.lines > 1 && lastLineIsBlank(end)) break;
    if (!shared_.plainLines && !isStarComment(at, end)) break;
    if (scanned.kind == eLineKind::kOther) {
      if (readDefine(at, end, line)) {
        passTo(defineReader_.lineEnd(), defineReader_.lines());
        continue;
      }
      if (readRule(at, end, line)) {
        passTo(reader_.lineEnd(), reader_.lines());
        continue;
      }
      tConditionalLine conditional;
      if (!readConditional(at, end, conditional)) break;
      takeConditional(conditional.directive, conditional.name, line);
      passTo(conditional.end, 1);
      continue;
    }
    if (scanned.kind == eLineKind::kPlain) {
      source_.addPlain(line + scanned.before, static_cast<std::size_t>(at - text));
    }
    passTo(scanned.end, scanned.lines);
  }
  SSLexMark mark;
  mark.index = static_cast<std::size_t>(at - text);
  mark.lineFeeds = static_cast<unsigned>(line - firstLine);
  if (at != start) consumer_->acceptTo(mark);
}

void KorelPreYaccClass::countSkippedDirective(eConditional directive, int line) {
  switch (directive) {
    case eConditional::kIfdef:
      doIfDef(nullptr, 0);
      break;
    case eConditional::kIfndef:
      doIfNDef(nullptr, 0);
      break;
    case eConditional::kElse:
      doElseIF(0);
      break;
    case eConditional::kEndif:
      doEndIF(0);
      break;
    default:
      return;
  }
  source_.addDirective(line);
}

void KorelPreYaccClass::takeConditional(eConditional directive, std::string_view name, int line) {
  tSpcString token;
  token.setText(tString::borrow(name));
  switch (directive) {
    case eConditional::kIfdef:
      doIfDef(&token, line);
      break;
    case eConditional::kIfndef:
      doIfNDef(&token, line);
      break;
    case eConditional::kElse:
      doElseIF(line);
      break;
    default:
      doEndIF(line);
      break;
  }
  source_.addDirective(line);
  currentLine_ = line;
}

}  // namespace precomp
