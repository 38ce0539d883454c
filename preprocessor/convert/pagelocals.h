#pragma once

#include <vector>

#include "lib_base/stringz.h"
#include "preprocessor/convert/pagecode.h"

/// One variable of a LOCAL statement, its text on one line and without comments.
struct tPageLocal {
  tString name;         // in upper case
  tString declaration;  // the name, and bounds or a type when they are given
  tString value;        // what it is initialised with; may be empty
};

/// Reads the variables behind the word LOCAL. `code` stands behind that word, afterwards behind the
/// piece that ends the statement, which is returned. Counts the line ends before it in `lines`.
ePiece readPageLocals(tPageCode& code, std::vector<tPageLocal>& locals, int& lines);
