#pragma once

#include "lib_base/diskman.h"
#include "lib_base/stringz.h"
#include "preprocessor/convert/sourcetext.h"

/// Turns the inline text blocks of a program into statements. When the program `name` holds a whole
/// block, its converted text stands under that name in `files` afterwards: in memory, in front of
/// the file on the disk, so that no file is written, none is in the way, and none can be left
/// behind. Sources other than programs are left alone.
eConversion DoBCPreprocessor(tDiskManOverlay& files, const tString& name);

/// Converts the blocks of a text:
///
///     BEGINCONTENT VAR name [OPTIMIZE]
///       any text, %Exp:expression% in it
///     ENDCONTENT
///
/// Each line of text becomes a statement that appends it and CHR(10) to the variable, the first one
/// assigns. Lines keep their numbers. Returns kNone, with `text` as it was, when there is no whole
/// block or the last one does not end.
eConversion BCParse(tString& text);

/// Makes every apostrophe of a line ready to stand between apostrophes.
void PrepareSingleQuotes(tString& line);
/// Makes every %Exp:expression% of a line, which is to stand between apostrophes, a part of the
/// sum. One without its closing "%" stays as it is.
void ReplaceExp(tString& line);
