#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "korelpre/rules/rulecontext.h"
#include "korelpre/tables/ruletable.h"
#include "korelpre/tables/waitingnames.h"

namespace precomp {

/// The rules of a program, and what they lie in and refer to.
class tRuleSet final : public tRuleContext {
 public:
  tRuleSet() = default;
  ~tRuleSet() override { dynDefines.dropRules(); }
  tRuleSet(const tRuleSet&) = delete;
  tRuleSet& operator=(const tRuleSet&) = delete;

  /// Made on first use.
  AYaccClass* KorelYacc() override;

  /// Whether a conditional takes the name for defined.
  bool isDefined(std::string_view name) const {
    return defines.index().countOf(name) > 0 || dynDefines.index().countOf(name) > 0 ||
           waitingNames.has(name);
  }
  /// Forgets the defines that wait for their lines.
  void dropWaiting() {
    dynDefines.dropRules();
    waitingNames.clear();
  }
  /// Puts a command or a translation into its table.
  void enter(std::unique_ptr<tBaseXChg> rule);
  /// Lets `observer` see which rules are tried and applied; null for none.
  void setObserver(tRuleObserver* observer);
  /// Keeps what stored rules refer to.
  void keep(std::shared_ptr<const void> image) { images_.push_back(std::move(image)); }
  /// Forgets all rules. Nothing outside may refer to one any more.
  void clear();

 private:
  std::vector<std::shared_ptr<const void>> images_;
  std::unique_ptr<AYaccClass> language_;

 public:
  tMarkerArena markers;        // of most rules
  tXChgArray dynDefines;       // its rules belong to line entries
  tWaitingNames waitingNames;  // of defines that are as good as there, but not yet made
  tXChgArray defines;
  tXChgArray commands;
  tXChgArray translates;
};

}  // namespace precomp
