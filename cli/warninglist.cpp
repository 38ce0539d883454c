#include "cli/warninglist.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "include/krpre.h"
#include "lib_base/nearest.h"

namespace {

std::vector<const krpre_warning*> allWarnings() {
  std::vector<const krpre_warning*> all;
  while (const krpre_warning* const next = krpre_warning_at(all.size())) all.push_back(next);
  return all;
}

void dropStart(std::string& word, const std::string& start) {
  if (word.starts_with(start)) word.erase(0, start.size());
}

}  // namespace

std::string faultOfWarning(const std::string& word) {
  std::string slug = word;
  dropStart(slug, "no-");
  if (slug == "all" || slug == "error") return {};
  dropStart(slug, "error=");
  std::vector<std::string> slugs;
  for (const krpre_warning* warning : allWarnings()) slugs.emplace_back(warning->slug);
  if (std::find(slugs.begin(), slugs.end(), slug) != slugs.end()) return {};
  const std::string nearest = nearestTo(slug, slugs);
  return nearest.empty() ? "unknown warning; --list-warnings prints them"
                         : "unknown warning; did you mean " + nearest + "?";
}

std::string warningList() {
  std::size_t width = 0;
  for (const krpre_warning* warning : allWarnings()) {
    width = std::max(width, std::string(warning->slug).size());
  }
  std::string list;
  for (const krpre_warning* warning : allWarnings()) {
    std::string slug = warning->slug;
    slug.resize(width + 2, ' ');
    list += slug + warning->text + "\n";
  }
  return list;
}
