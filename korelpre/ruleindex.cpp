#include "korelpre/ruleindex.h"

#include "korelpre/rule.h"
#include "korelpre/wordlookup.h"

namespace precomp {

tIndexedName* tRuleIndex::find(std::string_view name) {
  if (slots_.empty()) return nullptr;
  const std::uint32_t hash = hashOfWord(name);
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t slot = hash & mask; slots_[slot] != 0; slot = (slot + 1) & mask) {
    tIndexedName& entry = names_[slots_[slot] - 1];
    if (entry.hash == hash && entry.name == name) return entry.rules > 0 ? &entry : nullptr;
  }
  return nullptr;
}

void tRuleIndex::added(tBaseXChg* rule) {
  ++generation_;
  gate_.add(rule->key());
  tIndexedName& entry = entryFor(rule->key(), hashOfWord(rule->key()));
  ++entry.rules;
  entry.rule = rule;
}

void tRuleIndex::removed(tBaseXChg* rule, tBaseXChg* latest) {
  ++generation_;
  tIndexedName& entry = entryFor(rule->key(), hashOfWord(rule->key()));
  --entry.rules;
  entry.rule = latest;
}

void tRuleIndex::clear() {
  ++generation_;
  gate_.clear();
  names_.clear();
  slots_.clear();
}

tIndexedName& tRuleIndex::entryFor(std::string_view name, std::uint32_t hash) {
  if (names_.size() * 2 >= slots_.size()) grow();
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash & mask;
  for (; slots_[slot] != 0; slot = (slot + 1) & mask) {
    tIndexedName& entry = names_[slots_[slot] - 1];
    if (entry.hash == hash && entry.name == name) return entry;
  }
  names_.emplace_back();
  names_.back().name = tString(name);
  names_.back().hash = hash;
  slots_[slot] = static_cast<std::uint32_t>(names_.size());
  return names_.back();
}

void tRuleIndex::grow() {
  slots_.assign(slots_.empty() ? 64 : slots_.size() * 2, 0);
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t i = 0; i < names_.size(); ++i) {
    std::size_t slot = names_[i].hash & mask;
    while (slots_[slot] != 0) slot = (slot + 1) & mask;
    slots_[slot] = static_cast<std::uint32_t>(i + 1);
  }
}

}  // namespace precomp
