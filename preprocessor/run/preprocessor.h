#pragma once

#include "lib_base/diskman.h"
#include "preprocessor/run/runhost.h"

/// The limit for every text of a run, such as a source, in bytes.
constexpr std::size_t kLongestText = 16 * 1024 * 1024;

/// Runs over the files that the argument vector names, in the machine's file system. Returns 0, or
/// the result of the last file that failed (see preprocessFile).
int __get_xx__(int argc, char** argv);

/// The same in any file system and for any host.
int runPreprocessor(tDiskMan& disk, int argc, char* const* argv, tRunHost& host);
int runPreprocessor(tDiskMan& disk, int argc, char* const* argv);
