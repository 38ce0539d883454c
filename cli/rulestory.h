#pragma once

#include <compare>
#include <set>
#include <string>
#include <vector>

#include "include/krpre.h"

/// A rule, copied from a report of the library.
struct tRuleInfo {
  int kind = 0;  // KRPRE_DEFINE, ...
  std::string key;
  std::string listing;
  std::string directive;  // empty for a define of an option
  std::string file;       // empty for a define of an option
  int line = 0;
  bool abbreviates = false;

  auto operator<=>(const tRuleInfo&) const = default;
};

tRuleInfo infoOf(const krpre_rule& rule);
/// "define", "translation" or "command".
const char* kindName(const tRuleInfo& rule);

struct tMarkerInfo {
  std::string name;
  std::vector<std::string> texts;
};

/// A rule that was tried but not applied. The story owns the rule.
struct tTrialInfo {
  const tRuleInfo* rule = nullptr;
  int token = 0;  // where it was tried, from 0
  int score = 0;  // 0: it did not match
  std::string failedMarker;
  std::string failedToken;
  int failedIndex = -1;  // of that token, from 0

  /// How many tokens the pattern went along with.
  int reach() const { return failedIndex - token; }
  auto operator<=>(const tTrialInfo&) const = default;
};

/// One rewrite of a statement.
struct tRewriteInfo {
  tRuleInfo rule;
  int token = 0;
  int score = 0;
  std::vector<tMarkerInfo> markers;
  std::vector<tTrialInfo> lost;  // rules that were tried at the same place, the closest first
  std::string after;
};

/// How one statement was rewritten to its final form.
class tRuleStory {
 public:
  /// The story of the statement of `file` that covers the line `line`.
  tRuleStory(std::string file, int line) : file_(std::move(file)), line_(line) {}

  /// To be called with every step of a run.
  void meet(const krpre_step& step);

  /// Whether there is such a statement; if not, what follows is empty.
  bool found() const { return firstLine_ > 0; }
  int firstLine() const { return firstLine_; }
  int lastLine() const { return lastLine_; }
  const std::string& before() const { return before_; }
  const std::vector<tRewriteInfo>& rewrites() const { return rewrites_; }
  /// The rules that were tried on the final form, the closest first.
  const std::vector<tTrialInfo>& inVain() const { return trials_; }
  /// False when an error ended the rewriting.
  bool finished() const { return finished_; }
  const std::string& final() const { return rewrites_.empty() ? before_ : rewrites_.back().after; }

 private:
  void begin(const krpre_step& step);
  void keepTrial(const krpre_step& step);
  void beginRewrite(const krpre_step& step);
  static void closestFirst(std::vector<tTrialInfo>& trials);

  std::string file_;
  int line_;
  bool inside_ = false;  // the steps that come now belong to the statement

  int firstLine_ = 0;
  int lastLine_ = 0;
  std::string before_;
  std::vector<tRewriteInfo> rewrites_;
  std::set<tRuleInfo> rules_;       // each once: there may be many trials
  std::vector<tTrialInfo> trials_;  // since the last rewrite
  std::set<tTrialInfo> known_;      // the same
  bool finished_ = false;
};
