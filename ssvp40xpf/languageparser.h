#pragma once

#include <memory>
#include <string_view>

#include "lib_base/stringz.h"
#include "ssvp40xpf/languagescanner.h"
#include "ssvp40xpf/ssyacc.h"
#include "ssvp40xpf/ssyaccwalk.h"

/// The parser for the language. It only recognises a line with a list of expressions and builds no
/// result. Its grammar is in tools/grammars/korel.y.
class AYaccClass : public SSYacc {
 public:
  AYaccClass();
  ~AYaccClass() override;

  /// The table "korel.llr", loaded on first use and shared by the whole process.
  static const SSYaccTable& builtinTable();

  /// Parses a text. Returns true if no exception was thrown. Otherwise `line` (from 1) and `offset`
  /// (in characters from the start of the text) locate the unexpected token, or are 0 if there is
  /// none: the text contains a character that starts no token, or ends inside a string or comment.
  /// `message` and the last argument have no effect.
  bool compile(const char* text, int& line, int& offset, tString& message, int mode);
  /// The same for a text that may contain zeros.
  bool compile(std::string_view text, int& line, int& offset);

  /// A scratch buffer for the caller's texts.
  tString& textBuffer() { return textBuffer_; }
  /// Recognises tokens without a text; independent of compile().
  SSYaccWalk& walk() { return walk_; }

  /// Records the position of the lookahead and raises SSErrorLanguage with its offset as argument,
  /// so the first syntax error ends the parse.
  int error(unsigned state, SSLexLexeme& lookahead) override;
  /// A new element.
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
