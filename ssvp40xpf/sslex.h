#pragma once

#include <cstddef>
#include <memory>

#include "ssvp40xpf/sslexconsumer.h"
#include "ssvp40xpf/sslexlexeme.h"
#include "ssvp40xpf/sslextable.h"
#include "ssvp40xpf/sssto.h"

/// A table-driven scanner: the longest match of the current expression list makes the next lexeme.
/// A match may push, pop or replace the expression list and may be dropped.
class SSLex : public SSObject, public SSExceptionPresent {
 public:
  /// A scanner without table and consumer; both are given later.
  SSLex();
  /// Table and consumer must outlive the scanner.
  SSLex(SSLexConsumer& consumer, const SSLexTable& table);
  /// Scans a file by a table read from a file; owns both.
  SSLex(const char* file, const char* table);
  virtual ~SSLex();

  void setConsumer(SSLexConsumer& consumer);
  void setTable(const SSLexTable& table);
  /// Back to list 0 alone; the consumer stays where it is.
  void reset();

  /// The next lexeme, whose reference the caller releases; null at the end of the input or, with
  /// exceptions disabled, after an error. After a thrown error the scan goes on behind the text
  /// that caused it.
  SSLexLexeme* operator++();

  /// Switch expression lists by hand. A pop raises SSErrorStackPop on an empty stack and
  /// SSErrorStackNoTop when it leaves no list. False only with exceptions disabled.
  bool pushExpressionList(const SSLexExpressionList& list);
  bool popExpressionList();
  bool gotoExpressionList(const SSLexExpressionList& list);
  bool isCurrentExpressionList(unsigned index) const;
  /// The index of the current list. Raises SSErrorCurrentList when it is not one of the table's;
  /// with exceptions disabled that gives sstable::kNone.
  unsigned getCurrentExpressionList() const;

  /// Lexemes returned so far.
  std::size_t lexemeCount() const { return lexemeCount_; }
  SSLexConsumer* consumer() const { return consumer_; }
  const SSLexTable* table() const { return table_; }

  /// Nothing matches at the consumer's pending text. A lexeme that is returned is delivered; null
  /// drops the text. The base raises SSErrorToken with line, column and text.
  virtual SSLexLexeme* error(SSLexConsumer& consumer);
  /// The spelling of a token; a name for "not found" here.
  virtual const char* tokenToConstChar(unsigned token);
  /// A match is dropped: moves the consumer to the mark and returns null. A lexeme that an
  /// override returns is delivered all the same.
  virtual SSLexLexeme* ignore(SSLexConsumer& consumer, unsigned token, SSLexMark& mark);
  /// A match is complete: makes its lexeme and moves the consumer to the mark. Null from an
  /// override drops the match.
  virtual SSLexLexeme* complete(SSLexConsumer& consumer, unsigned token, SSLexMark& mark);
  /// Replaces the token of a lexeme that stands in a keyword table. Tables with keywords are not
  /// loaded, so the base raises SSErrorKeywordIndex.
  virtual void findKeyword(SSLexLexeme* lexeme, unsigned index,
                           SSLexConsumer::SSLexConsumerType type);

 private:
  enum eScan { kEndOfInput, kMatch, kNoMatch };

  eScan scan(const SSLexFinal*& decision, SSLexMark& mark);
  eScan scanMemory(const SSLexFinal*& decision, SSLexMark& mark);
  eScan scanStream(const SSLexFinal*& decision, SSLexMark& mark);
  bool switchList(const SSLexFinal& decision);
  SSLexLexeme* makeLexeme(const SSLexConsumer& consumer, unsigned token, const SSLexMark& mark);
  SSLexLexeme* reportError();
  SSLexLexeme* adjust(SSLexLexeme* lexeme, const SSLexFinal& decision);

  std::unique_ptr<SSLexConsumer> ownConsumer_;
  std::unique_ptr<SSLexTable> ownTable_;
  SSLexConsumer* consumer_ = nullptr;
  const SSLexTable* table_ = nullptr;

  // The state of the scan.
  SSLifo<const SSLexExpressionList*> lists_;
  const SSLexExpressionList* current_ = nullptr;
  std::size_t lexemeCount_ = 0;
  unsigned emptyMatches_ = 0;  // in a row, at one position
};
