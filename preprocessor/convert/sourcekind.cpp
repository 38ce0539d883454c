#include "preprocessor/convert/sourcekind.h"

#include "lib_base/misc.h"
#include "lib_base/pathname.h"

namespace {

// clang-format off
constexpr tSourceKind kKinds[] = {
    // extension        temporary  output   error    converter
    {".prw",            ".pw_",    ".ppo",  ".err",  eConverter::kInlineBlocks},
    {".prg",            ".pg_",    ".ppo",  ".err",  eConverter::kInlineBlocks},
    {".prx",            ".px_",    ".ppo",  ".err",  eConverter::kInlineBlocks},
    {kExtendedLanguage, ".pzorb_", ".ppx_", ".erx_", eConverter::kInlineBlocks},
    {".krh",            ".kr_",    ".ppo",  ".err",  eConverter::kPage},
    {".khu",            ".kh_",    ".ppo",  ".err",  eConverter::kPage},
    {".p",              ".pzorb_", ".ppx_", ".erx_", eConverter::kForeign},
    {".w",              ".pzorb_", ".ppx_", ".erx_", eConverter::kForeign},
    {".py",             ".pzorb_", ".ppx_", ".erx_", eConverter::kForeign},
    {".apl",            ".pw_",    ".ppo",  ".err",  eConverter::kNone},
    {".apw",            ".pw_",    ".ppo",  ".err",  eConverter::kNone},
    {".ppx",            ".pw_",    ".ppo",  ".err",  eConverter::kNone},
    {".ppp",            ".pw_",    ".ppo",  ".err",  eConverter::kNone},
    {".ch",             ".pw_",    ".ppo",  ".err",  eConverter::kNone},  // a header
};
constexpr tSourceKind kOrdinary =
    {"",                ".pw_",    ".ppo",  ".err",  eConverter::kNone};
// clang-format on

const tSourceKind* namedKind(std::string_view extension) {
  for (const tSourceKind& kind : kKinds) {
    if (equalNoCase(kind.extension, extension)) return &kind;
  }
  return nullptr;
}

}  // namespace

std::span<const tSourceKind> sourceKinds() {
  return kKinds;
}

const tSourceKind& sourceKind(std::string_view extension) {
  const tSourceKind* kind = namedKind(extension);
  return kind != nullptr ? *kind : kOrdinary;
}

const tSourceKind& sourceKindOf(std::string_view name) {
  return sourceKind(extensionOf(name));
}

bool isSourceExtension(std::string_view extension) {
  return namedKind(extension) != nullptr;
}
