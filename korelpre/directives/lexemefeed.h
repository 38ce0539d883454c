#pragma once

#include <memory>
#include <vector>

#include "korelpre/directives/quickreader.h"
#include "korelpre/directives/sqlblock.h"
#include "korelpre/errors/diagnostic.h"
#include "ssvp40xpf/directivescanner.h"
#include "ssvp40xpf/sslexconsumer.h"
#include "ssvp40xpf/sslexlexeme.h"

namespace precomp {

class tProgramFile;
class tTknString;

/// Hands the directive grammar the lexemes of one file; see lexemefeed.cpp.
class tLexemeFeed {
 public:
  /// From the beginning of the file's text. `file` and `sql` must outlive the feed.
  tLexemeFeed(tProgramFile& file, tSqlBlock& sql);
  ~tLexemeFeed();
  tLexemeFeed(const tLexemeFeed&) = delete;
  tLexemeFeed& operator=(const tLexemeFeed&) = delete;

  /// The scanner behind the feed, for the parser.
  SSLex& lexer() { return *lexer_; }
  /// The next lexeme, with one reference; null at the end of the text.
  SSLexLexeme* next();
  /// Raises the syntax error at a lookahead that the grammar cannot take.
  [[noreturn]] void raiseSyntax(const SSLexLexeme& lookahead, std::vector<tNote> notes);

  /// Behind the last token that was delivered, in bytes from the start of the text; blanks and line
  /// feeds are none.
  std::size_t lastTokenEnd() const { return lastTokenEnd_; }
  /// Where the line began of which the line feed was the last lexeme but one.
  std::size_t lineBefore() const { return lineBefore_; }
  /// Reads a statement of the file once more: that of the line that began at `at`, behind those
  /// that were read before. Its first token stands on line `line`.
  void readAgain(std::size_t at, int line, tTknString& statement);
  /// The line on which the scanner stands.
  int line() const { return static_cast<int>(consumer_->startLine()); }
  /// The lines of the text.
  int lineCount() const { return line() - 1; }

 private:
  void passPlainLines();
  SSLexLexeme* nextInLine();
  SSLexLexeme* scannedLexeme();
  void noteDelivered(const SSLexLexeme& lexeme);
  void noteContinuation(const SSLexLexeme& lexeme);
  int ownLineCount() const;

  tProgramFile& file_;
  tSqlBlock& sql_;
  tQuickReader quick_;
  std::unique_ptr<SSLexConsumer> consumer_;
  std::unique_ptr<KorelPreLexClass> lexer_;
  SSRef<SSLexLexeme> held_;  // to be delivered next
  bool atLineStart_ = true;
  bool anyDelivered_ = false;
  bool inSql_ = false;
  bool sqlEnding_ = false;   // EndSql has been delivered, but not its line feed
  bool continuing_ = false;  // a continuation came last
  int lastTokenLine_ = 0;
  std::size_t lastTokenEnd_ = 0;
  int tokens_ = 0;  // of the statement or directive, so far
  int firstTokenLine_ = 0;
  std::size_t lineStart_ = 0;
  std::size_t lineBefore_ = 0;
};

}  // namespace precomp
