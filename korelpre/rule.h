#pragma once

#include <memory>

#include "korelpre/keyword.h"
#include "korelpre/matchmarker.h"
#include "korelpre/tknstring.h"

namespace precomp {

class KorelPreYaccClass;
class tSourceLine;

/// A rule: a pattern, what replaces it, and the key under which tables keep it.
class tBaseXChg {
 public:
  /// Takes ownership of both chains; `firstResult` may be null, the matched text is then replaced
  /// by nothing. `processor` must outlive the rule.
  tBaseXChg(KorelPreYaccClass* processor, tWordRule wordRule, tMatchMarker* firstMatch,
            tMatchMarker* firstResult, const tString& key);
  virtual ~tBaseXChg();
  tBaseXChg(const tBaseXChg&) = delete;
  tBaseXChg& operator=(const tBaseXChg&) = delete;

  /// True for a command, which must account for a whole statement.
  virtual bool isCmd() const { return false; }
  /// Applies the rule at the token `start` of `t`, or to the whole statement when it is -1. False
  /// when it does not match; `t` is then unchanged.
  virtual bool replace(KorelPreYaccClass* processor, int start, tTknString* t);
  /// How well the pattern matches at `start`; 0 when it does not.
  int matchCount(int start, tTknString* t);

  const tString& key() const { return key_; }
  tWordRule wordRule() const { return wordRule_; }
  /// The processor whose tables hold the rule.
  KorelPreYaccClass* processor() const { return processor_; }
  /// The line entry that will enter the rule into the tables, or null.
  tSourceLine* lineEntry() const { return lineEntry_; }
  void setLineEntry(tSourceLine* entry) { lineEntry_ = entry; }
  tMatchMarker* firstMatch() const { return firstMatch_.get(); }
  tMatchMarker* firstResult() const { return firstResult_.get(); }

 protected:
  /// For rules that build their chains themselves.
  tBaseXChg(KorelPreYaccClass* processor, tWordRule wordRule, const tString& key)
      : tBaseXChg(processor, wordRule, nullptr, nullptr, key) {}
  void setFirstMatch(tMatchMarker* marker);
  void setFirstResult(tMatchMarker* marker) { firstResult_.reset(marker); }

 private:
  std::unique_ptr<tMatchMarker> firstMatch_;
  std::unique_ptr<tMatchMarker> firstResult_;
  tString key_;
  tWordRule wordRule_;
  KorelPreYaccClass* processor_;
  tSourceLine* lineEntry_ = nullptr;
};

/// The rule of a #define.
class tTranslate : public tBaseXChg {
 public:
  /// A #define without parameters: `name` is replaced by copies of `value`. The key is the name.
  tTranslate(KorelPreYaccClass* processor, const tSpcString& name,
             const tAutoArray<tSpcString>& value);
};

}  // namespace precomp
