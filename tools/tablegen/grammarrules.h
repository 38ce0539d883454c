#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

#include "tools/tablegen/yaccimage.h"

namespace tablegen {

/// A production as written in the grammar. A comment at the end of its right side holds the
/// annotations that the program needs:
///
///     | "_include" includeName   /* kInclude @group yields = 205 */
///
/// - kInclude: its label, which names its number in the program.
/// - @group: a named set of productions that the program tests for.
/// - yields: its conflicts are expected and resolved in favour of a shift.
/// - = 205: its number. By default productions are numbered from 1 in source order; an explicit
///   number allows adding a production anywhere without renumbering the others.
///
/// A comment before a production, as in `token:  /* 73 */`, gives its expected number.
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

/// The productions of a bison grammar, in source order.
class tGrammarRules {
 public:
  /// Reads the part after the first "%%"; `file` is the name used in messages. Throws tGenError for
  /// unknown text or annotations, for duplicate labels and numbers, and if only some productions of
  /// a nonterminal have labels.
  tGrammarRules(std::istream& grammar, const std::string& file);

  /// The productions ordered by number; number 1 is at index 0.
  std::vector<const tGrammarRule*> byNumber() const;

  /// Renumbers the productions of a report from bison's numbers to these. Throws tGenError if it is
  /// not a report on this grammar.
  void number(tBisonReport& report) const;

  /// Checks that exactly the productions that lose a conflict are annotated with "yields".
  void expectConflicts(const std::vector<tShiftConflict>& conflicts) const;

  const std::vector<tGrammarRule>& all() const { return rules_; }

 private:
  void numberRules(const std::vector<std::uint32_t>& stated);
  void checkLabels() const;

  std::string file_;
  std::vector<tGrammarRule> rules_;
};

}  // namespace tablegen
