#pragma once

#include "lib_base/diskman.h"
#include "preprocessor/run/runhost.h"

/// No text of a run, a source for one, may be longer.
constexpr std::size_t kLongestText = 16 * 1024 * 1024;

/// One run over the files that the argument vector names, on the machine's own files. Returns 0, or
/// the result of the last file that failed (see preprocessFile).
int __get_xx__(int argc, char** argv);

/// The same over any file system and for any host.
int runPreprocessor(tDiskMan& disk, int argc, char* const* argv, tRunHost& host);
int runPreprocessor(tDiskMan& disk, int argc, char* const* argv);
