#pragma once

#include <string>

#include "tools/tablegen/grammarrules.h"
#include "tools/tablegen/grammartokens.h"
#include "tools/tablegen/leximage.h"

namespace tablegen {

/// The header with a grammar's tokens and expression lists: namespace `grammar` with `eToken`,
/// `eList`, `tokenSpelling` and for each group of tokens a predicate such as `isDirectiveToken`.
std::string tokenHeader(const std::string& grammar, const tGrammarTokens& tokens,
                        const tLexSpec& spec);

/// The header with what the program may know of a grammar's productions, in namespace `grammar`:
/// the labels of each nonterminal as an enum such as `eTokenProduction`, for each group of
/// productions a predicate such as `isRuleProduction`, the nonterminals (`eSymbol`), `leftSideOf`
/// and `productionOf`. `report` has its productions by number.
std::string productionHeader(const std::string& grammar, const tGrammarRules& rules,
                             const tBisonReport& report);

/// The source with the spellings and with both images, which ssvp40xpf/builtintables.h declares.
std::string tableSource(const std::string& grammar, const tGrammarTokens& tokens,
                        const tImage& lexImage, const tImage& yaccImage);

}  // namespace tablegen
