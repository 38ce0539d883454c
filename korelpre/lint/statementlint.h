#pragma once

#include "korelpre/lint/findings.h"

namespace precomp {

class tProgramFile;
class tTknString;

/// Judges a statement to which no rule applies any more: one that begins as a command does and is
/// none, and calls of macros with another number of arguments.
class tStatementLint {
 public:
  /// All must outlive this object.
  tStatementLint(tFindings& findings, tProgramFile& file, tTknString& statement);

  void run();

 private:
  struct tTrial;

  void judgeCommand();
  bool isOwnStatement() const;
  tTrial farthestRule() const;
  void tellCommand(const tTrial& farthest);
  void judgeCall(int name);
  int argumentsAt(int bracket) const;
  tLintPlace placeOf(int token) const;

  tFindings& findings_;
  tProgramFile& file_;
  tTknString& statement_;
};

}  // namespace precomp
