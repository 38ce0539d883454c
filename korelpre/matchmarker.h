#pragma once

#include "korelpre/tknstring.h"

namespace precomp {

class tBaseXChg;

/// The base of all markers of a rule's pattern and result. A chain of markers owns its successors.
class tMatchMarker {
 public:
  explicit tMatchMarker(const tSpcString& token) : token_(token) {}
  virtual ~tMatchMarker();
  tMatchMarker(const tMatchMarker&) = delete;
  tMatchMarker& operator=(const tMatchMarker&) = delete;

  /// True for a literal word.
  virtual bool isIdentifier() const { return false; }
  /// Tries to take tokens from the cursor of `t`; on success the cursor stands on the last token
  /// taken.
  virtual bool match(tTknString* t, tMatchMarker* parent) = 0;
  /// Appends this marker's output to the new tokens of `t`. False on failure.
  virtual bool replace(tTknString* t, int level) = 0;

  tMatchMarker* next() const { return next_; }
  /// Takes ownership of `next` and of the chain behind it.
  void setNext(tMatchMarker* next) { next_ = next; }
  /// The literal's text or the marker's name.
  const tSpcString& token() const { return token_; }
  tSpcString& token() { return token_; }
  /// The rule that owns the marker.
  const tBaseXChg* rule() const { return rule_; }
  void setRule(const tBaseXChg* rule) { rule_ = rule; }

 private:
  tMatchMarker* next_ = nullptr;
  tSpcString token_;
  const tBaseXChg* rule_ = nullptr;
};

/// A literal word of a pattern; compared under its rule's flags.
class tMatchIdentifier : public tMatchMarker {
 public:
  using tMatchMarker::tMatchMarker;
  bool isIdentifier() const override { return true; }
  bool match(tTknString* t, tMatchMarker* parent) override;
  bool replace(tTknString* t, int level) override;
};

/// Walks the chain from `head` over the tokens from the cursor of `t` on. On success the cursor
/// stands behind the last token taken.
bool rmatch(tMatchMarker* head, tTknString* t);
/// The same walk; returns how many markers matched, 0 when the chain does not match.
int rmatchCount(tMatchMarker* head, tTknString* t);

}  // namespace precomp
