// Headers that are read once: kept as images in the run's cache, and the standard header also in a
// file beside it, from one run to the next.
//
// An image stands for the header's text only where the text would give exactly what the image
// holds. Everything that reading depends on is compared: which files the names in its #includes
// lead to on this file's path, their contents (once in a run), how the names stand that its
// conditionals ask for, and the limits. What an image cannot tell of (a definition that replaces
// one from elsewhere, a cycle, a header that may be missing) spoils it while it is made.

#include <algorithm>
#include <string>
#include <vector>

#include "korelpre/headers/contenthash.h"
#include "korelpre/headers/headercache.h"
#include "korelpre/headers/headerrecorder.h"
#include "korelpre/korelprecls.h"
#include "lib_base/pathname.h"

namespace precomp {

namespace {

constexpr std::int64_t kLargestFile = std::int64_t{1} << 30;

bool readWhole(tFile& file, char* to, std::size_t size) {
  while (size > 0) {
    const std::int64_t got = file.read(to, size);
    if (got <= 0) return false;
    to += got;
    size -= static_cast<std::size_t>(got);
  }
  return true;
}

std::shared_ptr<const tHeaderImage> readImage(tDiskMan& files, const tString& name) {
  const std::unique_ptr<tFile> file = files.open(name.c_str());
  const std::int64_t stated = file == nullptr ? -1 : file->size();
  if (stated <= 0 || stated > kLargestFile) return nullptr;
  const auto size = static_cast<std::size_t>(stated);
  std::unique_ptr<std::uint64_t[]> storage = tHeaderImage::storage(size);
  if (!readWhole(*file, reinterpret_cast<char*>(storage.get()), size)) return nullptr;
  return tHeaderImage::open(std::move(storage), size);
}

bool hasContents(tDiskMan& files, const tHeaderFile& wanted) {
  const std::unique_ptr<tFile> file = files.open(tString(wanted.path).c_str());
  if (file == nullptr || file->size() != static_cast<std::int64_t>(wanted.size)) return false;
  constexpr std::size_t kPiece = std::size_t{1} << 16;
  const auto piece = std::make_unique_for_overwrite<char[]>(kPiece);
  tContentHash hash;
  std::int64_t got;
  while ((got = file->read(piece.get(), kPiece)) > 0) {
    hash.add({piece.get(), static_cast<std::size_t>(got)});
  }
  return got == 0 && hash.value() == wanted.hash;
}

// Whether a file may be replaced by an image: there is none, or it is one.
bool mayReplace(tDiskMan& files, const tString& name) {
  const std::unique_ptr<tFile> file = files.open(name.c_str());
  if (file == nullptr) return true;
  char begin[8];
  return readWhole(*file, begin, sizeof begin) &&
         tHeaderImage::looksLikeImage({begin, sizeof begin});
}

bool writeWhole(tDiskMan& files, const tString& temporary, const tString& name,
                std::string_view bytes) {
  bool exists = false;
  std::unique_ptr<tFile> file = files.createNew(temporary.c_str(), exists);
  if (file == nullptr && exists && files.removeLeftover(temporary.c_str())) {
    file = files.createNew(temporary.c_str(), exists);
  }
  if (file == nullptr) return false;
  const bool written =
      file->write(bytes) && file->close() && files.rename(temporary.c_str(), name.c_str());
  if (!written) files.remove(temporary.c_str());
  return written;
}

// Files for other sets of predefined names stand side by side, so that two sets in turn do not
// replace each other's; there are few of them, whatever the number of sets.
constexpr std::uint64_t kMostSets = 7;

// The number of the set; 0 when no name is predefined.
unsigned setOfNames(const tXChgArray& predefined) {
  if (predefined.empty()) return 0;
  predefined.arrange();
  std::string names;
  for (int i = 0; i < predefined.count(); ++i) names.append(predefined[i].key().view()) += '\0';
  return static_cast<unsigned>(1 + contentHash(names) % kMostSets);
}

tString pchNameOf(const tString& header, unsigned set) {
  tPathParts parts;
  SplitPath(header, parts);
  tString name(parts.drive);
  name.append(parts.directory).append(parts.base);
  if (set > 0) name.append(tString::format(".%u", set));
  name.append(".pch");
  return name;
}

}  // namespace

void KorelPreYaccClass::includeStandardHeader() {
  if (root_ != this || headerDone_ || precompiling_) return;
  headerDone_ = true;
  if (!includes_.empty()) return;
  tHeaderCache* const cache = shared_.headerCache;
  if (cache == nullptr || hasExtLoadFile()) {
    compileStandardHeader();
    return;
  }
  if (takeCachedHeader(shared_.standardHeader, kWholeTables)) return;
  const tHeaderCache::tTurn turn(*cache, shared_.standardHeader);
  if (takeCachedHeader(shared_.standardHeader, kWholeTables) || loadPchFile()) return;
  if (!turn.wanted()) {
    compileStandardHeader();
    return;
  }
  const unsigned set = setOfNames(shared_.defines);
  if (const auto image = recordStandardHeader()) savePchFile(*image, set);
}

bool KorelPreYaccClass::compileStandardHeader() {
  auto header = std::make_unique<tInclude>(0, shared_.standardHeader, *this);
  if (!header->process()) return false;
  noteIncluded(header->name());
  includes_.add(header.release());
  return true;
}

// Compiles the standard header and makes an image of it; null when there can be none.
std::shared_ptr<const tHeaderImage> KorelPreYaccClass::recordStandardHeader() {
  tHeaderCache& cache = *shared_.headerCache;
  tHeaderRecorder recorder(shared_, depth_, cache.saves());
  cache.countCompiled();
  try {
    const bool done = compileStandardHeader();
    cache.setTryAgain(!done);
    if (!done) return nullptr;
  } catch (...) {
    cache.setTryAgain(true);
    throw;
  }
  auto image = recorder.finish(includes_.last()->processor().includedNames_, kWholeTables);
  if (image == nullptr) {
    cache.giveUp(shared_.standardHeader);
  } else {
    cache.add(shared_.standardHeader, image);
  }
  return image;
}

bool KorelPreYaccClass::prepch(const char* header) {
  if (root_ != this || shared_.headerCache == nullptr || hasExtLoadFile()) return false;
  precompiling_ = true;
  setStandardHeader(tString(header));
  const unsigned set = setOfNames(shared_.defines);
  const auto image = recordStandardHeader();
  return image != nullptr && savePchFile(*image, set);
}

bool KorelPreYaccClass::loadPchFile() {
  tHeaderCache* const cache = shared_.headerCache;
  if (cache == nullptr || !cache->saves() || cache->bTryAgain()) return false;
  const tString path = locate(shared_.standardHeader);
  if (path.empty()) return false;
  const auto image = readImage(files(), pchNameOf(path, setOfNames(shared_.defines)));
  if (image == nullptr || !fits(*image, kWholeTables)) return false;
  const tHeaderNotes& notes = image->notes();
  if (notes.files[0].requested != shared_.standardHeader.view()) return false;
  for (const tHeaderFile& file : notes.files) {
    if (!hasContents(files(), file)) return false;
  }
  cache->add(shared_.standardHeader, image);
  takeImage(shared_.standardHeader, image, kWholeTables);
  return true;
}

bool KorelPreYaccClass::savePchFile(const tHeaderImage& image, unsigned set) {
  if (!shared_.headerCache->saves()) return false;
  const tString name = pchNameOf(tString(image.notes().files[0].path), set);
  if (!mayReplace(files(), name)) return false;
  return writeWhole(files(), tString(name).append(".krpre"), name, image.bytes());
}

// Headers that are included are kept under another name than the same files as standard headers,
// whose images are of another kind.
static tString includeName(const tInclude& record) {
  return tString("include ").append(record.name());
}

// What process() of the record does, or the same by an image.
bool KorelPreYaccClass::includeHeader(tInclude& record) {
  tHeaderCache* const cache = shared_.headerCache;
  // While an image is made, what the header includes is made part of it.
  if (cache == nullptr || shared_.recorder != nullptr || hasExtLoadFile()) return record.process();
  if (takeCachedInclude(record)) return true;
  const tHeaderCache::tTurn turn(*cache, includeName(record));
  if (takeCachedInclude(record)) return true;
  if (!turn.wanted()) return record.process();
  tHeaderRecorder recorder(shared_, depth_, false);
  cache->countCompiled();
  if (!record.process()) return false;
  recordInclude(record, recorder);
  return true;
}

void KorelPreYaccClass::recordInclude(tInclude& record, tHeaderRecorder& recorder) {
  KorelPreYaccClass& processor = record.processor();
  std::shared_ptr<const tHeaderImage> image;
  if (processor.noteMarkers(recorder)) {
    image = recorder.finish(processor.includedNames_, !kWholeTables);
  }
  if (image == nullptr) {
    shared_.headerCache->giveUp(includeName(record));
  } else {
    shared_.headerCache->add(includeName(record), image);
  }
}

bool KorelPreYaccClass::takeCachedInclude(tInclude& record) {
  for (const tHeaderCache::tImage& image : shared_.headerCache->find(includeName(record))) {
    if (!fits(*image, !kWholeTables)) continue;
    takeImage(record.name(), image, !kWholeTables);
    record.setImage(image);
    return true;
  }
  return false;
}

bool KorelPreYaccClass::takeCachedHeader(const tString& name, bool wholeTables) {
  tHeaderCache& cache = *shared_.headerCache;
  if (cache.bTryAgain()) return false;
  for (const tHeaderCache::tImage& image : cache.find(name)) {
    if (!fits(*image, wholeTables)) continue;
    takeImage(name, image, wholeTables);
    return true;
  }
  return false;
}

bool KorelPreYaccClass::isDefined(std::string_view name) const {
  return shared_.defines.index().countOf(name) > 0 || shared_.dynDefines.index().countOf(name) > 0;
}

// Whether the text of the header would give what the image holds; what the files contain is taken
// for granted.
bool KorelPreYaccClass::fits(const tHeaderImage& image, bool wholeTables) {
  const tHeaderNotes& notes = image.notes();
  if (notes.largestText != tString::maxSize() || !mayInclude(notes)) return false;
  for (const tTestedName& tested : notes.tested) {
    if (isDefined(tested.name) != tested.defined) return false;
  }
  const tStoredRules& defines = image.table(tHeaderImage::kDefines);
  for (std::uint32_t i = 0; i < defines.count && !wholeTables; ++i) {
    if (shared_.defines.index().countOf(defines.rules[i].keyText()) > 1) return false;
  }
  if (wholeTables && !fitsTables(image)) return false;
  return std::all_of(notes.files.begin(), notes.files.end(), [this](const tHeaderFile& file) {
    const tString path = locate(tString(file.requested));
    if (path.view() != file.path || files().resolve(path.c_str()).view() != file.resolved) {
      return false;
    }
    // Else it is a cycle, and ends somewhere.
    for (const KorelPreYaccClass* above = this; above != nullptr; above = above->includer_) {
      if (above->resolvedName_.view() == file.resolved) return false;
    }
    return true;
  });
}

// Whether the tables, in which predefined names may be, can be filled with those of the image.
bool KorelPreYaccClass::fitsTables(const tHeaderImage& image) const {
  if (!shared_.commands.empty() || !shared_.translates.empty()) return false;
  const tStoredRules& defines = image.table(tHeaderImage::kDefines);
  for (int i = 0; i < shared_.defines.count(); ++i) {
    const tString& name = shared_.defines[i].key();
    const bool alone = shared_.defines.index().countOf(name) == 1;
    if (!alone && defines.findName(name, hashOfWord(name)) != nullptr) return false;
  }
  return image.hasWholeTables();
}

// The path at which loadfile() would find an included file; empty when it would not.
tString KorelPreYaccClass::locate(const tString& requested) {
  if (files().exists(requested.c_str())) return requested;
  const auto existing = [&](const tString& directory) {
    if (directory.empty()) return tString();
    tString path = joinPath(directory, requested);
    return files().exists(path.c_str()) ? path : tString();
  };
  tString path = existing(root().foundDirectory_);
  for (int i = 0; i < IncludePath().count() && path.empty(); ++i) path = existing(IncludePath()[i]);
  return path;
}

// Removes the definitions whose places are taken.
void KorelPreYaccClass::makeWay(const tStoredRules& stored, bool wholeTables) {
  std::vector<tString> names;
  if (wholeTables) {
    for (int i = 0; i < shared_.defines.count(); ++i) {
      const tString& name = shared_.defines[i].key();
      if (stored.findName(name, hashOfWord(name)) != nullptr) names.push_back(name);
    }
  } else {
    for (std::uint32_t i = 0; i < stored.count; ++i) {
      const std::string_view name = stored.rules[i].keyText();
      if (isDefined(name)) names.emplace_back(name);
    }
  }
  for (const tString& name : names) {
    removeSingleDefine(name);
    removeDynamicDefines(name);
  }
}

void KorelPreYaccClass::takeImage(const tString& name,
                                  const std::shared_ptr<const tHeaderImage>& image,
                                  bool wholeTables) {
  shared_.images.push_back(image);
  shared_.headerCache->countReused();
  makeWay(image->table(tHeaderImage::kDefines), wholeTables);
  const auto fill = [&](tXChgArray& table, tHeaderImage::eTable stored) {
    const tStoredRules& rules = image->table(stored);
    if (wholeTables) {
      table.addStored(rules, &root());
      return;
    }
    for (std::uint32_t i = 0; i < rules.count; ++i) table.addStored(rules.rules[i], &root());
  };
  fill(shared_.defines, tHeaderImage::kDefines);
  fill(shared_.commands, tHeaderImage::kCommands);
  fill(shared_.translates, tHeaderImage::kTranslates);
  if (wholeTables) noteIncluded(name);  // else the directive does
  const tHeaderNotes& notes = image->notes();
  shared_.includedFiles += static_cast<int>(notes.includedFiles);
  shared_.includedBytes += static_cast<std::int64_t>(notes.includedBytes);
  for (const std::string_view included : notes.includedNames) noteIncluded(tString(included));
  if (shared_.fileObserver == nullptr) return;
  for (const tHeaderFile& file : notes.files) shared_.fileObserver->fileRead(tString(file.path));
}

}  // namespace precomp
