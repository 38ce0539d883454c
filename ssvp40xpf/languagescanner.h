#pragma once

#include "ssvp40xpf/koreltokens.h"
#include "ssvp40xpf/sslex.h"

/// The scanner for the language; its rules are in tools/grammars/korel.lex.
class ALexClass : public SSLex {
 public:
  /// Scans with the built-in table. The consumer must outlive the scanner.
  explicit ALexClass(SSLexConsumer& consumer) : SSLex(consumer, builtinTable()) {}
  ALexClass(SSLexConsumer& consumer, const SSLexTable& table) : SSLex(consumer, table) {}
  /// Scans a file with a table loaded from a file.
  ALexClass(const char* file, const char* table) : SSLex(file, table) {}

  /// The table "korel.dfa", loaded on first use and shared by the whole process.
  static const SSLexTable& builtinTable();

  /// The spelling of a token; "SSLexTokenNotFound" for a number without one.
  const char* tokenToConstChar(unsigned token) override;
};
