#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tools/tablegen/leximage.h"

namespace tablegen {

/// What bison's XML report says of a grammar and its automaton. Symbols bear the names of the
/// report: a terminal its spelling in quotes, or its name when it has none.
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
    bool enabled;            // false when a conflict was resolved against it
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

/// Reads a report; `file` is the name for messages. Throws tGenError when it is malformed.
tBisonReport readBisonReport(const std::string& text, const std::string& file);

/// A token that a state shifts although it could have reduced.
struct tShiftConflict {
  std::string symbol;
  std::string production;
};

/// The conflicts that were resolved by shifting, one for each state and token. Throws tGenError for
/// a conflict between two reductions.
std::vector<tShiftConflict> shiftConflicts(const tBisonReport& report);

/// Nonterminal symbols, numbered in the order in which they first appear in the productions.
std::map<std::string, std::uint32_t> numberNonterminals(const tBisonReport& report);

/// Lays the automaton out as a parser image. Throws tGenError for what the layout cannot hold:
/// reductions by default and more than 65535 productions.
///
/// States are bison's, one for one. The start production "lines, end of input" gives bison a state
/// behind the end of input, in which it accepts; the image accepts on seeing the end of input, one
/// state earlier, and that last state stays as a row without pairs.
tImage buildYaccImage(const tBisonReport& report);

}  // namespace tablegen
