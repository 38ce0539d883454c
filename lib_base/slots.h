#pragma once

#include <bit>
#include <cstddef>
#include <utility>
#include <vector>

/// Hash tables with open addressing, as functions over a flat array of slots that the caller keeps:
/// what a slot holds, how an empty one is told and where the hash comes from differ from table to
/// table. The number of slots is a power of two, `mask` is that number less one, and at least one
/// slot is always empty. Entries are never removed one by one. Pass lambdas as predicates: they are
/// inlined, pointers to functions are not.

/// The first slot at which `ends` holds, from that of `hash` on and around the end of the array.
/// `ends` must hold for an empty slot.
template <class tSlot, class tEnds>
std::size_t probeSlots(const tSlot* slots, std::size_t mask, std::size_t hash, const tEnds& ends) {
  std::size_t at = hash & mask;
  while (!ends(slots[at])) at = (at + 1) & mask;
  return at;
}

/// The slot of the entry for which `isIt` holds, or the empty slot where it belongs. `isIt` is not
/// asked about an empty slot.
template <class tSlot, class tIsEmpty, class tIsIt>
std::size_t slotOf(const tSlot* slots, std::size_t mask, std::size_t hash, const tIsEmpty& isEmpty,
                   const tIsIt& isIt) {
  return probeSlots(slots, mask, hash,
                    [&](const tSlot& slot) { return isEmpty(slot) || isIt(slot); });
}

/// As slotOf, but null when there is no such entry.
template <class tSlot, class tIsEmpty, class tIsIt>
const tSlot* findSlot(const tSlot* slots, std::size_t mask, std::size_t hash,
                      const tIsEmpty& isEmpty, const tIsIt& isIt) {
  const tSlot& slot = slots[slotOf(slots, mask, hash, isEmpty, isIt)];
  return isEmpty(slot) ? nullptr : &slot;
}

/// The slots for `entries` entries that come at once: at least half of them stay empty.
constexpr std::size_t slotsFor(std::size_t entries) {
  return std::bit_ceil(entries * 2 + 1);
}

/// Whether `used` entries fill half of the slots or more: time to grow before the next one comes.
constexpr bool slotsAreFull(std::size_t used, std::size_t slots) {
  return used * 2 >= slots;
}

/// Moves the entries to an array of `size` slots, which must suffice; value-initialised slots are
/// empty. Entries for which `isEmpty` holds are dropped. Returns how many there are.
template <class tSlot, class tIsEmpty, class tHashOf>
std::size_t resizeSlots(std::vector<tSlot>& slots, std::size_t size, const tIsEmpty& isEmpty,
                        const tHashOf& hashOf) {
  std::vector<tSlot> old(size);
  old.swap(slots);
  std::size_t used = 0;
  for (tSlot& slot : old) {
    if (isEmpty(slot)) continue;
    slots[probeSlots(slots.data(), size - 1, hashOf(slot), isEmpty)] = std::move(slot);
    ++used;
  }
  return used;
}
