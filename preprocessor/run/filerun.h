#pragma once

#include "lib_base/diskman.h"
#include "lib_base/stringz.h"
#include "preprocessor/run/options.h"
#include "preprocessor/run/runhost.h"

/// Preprocesses one file: converts it when it is no program or holds inline blocks, normalises it,
/// runs a session over it, writes the output file, prints the messages. Nothing is thrown, and no
/// temporary file stays.
///
/// Returns 0, or one of 1 (a converter or the session found an error), the code of the external
/// converter, 15 (the source could not be normalised) and -1 (the output could not be written, or
/// something failed inside); then there is no output file, not even an older one.
///
/// The files that are given one `headers` read each header once; it may be null.
int preprocessFile(tDiskMan& disk, const tRunOptions& options, const tString& sourceName,
                   tRunHost& host, precomp::tHeaderCache* headers);
