#include "lib_base/nearest.h"

#include <algorithm>
#include <cstddef>

namespace {

// The edit distance with swaps of neighbours (optimal string alignment).
std::size_t distance(const std::string& from, const std::string& to) {
  std::vector<std::vector<std::size_t>> rows(from.size() + 1,
                                             std::vector<std::size_t>(to.size() + 1));
  for (std::size_t i = 0; i <= from.size(); ++i) {
    for (std::size_t k = 0; k <= to.size(); ++k) {
      std::size_t& best = rows[i][k];
      best = std::max(i, k);
      if (i == 0 || k == 0) continue;
      const std::size_t change = from[i - 1] == to[k - 1] ? 0 : 1;
      best = std::min({rows[i - 1][k] + 1, rows[i][k - 1] + 1, rows[i - 1][k - 1] + change});
      const bool swapped = i > 1 && k > 1 && from[i - 1] == to[k - 2] && from[i - 2] == to[k - 1];
      if (swapped) best = std::min(best, rows[i - 2][k - 2] + 1);
    }
  }
  return rows[from.size()][to.size()];
}

}  // namespace

std::string nearestTo(const std::string& word, const std::vector<std::string>& words) {
  constexpr std::size_t kLongest = 64;  // no word of ours comes near
  if (word.size() > kLongest) return {};
  std::string nearest;
  std::size_t least = 0;
  for (const std::string& candidate : words) {
    const auto [shorter, longer] = std::minmax({word.size(), candidate.size()});
    // A third of the letters may be wrong.
    if (longer > kLongest || (longer - shorter) * 3 > longer) continue;
    const std::size_t found = distance(word, candidate);
    if (found * 3 > longer) continue;
    if (!nearest.empty() && found >= least) continue;
    nearest = candidate;
    least = found;
  }
  return nearest;
}
