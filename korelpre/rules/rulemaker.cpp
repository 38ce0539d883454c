#include "korelpre/rules/rulemaker.h"

#include <type_traits>

namespace precomp {

namespace {

// An argument may be made by calling it, when there is memory for the rule that takes it over.
template <class tArgument>
decltype(auto) valueOf(const tArgument& argument) {
  if constexpr (std::is_invocable_v<tArgument>) {
    return argument();
  } else {
    return (argument);
  }
}

template <class tRule, class... tArguments>
std::unique_ptr<tBaseXChg> construct(void* place, const tArguments&... arguments) {
  tBaseXChg* const rule = place != nullptr ? new (place) tRule(valueOf(arguments)...)
                                           : new tRule(valueOf(arguments)...);
  return std::unique_ptr<tBaseXChg>(rule);
}

std::unique_ptr<tBaseXChg> makeDefine(const tRuleDirective& directive, tRuleContext* context,
                                      tMarkerArena* arena) {
  void* const place = arena != nullptr ? arena->allocate(kLargestRule) : nullptr;
  if (directive.parameters == nullptr) {
    return construct<tTranslate>(place, context, *directive.name, *directive.value, arena);
  }
  return construct<tTranslate>(place, context, *directive.name, *directive.parameters,
                               *directive.value, arena);
}

// Takes the chains over, unless the rule is to read them again.
std::unique_ptr<tBaseXChg> makePatternRule(const tRuleDirective& directive, tRuleContext* context,
                                           const tRuleStorage& storage) {
  const tString key = keyOf(directive);
  const auto chainOf = [&](tChainBuilder* chain) {
    return chain == nullptr || storage.unread ? nullptr : chain->release();
  };
  const auto pattern = [&] { return chainOf(directive.pattern); };
  const auto result = [&] { return chainOf(directive.result); };
  const tWordRule wordRule{.abbreviate = abbreviates(directive.directive),
                           .caseSensitive = directive.directive == eDirective::kDefine};
  if (isCommand(directive.directive)) {
    return construct<tCommand>(storage.place, context, wordRule, pattern, result, key,
                               storage.arena);
  }
  return construct<tTranslate>(storage.place, context, wordRule, pattern, result, key,
                               storage.arena);
}

}  // namespace

// The name of a define with parameters ends with their bracket.
tString keyOf(const tRuleDirective& directive) {
  if (directive.pattern != nullptr) return directive.pattern->head()->token();
  const tString& name = *directive.name;
  return name.substr(0, name.size() - (directive.parameters != nullptr ? 1 : 0));
}

std::unique_ptr<tBaseXChg> makeRule(const tRuleDirective& directive, tRuleContext* context,
                                    const tRuleStorage& storage) {
  if (directive.pattern == nullptr && !storage.unread) {
    return makeDefine(directive, context, storage.arena);
  }
  std::unique_ptr<tBaseXChg> rule = makePatternRule(directive, context, storage);
  if (storage.unread) rule->readLater();
  return rule;
}

}  // namespace precomp
