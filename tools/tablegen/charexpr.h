#pragma once

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tablegen {

/// Character codes from low to high, both included.
struct tCharRange {
  std::uint32_t low;
  std::uint32_t high;
};

/// The largest code a negated class holds: all of 16-bit input.
constexpr std::uint32_t kMaxCode = 0xFFFF;

/// A regular expression over character codes, as a tree.
struct tCharExpr {
  enum eKind {
    kSet,       // one character out of `ranges`
    kSequence,  // all parts, one after the other; without parts the empty text
    kChoice,    // any one of the parts
    kOptional,  // the one part or nothing
    kMany,      // the one part once or more often
  };

  eKind kind = kSequence;
  std::vector<tCharRange> ranges;  // ascending, apart from each other
  std::vector<tCharExpr> parts;
};

/// A fault in the text of an expression.
class tCharExprError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

using tDefinitions = std::map<std::string, tCharExpr, std::less<>>;

/// Reads the expression at the start of `text` and cuts it off; it ends at the first blank outside
/// quotes, classes and parentheses, or at the end of the text. Throws tCharExprError.
///
///   a  \n \t \r \\ \x2A \x{2A}  a character; any other punctuation may follow a backslash too
///   "text"  'text'              a text; between single quotes upper or lower case are the same and
///                               a "~" stands behind its shortest abbreviation
///   [a-z_]  [^a-z_]             one character that is, or is not, among these
///   {name}                      a definition
///   ab  a|b  (a)  a?  a*  a+    as everywhere
tCharExpr parseCharExpr(std::string_view& text, const tDefinitions& definitions);

/// Sorts ranges and joins those that touch.
std::vector<tCharRange> normalised(std::vector<tCharRange> ranges);

}  // namespace tablegen
