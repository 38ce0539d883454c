#pragma once

#include <string_view>

namespace precomp {

/// How a word of a statement is compared with a keyword of a rule.
struct tWordRule {
  bool abbreviate;     // a prefix of at least four characters will do
  bool caseSensitive;  // bytes are compared as they are
};

/// Less than, equal to or greater than 0 as `keyword` sorts before, matches or sorts after `word`.
///
/// Without abbreviation whole strings are compared; without regard to case letters fold to upper
/// case. With it, `word` matches when it is the keyword or a prefix of it of at least four
/// characters, and folding clears bit 0x20 of every byte.
// Kept on purpose: so "{" and "[" or "`" and "@" are equal in an abbreviating rule.
int compareKeyword(std::string_view keyword, std::string_view word, tWordRule rule);

}  // namespace precomp
