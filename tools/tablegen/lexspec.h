#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

#include "tools/tablegen/charexpr.h"
#include "tools/tablegen/grammartokens.h"

namespace tablegen {

/// What happens when the longest match ends in a state of this rule: the words of a final-state
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

/// One expression list. Of two rules that match equally much the earlier one wins.
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
/// Lists are numbered from 0 in the order of their sections and may be used before they are
/// opened. The token "-" stands for none.
struct tLexSpec {
  std::string file;
  std::vector<tLexList> lists;
};

/// Reads a scanner source; `file` is the name for messages. Throws tGenError.
tLexSpec readLexSpec(std::istream& source, const std::string& file, const tGrammarTokens& tokens);

}  // namespace tablegen
