#pragma once

#include <cstdint>

namespace precomp {

/// What a token of a statement is: the number of the directive grammar's production of `token`
/// that made it. Tokens made from bare text have kind 0.
enum eTokenKind : std::uint32_t {
  kKindFirst = 73,
  kKindNullString = 73,
  kKindDot = 80,
  kKindAmpersand = 82,
  kKindComma = 83,
  kKindParenOpen = 99,
  kKindParenClose = 100,
  kKindBracketOpen = 101,
  kKindBracketClose = 102,
  kKindBraceOpen = 103,
  kKindBraceClose = 104,
  kKindSemicolon = 114,
  kKindNumber = 115,
  kKindIdentifier = 116,
  kKindString = 117,
  kKindEscaped = 119,
  kKindSpace = 120,
  kKindIgnoreEol = 121,
  kKindIgnoreComment = 122,
  kKindSingleQuoted = 123,
  kKindKeyword = 125,
  kKindMemvar = 126,
  kKindLast = 133,
  kKindSql = 134,  // an embedded SQL block
};

}  // namespace precomp
