#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

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
    runs_.assign(std::bit_ceil(keys * 2 + 1), kNone);
    mask_ = runs_.size() - 1;
  }
  /// At most as many as begin() was told.
  void add(const tRun& run) {
    std::size_t slot = run.hash & mask_;
    while (runs_[slot].key != nullptr) slot = (slot + 1) & mask_;
    runs_[slot] = run;
  }
  /// The first run of the hash for which `isKey` holds, or null.
  template <class tIsKey>
  const tRun* find(std::uint32_t hash, const tIsKey& isKey) const {
    for (std::size_t slot = hash & mask_;; slot = (slot + 1) & mask_) {
      const tRun& run = runs_[slot];
      if (run.key == nullptr) return nullptr;
      if (run.hash == hash && isKey(run)) return &run;
    }
  }

 private:
  static constexpr tRun kNone{nullptr, 0, 0, 0, -1};

  std::vector<tRun> runs_{kNone};  // with open addressing; a power of two of them, one always empty
  std::size_t mask_ = 0;
};

}  // namespace precomp
