#pragma once

#include <string_view>

#include "korelpre/text/tknstring.h"

class SSLexLexeme;

namespace precomp {

/// Makes the tokens of a plain statement (see linescan.h) that starts at `start`: the same that
/// scanner and grammar make. They refer to the text, which must outlive them. `line` is that of
/// the first token, from 1. False when there are more than kMostSourceTokens, of which it then has
/// those.
bool tokenisePlain(const char* start, const char* end, int line, tTknString& statement);

/// The kind of token that the grammar makes of a scanner's token; 0 for one that it never makes a
/// statement's token of.
std::uint32_t kindOfToken(std::uint32_t token);

/// Makes the token of a lexeme that is no blank, as the output must show it: a string has its
/// quotes and an escaped character its backslash again. It refers to `text`, that of the scanner.
void readToken(const SSLexLexeme& lexeme, std::uint32_t kind, std::string_view text,
               tSpcString& token);
/// The spacing that a lexeme of blanks makes.
tString spacingOf(const SSLexLexeme& lexeme);

}  // namespace precomp
