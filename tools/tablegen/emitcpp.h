#pragma once

#include <string>

#include "tools/tablegen/grammarrules.h"
#include "tools/tablegen/grammartokens.h"
#include "tools/tablegen/leximage.h"

namespace tablegen {

/// The header with a grammar's tokens and expression lists: namespace `grammar` with `eToken`,
/// `eList`, `tokenSpelling` and, for each token group, a predicate such as `isDirectiveToken`.
std::string tokenHeader(const std::string& grammar, const tGrammarTokens& tokens,
                        const tLexSpec& spec);

/// The header with a grammar's productions: namespace `grammar` with the labels of each nonterminal
/// as an enum such as `eTokenProduction`, a predicate such as `isRuleProduction` for each group of
/// productions, the nonterminals (`eSymbol`), `leftSideOf` and `productionOf`. The productions of
/// `report` are ordered by number.
std::string productionHeader(const std::string& grammar, const tGrammarRules& rules,
                             const tBisonReport& report);

/// The source file with the spellings and both images, declared in ssvp40xpf/builtintables.h.
std::string tableSource(const std::string& grammar, const tGrammarTokens& tokens,
                        const tImage& lexImage, const tImage& yaccImage);

}  // namespace tablegen
