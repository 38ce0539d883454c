#include "preprocessor/run/cachedirectory.h"

#include <cstdlib>
#include <string_view>

namespace {

/// Empty unless the variable holds an absolute path.
std::string_view absolutePath(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value == '/' ? std::string_view(value) : std::string_view();
}

}  // namespace

tString cacheDirectory() {
  const std::string_view cache = absolutePath("XDG_CACHE_HOME");
  if (!cache.empty()) return tString(cache).append("/krpre");
  const std::string_view home = absolutePath("HOME");
  return home.empty() ? tString() : tString(home).append("/.cache/krpre");
}
