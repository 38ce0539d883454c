#include "korelpre/tables/ruleslots.h"

namespace precomp {

tBaseXChg* tRuleSlots::makeRule(int index) const {
  tBaseXChg* const rule = storedIn(slot(index))->make(context_).release();
  const_cast<tRuleSlots*>(this)->setPointer(index, rule);  // the table stays what it is
  return rule;
}

void tRuleSlots::dropStored() {
  if (context_ == nullptr) return;
  for (int i = 0; i < count(); ++i) {
    if (storedIn(slot(i)) != nullptr) setPointer(i, nullptr);
  }
  context_ = nullptr;
}

std::string_view tRuleSlots::secondWordOf(const tBaseXChg* slot) {
  const tStoredRule* stored = storedIn(slot);
  if (stored != nullptr) return stored->secondWord();
  const tMatchMarker* head = slot->firstMatch();
  if (head->hasGroups() || head->next() == nullptr || !head->next()->isIdentifier()) return {};
  return head->next()->token();
}

}  // namespace precomp
