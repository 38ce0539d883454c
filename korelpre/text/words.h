#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace precomp {

/// What a word can mean at the start of a statement.
enum class eStatementWord : std::uint8_t {
  kNone,
  kIf,
  kElseIf,
  kElse,
  kEndIf,
  kDo,
  kCase,
  kOtherwise,
  kEndCase,
  kWhile,
  kEndDo,
  kFor,
  kNext,
  kBegin,
  kSequence,
  kRecover,
  kEnd,
  kTry,
  kCatch,
  kEndTry,
  kExit,
  kLoop,
  kReturn,
  kBreak,
  kFunction,  // FUNCTION and PROCEDURE
  kMethod,
  kMainFunction,
  kModifier,  // a word that may stand in front of FUNCTION
  kStatic,
  kLocal,
  kDeclaration,  // PRIVATE, PUBLIC and others
  kNamespace,    // and USING
  kDebugMarker,
};

/// kNone for a word without a meaning of its own. Upper and lower case are the same, and many words
/// may be abbreviated.
eStatementWord statementWord(std::string_view word);

namespace statementwords {
/// For each pair of the low five bits of a word's first two letters: 1 + the place of the first
/// word that begins so, or 0.
extern const std::array<std::uint8_t, 1024> kPlaces;
inline unsigned pairOf(char first, char second) {
  return (static_cast<unsigned char>(first) & 31U) << 5 |
         (static_cast<unsigned char>(second) & 31U);
}
}  // namespace statementwords

/// False when no word with a meaning begins with these two letters.
inline bool mayBeStatementWord(char first, char second) {
  return statementwords::kPlaces[statementwords::pairOf(first, second)] != 0;
}

/// The least that an abbreviation keeps of a keyword.
inline constexpr std::size_t kShortestAbbreviation = 4;

/// How a word of a statement is compared with a keyword of a rule.
struct tWordRule {
  bool abbreviate;     // a prefix of at least kShortestAbbreviation characters will do
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
