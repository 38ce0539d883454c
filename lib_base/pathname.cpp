#include "lib_base/pathname.h"

#include <algorithm>
#include <utility>

namespace {

/// Where the bare name starts.
std::size_t bareStart(std::string_view name) {
  return name.rfind('/') + 1;  // npos + 1 is 0
}

}  // namespace

std::string_view extensionOf(std::string_view name) {
  const std::string_view bare = name.substr(bareStart(name));
  const std::size_t firstLetter = bare.find_first_not_of('.');
  std::size_t dot = bare.rfind('.');
  // Leading dots belong to the name: ".profile", "..".
  if (dot == std::string_view::npos || firstLetter > dot) dot = bare.size();
  return bare.substr(dot);
}

void SplitPath(std::string_view name, tPathParts& parts) {
  const std::size_t start = bareStart(name);
  const std::string_view extension = extensionOf(name);

  // Built separately: `name` may be one of the parts.
  tPathParts result;
  result.directory = tString(name.substr(0, start));
  result.base = tString(name.substr(start, name.size() - start - extension.size()));
  result.extension = tString(extension);
  parts = std::move(result);
}

tString bareName(std::string_view name) {
  return tString(name.substr(bareStart(name)));
}

tString joinPath(std::string_view directory, std::string_view name) {
  tString path;
  path.reserve(directory.size() + 1 + name.size());
  path.append(directory);
  if (!directory.empty() && directory.back() != '/') path.append('/');
  path.append(name);
  return path;
}

std::string plainPath(std::string_view name) {
  std::string result;
  if (!name.empty() && name.front() == '/') result = "/";
  while (!name.empty()) {
    const std::string_view part = name.substr(0, name.find('/'));
    name.remove_prefix(std::min(part.size() + 1, name.size()));
    if (part.empty() || part == ".") continue;
    if (!result.empty() && result.back() != '/') result += '/';
    result += part;
  }
  return result;
}

std::string plainPath(const char* name) {
  return plainPath(std::string_view(name ? name : ""));
}

tString slashedPath(std::string_view name) {
  tString path(name);
  path.replaceAll("\\", "/");
  return path;
}

tString normaliseFileName(std::string_view name) {
  constexpr std::string_view kDropped = " \t\"";
  const std::size_t start = std::min(name.find_first_not_of(kDropped), name.size());
  const std::size_t end = name.find_last_not_of(kDropped) + 1;
  return start < end ? tString(name.substr(start, end - start)) : tString();
}
