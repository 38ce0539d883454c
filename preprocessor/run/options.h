#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "korelpre/lint/warnings.h"
#include "lib_base/diskman.h"
#include "lib_base/list.h"
#include "lib_base/stringz.h"
#include "preprocessor/copy/linemarkers.h"
#include "preprocessor/copy/normalise.h"

/// A define that holds from the first line of every source.
struct tOptionDefine {
  tString name;
  std::optional<tString> value;
};

/// What the argument vector, and a host beyond it, ask of one run.
struct tRunOptions {
  /// Sources in order, as given: names may be empty or have blanks around them.
  tAutoArray<tString> files;
  /// Arguments that the run does not know; the session decides what they mean.
  tAutoArray<tString> sessionOptions;
  /// Accepted without effect, so that callers which pass them keep working.
  bool debug = false;
  bool captureFatal = true;
  /// Part of the names of temporary files.
  tString tag = tString("0");
  /// In search order; an empty one names no directory.
  tAutoArray<tString> includePath;
  std::vector<tOptionDefine> defines;
  /// What is looked for beside errors.
  precomp::tWarningSet warnings;
  /// Of __COMPTIMESTAMP__.
  tClock clock = localTime;
  /// Of the names in line markers.
  std::vector<tPrefix> prefixes;
  bool trace = false;
  /// Where the standard header is saved in a form that the next run can use at once; none: nowhere.
  std::optional<tString> cache;
  bool httpSend = false;
  bool pageDebugInfo = false;
  /// Empty: each file's own directory.
  tString outputDirectory;
};

/// True when the vector is the one request that is answered before any parsing: "-v" alone.
bool isVersionRequest(int count, char* const* vector);

/// Reads the vector; slot 0 is the program's name and null slots are skipped. List files are opened
/// through `disk`; one that cannot be read is ignored. Values only replace or extend those that
/// `options` holds. Returns whether there is any file to process.
bool ParseCommandLine(tDiskMan& disk, int count, char* const* vector, tRunOptions& options);

/// Appends the pieces of `text` between separators, every character of `separators` being one.
/// Double quotes protect separators and stay in the pieces; empty pieces are dropped.
void splitKorelc(std::string_view text, std::string_view separators,
                 std::vector<std::string>& pieces);

/// Appends every piece of `text` between `separator`s, empty ones included.
void splitAt(std::string_view text, char separator, tAutoArray<tString>& pieces);
