#pragma once

#include <string>

#include "tools/tablegen/grammartokens.h"
#include "tools/tablegen/leximage.h"

namespace tablegen {

/// The header with a grammar's tokens and expression lists: namespace `grammar` with `eToken`,
/// `eList` and `tokenSpelling`.
std::string tokenHeader(const std::string& grammar, const tGrammarTokens& tokens,
                        const tLexSpec& spec);

/// The source with the spellings and with both images, which ssvp40xpf/builtintables.h declares.
std::string tableSource(const std::string& grammar, const tGrammarTokens& tokens,
                        const tImage& lexImage, const tImage& yaccImage);

}  // namespace tablegen
