// The walk of a pattern over a statement.
//
// A chain is taken marker by marker, each from where the one before stopped, and nothing is ever
// tried another way: what a marker took stays taken. Behind a marker its optional groups are tried
// in their order; after each one that matches the trial begins anew with the first, so groups may
// come in any order and any number of times. A group that fails leaves no trace. The walk ends
// because every repetition takes a token.

#include "korelpre/rules/match.h"

namespace precomp {

namespace {

int walkGroups(tMatchMarker& marker, tTknString* t);

int walkChain(tMatchMarker* head, tTknString* t, tMatchMarker* parent) {
  int score = 0;
  for (tMatchMarker* marker = head;;) {
    const int cursor = t->curTokenIdx();
    if (!t->step() || !marker->match(t, parent)) {
      t->noteFailure(marker, cursor);
      return 0;
    }
    marker->setMatchOk();
    ++score;
    if (marker->kind() != kMatchMarkerOpt) t->nextTokenIdx();
    if (marker->hasGroups()) score += walkGroups(*marker, t);
    marker = marker->next();
    if (marker == nullptr) return score;
    if (marker->hasGroups()) parent = nullptr;
    if (t->curTokenIdx() < 0) {
      t->noteFailure(marker, -1);
      return 0;
    }
  }
}

// Tries the groups behind a marker once; returns the score of the one that matched.
int walkOneGroup(tMatchMarker& marker, tTknString* t) {
  const tMarkerList& groups = marker.groups();
  for (int i = 0; i < groups.count(); ++i) {
    const int start = t->curTokenIdx();
    if (start < 0) return 0;
    tMatchMarker& group = *groups[i];
    const std::uint32_t begin = t->steps();
    const int score = walkChain(&group, t, &marker);
    const bool tookTokens = t->curTokenIdx() != start;
    if (score > 0 && tookTokens) {
      group.setRecMatch(*t);
      return score;
    }
    if (score > 0 || tookTokens || !group.isIdentifier()) {
      group.forgetSince(begin);
      group.resetMatch(1);
      t->curTokenIdx(start);
    }
    if (score > 0) return 0;
  }
  return 0;
}

int walkGroups(tMatchMarker& marker, tTknString* t) {
  int total = 0;
  while (const int score = walkOneGroup(marker, t)) total += score;
  return total;
}

bool endsStatement(tTknString* t) {
  return t->curTokenIdx() < 0 || t->curToken() == ";";
}

}  // namespace

int rmatchCount(const tRuleHome* rule, tMatchMarker* head, tTknString* t, tMatchMarker* parent) {
  if (t->curTokenIdx() < 0 || head == nullptr) return 0;
  const int score = walkChain(head, t, parent);
  if (score > 0 && rule != nullptr && rule->isCmd() && !endsStatement(t)) {
    t->noteFailure(nullptr, t->curTokenIdx());
    return 0;
  }
  return score;
}

bool rmatch(const tRuleHome* rule, tMatchMarker* head, tTknString* t, tMatchMarker* parent) {
  if (head == nullptr) return t->curTokenIdx() < 0;
  return rmatchCount(rule, head, t, parent) > 0;
}

bool searchOpt(tTknString* t, const tMarkerList& groups) {
  for (int i = 0; i < groups.count(); ++i) {
    if (t->step() && groups[i]->checkMatch(t)) return true;
  }
  return false;
}

}  // namespace precomp
