#pragma once

#include "lib_base/stringz.h"

/// The arguments for the external converter.
struct tForeignSource {
  tString name;             // the source
  tString lastDirectory;    // of the include path; may be empty
  tString outputDirectory;  // where the run writes its output
};

/// Converts a source in a foreign language to the extended language. The work is done by an
/// external program, "abl2korel.so", which is started with these arguments:
///
///     @F<source> @Q<file to write> @DB<last include directory> @D<output directory>
///
/// It is started directly, without a shell, so a file name is never interpreted. The file that it
/// writes is in a temporary directory, which is removed with this object.
class tForeignConversion {
 public:
  tForeignConversion() = default;
  ~tForeignConversion();
  tForeignConversion(const tForeignConversion&) = delete;
  tForeignConversion& operator=(const tForeignConversion&) = delete;

  static constexpr int kNotRun = -1;

  /// Runs the converter in `directory`. Returns its exit code, 128 plus the signal number if a
  /// signal ended it, or kNotRun if it could not be started.
  int run(const tString& directory, const tForeignSource& source);
  /// The command line, quoted for a shell, for messages.
  const tString& command() const { return command_; }
  /// The converted file.
  const tString& converted() const { return converted_; }

 private:
  bool makeDirectory();

  tString directory_;
  tString converted_;
  tString command_;
};

/// The directory of the running program, where the converter is expected; empty if it cannot be
/// determined.
tString programDirectory();
