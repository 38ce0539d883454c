#pragma once

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tablegen {

/// Character codes from low to high, inclusive.
struct tCharRange {
  std::uint32_t low;
  std::uint32_t high;
};

/// The largest code in a negated class: that of 16-bit input.
constexpr std::uint32_t kMaxCode = 0xFFFF;

/// A regular expression over character codes, as a tree.
struct tCharExpr {
  enum eKind {
    kSet,       // one character of `ranges`
    kSequence,  // all parts in order; the empty string if there are none
    kChoice,    // one of the parts
    kOptional,  // its only part, or nothing
    kMany,      // its only part, once or more
  };

  eKind kind = kSequence;
  std::vector<tCharRange> ranges;  // ascending and disjoint
  std::vector<tCharExpr> parts;
};

/// A syntax error in an expression.
class tCharExprError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

using tDefinitions = std::map<std::string, tCharExpr, std::less<>>;

/// Parses the expression at the start of `text` and removes it; it ends at the first blank outside
/// quotes, classes and parentheses, or at the end of the text. Throws tCharExprError.
///
///   a  \n \t \r \\ \x2A \x{2A}  a character; any punctuation can be escaped with a backslash
///   "text"  'text'              a string; single quotes make it case-insensitive, and a "~" in it
///                               marks the end of the shortest abbreviation
///   [a-z_]  [^a-z_]             one character that is, or is not, among these
///   {name}                      a definition
///   ab  a|b  (a)  a?  a*  a+    the usual operators
tCharExpr parseCharExpr(std::string_view& text, const tDefinitions& definitions);

/// Sorts ranges and merges adjacent and overlapping ones.
std::vector<tCharRange> normalised(std::vector<tCharRange> ranges);

}  // namespace tablegen
