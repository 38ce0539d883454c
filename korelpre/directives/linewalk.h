#pragma once

#include <memory>

#include "korelpre/text/tknstring.h"

namespace precomp {

class tHeaderRecorder;
class tInclude;
class tPlainWriter;
class tProgramFile;
struct tSharedState;

/// Phase 2 for one file: walks over its lines, enters the rules of the main file where their line
/// is reached, and writes the rewritten statements.
class tLineWalk {
 public:
  /// `file` must outlive the walk.
  explicit tLineWalk(tProgramFile& file);

  /// Appends the generated lines of the file, and of what it includes, to `output`, without a line
  /// feed at its end. `depth` counts the nested calls and is 0 outside of them.
  void run(tString& output, int& depth);
  /// Rewrites a statement of the file until no rule applies and appends it and a line feed to
  /// `output`.
  void rewrite(tTknString& statement, tString& output);

 private:
  void walkIncludesOnly(tString& output, int& depth);
  void walkLines(tString& output, int& depth);
  void walkInclude(tInclude& include, tString& output, int& depth);
  void writePlain(int line, tPlainWriter& writer, tString& output);

  tProgramFile& file_;
  tSharedState& shared_;
  tTknString scratch_;  // the plain statement being rewritten
};

/// Notes the "#line" markers that run() writes for a header without statements; false when it has
/// some.
bool noteMarkers(tProgramFile& file, tHeaderRecorder& recorder);

}  // namespace precomp
