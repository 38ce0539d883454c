#pragma once

#include "korelpre/text/tknstring.h"
#include "ssvp40xpf/languageparser.h"

namespace precomp {

/// Narrows the tokens `first` to `last` of a statement (both included) to those that form one
/// expression, or a list of expressions separated by commas: `last` becomes the index of the token
/// in front of the first one that cannot continue it. It becomes `first` - 1 when the very first
/// token cannot begin one. `first` stays, and `last` never grows.
///
/// An unbalanced ")" ends the expression before it whatever stands in front. The end is kept as it
/// is when the expression is unfinished there, and when a character has no meaning in the language.
///
/// `parser` lends its buffers; nothing is allocated once they have grown.
void validateExpr(AYaccClass* parser, tTknString* tokens, int& first, int& last);

/// The same by printing the tokens in parentheses and compiling the text: the definition of what
/// validateExpr answers, and many times slower.
void validateExprByText(AYaccClass* parser, tTknString* tokens, int& first, int& last);

}  // namespace precomp
