#pragma once

#include "korelpre/rules/matchmarker.h"

namespace precomp {

/// A literal word of a pattern; compared under its rule's flags.
class tMatchIdentifier : public tMatchMarker {
 public:
  explicit tMatchIdentifier(const tSpcString& token) : tMatchMarker(token, kMatchIdentifier) {}
  bool isIdentifier() const override { return true; }
  bool checkMatch(tTknString* t) override { return matchesWord(t->curToken()); }
  bool match(tTknString* t, tMatchMarker* /*parent*/) override {
    return matchesWord(t->curToken());
  }
  bool replace(tTknString* t, int level) override;
  bool matchesWord(std::string_view word) const;
};

/// `<id,...>`: takes elements separated by commas.
class tMatchMarkerList : public tMatchMarker {
 public:
  explicit tMatchMarkerList(const tSpcString& token) : tMatchMarker(token, kMatchMarkerList) {}
  bool isList() const override { return true; }
  bool replace(tTknString* t, int level) override;

 private:
  bool copyElements(tTknString* t);
};

/// `<*id*>`: takes the rest of the statement.
class tMatchMarkerWild : public tMatchMarker {
 public:
  explicit tMatchMarkerWild(const tSpcString& token) : tMatchMarker(token, kMatchMarkerWild) {}
  // Kept on purpose: asking already takes the rest of the statement.
  bool checkMatch(tTknString* t) override { return match(t, nullptr); }
  bool match(tTknString* t, tMatchMarker* parent) override;
};

/// `<(id)>`: as the regular marker, but a name, "." and a name are one capture.
class tMatchMarkerExt : public tMatchMarker {
 public:
  explicit tMatchMarkerExt(const tSpcString& token) : tMatchMarker(token, kMatchMarkerExt) {}
  bool match(tTknString* t, tMatchMarker* parent) override;
};

/// Stands where a group opens a group, which needs something to stand behind; takes no token. A
/// clause that opens a clause of a result stands behind one too.
class tMatchMarkerOpt : public tMatchMarker {
 public:
  tMatchMarkerOpt() : tMatchMarker(tSpcString(), kMatchMarkerOpt) {}
  bool checkMatch(tTknString* /*t*/) override { return true; }
  bool match(tTknString* /*t*/, tMatchMarker* /*parent*/) override { return true; }
  bool replace(tTknString* t, int level) override;
};

}  // namespace precomp
