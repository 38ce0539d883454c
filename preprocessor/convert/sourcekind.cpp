#include "preprocessor/convert/sourcekind.h"

#include "lib_base/misc.h"

namespace {

const tSourceKind kKinds[] = {
    {".prw", ".pw_", ".ppo", ".err", false},
    {".prg", ".pg_", ".ppo", ".err", false},
    {".prx", ".px_", ".ppo", ".err", false},
    {".zorb", ".pzorb_", ".ppx_", ".erx_", false},  // the extended language
    {".krh", ".kr_", ".ppo", ".err", false},        // pages
    {".khu", ".kh_", ".ppo", ".err", false},
    {".p", ".pzorb_", ".ppx_", ".erx_", true},  // converted to the extended language
    {".w", ".pzorb_", ".ppx_", ".erx_", true},
    {".py", ".pzorb_", ".ppx_", ".erx_", true},
};

const tSourceKind kOrdinary = {"", ".pw_", ".ppo", ".err", false};

constexpr std::string_view kHeader = ".ch";

const tSourceKind* namedKind(std::string_view extension) {
  for (const tSourceKind& kind : kKinds) {
    if (equalNoCase(kind.extension, extension)) return &kind;
  }
  return nullptr;
}

}  // namespace

const tSourceKind& sourceKind(std::string_view extension) {
  const tSourceKind* kind = namedKind(extension);
  return kind != nullptr ? *kind : kOrdinary;
}

bool isSourceExtension(std::string_view extension) {
  return namedKind(extension) != nullptr || equalNoCase(extension, kHeader);
}
