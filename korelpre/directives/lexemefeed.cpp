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

#include "korelpre/directives/lexemefeed.h"

#include <cstring>
#include <utility>

#include "korelpre/directives/conditional.h"
#include "korelpre/directives/programfile.h"
#include "korelpre/text/cursor.h"
#include "korelpre/text/linescan.h"
#include "korelpre/text/tokenise.h"

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

// Whether the scanner cannot tell what the line at `at` is: a comment line, which it knows by the
// line feed before it, gone when lines have been passed over, or a continuation and nothing else.
bool hangsOnItsPlace(const char* at, const char* end, const tScannedLine& line) {
  if (line.kind != eLineKind::kEmpty) return false;
  at = skipBlanks(at, end);
  if (*at == '*') return true;
  while (startsBlockComment(at)) at = skipBlanks(behindBlockComment(at, end), end);
  return *at == ';';
}

// Whether the last line of a text, the one that ends at `end`, holds nothing.
[[gnu::noinline]] bool lastLineIsBlank(const char* end) {
  const char* last = end - 1;  // the line feed
  while (last[-1] == '\r' || isBlank(last[-1])) --last;
  return last[-1] == '\n';
}

}  // namespace

tLexemeFeed::tLexemeFeed(tProgramFile& file, tSqlBlock& sql)
    : file_(file),
      sql_(sql),
      consumer_(std::make_unique<SSLexStringConsumer>(file.text.data(), file.text.size(),
                                                      SSLexConsumer::textType,
                                                      SSLexStringConsumer::kBorrowed)),
      lexer_(std::make_unique<KorelPreLexClass>(*consumer_)) {}

tLexemeFeed::~tLexemeFeed() = default;

SSLexLexeme* tLexemeFeed::next() {
  if (held_) {
    noteDelivered(*held_);
    return held_.release();
  }
  if (atLineStart_ && (!inSql_ || file_.conditionals.skipping())) {
    passPlainLines();
    lineBefore_ = std::exchange(lineStart_, consumer_->start());
  }
  return nextInLine();
}

SSLexLexeme* tLexemeFeed::nextInLine() {
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

// What stands in the text has been judged the first time, so nothing is raised here.
void tLexemeFeed::readAgain(std::size_t at, int line, tTknString& statement) {
  SSLexMark mark;
  mark.index = at;
  consumer_->acceptTo(mark);
  atLineStart_ = true;
  tString spacing;
  for (;;) {
    const SSRef<SSLexLexeme> lexeme(held_ ? std::move(held_) : SSRef(nextInLine()));
    if (!lexeme || lexeme->token() == kTokLineFeed) break;
    if (lexeme->token() == kTokSpc) {
      spacing = spacingOf(*lexeme);
      continue;
    }
    auto token = std::make_unique<tSpcString>();
    readToken(*lexeme, kindOfToken(lexeme->token()), file_.text, *token);
    token->setSpacing(std::exchange(spacing, {}));
    statement.tokens().add(token.release());
  }
  const std::uint32_t before = static_cast<std::uint32_t>(line) - statement.tokens()[0].line();
  for (int i = 0; i < statement.count(); ++i) {
    statement.tokens()[i].setLine(statement.tokens()[i].line() + before);
  }
}

// The next lexeme of the scanner; at the end of a text of plain lines only, a line feed, since the
// grammar wants one line at least.
SSLexLexeme* tLexemeFeed::scannedLexeme() {
  SSLexLexeme* lexeme = ++*lexer_;
  if (lexeme != nullptr || anyDelivered_) return lexeme;
  return SSLexLexeme::make("\n", 1, kTokLineFeed, static_cast<unsigned>(lineCount()), 1);
}

void tLexemeFeed::noteDelivered(const SSLexLexeme& lexeme) {
  anyDelivered_ = true;
  atLineStart_ = lexeme.token() == kTokLineFeed;
  if (atLineStart_) {
    tokens_ = 0;
    return;
  }
  lastTokenLine_ = static_cast<int>(lexeme.line());
  if (lexeme.token() != kTokSpc) {
    if (tokens_++ == 0) firstTokenLine_ = lastTokenLine_;
    if (tokens_ > kMostSourceTokens) file_.raiseLimit(kStatementSize, firstTokenLine_);
    lastTokenEnd_ = lexeme.absoluteOffset() + lexeme.length();
    const bool quoted = lexeme.token() == kTokString || lexeme.token() == kTokSqString;
    const char* const text = file_.text.data();
    if (quoted && text[lastTokenEnd_] == text[lexeme.absoluteOffset() - 1]) ++lastTokenEnd_;
  }
  if (lexeme.token() == kTokBeginSql) {
    if (sql_.line != 0) file_.raise(eSourceError::kSyntax, static_cast<int>(lexeme.line()));
    sql_ = {};
    sql_.line = static_cast<int>(lexeme.line());
    inSql_ = true;
  }
  if (lexeme.token() == kTokEndSql) {
    sqlEnding_ = inSql_;
    inSql_ = false;
  }
}

// A continuation joins a statement with nothing when the text, or what was added to it when it was
// loaded, ends behind it.
void tLexemeFeed::noteContinuation(const SSLexLexeme& lexeme) {
  const bool continued = continuing_;
  if (lexeme.token() != kTokSpc) continuing_ = isGap(lexeme.token());
  if (atLineStart_ || consumer_->start() != file_.text.size()) return;
  const bool joinsBlank = continued && lexeme.token() == kTokLineFeed &&
                          lastLineIsBlank(file_.text.data() + file_.text.size());
  if (continuing_ || joinsBlank) {
    file_.raise(eSourceError::kUnterminated, lastTokenLine_, nullptr,
                file_.columnAt(lastTokenEnd_));
  }
}

// Without the empty line that the line end added behind the text makes.
int tLexemeFeed::ownLineCount() const {
  const bool lineAdded = file_.text.view().ends_with("\r\n\r\n");
  return lineAdded ? lineCount() - 1 : lineCount();
}

void tLexemeFeed::raiseSyntax(const SSLexLexeme& lookahead, std::vector<tNote> notes) {
  const bool atEnd = lookahead.token() == sstable::kTokenEof;
  if (atEnd && inSql_) file_.raise(eSourceError::kUnterminated, sql_.line);
  if (atEnd) file_.raise(eSourceError::kSyntax, ownLineCount(), nullptr, 0, std::move(notes));
  // A line feed may stand behind comment lines; what is wrong stands before it.
  if (lookahead.token() == kTokLineFeed && lastTokenLine_ > 0) {
    file_.raise(eSourceError::kSyntax, lastTokenLine_, nullptr, file_.columnAt(lastTokenEnd_),
                std::move(notes));
  }
  // The quote of a string is not part of its lexeme.
  const bool quoted = lookahead.token() == kTokString || lookahead.token() == kTokSqString;
  file_.raise(eSourceError::kSyntax, static_cast<int>(lookahead.line()), nullptr,
              static_cast<int>(lookahead.offset()) - (quoted ? 1 : 0), std::move(notes));
}

void tLexemeFeed::passPlainLines() {
  const char* const text = file_.text.data();
  const char* const end = text + file_.text.size();
  const char* const start = text + consumer_->start();
  const auto firstLine = static_cast<int>(consumer_->startLine());
  const char* at = start;
  int line = firstLine;
  const auto passTo = [&](const char* lineEnd, int lines) {
    at = lineEnd;
    line += lines;
  };
  while (at < end) {
    if (file_.conditionals.skipping()) {
      const tSkippedLine skipped = scanSkippedLine(at, end);
      passTo(skipped.end, skipped.lines);
      if (skipped.directive != eDirective::kNone) {
        carryOutConditional(file_, skipped.directive, {}, line - skipped.lines);
      }
      continue;
    }
    if (inSql_) break;
    const tScannedLine scanned = scanLine(at, end);
    if (scanned.end == end && scanned.lines > 1 && lastLineIsBlank(end)) break;
    if (!file_.shared().plainLines && !hangsOnItsPlace(at, end, scanned)) break;
    if (scanned.kind == eLineKind::kOther) {
      if (!quick_.take(file_, at, line)) break;
      passTo(quick_.lineEnd(), quick_.lines());
      continue;
    }
    if (scanned.kind == eLineKind::kPlain) {
      file_.lines.addStatement(tSourceCode::kPlain, line + scanned.before,
                               static_cast<std::size_t>(at - text));
    }
    passTo(scanned.end, scanned.lines);
  }
  SSLexMark mark;
  mark.index = static_cast<std::size_t>(at - text);
  mark.lineFeeds = static_cast<unsigned>(line - firstLine);
  if (at != start) consumer_->acceptTo(mark);
}

}  // namespace precomp
