#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "lib_base/slots.h"

namespace precomp {

/// Where the rules of a key stand in their table, by the hash of the key. Several keys may have one
/// hash. Refers to the texts of the keys.
class tKeyTable {
 public:
  struct tRun {
    const char* key;  // null in an empty slot
    std::uint32_t hash;
    std::uint32_t size;  // of the key
    int first;
    int last;

    std::string_view text() const { return {key, size}; }
  };

  /// Empties the table and makes room for `keys` keys.
  void begin(std::size_t keys) {
    runs_.assign(slotsFor(keys), kNone);
    mask_ = runs_.size() - 1;
  }
  /// At most as many as begin() was told.
  void add(const tRun& run) { runs_[probeSlots(runs_.data(), mask_, run.hash, isEmpty)] = run; }
  /// The first run of the hash for which `isKey` holds, or null.
  template <class tIsKey>
  const tRun* find(std::uint32_t hash, const tIsKey& isKey) const {
    return findSlot(runs_.data(), mask_, hash, isEmpty,
                    [&](const tRun& run) { return run.hash == hash && isKey(run); });
  }

 private:
  static constexpr tRun kNone{nullptr, 0, 0, 0, -1};
  static constexpr auto isEmpty = [](const tRun& run) { return run.key == nullptr; };

  std::vector<tRun> runs_{kNone};
  std::size_t mask_ = 0;
};

}  // namespace precomp
