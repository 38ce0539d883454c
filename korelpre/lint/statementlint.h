#pragma once

#include <cstdint>
#include <string>

#include "korelpre/lint/findings.h"

namespace precomp {

class tBaseXChg;
class tProgramFile;
class tTknString;

/// Judges a statement to which no rule applies any more: one that begins as a command does and is
/// none, calls of macros with another number of arguments, and operands with nothing between them.
class tStatementLint {
 public:
  /// All must outlive this object. `steps` is what the matcher may still take for it.
  tStatementLint(tFindings& findings, tProgramFile& file, tTknString& statement,
                 std::uint64_t& steps);

  void run();

 private:
  struct tTrial;

  void judgeCommand();
  bool isOwnStatement() const;
  tTrial farthestRule();
  void judgeKey();
  const tBaseXChg* ruleWithKey(const std::string& key);
  void judgeOperands();
  void tellCommand(const tTrial& farthest);
  void judgeCall(int name);
  int argumentsAt(int bracket);
  tLintPlace placeOf(int token) const;

  tFindings& findings_;
  tProgramFile& file_;
  tTknString& statement_;
  std::uint64_t& steps_;
  int tokens_ = 0;  // that were looked at to count arguments
};

}  // namespace precomp
