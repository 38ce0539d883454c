#include "ssvp40xpf/languagescanner.h"

#include "ssvp40xpf/builtintables.h"

const SSLexTable& ALexClass::builtinTable() {
  static const SSLexTable table(builtin::korelDfa.lists, builtin::korelDfa.name);
  return table;
}

const char* ALexClass::tokenToConstChar(unsigned token) {
  if (token == sstable::kTokenEof) return "eof";
  if (token == sstable::kTokenError) return "%error";
  const char* spelling = korel::tokenSpelling(token);
  return spelling != nullptr ? spelling : "SSLexTokenNotFound";
}
