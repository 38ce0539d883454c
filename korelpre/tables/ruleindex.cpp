// Finds what a table of defines knows of a name. In goes a word of a statement, byte for byte; out
// comes the entry of that name, or null. It is asked of every word that passes the gate, so it is a
// hash table of its own beside the sorted rules of the table.
//
//   - Rules that arrived one by one have entries in `names_`, found by way of `slots_`.
//   - The rules of a header image that filled the table as a whole bring their own slots along
//     (tStoredRules). Such a name gets an entry when a word first finds it, and its rule is made
//     then: of thousands of names a source uses a few.
//
// A name that has both has its entry in `names_`, which counts the stored rule too. So a look-up
// asks `slots_` first, and the image only when there is nothing.
//
// Entries are never erased, one without rules answers as if it were not there; so a probe ends at
// the first empty slot, of which there is always one. What an entry says of its name's final text
// holds for one generation of the tables.

#include "korelpre/tables/ruleindex.h"

#include "korelpre/rules/rule.h"
#include "korelpre/tables/storedrules.h"
#include "korelpre/tables/wordlookup.h"
#include "lib_base/slots.h"

namespace precomp {

namespace {

constexpr auto isEmpty = [](std::uint32_t slot) { return slot == 0; };

// The name is that of the rule, whose bytes may go with the rule that it replaces.
void take(tIndexedName& entry, tBaseXChg* rule) {
  entry.name = rule->key();
  entry.rule = rule;
  entry.waits = false;
}

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

// Makes no rule: a conditional only asks whether there is one.
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

// Entries of stored rules are found by the place of the rule, so they need no slots of their own.
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
  take(entry, rule);
}

void tRuleIndex::replaced(tBaseXChg* rule) {
  ++generation_;
  take(entryFor(rule->key(), hashOfWord(rule->key())), rule);
}

void tRuleIndex::addedStored(std::string_view key, tRuleSource& table) {
  ++generation_;
  table_ = &table;
  gate_.add(key);
  tIndexedName& entry = entryFor(key, hashOfWord(key));
  ++entry.rules;
  entry.waits = true;
}

// Names that have entries already, those of "-D" say, are counted up now; what comes later is in
// entryFor().
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

// The gate keeps what it knows of a name that is gone: other names may begin alike.
void tRuleIndex::removed(tBaseXChg* rule, tBaseXChg* latest) {
  ++generation_;
  tIndexedName& entry = entryFor(rule->key(), hashOfWord(rule->key()));
  --entry.rules;
  if (latest != nullptr) {
    take(entry, latest);
  } else {
    entry.name = tString(entry.name.view());
    entry.rule = nullptr;
    entry.waits = false;
  }
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

// The entry of a name, made when there is none. A name of the image keeps the count of its stored
// rule when it moves to `names_`.
tIndexedName& tRuleIndex::entryFor(std::string_view name, std::uint32_t hash) {
  if (slotsAreFull(names_.size(), slots_.size())) grow();
  const std::size_t slot = placeOf(name, hash);
  if (slots_[slot] != 0) return names_[slots_[slot] - 1];
  names_.emplace_back();
  names_.back().name = tString::borrow(name);
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
