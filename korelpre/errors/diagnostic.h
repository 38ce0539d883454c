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

/// What is told beside a message: where something else stands that it is about, or what to do.
struct tNote {
  tString message;  // in English
  tString file;     // as it was opened; empty: no place
  int line = 0;     // as in tDiagnosis, and so are the columns
  int column = 0;
  int endColumn = 0;
  tString sourceLine;  // without its line end; empty: not known
  tString translated;  // in the language of the run, control characters shown; empty: as it is
};

/// All that can be told of one message about a source. Names of files are as they were opened.
struct tDiagnosis {
  enum eSeverity { kError, kTrace, kResult, kWarning };

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
  int endColumn = 0;                        // one behind the last byte; 0 when it is not known
  std::vector<tNote> notes;
  tString translated;  // as in tNote
};

}  // namespace precomp
