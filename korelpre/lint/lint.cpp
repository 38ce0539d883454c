#include "korelpre/lint/lint.h"

#include <algorithm>
#include <memory>

#include "korelpre/directives/programfile.h"
#include "korelpre/errors/notes.h"
#include "korelpre/lint/nameuse.h"
#include "korelpre/lint/rulelint.h"
#include "korelpre/lint/sourcescan.h"
#include "korelpre/lint/statementlint.h"
#include "lib_base/misc.h"

namespace precomp {

void tLint::judge(tProgramFile& file, int readTo) {
  findings_.add(file);
  rules_ = &file.shared().rules;
  includes_.fileCompiled(file);
  const std::vector<tDirectiveLine> directives = directiveLinesOf(file.text);
  judgeUndefs(file, directives);
  const bool named =
      findings_.wants(eWarning::kDefineBelowUse) || findings_.wants(eWarning::kDefineCase);
  // Statements in headers are rare, and have their defines from whoever includes them.
  const std::unique_ptr<tNameUse> names =
      named && file.isMain() ? std::make_unique<tNameUse>(findings_, file) : nullptr;
  tSourceScan scan(findings_, file, names.get(), readTo);
  if (names != nullptr) {
    for (const tDirectiveLine& line : directives) {
      const bool asks =
          line.directive == eDirective::kIfdef || line.directive == eDirective::kIfndef;
      if (asks && scan.isActive(line.line, 1)) names->conditional(line.name, line.line);
    }
  }
  scan.run();
}

void tLint::fileCompiled(tProgramFile& file) {
  judge(file, 0);
}

void tLint::fileFailed(tProgramFile& file, int line) {
  includes_.programFailed();
  judge(file, line);
}

void tLint::directiveIgnored(tProgramFile& file, eDirective directive, int line,
                             std::string_view text) {
  std::string_view rest = trimmed(text);
  rest = trimmed(rest.substr(std::min(rest.find_first_of(" \t"), rest.size())));
  const tLintPlace place{file.names.opened, line, 0, 0};
  if (directive == eDirective::kError) findings_.tell(eWarning::kErrorDirective, place, {rest});
  if (directive != eDirective::kUndef) return;
  const std::string name(rest.substr(0, rest.find_first_of(" \t;/&")));
  const bool defined = file.shared().rules.isDefined(name);
  undefs_[std::string(file.names.opened.view())].push_back({name, line, defined});
}

// In front of a new #define of the name the directive is idle, and does no harm.
void tLint::judgeUndefs(const tProgramFile& file, const std::vector<tDirectiveLine>& directives) {
  const auto found = undefs_.find(std::string(file.names.opened.view()));
  if (found == undefs_.end()) return;
  std::unordered_map<std::string_view, int> lastDefines;
  for (const tDirectiveLine& line : directives) {
    if (line.directive == eDirective::kDefine) lastDefines[line.name] = line.line;
  }
  for (const tUndef& undef : found->second) {
    const auto define = lastDefines.find(undef.name);
    if (define != lastDefines.end() && define->second > undef.line) continue;
    findings_.tell(eWarning::kUndefWithoutEffect, {file.names.opened, undef.line, 0, 0},
                   {undef.name},
                   {undef.defined ? noted("it stays defined") : noted("it is not defined here")});
  }
  undefs_.erase(found);
}

void tLint::includeSkipped(tProgramFile& file, const tString& name, int line) {
  includes_.includeSkipped(file, name, line);
}

void tLint::statementRewritten(tProgramFile& file, tTknString& statement) {
  tStatementLint(findings_, file, statement, steps_).run();
}

std::vector<tDiagnosis> tLint::take() {
  includes_.finish();
  if (rules_ != nullptr) {
    rules_->setObserver(nullptr);  // who hears of statements shall not hear of those of the lint
    tRuleLint(findings_, *rules_).run();
  }
  return findings_.take();
}

}  // namespace precomp
