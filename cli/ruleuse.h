#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "cli/librarycall.h"
#include "cli/rulestory.h"
#include "include/krpre.h"

/// A part of a pattern that a statement may do without: an optional group, or one of the words that
/// a marker is restricted to.
struct tPartUse {
  std::string text;               // of a group with its brackets
  std::set<std::string> markers;  // of the group; for a word the one that it belongs to
  std::string word;               // of a group its first one
  std::uint64_t met = 0;          // how often one of the markers took something
  std::uint64_t taken = 0;        // and this was it

  bool isGroup() const { return text != word; }
};

/// How often a rule was applied.
struct tUsedRule {
  tRuleInfo rule;
  std::uint64_t applied = 0;
  std::vector<tPartUse> parts;

  /// Whether it is a #define without a value, which conditionals ask for.
  bool isFlag() const;
};

/// What sources do with the rules of their headers.
class tRuleUse {
 public:
  /// Rules of files in the directory `shippedHeaders` are left out.
  explicit tRuleUse(const std::string& shippedHeaders) : shipped_(shippedHeaders + "/") {}

  /// Runs the library over a source and adds what it uses, once. False when the source has an
  /// error; `messages` receives it.
  bool add(const tCommandLine& line, const std::string& source, const std::string& shippedHeaders,
           std::string& messages);
  /// In the order of files and lines.
  const std::map<std::tuple<std::string, int, std::string>, tUsedRule>& rules() const {
    return rules_;
  }

 private:
  tUsedRule* ruleOf(const krpre_rule& rule);
  void meet(const krpre_step& step);

  std::string shipped_;
  std::set<std::string> added_;  // sources
  std::map<std::tuple<std::string, int, std::string>, tUsedRule> rules_;
  std::string* messages_ = nullptr;
  tCallbackGuard guard_;
};

/// What statements may do without in the pattern of a directive. A group without a marker is known
/// by its first word; one without either is left out.
std::vector<tPartUse> partsOf(const std::string& directive);
