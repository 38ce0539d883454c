#pragma once

#include "lib_base/diskman.h"
#include "lib_base/stringz.h"
#include "preprocessor/run/filenames.h"
#include "preprocessor/run/options.h"
#include "preprocessor/run/runhost.h"

/// Preprocesses one file: converts it if its kind requires that, normalises it, runs a session over
/// it, writes the output file and prints the messages. Throws nothing and leaves no temporary
/// files.
///
/// Returns 0 on success, 1 if a converter or the session found an error, the exit code of the
/// external converter if that failed, 15 if the source could not be normalised, and -1 if the
/// output could not be written or on an internal failure. After a failure there is no output file,
/// not even an older one.
///
/// Files that share `headers`, which may be null, read each header once.
int preprocessFile(tDiskMan& disk, const tRunOptions& options, const tFileNames& names,
                   tRunHost& host, precomp::tHeaderCache* headers) noexcept;
