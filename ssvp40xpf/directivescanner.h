#pragma once

#include <cstddef>
#include <string_view>

#include "ssvp40xpf/korelpretokens.h"
#include "ssvp40xpf/sslex.h"

/// The scanner for the directive processor; its rules are in tools/grammars/korelpre.lex.
class KorelPreLexClass : public SSLex {
 public:
  /// Scans with the built-in table. The consumer must outlive the scanner.
  explicit KorelPreLexClass(SSLexConsumer& consumer) : SSLex(consumer, builtinTable()) {}
  KorelPreLexClass(SSLexConsumer& consumer, const SSLexTable& table) : SSLex(consumer, table) {}

  /// The table "korelpre.dfa", loaded on first use and shared by the whole process.
  static const SSLexTable& builtinTable();

  /// The spelling of a token; "SSLexTokenNotFound" for a number without one.
  const char* tokenToConstChar(unsigned token) override;

  /// How much of a match is the token; the rest is rescanned. Besides file names, whose ends
  /// complete() finds, two rules of the table look ahead beyond their token:
  ///   - a quote and the following line end: an empty string, which is the quote alone;
  ///   - "->END" and a further name character: "->", then a name that begins with END.
  static std::size_t tokenLength(unsigned token, std::string_view match) {
    if (token == korelpre::kTokArrow) return kArrowLength;
    if (token == korelpre::kTokNullStr && match.back() == '\n') return kQuoteLength;
    return match.size();
  }

  /// Whether there is a block comment between the last two lexemes returned.
  bool followsComment() const { return followsComment_; }

  SSLexLexeme* complete(SSLexConsumer& consumer, unsigned token, SSLexMark& mark) override;
  SSLexLexeme* ignore(SSLexConsumer& consumer, unsigned token, SSLexMark& mark) override;

 private:
  static constexpr std::size_t kArrowLength = 2;
  static constexpr std::size_t kQuoteLength = 1;

  bool opensStarComment(const SSLexConsumer& consumer, unsigned token, SSLexMark& mark) const;

  bool commentDropped_ = false;  // since the last lexeme
  bool followsComment_ = false;
};
