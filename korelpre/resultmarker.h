#pragma once

#include "korelpre/matchmarker.h"

namespace precomp {

/// A literal word of a result: writes a copy of itself. The first literal of a replacement takes
/// the spacing of the text that it replaces.
class tResultIdentifier : public tMatchMarker {
 public:
  using tMatchMarker::tMatchMarker;
  bool isIdentifier() const override { return true; }
  bool match(tTknString* t, tMatchMarker* parent) override;
  bool replace(tTknString* t, int level) override;
};

/// Writes the output of every marker of the chain from `head` on. False when one fails.
bool rreplace(tMatchMarker* head, tTknString* t, int level);

}  // namespace precomp
