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

/// An optional group of a pattern that holds markers, and whether any of them has taken something.
struct tGroupUse {
  std::string text;  // with its brackets
  std::set<std::string> markers;
  std::uint64_t taken = 0;
};

/// How often a rule was applied.
struct tUsedRule {
  tRuleInfo rule;
  std::uint64_t applied = 0;
  std::vector<tGroupUse> groups;

  /// Whether it is a #define without a value, which conditionals ask for.
  bool isFlag() const;
};

/// What sources do with the rules of their headers.
class tRuleUse {
 public:
  /// Rules of files in the directory `shippedHeaders` are left out.
  explicit tRuleUse(const std::string& shippedHeaders) : shipped_(shippedHeaders + "/") {}

  /// Runs the library over a source and adds what it uses. False when the source has an error;
  /// `messages` receives it.
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
  std::map<std::tuple<std::string, int, std::string>, tUsedRule> rules_;
  std::string* messages_ = nullptr;
  tCallbackGuard guard_;
};

/// The optional groups of a directive that are told apart by their markers.
std::vector<tGroupUse> groupsOf(const std::string& directive);
