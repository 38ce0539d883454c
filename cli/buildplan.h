#pragma once

#include <string>
#include <vector>

#include "cli/commandline.h"

/// One source, and the files to write for it.
struct tBuildJob {
  std::string source;
  /// Empty: standard output.
  std::string output;
  /// Its name is that of -o, not derived from the source.
  bool outputIsChosen = false;
  /// The dependency file; empty for none.
  std::string dependencies;
  /// For the names of temporary files. Derived from the name of the output, so that jobs differ, a
  /// later run finds what a killed one has left, and two programs that write the same output take
  /// turns.
  std::string tag;
};

/// What the program is going to do, or why it does nothing.
struct tBuildPlan {
  std::vector<tBuildJob> jobs;
  std::string complaint;
  /// The complaint is about the arguments, not about what is on the disk.
  bool wrongUsage = false;
};

/// Decides what goes where. No two jobs write the same file and none overwrites a source; a source
/// that is named twice is one job.
tBuildPlan planOf(const tCommandLine& line);
