#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

#include "tools/tablegen/charexpr.h"
#include "tools/tablegen/grammartokens.h"

namespace tablegen {

/// The action of a rule, applied when the longest match is this rule's: the words of a final-state
/// record.
struct tDecision {
  std::uint32_t token = 0;
  std::uint32_t list = 0;
  std::uint32_t flags = 0;

  bool operator==(const tDecision&) const = default;
};

struct tLexRule {
  tCharExpr expr;
  tDecision decision;
  long line = 0;
};

/// An expression list. Of two rules with equally long matches, the earlier one wins.
struct tLexList {
  std::string name;
  std::vector<tLexRule> rules;
};

/// A scanner source:
///
///   # comment
///   %let NAME EXPRESSION
///   %list NAME
///   EXPRESSION TOKEN [drop] [push LIST | goto LIST | pop]
///
/// Lists are numbered from 0 in the order of their sections and may be referenced before they are
/// defined. The token "-" means none.
struct tLexSpec {
  std::string file;
  std::vector<tLexList> lists;
};

/// Reads a scanner source; `file` is the name used in messages. Throws tGenError.
tLexSpec readLexSpec(std::istream& source, const std::string& file, const tGrammarTokens& tokens);

}  // namespace tablegen
