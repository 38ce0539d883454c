#include "korelpre/headers/imagebuilder.h"

#include <bit>
#include <cstring>
#include <limits>
#include <unordered_map>

#include "korelpre/tables/ruletable.h"
#include "lib_base/slots.h"

namespace precomp {

namespace {

template <class T>
T* partOf(char* image, std::uint32_t place) {
  return reinterpret_cast<T*>(image + place);
}

// The second literal of a pattern, when nothing can stand between it and the key.
std::string_view secondWordOf(const tBaseXChg& rule) {
  const tMatchMarker* head = rule.firstMatch();
  if (head->hasGroups() || head->next() == nullptr || !head->next()->isIdentifier()) return {};
  const std::string_view word = head->next()->token();
  return word.size() > std::numeric_limits<std::uint8_t>::max() ? std::string_view() : word;
}

bool isNamed(const tBaseXChg& rule) {
  return rule.wordRule().caseSensitive && !rule.wordRule().abbreviate;
}

}  // namespace

void tImageBuilder::addTable(const tXChgArray& table, std::vector<const tBaseXChg*> rules,
                             bool whole) {
  for (const tBaseXChg* rule : rules) {
    if (rule->key().size() > std::numeric_limits<std::uint16_t>::max()) fits_ = false;
  }
  tables_.push_back({&table, std::move(rules), whole});
}

std::shared_ptr<const tHeaderImage> tImageBuilder::finish(const tHeaderNotes& notes) {
  tImageHead head;
  tHeaderImage::startHead(head);
  size_ = sizeof head;
  for (std::size_t i = 0; i < tables_.size(); ++i) place(head.tables[i], tables_[i]);
  const std::size_t fixed = size_;
  const std::unique_ptr<std::uint64_t[]> front = tHeaderImage::storage(fixed);
  char* const image = reinterpret_cast<char*>(front.get());
  std::memset(image, 0, fixed);
  tPCHStream bodies(fixed);
  for (std::size_t i = 0; i < tables_.size(); ++i) {
    fillRules(image, head.tables[i], tables_[i], bodies);
    if (head.tables[i].order == 0) continue;
    fillOrder(image, head.tables[i], tables_[i]);
    fillGates(image, head.tables[i], tables_[i]);
    fillNames(image, head.tables[i], tables_[i]);
  }
  head.notes = static_cast<std::uint32_t>(bodies.end());
  saveNotes(bodies, notes);
  head.size = bodies.end();
  fits_ = fits_ && head.size <= std::numeric_limits<std::int32_t>::max();
  if (!fits_) return nullptr;

  std::memcpy(image, &head, sizeof head);
  std::unique_ptr<std::uint64_t[]> whole = tHeaderImage::storage(head.size);
  char* const bytes = reinterpret_cast<char*>(whole.get());
  std::memcpy(bytes, image, fixed);
  std::memcpy(bytes + fixed, bodies.written().data(), bodies.written().size());
  tHeaderImage::seal(bytes, head.size);
  return tHeaderImage::open(std::move(whole), head.size);
}

// Room of a multiple of 8 bytes.
std::uint32_t tImageBuilder::take(std::size_t bytes) {
  const std::size_t at = size_;
  size_ += (bytes + 7) / 8 * 8;
  if (size_ > std::numeric_limits<std::int32_t>::max()) fits_ = false;
  return static_cast<std::uint32_t>(at);
}

void tImageBuilder::place(tImageTable& place, const tTable& table) {
  const std::size_t count = table.rules.size();
  place.count = static_cast<std::uint32_t>(count);
  place.rules = take(count * sizeof(tStoredRule));
  if (!table.whole || count == 0) return;
  if (table.table->abbreviating()) place.flags |= kImageAbbreviating;
  if (table.table->irregular()) place.flags |= kImageIrregular;
  place.order = take(count * sizeof(std::uint32_t));
  place.wordGate = take(tFoldedGate::kWords * sizeof(std::uint64_t));
  place.oddStarts = take(256 / 8);
  if (!isNamed(*table.rules[0])) return;
  place.nameSlots = static_cast<std::uint32_t>(std::bit_ceil(2 * count));
  place.names = take(place.nameSlots * sizeof(std::uint32_t));
  place.nameGate = take(tWordGate::kWords * sizeof(std::uint64_t));
}

void tImageBuilder::fillRules(char* image, const tImageTable& place, const tTable& table,
                              tPCHStream& bodies) {
  auto* stored = partOf<tStoredRule>(image, place.rules);
  std::uint32_t at = place.rules;
  for (const tBaseXChg* rule : table.rules) {
    const std::size_t body = bodies.end();
    const std::size_t begin = bodies.written().size();
    rule->save(&bodies);
    // The words stand somewhere in what the rule has written.
    const std::string_view written = std::string_view(bodies.written()).substr(begin);
    const auto placeOf = [&](std::string_view word) {
      return static_cast<std::uint32_t>(body + written.find(word) - at);
    };
    const std::string_view second = secondWordOf(*rule);
    stored->home = at;
    stored->key = placeOf(rule->key());
    stored->keySize = static_cast<std::uint16_t>(rule->key().size());
    stored->second = placeOf(second);
    stored->secondSize = static_cast<std::uint8_t>(second.size());
    stored->body = static_cast<std::uint32_t>(body) - at;
    stored->flags = static_cast<std::uint8_t>(
        (rule->isCmd() ? tStoredRule::kIsCommand : 0) |
        (rule->wordRule().abbreviate ? tStoredRule::kAbbreviates : 0) |
        (rule->wordRule().caseSensitive ? tStoredRule::kCaseSensitive : 0));
    ++stored;
    at += sizeof(tStoredRule);
  }
}

void tImageBuilder::fillOrder(char* image, const tImageTable& place, const tTable& table) {
  std::unordered_map<const tBaseXChg*, std::uint32_t> places;
  for (const tBaseXChg* rule : table.rules) {
    places.emplace(rule, static_cast<std::uint32_t>(places.size()));
  }
  auto* order = partOf<std::uint32_t>(image, place.order);
  table.table->arrange();
  for (int i = 0; i < table.table->count(); ++i) {
    const auto found = places.find(table.table->get(i));
    if (found != places.end()) *order++ = found->second;
  }
}

void tImageBuilder::fillGates(char* image, const tImageTable& place, const tTable& table) {
  tWordLookup lookup;
  for (const tBaseXChg* rule : table.rules) lookup.added(rule->key(), rule->wordRule());
  std::memcpy(image + place.wordGate, lookup.gate().bits(),
              tFoldedGate::kWords * sizeof(std::uint64_t));
  auto* odd = partOf<std::uint64_t>(image, place.oddStarts);
  for (unsigned c = 0; c < 256; ++c) {
    if (lookup.startsOddToken(static_cast<char>(c))) odd[c / 64] |= std::uint64_t{1} << (c % 64);
  }
}

void tImageBuilder::fillNames(char* image, const tImageTable& place, const tTable& table) {
  if (place.names == 0) return;
  tWordGate gate;
  auto* slots = partOf<std::uint32_t>(image, place.names);
  std::uint32_t number = 0;
  for (const tBaseXChg* rule : table.rules) {
    const std::string_view key = rule->key();
    gate.add(key);
    std::uint32_t& slot = slots[slotOf(
        slots, place.nameSlots - 1, hashOfWord(key), [](std::uint32_t other) { return other == 0; },
        [&](std::uint32_t other) { return table.rules[other - 1]->key() == key; })];
    if (slot != 0) fits_ = false;  // a name has one rule
    slot = ++number;
  }
  std::memcpy(image + place.nameGate, gate.bits(), tWordGate::kWords * sizeof(std::uint64_t));
}

}  // namespace precomp
