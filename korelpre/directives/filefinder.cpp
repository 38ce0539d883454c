#include "korelpre/directives/filefinder.h"

namespace precomp {

namespace {

constexpr int kDeepestInclude = 200;
constexpr std::int64_t kMostIncludes = 100000;
constexpr std::int64_t kMostIncludedBytes = std::int64_t{1} << 30;

// Null, or the name of the limit that is exceeded when all that was included, a file at `depth` the
// last, makes up `count`.
const char* limitExceeded(int depth, const tIncludeCount& count) {
  if (depth > kDeepestInclude) return "include depth";
  if (count.files > kMostIncludes) return "included files";
  return count.bytes > kMostIncludedBytes ? "included text" : nullptr;
}

}  // namespace

tFileFinder::tFileFinder(tDiskMan* files) : files_(files) {
  if (files != nullptr) return;
  ownFiles_ = std::make_unique<tDiskManLocal>();
  files_ = ownFiles_.get();
}

tString tFileFinder::locate(const tString& requested) {
  tString path;
  search(true, requested, [&](const tString& directory, const tString& name) {
    path = joinPath(directory, name);
    const eStanding standing = files_->look(path.c_str());
    if (standing != eStanding::kFile) path.clear();
    return standing == eStanding::kFile || standing == eStanding::kUnknown;
  });
  return path;
}

const char* tFileFinder::countInclude(int depth, std::int64_t bytes) {
  count({1, bytes > 0 ? bytes : 0});
  return limitExceeded(depth, included_);
}

const char* tFileFinder::countText(std::int64_t bytes) {
  count({0, bytes > 0 ? bytes : 0});
  return limitExceeded(0, included_);
}

bool tFileFinder::mayCount(int depth, const tIncludeCount& more) const {
  const tIncludeCount all{included_.files + more.files, included_.bytes + more.bytes};
  return limitExceeded(depth, all) == nullptr;
}

void tFileFinder::count(const tIncludeCount& more) {
  included_.files += more.files;
  included_.bytes += more.bytes;
}

void tFileFinder::clear() {
  includePath_.Destroy();
  mainDirectory_ = tString();
  included_ = {};
}

}  // namespace precomp
