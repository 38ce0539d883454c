#include "preprocessor/host/shippedheaders.h"

#include <cstddef>
#include <string_view>

#include "lib_base/owndirectory.h"

namespace {

/// Without its last part and the '/' in front of that.
std::string_view parentOf(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  return path.substr(0, slash == std::string_view::npos ? 0 : slash);
}

}  // namespace

tString shippedHeaders() {
  const tString own = ownDirectory();
  if (own.empty()) return {};
  std::string_view directory = parentOf(own);
  std::string_view way = KRPRE_HEADERS_FROM_LIBRARY;
  for (; way.starts_with("../"); way.remove_prefix(3)) directory = parentOf(directory);
  return tString(directory).append("/").append(way);
}
