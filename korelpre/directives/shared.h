#pragma once

#include <cstdint>
#include <memory>

#include "korelpre/directives/filefinder.h"
#include "korelpre/directives/sourcewatcher.h"
#include "korelpre/errors/diagnostic.h"
#include "korelpre/errors/fileobserver.h"
#include "korelpre/statements/check.h"
#include "korelpre/statements/rewrite.h"
#include "korelpre/tables/ruleset.h"

namespace precomp {

class tHeaderCache;
class tHeaderRecorder;
class tProgramFile;

/// What the files of a program ask of the root processor.
class tProgramRoot {
 public:
  /// True when the host supplies the texts of files itself; extLoadFile is then asked instead of
  /// the file system.
  virtual bool hasExtLoadFile() = 0;
  /// The text of the file `name`; false when there is none.
  virtual bool extLoadFile(const tString& name, tString& text) = 0;
  /// Reads the included file `name` into `file` and carries out its directives. False when it is an
  /// optional header that is missing, or one that is already being compiled up the chain.
  virtual bool compileInclude(tProgramFile& file, const tString& name) = 0;

 protected:
  ~tProgramRoot() = default;
};

/// The last error, as it was raised.
struct tRaisedError {
  tString text;  // with its position, as it was told
  int line = 0;  // of the main file
  int column = 0;
  bool placed = false;  // line and column are those of the error in work
  tDiagnosis diagnosis;
};

/// The statement that was last rewritten token by token.
struct tRewriting {
  const tProgramFile* file = nullptr;
  int line = 0;
  tRewriter::tNotes notes;
  int replacedAt = 0;  // the last line of the main file that replaced a rule
};

/// What a main file and all that it includes have in common; the root processor owns it.
struct tSharedState {
  explicit tSharedState(tProgramRoot& theRoot, tDiskMan* files) : root(theRoot), finder(files) {}
  /// Back to the state after construction, what hosts have set aside.
  void clear();

  tProgramRoot& root;
  tRuleSet rules;
  tFileFinder finder;
  tStatementCheck checks;
  tRaisedError error;
  tRewriting rewriting;
  std::uint64_t matcherSteps = 0;  // of all statements so far
  bool walking = false;            // phase 2 has begun
  bool extendedSource = false;     // the main source is written in the extended language
  bool headerMissing = false;      // an optional header was not found

  // What hosts set.
  tString standardHeader = tString::borrow("std.ch");
  bool plainLines = true;
  tRuleObserver* observer = nullptr;
  tFileObserver* fileObserver = nullptr;
  tSourceWatcher* watcher = nullptr;
  tHeaderCache* headerCache = nullptr;

  tHeaderRecorder* recorder = nullptr;  // while a header is read to make an image of it
};

inline void tSharedState::clear() {
  rules.clear();
  finder.clear();
  error = {};
  rewriting = {};
  walking = extendedSource = headerMissing = false;
}

}  // namespace precomp
