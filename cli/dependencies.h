#pragma once

#include <string>
#include <unordered_set>
#include <vector>

/// The files that an output depends on, and the rule that says so to make and ninja.
class tDependencies {
 public:
  /// Adds a file unless it is there already. The first one is the source.
  void add(const std::string& name);
  const std::vector<std::string>& names() const { return names_; }

  /// The rule as compilers write it: `targets` as they stand, a colon, the files; with `phony`,
  /// followed by an empty rule for each file but the source, so that make does not fail when a
  /// header is gone.
  std::string rule(const std::string& targets, bool phony) const;

  /// The first file whose name holds a line break, which no rule can express; null without one.
  const std::string* nameWithLineBreak() const;

 private:
  std::vector<std::string> names_;
  std::unordered_set<std::string> known_;
};

/// The name as a rule spells it.
std::string nameInRule(const std::string& name);
