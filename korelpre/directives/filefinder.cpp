// Finding and reading files.
//
// A name is looked for as it is written, then, for an include file, in the directory where the main
// file was found, then in the directories of the include path in order. The first file that opens
// is taken.

#include "korelpre/headers/headerrecorder.h"
#include "korelpre/korelprecls.h"
#include "korelpre/text/lineends.h"
#include "lib_base/misc.h"
#include "lib_base/pathname.h"
#include "lib_gzip/zipsource.h"

namespace precomp {

namespace {

constexpr int kDeepestInclude = 200;
constexpr int kMostIncludes = 100000;
constexpr std::int64_t kMostIncludedBytes = std::int64_t{1} << 30;

}  // namespace

bool KorelPreYaccClass::loadfile(const char* name, const char* directory, tString& /*passedOn*/,
                                 tString& scratch) {
  requestedName_ = tString(name);
  tPathParts parts;
  SplitPath(requestedName_, parts);
  if (directory == nullptr) {
    parts.drive.append(parts.directory);
    SetCurDir(parts.drive);
  } else {
    SetCurDir(tString(directory));
    if (*directory != '\0') IncludePath().insertAt(0, new tString(directory));
  }
  scratch = bareName(requestedName_);
  const bool found = findAndRead(scratch);
  scratch.toUpper();
  return found;
}

bool KorelPreYaccClass::findAndRead(const tString& bare) {
  if (readFrom(tString(), requestedName_)) {
    fileName_ = bare;
    openedName_ = requestedName_;
    return true;
  }
  const auto foundIn = [&](const tString& directory) {
    if (directory.empty() || !readFrom(directory, requestedName_)) return false;
    foundDirectory_ = directory;
    fileName_ = joinPath(directory, bare);
    openedName_ = joinPath(directory, requestedName_);
    return true;
  };
  if (includeMode_ != 0 && foundIn(root().foundDirectory_)) return true;
  for (int i = 0; i < IncludePath().count(); ++i) {
    if (foundIn(IncludePath()[i])) return true;
  }
  return false;
}

bool KorelPreYaccClass::readFrom(const tString& directory, const tString& name) {
  const tString path = joinPath(directory, name);
  text_ = tString();
  if (hasExtLoadFile()) {
    if (!extLoadFile(path, text_)) return false;
    resolvedName_ = path;
    tellRead(path);
    return true;
  }
  const std::unique_ptr<tFile> file = files().open(path.c_str());
  if (file == nullptr) return false;
  if (includer_ != nullptr) {
    resolvedName_ = files().resolve(path.c_str());
    inCycle_ = beingCompiledAbove(resolvedName_);
    if (inCycle_) return true;
    countInclude(file->size());
  } else {
    resolvedName_ = files().resolve(path.c_str());
  }
  if (!file->readAll(text_)) raiseIncludeLimit("included text");
  if (shared_.recorder != nullptr) {
    shared_.recorder->fileRead(requestedName_, path, resolvedName_, text_, depth_);
  }
  tellRead(path);
  return true;
}

void KorelPreYaccClass::tellRead(const tString& path) {
  if (includer_ != nullptr && shared_.fileObserver != nullptr) shared_.fileObserver->fileRead(path);
}

bool KorelPreYaccClass::beingCompiledAbove(const tString& path) const {
  for (const KorelPreYaccClass* above = includer_; above != nullptr; above = above->includer_) {
    if (!path.empty() && above->resolvedName_ == path) return true;
  }
  return false;
}

void KorelPreYaccClass::countInclude(std::int64_t bytes) {
  if (depth_ > kDeepestInclude) raiseIncludeLimit("include depth");
  if (++shared_.includedFiles > kMostIncludes) raiseIncludeLimit("included files");
  shared_.includedBytes += bytes > 0 ? bytes : 0;
  if (shared_.includedBytes > kMostIncludedBytes) raiseIncludeLimit("included text");
}

// Whether files that were read once may be counted again.
bool KorelPreYaccClass::mayInclude(const tHeaderNotes& notes) const {
  const std::int64_t files = std::int64_t{shared_.includedFiles} + notes.includedFiles;
  return notes.depth <= kDeepestInclude &&
         depth_ + static_cast<int>(notes.depth) <= kDeepestInclude && files <= kMostIncludes &&
         notes.includedBytes <= kMostIncludedBytes &&
         shared_.includedBytes + static_cast<std::int64_t>(notes.includedBytes) <=
             kMostIncludedBytes;
}

// Makes what was read the text to be compiled.
void KorelPreYaccClass::takeText(bool mayBePacked) {
  if (mayBePacked && isZipSource(text_)) {
    tString unpacked;
    if (unpackZipSource(text_, tString::maxSize(), unpacked) != eZipResult::kOk) {
      raiseIncludeLimit("damaged file");
    }
    text_ = std::move(unpacked);
  }
  text_.append("\r\n");
  normaliseLineEnds(text_);
}

}  // namespace precomp
