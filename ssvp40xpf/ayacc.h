#pragma once

#include <memory>
#include <string_view>

#include "lib_base/stringz.h"
#include "ssvp40xpf/alex.h"
#include "ssvp40xpf/ssyacc.h"
#include "ssvp40xpf/ssyaccwalk.h"

/// The parser of the language: it recognises a line with a list of expressions and makes nothing
/// of it. Its grammar stands in tools/grammars/korel.y.
class AYaccClass : public SSYacc {
 public:
  AYaccClass();
  ~AYaccClass() override;

  /// The table "korel.llr", loaded at the first call and shared by the whole process.
  static const SSYaccTable& builtinTable();

  /// Parses a text. True when the parse ended without an exception. Otherwise `line` (from 1) and
  /// `offset` (characters from the start of the text) are those of the token that cannot continue
  /// it, or 0 when there is none: the text has a character that begins no token, or ends inside a
  /// string or comment. `message` and the last argument have no effect.
  bool compile(const char* text, int& line, int& offset, tString& message, int mode);
  /// The same for a text that may hold zeros.
  bool compile(std::string_view text, int& line, int& offset);

  /// A buffer for the texts that a caller composes.
  tString& textBuffer() { return textBuffer_; }
  /// Recognises without a text; independent of compile().
  SSYaccWalk& walk() { return walk_; }

  /// Notes where the lookahead stands and raises SSErrorLanguage with its offset as the argument,
  /// so the first syntax error ends the parse.
  int error(unsigned state, SSLexLexeme& lookahead) override;
  /// A fresh element.
  SSYaccStackElement* reduce(unsigned production, unsigned size) override;

 private:
  tString textBuffer_;
  SSYaccWalk walk_;

  // The current compile.
  tString text_;
  std::unique_ptr<SSLexConsumer> consumer_;
  std::unique_ptr<ALexClass> lexer_;
  int errorLine_ = 0;
  int errorOffset_ = 0;
};
