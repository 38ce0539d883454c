#pragma once

#include <cstdint>
#include <string_view>

#include "korelpre/rules/rule.h"
#include "korelpre/tables/storedrules.h"
#include "lib_base/list.h"

namespace precomp {

/// The slots of a rule table. A slot holds a rule, which it owns, or stands for a stored one, which
/// is part of the image of a header; the rule itself is made when somebody asks for it.
///
/// A stored rule stands in its slot by its address + 1, so that slots are never to be had as the
/// pointers of an array, and no operation of one destroys what is no rule.
class tRuleSlots : private tAutoArray<tBaseXChg> {
 public:
  ~tRuleSlots() override { dropStored(); }
  using tPointerArray::count;
  using tPointerArray::empty;

  /// Destroys every rule and leaves the table empty.
  void Destroy() override {
    dropStored();
    tAutoArray<tBaseXChg>::Destroy();
  }
  tBaseXChg* get(int index) const {
    tBaseXChg* const rule = slot(index);
    return storedIn(rule) == nullptr ? rule : makeRule(index);
  }
  tBaseXChg& operator[](int index) const { return *get(index); }
  tBaseXChg* last() const { return get(count() - 1); }
  /// The rule at `index`; null when it is a stored one that nobody has asked for yet.
  const tBaseXChg* madeRule(int index) const {
    const tBaseXChg* const rule = slot(index);
    return storedIn(rule) == nullptr ? rule : nullptr;
  }

 protected:
  struct tKey {
    std::string_view text;
    tWordRule wordRule;
  };
  static const tStoredRule* storedIn(const tBaseXChg* slot) {
    const auto address = reinterpret_cast<std::uintptr_t>(slot);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): see above
    return (address & 1) == 0 ? nullptr : reinterpret_cast<const tStoredRule*>(address - 1);
  }
  static tBaseXChg* slotOf(const tStoredRule& rule) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): see above
    return reinterpret_cast<tBaseXChg*>(reinterpret_cast<std::uintptr_t>(&rule) + 1);
  }
  static tKey keyOf(const tBaseXChg* slot) {
    const tStoredRule* stored = storedIn(slot);
    if (stored != nullptr) return {stored->keyText(), stored->wordRule()};
    return {slot->key(), slot->wordRule()};
  }
  /// The word behind the key, when nothing can stand between them.
  static std::string_view secondWordOf(const tBaseXChg* slot);

  tBaseXChg* slot(int index) const { return tAutoArray<tBaseXChg>::get(index); }
  using tArray<tBaseXChg>::add;
  using tArray<tBaseXChg>::insertAt;
  using tArray<tBaseXChg>::takeAt;
  using tAutoArray<tBaseXChg>::replaceAt;
  using tArray<tBaseXChg>::dropElements;
  using tPointerArray::reserve;
  using tPointerArray::setPointer;
  /// Adds a stored rule, which must outlive the table; `context` is that of all of them.
  void addStoredSlot(const tStoredRule& rule, tRuleContext* context) {
    context_ = context;
    add(slotOf(rule));
  }
  /// Forgets all rules without destroying them.
  void dropSlots() {
    dropStored();
    dropElements();
  }

 private:
  tBaseXChg* makeRule(int index) const;
  void dropStored();

  tRuleContext* context_ = nullptr;  // of stored rules; null while there were none
};

}  // namespace precomp
