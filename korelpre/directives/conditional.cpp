#include "korelpre/directives/conditional.h"

#include "korelpre/directives/programfile.h"
#include "korelpre/headers/headerrecorder.h"

namespace precomp {

void openConditional(tProgramFile& file, eDirective directive, const std::string_view* name,
                     int line) {
  if (name == nullptr) {
    file.conditionals.open(line, true, true);
    return;
  }
  const tSharedState& shared = file.shared();
  const bool defined = shared.rules.isDefined(*name);
  if (shared.recorder != nullptr) shared.recorder->tested(*name, defined);
  const bool wanted = directive == eDirective::kIfdef;
  file.conditionals.open(line, defined != wanted, *name == "ignore");
}

void turnConditional(tProgramFile& file, int line) {
  if (file.conditionals.empty()) file.raise(eSourceError::kElseWithoutIfdef, line);
  file.conditionals.turn();
}

void closeConditional(tProgramFile& file, int line) {
  if (file.conditionals.empty()) file.raise(eSourceError::kUnclosedConditional, line);
  file.conditionals.close();
}

void carryOutConditional(tProgramFile& file, eDirective directive, std::string_view name,
                         int line) {
  const bool skipped = file.conditionals.skipping();  // See note [skipped regions].
  if (!skipped) file.currentLine = line;
  switch (directive) {
    case eDirective::kIfdef:
    case eDirective::kIfndef:
      file.lines.reset(line);
      openConditional(file, directive, skipped ? nullptr : &name, skipped ? 0 : line);
      break;
    case eDirective::kElse:
      turnConditional(file, line);
      break;
    default:
      closeConditional(file, line);
      break;
  }
  file.lines.addDirective(line);
}

}  // namespace precomp
