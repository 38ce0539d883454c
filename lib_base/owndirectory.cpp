#include "lib_base/owndirectory.h"

#include <dlfcn.h>
#include <link.h>

#include <cstdlib>
#include <memory>

#include "lib_base/pathname.h"

tString ownDirectory() {
  Dl_info info{};
  void* extra = nullptr;
  static const char here = 0;
  if (dladdr1(&here, &info, &extra, RTLD_DL_LINKMAP) == 0 || !extra) return {};
  // The loader lists the program itself without a name.
  const char* name = static_cast<const link_map*>(extra)->l_name;
  if (!name || *name == '\0') name = "/proc/self/exe";
  const std::unique_ptr<char, decltype(&std::free)> path(::realpath(name, nullptr), &std::free);
  if (!path) return {};
  tPathParts parts;
  SplitPath(path.get(), parts);
  return parts.directory;
}
