#pragma once

#include <vector>

#include "lib_base/stringz.h"
#include "preprocessor/convert/pagecode.h"

/// One variable of a LOCAL statement; its texts are on one line and without comments.
struct tPageLocal {
  tString name;         // in upper case
  tString declaration;  // the name, with its bounds and type if it has any
  tString value;        // the initial value; may be empty
};

/// Reads the variables that follow the word LOCAL, which `code` has just read, and the piece that
/// ends the statement, which is returned. Counts the line ends before that in `lines`.
ePiece readPageLocals(tPageCode& code, std::vector<tPageLocal>& locals, int& lines);
