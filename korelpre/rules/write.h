#pragma once

#include "korelpre/rules/resultmarker.h"

namespace precomp {

/// Writes the output of the chain from `head` on for the repetition `level`. False when a marker
/// fails, or when the chain is a clause whose marker took no part in the match.
bool rreplace(const tRuleHome* rule, tMatchMarker* head, tTknString* t, int level);

/// Links every marker of a result and of its clauses with the capturing markers of the pattern that
/// have its name, and every clause with the marker whose repetitions it follows: its first one that
/// stands in a group of the pattern, else its first one. Adds the number of links to `count`.
void rlink(tRuleHome* rule, tMatchMarker* matchHead, tMatchMarker* resultHead, int& count);

}  // namespace precomp
