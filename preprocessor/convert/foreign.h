#pragma once

#include "lib_base/stringz.h"

/// What the external converter is told.
struct tForeignSource {
  tString name;             // the source
  tString lastDirectory;    // of the include path; may be empty
  tString outputDirectory;  // where the output of the run goes
};

/// Turns a source of a foreign language into a source of the extended language. The work is done by
/// an external program, "abl2korel.so", which is run with these arguments:
///
///     @F<source> @Q<file to write> @DB<last include directory> @D<output directory>
///
/// It is run directly, without a shell, so no name can do more than be a name. The file that it
/// writes stands in a directory of its own, which goes with this object.
class tForeignConversion {
 public:
  tForeignConversion() = default;
  ~tForeignConversion();
  tForeignConversion(const tForeignConversion&) = delete;
  tForeignConversion& operator=(const tForeignConversion&) = delete;

  static constexpr int kNotRun = -1;

  /// Runs the converter that stands in `directory`. Returns 0 or its exit code, 128 plus the
  /// signal's number when a signal ended it, kNotRun when it could not be run.
  int run(const tString& directory, const tForeignSource& source);
  /// The command that was to be run, as a shell would have to be given it.
  const tString& command() const { return command_; }
  /// The converted file.
  const tString& converted() const { return converted_; }

 private:
  bool makeDirectory();

  tString directory_;
  tString converted_;
  tString command_;
};

/// The directory of the running program, where the converter is expected; empty when the system
/// does not tell.
tString programDirectory();
