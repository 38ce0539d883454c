#pragma once

#include "korelpre/rules/rulemaker.h"
#include "lib_base/stringz.h"

namespace precomp {

class tProgramFile;
struct tSourceLine;

/// Carries out a directive that makes a rule: a #define, #command, #xcommand, #translate or
/// #xtranslate. The rule of a header enters the tables at once, that of the main file when its line
/// is reached. What is wrong with the directive is raised.
void carryOutRule(tProgramFile& file, const tRuleDirective& directive,
                  const tRuleStorage& storage = {});

/// Enters the rules that a directive of the main file has left on a line. False when there are
/// none.
bool enterPending(tProgramFile& file, tSourceLine& entry);

/// Removes the only definition of a name from the table, and all those of the main file that wait
/// to enter it.
void removeDefinitions(tProgramFile& file, const tString& name);

}  // namespace precomp
