#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace precomp {

/// The comments of a source that switch warnings off:
///
///     x := MAX        // krpre: no-define-case
///     // krpre: no-define-case, no-dropped-bytes
///     // krpre: file no-define-case
///
/// The first is about its own line, the second, which stands alone on a line, about the next one,
/// the third about the file. "no-all" switches all of them off.
class tSuppressions {
 public:
  explicit tSuppressions(std::string_view text);

  bool covers(std::string_view slug, int line) const;

 private:
  using tSlugs = std::vector<std::string>;

  static bool hold(const tSlugs& slugs, std::string_view slug);

  tSlugs ofFile_;
  std::unordered_map<int, tSlugs> ofLines_;
};

}  // namespace precomp
