#pragma once

#include <string>
#include <unordered_set>
#include <vector>

/// What an output was made from, and the rule that tells make and ninja so.
class tDependencies {
 public:
  /// Adds a file unless it is there already. The first one is the source.
  void add(const std::string& name);
  const std::vector<std::string>& names() const { return names_; }

  /// The rule in the dialect of compilers: `targets` as they stand before the colon, the files
  /// behind it; with `phony` set also an empty rule for each file but the source, so that make
  /// goes on when a header is gone.
  std::string rule(const std::string& targets, bool phony) const;

  /// A file that has a line end in its name and cannot stand in a rule; null when there is none.
  const std::string* unspeakable() const;

 private:
  std::vector<std::string> names_;
  std::unordered_set<std::string> known_;
};

/// The name as it is written in a rule.
std::string nameInRule(const std::string& name);
