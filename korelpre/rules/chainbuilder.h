#pragma once

#include <memory>
#include <vector>

#include "korelpre/rules/matchmarker.h"

namespace precomp {

/// Puts the elements of a pattern or a result, which come one after the other, into chains: an
/// unescaped "[" opens a group behind the element before it, "]" closes it.
class tChainBuilder {
 public:
  enum eSide { kPattern, kResult };
  /// Markers that the builder makes itself lie in `arena`, on their own when that is null.
  explicit tChainBuilder(eSide side, tMarkerArena* arena = nullptr) : side_(side), arena_(arena) {}

  /// Appends a marker to the open chain and takes ownership. When the groups have become unsound
  /// nothing is kept any more.
  void add(tMatchMarker* marker);
  /// Appends a literal. One of kind kKindSpace becomes part of the spacing of the next element; the
  /// brackets open and close groups.
  void addToken(const tSpcString& token);
  /// Appends a literal as it stands.
  void addLiteral(const tSpcString& literal);
  void openGroup();
  void closeGroup();

  /// Adds blanks to the spacing of the next element. Where there is an arena they must not be
  /// owned, since a marker there is not destroyed.
  void addSpacing(const tString& blanks);

  /// Whether all groups are closed, none closed that was not open, and none nested too deeply.
  bool isBalanced() const { return balanced_ && open_.empty(); }
  tMatchMarker* head() const { return head_.get(); }
  /// Hands the chain over to the caller; null when there was no element.
  tMatchMarker* release() { return head_.release(); }

 private:
  struct tOpenGroup {
    tMatchMarker* owner;  // behind which it stands
    tMatchMarker* last;   // its own last marker, null when it has none yet
  };

  void append(tMatchMarker* marker);
  tMatchMarker* lastInChain() const { return open_.empty() ? last_ : open_.back().last; }

  eSide side_;
  tMarkerArena* arena_;
  std::unique_ptr<tMatchMarker> head_;
  tMatchMarker* last_ = nullptr;
  std::vector<tOpenGroup> open_;
  tString spacing_;
  bool balanced_ = true;
};

/// Turns an escaped character into the plain one: without its backslash, and of its own kind.
void unescape(tSpcString& token);

}  // namespace precomp
