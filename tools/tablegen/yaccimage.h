#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tools/tablegen/leximage.h"

namespace tablegen {

/// A grammar and its automaton as described by bison's XML report. Symbols are named as in the
/// report: a terminal by its quoted spelling, or by its name if it has none.
struct tBisonReport {
  struct tProduction {
    std::string left;
    std::vector<std::string> right;
  };
  struct tTransition {
    std::string symbol;
    std::uint32_t state;
  };
  struct tReduction {
    std::string symbol;
    std::string production;  // a number, or "accept"
    bool enabled;            // false if a conflict was resolved against it
  };
  struct tState {
    std::vector<tTransition> shifts;
    std::vector<tTransition> gotos;
    std::vector<tReduction> reductions;
    long line = 0;  // in the report
  };

  std::string file;
  std::vector<tProduction> productions;
  std::map<std::string, std::uint32_t> terminals;  // their token numbers
  std::vector<tState> states;
};

/// Reads a report; `file` is the name used in messages. Throws tGenError if it is malformed.
tBisonReport readBisonReport(const std::string& text, const std::string& file);

/// A token that a state shifts although it could also reduce.
struct tShiftConflict {
  std::string symbol;
  std::string production;
};

/// The conflicts resolved by shifting, one per state and token. Throws tGenError for a
/// reduce/reduce conflict.
std::vector<tShiftConflict> shiftConflicts(const tBisonReport& report);

/// Nonterminal symbols, numbered in order of first appearance in the productions.
std::map<std::string, std::uint32_t> numberNonterminals(const tBisonReport& report);

/// Lays the automaton out as a parser image. Throws tGenError for what the layout cannot represent:
/// default reductions and more than 65535 productions.
///
/// States correspond one to one to bison's. For the start production "lines, end of input" bison
/// has a state after the end of input, in which it accepts; the image accepts on seeing the end of
/// input, one state earlier, and that last state remains as a row without pairs.
tImage buildYaccImage(const tBisonReport& report);

}  // namespace tablegen
