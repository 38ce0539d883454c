#include "korelpre/directives/programfile.h"

#include <algorithm>

#include "korelpre/headers/headerrecorder.h"
#include "korelpre/text/lineends.h"
#include "lib_base/pathname.h"
#include "lib_gzip/zipsource.h"

namespace precomp {

namespace {

constexpr const char* kFileSize = "file size";

}  // namespace

tInclude::tInclude(int line, const tString& name, tProgramFile& includer)
    : line_(line), name_(name), includer_(includer) {}

tInclude::~tInclude() = default;

tProgramFile& tInclude::start() {
  file_ = std::make_unique<tProgramFile>(includer_, line_);
  return *file_;
}

bool tInclude::process() {
  return includer_.shared().root.compileInclude(start(), name_);
}

tProgramFile::tProgramFile(tSharedState& shared) : shared_(shared), main_(this) {}

tProgramFile::tProgramFile(tProgramFile& includer, int line)
    : isIncluded(true),
      shared_(includer.shared_),
      main_(includer.main_),
      includer_(&includer),
      includedAt_(line),
      depth_(includer.depth_ + 1) {}

tProgramFile::~tProgramFile() {
  // Rules of line entries stand in dynDefines too, which outlives them.
  if (isMain()) shared_.rules.dropWaiting();
}

void tProgramFile::clear() {
  names = {};
  text = tString();
  lines.clear();
  includes.Destroy();
  includedNames_.clear();
  conditionals = {};
  currentLine = 0;
  isIncluded = false;
}

bool tProgramFile::read(const tString& name) {
  names.requested = name;
  const auto read = [&](const tString& directory, const tString& spelt) {
    const tString path = joinPath(directory, spelt);
    if (!readFrom(path)) return false;
    names.shown = joinPath(directory, bareName(spelt));
    names.opened = path;
    if (isMain() && !directory.empty()) shared_.finder.setMainDirectory(directory);
    return true;
  };
  return shared_.finder.search(isIncluded, name, read);
}

bool tProgramFile::readFrom(const tString& path) {
  text = tString();
  const bool byHost = shared_.root.hasExtLoadFile();
  if (!(byHost ? readByHost(path) : readByPath(path))) return false;
  if (inCycle_) return true;
  if (shared_.recorder != nullptr && !byHost) {
    shared_.recorder->fileRead(names.requested, path, names.resolved, text, depth_);
    if (names.resolved.empty()) shared_.recorder->spoil();  // no cycle would be seen
  }
  if (!isMain() && shared_.fileObserver != nullptr) shared_.fileObserver->fileRead(path);
  return true;
}

bool tProgramFile::readByHost(const tString& path) {
  if (!shared_.root.extLoadFile(path, text)) return false;
  names.resolved = tString(plainPath(path.view()));
  enter(static_cast<std::int64_t>(text.size()));
  return true;
}

bool tProgramFile::readByPath(const tString& path) {
  tDiskMan& files = shared_.finder.files();
  int error = 0;
  const std::unique_ptr<tFile> file = files.open(path.c_str(), error);
  if (error != 0) raiseUnreadable(path, error);
  if (file == nullptr) return false;
  names.resolved = files.resolve(path.c_str());
  const std::int64_t size = file->size();
  if (size < 0) raiseUnreadable(path, file->error());
  enter(size);
  if (inCycle_) return true;
  if (size <= static_cast<std::int64_t>(tString::maxSize()) && file->readAll(text)) return true;
  if (file->error() != 0) raiseUnreadable(path, file->error());
  raiseLimit(kFileSize);
}

/// Finds out whether the file, of that many bytes, is being compiled further up, and counts it.
void tProgramFile::enter(std::int64_t bytes) {
  if (isMain()) return;
  inCycle_ = !names.resolved.empty() && includer_->anyUpwards([&](const tProgramFile& above) {
    return above.names.resolved == names.resolved;
  });
  if (inCycle_) return;
  const char* const limit = shared_.finder.countInclude(depth_, bytes);
  if (limit != nullptr) raiseLimit(limit);
}

void tProgramFile::takeText(bool mayBePacked) {
  if (mayBePacked && isZipSource(text)) unpackText();
  if (tString::maxSize() - std::min(text.size(), tString::maxSize()) < 2) raiseLimit(kFileSize);
  text.append("\r\n");
  if (!normaliseLineEnds(text)) raiseLimit(kFileSize);
}

// A file of some kilobytes can hold megabytes, so what counts is the text.
void tProgramFile::unpackText() {
  const auto packed = static_cast<std::int64_t>(text.size());
  const auto unpacked = static_cast<std::int64_t>(unpackedSize(text));
  const bool credible = unpacked <= static_cast<std::int64_t>(tString::maxSize());
  if (!isMain() && credible) {
    const char* const limit = shared_.finder.countText(unpacked - packed);
    if (limit != nullptr) raiseLimit(limit);
  }
  tString whole;
  if (unpackZipSource(text, tString::maxSize(), whole) != eZipResult::kOk) {
    raiseLimit("damaged file");
  }
  text = std::move(whole);
}

void tProgramFile::releaseText() {
  if (lines.hasStatements()) return;
  text = tString();
  lines.keepHeaderStops();
}

// Kept on purpose: case matters for the file's own name only.
bool tProgramFile::hasIncluded(const tString& name) const {
  tString folded(name);
  folded.toUpper();
  return name == names.requested || includedNames_.count(std::string(folded.view())) > 0;
}

void tProgramFile::noteIncluded(const tString& name) {
  tString folded(name);
  folded.toUpper();
  for (tProgramFile* above = this; above != nullptr; above = above->includer_) {
    above->includedNames_.emplace(folded.view());
  }
}

}  // namespace precomp
