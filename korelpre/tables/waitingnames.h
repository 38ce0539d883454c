#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace precomp {

/// The names of #defines that wait to be read, and the lines on which these stand. A source can
/// have a million of them.
class tWaitingNames {
 public:
  /// The bytes of `name` must outlive this object.
  void add(std::string_view name, int line);
  bool has(std::string_view name) const { return latestOf(name) != nullptr; }
  /// Removes a name. Calls `visit` with each line on which it stands.
  template <class tVisit>
  void remove(std::string_view name, const tVisit& visit) {
    for (const tWaiting* at = latestOf(name); at != nullptr;) {
      visit(at->line);
      const std::uint32_t before = at->before;
      const_cast<tWaiting*>(at)->line = kGone;
      at = before == 0 ? nullptr : &names_[before - 1];
    }
  }
  void clear() { *this = tWaitingNames(); }

 private:
  static constexpr int kGone = 0;
  struct tWaiting {
    const char* name;
    std::uint32_t size;
    std::uint32_t hash;
    int line;
    std::uint32_t before;  // the one of that name before it, counted from 1; 0 for none
  };

  std::size_t slotFor(std::string_view name, std::uint32_t hash) const;
  const tWaiting* latestOf(std::string_view name) const;

  std::vector<tWaiting> names_;
  std::vector<std::uint32_t> slots_;  // the latest of a name, counted from 1; 0 when empty
  std::size_t used_ = 0;
};

}  // namespace precomp
