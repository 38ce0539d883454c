#pragma once

#include <vector>

#include "korelpre/lint/warnings.h"
#include "lib_base/diskman.h"
#include "lib_base/stringz.h"
#include "preprocessor/convert/sourcetext.h"

/// A line that opens a block which is not converted as it is meant.
struct tBlockFault {
  precomp::eWarning what;
  int line;  // from 1
  tString text;
};
using tBlockFaults = std::vector<tBlockFault>;

/// Converts the inline text blocks of the program `name` to statements. If the program holds a
/// complete block, `files` serves the converted text under that name from then on: from memory, in
/// front of the file on disk, so that nothing is written that could clash with another file or be
/// left behind. Sources that are not programs are left alone. On kUnreadable, `reason` is the errno
/// value. `faults` (may be null) receives those that no comment of the source switches off.
eConversion DoBCPreprocessor(tDiskManOverlay& files, const tString& name, int& reason,
                             tBlockFaults* faults = nullptr);

/// Converts the blocks of a text:
///
///     BEGINCONTENT VAR name [OPTIMIZE]
///       any text, %Exp:expression% in it
///     ENDCONTENT
///
/// Each line of text becomes a statement that appends it and CHR(10) to the variable; the first one
/// assigns. Lines keep their numbers. Returns kNone and leaves `text` unchanged if there is no
/// complete block or the last one is not closed. `faults` is that of DoBCPreprocessor.
eConversion BCParse(tString& text, tBlockFaults* faults = nullptr);

/// Escapes every apostrophe of a line that is going to be put between apostrophes.
void PrepareSingleQuotes(tString& line);
/// Turns every %Exp:expression% of such a line into a term of the sum: the literal is closed,
/// the expression added, and a new literal opened. One without its closing "%" is left unchanged.
void ReplaceExp(tString& line);
