#include "cli/rulestory.h"

#include <algorithm>

tRuleInfo infoOf(const krpre_rule& rule) {
  return {rule.kind, rule.key,  rule.listing,         rule.directive,
          rule.file, rule.line, rule.abbreviates != 0};
}

const char* kindName(const tRuleInfo& rule) {
  switch (rule.kind) {
    case KRPRE_DEFINE:
      return "define";
    case KRPRE_TRANSLATION:
      return "translation";
    default:
      return "command";
  }
}

void tRuleStory::meet(const krpre_step& step) {
  if (step.kind == KRPRE_STEP_BEGINS) return begin(step);
  if (!inside_) return;
  switch (step.kind) {
    case KRPRE_STEP_TRIED:
      return keepTrial(step);
    case KRPRE_STEP_MATCHED:
      return beginRewrite(step);
    case KRPRE_STEP_APPLIED:
      rewrites_.back().after = step.statement;
      return;
    default:
      closestFirst(trials_);
      inside_ = false;
      finished_ = true;
  }
}

void tRuleStory::begin(const krpre_step& step) {
  // Only the first such statement counts: a header may be included more than once.
  inside_ = !found() && file_ == step.file && step.line <= line_ && line_ <= step.lastLine;
  if (!inside_) return;
  firstLine_ = step.line;
  lastLine_ = step.lastLine;
  before_ = step.statement;
}

// A rule may be tried again at the same place after each rewrite.
void tRuleStory::keepTrial(const krpre_step& step) {
  const tRuleInfo& rule = *rules_.insert(infoOf(*step.rule)).first;
  const tTrialInfo trial{
      &rule, step.token, step.score, step.failedMarker, step.failedToken, step.failedIndex};
  if (known_.insert(trial).second) trials_.push_back(trial);
}

void tRuleStory::beginRewrite(const krpre_step& step) {
  tRewriteInfo rewrite;
  rewrite.rule = infoOf(*step.rule);
  rewrite.token = step.token;
  for (int i = 0; i < step.captureCount; ++i) {
    const krpre_capture& capture = step.captures[i];
    rewrite.markers.push_back({capture.marker, {capture.texts, capture.texts + capture.count}});
  }
  for (tTrialInfo& trial : trials_) {
    if (trial.token != step.token || trial.rule->kind != rewrite.rule.kind) continue;
    if (*trial.rule == rewrite.rule) {
      rewrite.score = trial.score;
    } else {
      rewrite.lost.push_back(std::move(trial));
    }
  }
  closestFirst(rewrite.lost);
  trials_.clear();
  known_.clear();
  rewrites_.push_back(std::move(rewrite));
}

// Those that matched, by their scores, then those that did not, by how far they got.
void tRuleStory::closestFirst(std::vector<tTrialInfo>& trials) {
  std::stable_sort(trials.begin(), trials.end(),
                   [](const tTrialInfo& one, const tTrialInfo& other) {
                     if (one.score != other.score) return one.score > other.score;
                     return one.score == 0 && one.reach() > other.reach();
                   });
}
