#include "korelpre/tables/ruleindex.h"

#include "korelpre/rules/rule.h"
#include "korelpre/tables/storedrules.h"
#include "korelpre/tables/wordlookup.h"
#include "lib_base/slots.h"

namespace precomp {

namespace {

constexpr auto isEmpty = [](std::uint32_t slot) { return slot == 0; };

}  // namespace

// Where the name is, or belongs.
inline std::size_t tRuleIndex::placeOf(std::string_view name, std::uint32_t hash) const {
  return slotOf(slots_.data(), slots_.size() - 1, hash, isEmpty, [&](std::uint32_t place) {
    const tIndexedName& entry = names_[place - 1];
    return entry.hash == hash && entry.name == name;
  });
}

tIndexedName* tRuleIndex::find(std::string_view name) {
  if (slots_.empty()) return stored_ == nullptr ? nullptr : findStored(name, hashOfWord(name));
  const std::uint32_t hash = hashOfWord(name);
  if (const std::uint32_t place = slots_[placeOf(name, hash)]; place != 0) {
    tIndexedName& entry = names_[place - 1];
    if (entry.waits) return settled(entry);
    return entry.rules > 0 ? &entry : nullptr;
  }
  return stored_ == nullptr ? nullptr : findStored(name, hash);
}

int tRuleIndex::countOf(std::string_view name) const {
  if (slots_.empty() && stored_ == nullptr) return 0;
  const std::uint32_t hash = hashOfWord(name);
  const tIndexedName* entry = search(name, hash);
  if (entry != nullptr) return entry->rules;
  return stored_ != nullptr && stored_->findName(name, hash) != nullptr ? 1 : 0;
}

const tIndexedName* tRuleIndex::search(std::string_view name, std::uint32_t hash) const {
  if (slots_.empty()) return nullptr;
  const std::uint32_t place = slots_[placeOf(name, hash)];
  return place != 0 ? &names_[place - 1] : nullptr;
}

tIndexedName* tRuleIndex::findStored(std::string_view name, std::uint32_t hash) {
  const tStoredRule* rule = stored_->findName(name, hash);
  if (rule == nullptr) return nullptr;
  tIndexedName*& entry = byStored_[static_cast<std::size_t>(rule - stored_->rules)];
  if (entry == nullptr) {
    entry = &storedNames_.emplace_back();
    entry->name = tString::borrow(rule->keyText());
    entry->hash = hash;
    entry->rules = 1;
    return settled(*entry);
  }
  return entry->rules > 0 ? entry : nullptr;
}

// Has the rule made that the entry stands for.
tIndexedName* tRuleIndex::settled(tIndexedName& entry) {
  entry.waits = false;
  entry.rule = table_->latestOf(entry.name);
  if (entry.rule == nullptr) entry.rules = 0;  // of a damaged image
  return entry.rules > 0 ? &entry : nullptr;
}

void tRuleIndex::added(tBaseXChg* rule) {
  ++generation_;
  gate_.add(rule->key());
  tIndexedName& entry = entryFor(rule->key(), hashOfWord(rule->key()));
  ++entry.rules;
  entry.rule = rule;
  entry.waits = false;
}

void tRuleIndex::addedStored(std::string_view key, tRuleSource& table) {
  ++generation_;
  table_ = &table;
  gate_.add(key);
  tIndexedName& entry = entryFor(key, hashOfWord(key), true);
  ++entry.rules;
  entry.waits = true;
}

void tRuleIndex::addedStored(const tStoredRules& stored, tRuleSource& table) {
  ++generation_;
  table_ = &table;
  if (stored.names == nullptr) return;
  stored_ = &stored;
  byStored_.assign(stored.count, nullptr);
  for (tIndexedName& entry : names_) {
    if (stored.findName(entry.name, entry.hash) == nullptr) continue;
    ++entry.rules;
    entry.waits = true;
  }
  gate_.addBits(stored.nameGate);
}

void tRuleIndex::removed(tBaseXChg* rule, tBaseXChg* latest) {
  ++generation_;
  tIndexedName& entry = entryFor(rule->key(), hashOfWord(rule->key()));
  --entry.rules;
  entry.rule = latest;
  entry.waits = false;
}

void tRuleIndex::clear() {
  ++generation_;
  gate_.clear();
  names_.clear();
  slots_.clear();
  stored_ = nullptr;
  storedNames_.clear();
  byStored_.clear();
}

tIndexedName& tRuleIndex::entryFor(std::string_view name, std::uint32_t hash, bool stored) {
  if (slotsAreFull(names_.size(), slots_.size())) grow();
  const std::size_t slot = placeOf(name, hash);
  if (slots_[slot] != 0) return names_[slots_[slot] - 1];
  names_.emplace_back();
  names_.back().name = stored ? tString::borrow(name) : tString(name);
  names_.back().hash = hash;
  if (stored_ != nullptr && stored_->findName(name, hash) != nullptr) {
    names_.back().rules = 1;
    names_.back().waits = true;
  }
  slots_[slot] = static_cast<std::uint32_t>(names_.size());
  return names_.back();
}

void tRuleIndex::grow() {
  resizeSlots(slots_, slots_.empty() ? 64 : slots_.size() * 2, isEmpty,
              [this](std::uint32_t place) { return names_[place - 1].hash; });
}

}  // namespace precomp
