#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace precomp {

/// The names of #defines that wait to be read, and the lines on which these stand. A source can
/// have a million of them.
class tWaitingNames {
 public:
  /// The bytes of `name` must outlive this object.
  void add(std::string_view name, int line);
  bool has(std::string_view name) const { return latestOf(name) != 0; }
  /// Removes a name. Calls `visit` with each line on which it stands.
  template <class tVisit>
  void remove(std::string_view name, const tVisit& visit) {
    for (std::uint32_t place = latestOf(name); place != 0; place = names_[place - 1].before) {
      visit(std::exchange(names_[place - 1].line, kGone));
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
  /// Counted from 1; 0 when none waits.
  std::uint32_t latestOf(std::string_view name) const;

  std::vector<tWaiting> names_;
  std::vector<std::uint32_t> slots_;  // the latest of a name, counted from 1; 0 when empty
  std::size_t used_ = 0;
};

}  // namespace precomp
