#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "korelpre/directives/sourcewatcher.h"
#include "korelpre/lint/directivelines.h"
#include "korelpre/lint/findings.h"
#include "korelpre/lint/includelint.h"

namespace precomp {

class tRuleSet;

/// Looks at a program while it is preprocessed, and finds what is allowed and hardly meant. A
/// session owns one when warnings are wanted.
class tLint final : public tSourceWatcher {
 public:
  explicit tLint(const tWarningSet& wanted) : findings_(wanted) {}

  void fileCompiled(tProgramFile& file) override;
  void fileFailed(tProgramFile& file, int line) override;
  void directiveIgnored(tProgramFile& file, eDirective directive, int line,
                        std::string_view text) override;
  void includeSkipped(tProgramFile& file, const tString& name, int line) override;
  void statementRewritten(tProgramFile& file, tTknString& statement) override;

  /// What has been found in the program, which has been preprocessed or has an error.
  std::vector<tDiagnosis> take();

 private:
  void judge(tProgramFile& file, int readTo);

  struct tUndef {
    std::string name;
    int line;
    bool defined;
  };

  void judgeUndefs(const tProgramFile& file, const std::vector<tDirectiveLine>& directives);

  tFindings findings_;
  std::uint64_t steps_ = 30'000'000;  // that the matcher may take for statements judged again
  tRuleSet* rules_ = nullptr;         // of the program
  tIncludeLint includes_{findings_};
  std::unordered_map<std::string, std::vector<tUndef>> undefs_;  // by the file they stand in
};

}  // namespace precomp
