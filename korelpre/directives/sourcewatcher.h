#pragma once

#include "korelpre/text/directivewords.h"
#include "lib_base/stringz.h"

namespace precomp {

class tProgramFile;
class tTknString;

/// Hears of what happens to the sources of a program and leaves no trace in the output. Every
/// operation is called once in a while at most, never for a statement that stays plain.
class tSourceWatcher {
 public:
  virtual ~tSourceWatcher() = default;

  /// A file has been compiled, those that it includes before it. Its text and its lines are still
  /// at hand, and of the main file no rule has been entered yet.
  virtual void fileCompiled(tProgramFile& file) = 0;
  /// The same for a file that ends in an error, or includes one that does. Its lines are known up
  /// to there, but for the last that went through the scanner, which has reached `line`.
  virtual void fileFailed(tProgramFile& file, int line) = 0;
  /// A directive that has no effect stands on a line that is not skipped; `text` is all of it.
  virtual void directiveIgnored(tProgramFile& file, eDirective directive, int line,
                                std::string_view text) = 0;
  /// An #include was passed over, since a file of that name has been included.
  virtual void includeSkipped(tProgramFile& file, const tString& name, int line) = 0;
  /// No rule applies to the statement any more.
  virtual void statementRewritten(tProgramFile& file, tTknString& statement) = 0;
};

}  // namespace precomp
