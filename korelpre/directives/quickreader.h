#pragma once

#include "korelpre/rules/definereader.h"
#include "korelpre/rules/rulereader.h"

namespace precomp {

class tProgramFile;

/// Reads the directives that headers are full of straight from the text and carries them out: those
/// that make a rule, and the conditionals. Forms that are out of the ordinary, and what may be
/// wrong, are left to scanner and grammar.
class tQuickReader {
 public:
  /// Carries out the directive whose line, number `line`, starts at `start` in the file's text.
  /// False, with nothing done, when this is none or must be left to the grammar.
  bool take(tProgramFile& file, const char* start, int line);

  // After take() has answered true.
  /// Behind the line feed of the directive's last line.
  const char* lineEnd() const { return lineEnd_; }
  int lines() const { return lines_; }

 private:
  bool takeDefine(tProgramFile& file, const char* start, int line);
  bool takeRule(tProgramFile& file, const char* start, int line);
  bool takeConditional(tProgramFile& file, eDirective directive, const char* p, int line);
  void passed(const tDirectivePieces& directive);

  tRuleReader rules_;
  tDefineReader defines_;
  const char* lineEnd_ = nullptr;
  int lines_ = 0;
};

}  // namespace precomp
