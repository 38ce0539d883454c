#include "korelpre/tables/waitingnames.h"

#include "korelpre/tables/wordlookup.h"
#include "lib_base/slots.h"

namespace precomp {

namespace {

constexpr auto isEmpty = [](std::uint32_t slot) { return slot == 0; };

}  // namespace

// Where the name is, or belongs.
std::size_t tWaitingNames::slotFor(std::string_view name, std::uint32_t hash) const {
  return slotOf(slots_.data(), slots_.size() - 1, hash, isEmpty, [&](std::uint32_t place) {
    const tWaiting& met = names_[place - 1];
    return met.hash == hash && std::string_view(met.name, met.size) == name;
  });
}

std::uint32_t tWaitingNames::latestOf(std::string_view name) const {
  if (slots_.empty()) return 0;
  const std::uint32_t place = slots_[slotFor(name, hashOfWord(name))];
  return place != 0 && names_[place - 1].line != kGone ? place : 0;
}

void tWaitingNames::add(std::string_view name, int line) {
  if (slotsAreFull(used_, slots_.size())) {
    resizeSlots(slots_, slotsFor(used_ + 1), isEmpty,
                [this](std::uint32_t place) { return names_[place - 1].hash; });
  }
  const std::uint32_t hash = hashOfWord(name);
  std::uint32_t& slot = slots_[slotFor(name, hash)];
  if (slot == 0) ++used_;
  const std::uint32_t before = slot != 0 && names_[slot - 1].line != kGone ? slot : 0;
  names_.push_back({.name = name.data(),
                    .size = static_cast<std::uint32_t>(name.size()),
                    .hash = hash,
                    .line = line,
                    .before = before});
  slot = static_cast<std::uint32_t>(names_.size());
}

}  // namespace precomp
