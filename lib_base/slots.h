#pragma once

#include <bit>
#include <cstddef>
#include <utility>
#include <vector>

/// Open-addressing hash tables with linear probing, as functions over a flat array of slots that
/// the caller owns. The caller decides what a slot holds, which slots are empty and how keys are
/// hashed. The number of slots is a power of two, `mask` is that number minus one, and at least one
/// slot is always empty. Entries cannot be erased individually. Pass lambdas as predicates: they
/// are inlined, function pointers are not.

/// The first slot for which `ends` holds, starting at the one for `hash` and wrapping around at the
/// end of the array. `ends` must hold for an empty slot.
template <class tSlot, class tEnds>
std::size_t probeSlots(const tSlot* slots, std::size_t mask, std::size_t hash, const tEnds& ends) {
  std::size_t at = hash & mask;
  while (!ends(slots[at])) at = (at + 1) & mask;
  return at;
}

/// The slot of the entry for which `isIt` holds, or the empty slot where it would be inserted.
/// `isIt` is not called for an empty slot.
template <class tSlot, class tIsEmpty, class tIsIt>
std::size_t slotOf(const tSlot* slots, std::size_t mask, std::size_t hash, const tIsEmpty& isEmpty,
                   const tIsIt& isIt) {
  return probeSlots(slots, mask, hash,
                    [&](const tSlot& slot) { return isEmpty(slot) || isIt(slot); });
}

/// Like slotOf, but null if there is no such entry.
template <class tSlot, class tIsEmpty, class tIsIt>
const tSlot* findSlot(const tSlot* slots, std::size_t mask, std::size_t hash,
                      const tIsEmpty& isEmpty, const tIsIt& isIt) {
  const tSlot& slot = slots[slotOf(slots, mask, hash, isEmpty, isIt)];
  return isEmpty(slot) ? nullptr : &slot;
}

/// The number of slots for a known number of entries: more than half of them stay empty.
constexpr std::size_t slotsFor(std::size_t entries) {
  return std::bit_ceil(entries * 2 + 1);
}

/// Whether `used` entries fill half of the slots or more, so that the table must grow before the
/// next insertion.
constexpr bool slotsAreFull(std::size_t used, std::size_t slots) {
  return used * 2 >= slots;
}

/// Rehashes into `size` slots, which must be enough; value-initialised slots must be empty. Entries
/// for which `isEmpty` holds are dropped. Returns the number of entries.
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
