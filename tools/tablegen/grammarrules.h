#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

#include "tools/tablegen/yaccimage.h"

namespace tablegen {

/// A production as the grammar's text has it. What the program wants to know of it stands in a
/// comment at the end of its right side:
///
///     | "_include" includeName   /* kInclude @group yields = 205 */
///
/// - kInclude: its label, the name of its number in the program.
/// - @group: a set of productions that the program asks for.
/// - yields: its conflicts are known, and a shift wins them.
/// - = 205: its number. Without one, productions are numbered from 1 in the order of the text; with
///   one, it stands where it belongs and the others keep their numbers.
///
/// A comment in front of a production, such as the one in `token:  /* 73 */`, is the number that it
/// is expected to have.
struct tGrammarRule {
  std::string left;
  std::size_t symbols = 0;  // of the right side
  std::string label;
  std::vector<std::string> groups;
  bool yields = false;
  std::uint32_t number = 0;
  std::uint32_t expected = 0;
  long line = 0;
};

/// The productions of a bison grammar, in its order.
class tGrammarRules {
 public:
  /// Reads what stands behind the first "%%"; `file` is the name for messages. Throws tGenError for
  /// text or a comment that it does not understand, for a label or a number that stands twice, and
  /// when only some productions of a nonterminal have labels.
  tGrammarRules(std::istream& grammar, const std::string& file);

  /// The productions by number, from 1: the first is at index 0.
  std::vector<const tGrammarRule*> byNumber() const;

  /// Gives the productions of a report their numbers of here, in place of bison's. Throws tGenError
  /// when it is not the report of this grammar.
  void number(tBisonReport& report) const;

  /// Checks that those productions that yield in a conflict, and no others, are said to.
  void expectConflicts(const std::vector<tShiftConflict>& conflicts) const;

  const std::vector<tGrammarRule>& all() const { return rules_; }

 private:
  void numberRules(const std::vector<std::uint32_t>& stated);
  void checkLabels() const;

  std::string file_;
  std::vector<tGrammarRule> rules_;
};

}  // namespace tablegen
