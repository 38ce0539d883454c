#pragma once

#include <memory>

#include "korelpre/rules/rule.h"
#include "korelpre/rules/ruledirective.h"

namespace precomp {

/// Where a rule lies.
struct tRuleStorage {
  /// Null for a rule and markers that lie each on their own. Otherwise the rule lies in the arena
  /// in front of its markers, and nothing of them may own a text.
  tMarkerArena* arena = nullptr;
  /// Room for the rule that was taken before the markers were made; null when they are still to be
  /// made.
  void* place = nullptr;
  /// The rule reads its directive again when somebody asks for its markers.
  bool unread = false;
};

/// The key of the rule that a sound directive makes.
tString keyOf(const tRuleDirective& directive);
/// Makes the rule of a sound directive. `context` (may be null) must outlive it.
std::unique_ptr<tBaseXChg> makeRule(const tRuleDirective& directive, tRuleContext* context,
                                    const tRuleStorage& storage = {});

/// Room for any rule.
constexpr std::size_t kLargestRule = sizeof(tCommand) > sizeof(tTranslate) ? sizeof(tCommand)
                                                                           : sizeof(tTranslate);

}  // namespace precomp
