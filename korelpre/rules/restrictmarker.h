#pragma once

#include "korelpre/rules/matchmarker.h"

namespace precomp {

/// `<id: word, word ...>`: takes one of the alternatives, each of one or more words.
class tMatchMarkerRestrict : public tMatchMarker {
 public:
  explicit tMatchMarkerRestrict(const tSpcString& token)
      : tMatchMarker(token, kMatchMarkerRestrict) {}
  ~tMatchMarkerRestrict() override { destroyList(alternatives_); }
  tMatchMarkerRestrict(const tMatchMarkerRestrict&) = delete;
  tMatchMarkerRestrict& operator=(const tMatchMarkerRestrict&) = delete;
  /// Adds a word: to the last alternative, or as the first one of a new alternative.
  /// `arena` is that of this marker, null when it lies in none.
  void addWord(const tSpcString& word, bool newAlternative, tMarkerArena* arena = nullptr);
  const tMarkerList& alternatives() const {
    return alternatives_ != nullptr ? *alternatives_ : kNoChains;
  }

  void print(tString* out) const override;
  bool checkMatch(tTknString* t) override;
  bool match(tTknString* t, tMatchMarker* parent) override;
  bool replace(tTknString* t, int level) override;
  void save(tPCHStream* stream) const override;
  bool load(tPCHStream* stream, std::uint8_t first) override;

 private:
  /// The alternative at the cursor, or -1; the cursor then stands on its last word.
  int findAlternative(tTknString* t) const;

  tMarkerList* alternatives_ = nullptr;  // chains of words; null when there are none
  tMatchMarker* lastWord_ = nullptr;
};

}  // namespace precomp
