#include "korelpre/tables/ruleset.h"

#include <utility>

namespace precomp {

AYaccClass* tRuleSet::KorelYacc() {
  if (language_ == nullptr) language_ = std::make_unique<AYaccClass>();
  return language_.get();
}

void tRuleSet::enter(std::unique_ptr<tBaseXChg> rule) {
  tXChgArray& table = rule->isCmd() ? commands : translates;
  table.enter(std::move(rule));
}

void tRuleSet::setObserver(tRuleObserver* observer) {
  for (tXChgArray* table : {&defines, &commands, &translates}) table->setObserver(observer);
}

// Rules lie in the arena and refer to images, so these go last.
void tRuleSet::clear() {
  dropWaiting();
  defines.Destroy();
  commands.Destroy();
  translates.Destroy();
  markers.clear();
  images_.clear();
  language_.reset();
}

}  // namespace precomp
