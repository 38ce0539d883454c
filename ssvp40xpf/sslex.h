#pragma once

#include <cstddef>
#include <memory>

#include "ssvp40xpf/sslexconsumer.h"
#include "ssvp40xpf/sslexlexeme.h"
#include "ssvp40xpf/sslextable.h"
#include "ssvp40xpf/sssto.h"

/// A table-driven scanner. The longest match of the current expression list becomes the next
/// lexeme; a match may push, pop or replace the expression list, and may be dropped.
class SSLex : public SSObject, public SSExceptionPresent {
 public:
  /// A scanner without a table and consumer; both are set later.
  SSLex();
  /// The table and the consumer must outlive the scanner.
  SSLex(SSLexConsumer& consumer, const SSLexTable& table);
  /// Scans a file with a table loaded from a file; owns both.
  SSLex(const char* file, const char* table);
  virtual ~SSLex();

  void setConsumer(SSLexConsumer& consumer);
  void setTable(const SSLexTable& table);
  /// Resets the stack to list 0; the consumer keeps its position.
  void reset();

  /// The next lexeme, with a reference that the caller releases; null at the end of the input or,
  /// with exceptions disabled, after an error. After an exception, scanning resumes after the text
  /// that caused it.
  SSLexLexeme* operator++();

  /// Switch expression lists explicitly. Popping raises SSErrorStackPop on an empty stack and
  /// SSErrorStackNoTop if no list is left. False only with exceptions disabled.
  bool pushExpressionList(const SSLexExpressionList& list);
  bool popExpressionList();
  bool gotoExpressionList(const SSLexExpressionList& list);
  bool isCurrentExpressionList(unsigned index) const;
  /// The index of the current list. Raises SSErrorCurrentList if the table has no such list;
  /// returns sstable::kNone with exceptions disabled.
  unsigned getCurrentExpressionList() const;

  /// The number of lexemes returned so far.
  std::size_t lexemeCount() const { return lexemeCount_; }
  SSLexConsumer* consumer() const { return consumer_; }
  const SSLexTable* table() const { return table_; }

  /// Called if nothing matches the consumer's pending text. A returned lexeme is delivered; null
  /// drops the text. The base raises SSErrorToken with line, column and text.
  virtual SSLexLexeme* error(SSLexConsumer& consumer);
  /// The spelling of a token; the base returns a name for "not found".
  virtual const char* tokenToConstChar(unsigned token);
  /// Called for a dropped match: moves the consumer to the mark and returns null. A lexeme returned
  /// by an override is delivered nevertheless.
  virtual SSLexLexeme* ignore(SSLexConsumer& consumer, unsigned token, SSLexMark& mark);
  /// Called for a complete match: makes its lexeme and moves the consumer to the mark. An override
  /// that returns null drops the match.
  virtual SSLexLexeme* complete(SSLexConsumer& consumer, unsigned token, SSLexMark& mark);
  /// Replaces the token of a lexeme found in a keyword table. Tables with keywords are rejected, so
  /// the base raises SSErrorKeywordIndex.
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
