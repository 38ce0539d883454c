#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "lib_base/stringz.h"

/// The dependency file that a host wants.
struct tDependencyFile {
  tString name;
  bool isChosen = false;  // by the user, not derived
  tString targets;        // as they are to stand in the rule; empty: the output
  bool phony = false;     // with an empty rule for each header
};

/// The files that an output depends on, and the rule that says so to make and ninja.
class tDependencies {
 public:
  explicit tDependencies(tDependencyFile file) : file_(std::move(file)) {}

  const tDependencyFile& file() const { return file_; }
  /// Begins anew with a source.
  void begin(std::string_view source);
  /// Adds a file unless it is there already.
  void add(std::string_view name);

  /// The rule as compilers write it: the targets, a colon, the files; if wanted, followed by an
  /// empty rule for each file but the source, so that make does not fail when a header is gone.
  std::string rule(std::string_view output) const;

  /// The first file whose name holds a line break, which no rule can express; null without one.
  const std::string* nameWithLineBreak() const;

 private:
  const tDependencyFile file_;
  std::vector<std::string> names_;
  std::unordered_set<std::string> known_;
};
