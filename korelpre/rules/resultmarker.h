#pragma once

#include "korelpre/rules/matchmarker.h"

namespace precomp {

/// A marker of a result. This class itself is the regular one, `<id>`: it writes what the match
/// markers of its name took.
class tResultMarker : public tMatchMarker {
 public:
  explicit tResultMarker(const tSpcString& token, eRuleType kind = kResultMarker)
      : tMatchMarker(token, kind, tResultLinks{.driver = this}) {}

  /// For the first marker of a clause: whether the marker that the clause follows took part in the
  /// match.
  bool isMatchOk() const override { return links().driver->firstLinkMatched(); }
  /// For the first marker of a clause: how often the clause is written; 1 when it follows none.
  int getRecurLevel() const override;
  bool match(tTknString* t, tMatchMarker* parent) override;
  bool replace(tTknString* t, int level) override;
  /// Adds `marker` to the linked ones when the names are equal, whatever their case.
  void link(tRuleHome* rule, tMatchMarker& marker) override;

  bool isLinked() const { return links().first != nullptr; }
  /// Makes the clause that begins here follow what `driver` is linked with.
  void setDriver(const tResultMarker* driver) { links().driver = driver; }

 protected:
  bool firstLinkMatched() const { return links().first != nullptr && links().first->isMatchOk(); }
  bool firstLinkIsMacro() const { return links().first != nullptr && links().first->isMacro(); }
  /// The regular replacement.
  bool copyLinks(tTknString* t, int level);

 private:
  bool copyLink(tMatchMarker& marker, tTknString* t, int level);
};

/// A literal word: writes a copy of itself. The first literal of a replacement takes the spacing of
/// the text that it replaces.
class tResultIdentifier : public tResultMarker {
 public:
  explicit tResultIdentifier(const tSpcString& token) : tResultMarker(token, kResultIdentifier) {}
  bool isIdentifier() const override { return true; }
  bool replace(tTknString* t, int level) override;
  void link(tRuleHome* /*rule*/, tMatchMarker& /*marker*/) override {}
};

/// Stands where a clause opens a clause; writes nothing.
class tResultMarkerOpt : public tResultMarker {
 public:
  tResultMarkerOpt() : tResultMarker(tSpcString(), kResultMarkerOpt) {}
  bool replace(tTknString* t, int level) override;
  void link(tRuleHome* /*rule*/, tMatchMarker& /*marker*/) override {}
};

/// `<{id}>`: the capture as a code block, unless it already is one.
class tResultMarkerBlock : public tResultMarker {
 public:
  explicit tResultMarkerBlock(const tSpcString& token) : tResultMarker(token, kResultMarkerBlock) {}
  bool replace(tTknString* t, int level) override;
};

/// `<.id.>`: .T. when the marker took part in the match, otherwise .F.
class tResultMarkerBool : public tResultMarker {
 public:
  explicit tResultMarkerBool(const tSpcString& token) : tResultMarker(token, kResultMarkerBool) {}
  bool replace(tTknString* t, int level) override;
};

/// `#<id>`: the capture as one string.
class tResultMarkerDumbStr : public tResultMarker {
 public:
  explicit tResultMarkerDumbStr(const tSpcString& token)
      : tResultMarker(token, kResultMarkerDumbStr) {}
  bool replace(tTknString* t, int level) override;
};

/// `<"id">`: the capture as a string, each element of a list on its own.
class tResultMarkerRegStr : public tResultMarker {
 public:
  explicit tResultMarkerRegStr(const tSpcString& token, eRuleType kind = kResultMarkerRegStr)
      : tResultMarker(token, kind) {}
  bool replace(tTknString* t, int level) override;

 protected:
  /// Whether a capture that begins with `first` is left without quotes.
  virtual bool staysUnquoted(const tSpcString& first) const;
};

/// `<(id)>`: as `<"id">`, but what begins like an expression in parentheses or a string stays.
class tResultMarkerSmartStr : public tResultMarkerRegStr {
 public:
  explicit tResultMarkerSmartStr(const tSpcString& token)
      : tResultMarkerRegStr(token, kResultMarkerSmartStr) {}

 protected:
  bool staysUnquoted(const tSpcString& first) const override;
};

}  // namespace precomp
