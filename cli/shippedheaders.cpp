#include "cli/shippedheaders.h"

#include <climits>
#include <cstddef>
#include <string_view>

#include <unistd.h>

namespace {

// Empty if it cannot be read or is too long for a path.
std::string programPath() {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  if (length <= 0 || static_cast<std::size_t>(length) == sizeof path) return {};
  return std::string(path, static_cast<std::size_t>(length));
}

void dropLastPart(std::string& path) {
  const std::size_t slash = path.rfind('/');
  path.erase(slash == std::string::npos ? 0 : slash);
}

}  // namespace

std::string shippedHeaders() {
  std::string path = programPath();
  if (path.empty()) return {};
  dropLastPart(path);
  std::string_view way = KRPRE_HEADERS_FROM_PROGRAM;
  while (way.substr(0, 3) == "../") {
    dropLastPart(path);
    way.remove_prefix(3);
  }
  return path.append("/").append(way);
}
