#pragma once

#include <string_view>

#include "korelpre/rules/chainbuilder.h"
#include "korelpre/text/directivewords.h"
#include "korelpre/text/tknstring.h"

namespace precomp {

/// A directive that makes a rule, read by the quick readers or by the grammar. What it points to
/// belongs to who has read it.
struct tRuleDirective {
  eDirective directive = eDirective::kNone;
  int line = 0;           // of its file, from 1
  std::string_view text;  // without what follows its last token

  // Of a #define. The name has a "(" at its end, or none, when there are parameters.
  const tSpcString* name = nullptr;
  const tAutoArray<tSpcString>* parameters = nullptr;  // null when there are none
  const tAutoArray<tSpcString>* value = nullptr;

  // Of the others. Making the rule takes both chains over.
  tChainBuilder* pattern = nullptr;
  tChainBuilder* result = nullptr;  // null for an empty one

  /// Whether a rule can be made: a pattern has to begin with a word, by which it is found.
  bool isSound() const;
};

inline bool tRuleDirective::isSound() const {
  if (pattern == nullptr) return true;
  const bool balanced = pattern->isBalanced() && (result == nullptr || result->isBalanced());
  return balanced && pattern->head() != nullptr && pattern->head()->isIdentifier();
}

}  // namespace precomp
