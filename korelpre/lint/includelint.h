#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "korelpre/lint/findings.h"

namespace precomp {

class tProgramFile;

/// Judges the includes of a program: by how they spell what they read, and by whether any of it is
/// used.
class tIncludeLint {
 public:
  /// `findings` must outlive this object, and be told of the files.
  explicit tIncludeLint(tFindings& findings) : findings_(findings) {}

  void fileCompiled(const tProgramFile& file);
  /// A file of that name has been included before.
  void includeSkipped(tProgramFile& file, const tString& name, int line);
  /// Not all of the program will be read, so what it uses is not known.
  void programFailed() { failed_ = true; }
  /// To be called when the program has been read.
  void finish();

 private:
  struct tRead {
    std::string opened;
    std::string requested;
    std::string resolved;
    std::string includer;  // as it was opened
    int line;              // of its directive; 0 for the standard header
    bool byMain;
  };

  void judgeSpelling();
  void judgeNeed();
  tLintPlace placeOf(const tRead& read) const;

  tFindings& findings_;
  bool failed_ = false;
  std::vector<tRead> reads_;
  std::unordered_set<std::string> withCode_;  // headers that hold statements
};

}  // namespace precomp
