#pragma once

#include <vector>

#include "lib_base/stringz.h"

namespace precomp {

class tBaseXChg;

/// A directive that includes a file: line 0 of the main file for the standard header.
struct tIncludePlace {
  tString file;
  int line = 0;
};

/// All that can be told of one message about a source. Names of files are as they were opened.
struct tDiagnosis {
  enum eSeverity { kError, kTrace, kResult };

  eSeverity severity = kError;
  int code = 0;        // the number of a numbered error, the result of a kResult
  tString slug;        // the same as a name, for what has no number too
  tString message;     // in English, without a position
  tString file;        // empty: of the run as a whole
  int line = 0;        // from 1; 0 when it is not about a line
  int column = 0;      // in bytes from 1; 0 when it is not known
  tString sourceLine;  // without its line end; empty where `line` is 0
  std::vector<tIncludePlace> includedFrom;  // innermost first
  std::vector<const tBaseXChg*> rules;      // applied to the statement in this order; borrowed
};

}  // namespace precomp
