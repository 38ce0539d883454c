#pragma once

#include <string>

#include "ssvp40xpf/sslex.h"
#include "tests/ssvp40xpf/samples.h"

/// Scans with the sample table: reads lexemes to the end and writes each as
/// "token text line:column@position", one a line.
namespace scanning {

inline const SSLexTable& lexTable() {
  static const tableimage::tImage image = samples::lexImage();
  static const SSLexTable loaded(image.data(), "sample");
  return loaded;
}

inline std::string textOf(const SSLexLexeme& lexeme) {
  if (lexeme.isByteText()) return std::string(lexeme.text(), lexeme.length());
  std::string text;
  for (std::size_t i = 0; i < lexeme.length(); ++i) {
    text += static_cast<char>(lexeme.wideText()[i]);
  }
  return text;
}

inline std::string scanAll(SSLex& lex) {
  std::string out;
  while (true) {
    const SSRef<SSLexLexeme> lexeme(++lex);
    if (!lexeme) return out;
    out += std::to_string(lexeme->token()) + " " + textOf(*lexeme) + " " +
           std::to_string(lexeme->line()) + ":" + std::to_string(lexeme->offset()) + "@" +
           std::to_string(lexeme->absoluteOffset()) + "\n";
  }
}

inline std::string scanAll(SSLexConsumer& consumer) {
  SSLex lex(consumer, lexTable());
  return scanAll(lex);
}

}  // namespace scanning
