// Headers that are read once: kept as images in the run's cache, and the standard header also in a
// file of the cache's directory, from one run to the next.
//
// An image stands for the header's text only where the text would give exactly what the image
// holds. Everything that reading depends on is compared: which files the names in its #includes
// lead to on this file's path, their contents (once in a run), how the names stand that its
// conditionals ask for, and the limits. What an image cannot tell of (a definition that replaces
// one from elsewhere, a cycle, a header that may be missing) spoils it while it is made.

#include "korelpre/directives/headerreader.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "korelpre/directives/linewalk.h"
#include "korelpre/directives/programfile.h"
#include "korelpre/directives/ruleentry.h"
#include "korelpre/headers/contenthash.h"
#include "lib_base/pathname.h"
#include "lib_base/replacement.h"

namespace precomp {

namespace {

constexpr std::int64_t kLargestImage = std::int64_t{128} << 20;

bool readWhole(tFile& file, char* to, std::size_t size) {
  while (size > 0) {
    const std::int64_t got = file.read(to, size);
    if (got <= 0) return false;
    to += got;
    size -= static_cast<std::size_t>(got);
  }
  return true;
}

// Null when there is no image of that name; `error` is the errno value when that is not certain.
std::shared_ptr<const tHeaderImage> readImage(tDiskMan& files, const tString& name, int& error) {
  const std::unique_ptr<tFile> file = files.open(name.c_str(), error);
  const std::int64_t stated = file == nullptr ? -1 : file->size();
  if (file != nullptr && stated < 0) error = file->error();
  tImageHead head;
  if (stated < static_cast<std::int64_t>(sizeof head) || stated > kLargestImage) return nullptr;
  const auto size = static_cast<std::size_t>(stated);
  const bool begun = readWhole(*file, reinterpret_cast<char*>(&head), sizeof head);
  if (!begun) error = file->error();
  if (!begun || !tHeaderImage::mayBeImage(head, size)) return nullptr;
  std::unique_ptr<std::uint64_t[]> storage = tHeaderImage::storage(size);
  char* const bytes = reinterpret_cast<char*>(storage.get());
  std::memcpy(bytes, &head, sizeof head);
  if (!readWhole(*file, bytes + sizeof head, size - sizeof head)) {
    error = file->error();
    return nullptr;
  }
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
  if (file == nullptr) return files.look(name.c_str()) == eStanding::kNothing;
  char begin[8];
  return readWhole(*file, begin, sizeof begin) &&
         tHeaderImage::looksLikeImage({begin, sizeof begin});
}

tString reasonFor(const tString& name, const char* reason) {
  return tString(name).append(": ").append(reason);
}

// Empty when the image has been saved, or somebody else is saving it; otherwise why not.
tString saveImage(tDiskMan& files, const tString& directory, const tString& name,
                  std::string_view image) {
  if (const int error = files.makeDirectory(directory.c_str()); error != 0) {
    return reasonFor(directory, reasonOf(error));
  }
  if (!mayReplace(files, name)) return reasonFor(name, "not a cached header, and left alone");
  tReplacement file(files, name, tReplacement::kDerived, bareName(name).append(".krpre"),
                    [&](tFile& to) { return to.write(image); });
  if (file.create() && file.write() && file.publish()) return {};
  return file.error() == EEXIST ? tString() : reasonFor(name, reasonOf(file.error()));
}

// A directory holds few files for headers of one name. Those in other places, or for other
// predefined names, stand side by side in it, unless they happen to share a number.
constexpr std::uint64_t kMostFiles = 64;

// `resolved` is the header's name without links.
tString savedName(const tString& directory, const tString& resolved, const tXChgArray& predefined) {
  predefined.arrange();
  std::string key(resolved.view());
  for (int i = 0; i < predefined.count(); ++i) (key += '\0').append(predefined[i].key().view());
  tPathParts parts;
  SplitPath(resolved, parts);
  const auto number = static_cast<unsigned>(contentHash(key) % kMostFiles);
  return tString(directory)
      .append("/")
      .append(parts.base)
      .append(tString::format("-%u.pch", number));
}

tIncludeCount countOf(const tHeaderNotes& notes) {
  return {notes.includedFiles, static_cast<std::int64_t>(notes.includedBytes)};
}

// Headers that are included are kept under another name than the same files as standard headers,
// whose images are of another kind.
tString includeName(const tInclude& record) {
  return tString("include ").append(record.name());
}

}  // namespace

tHeaderReader::tHeaderReader(tProgramFile& file)
    : file_(file), shared_(file.shared()), files_(shared_.finder.files()) {}

// A host that supplies texts itself may supply others the next time.
tHeaderCache* tHeaderReader::cache() const {
  // A watcher wants to see the text.
  const bool may = !shared_.root.hasExtLoadFile() && shared_.watcher == nullptr;
  return may ? shared_.headerCache : nullptr;
}

void tHeaderReader::includeStandard() {
  if (cache() == nullptr) {
    compileStandard();
    return;
  }
  const tString& header = shared_.standardHeader;
  if (takeStandard()) return;
  const tHeaderCache::tTurn turn(*cache(), header);
  if (takeStandard() || loadSaved()) return;
  if (!turn.wanted()) {
    compileStandard();
    return;
  }
  recordAndSave();
}

bool tHeaderReader::compileStandard() {
  auto header = std::make_unique<tInclude>(0, shared_.standardHeader, file_);
  if (!header->process()) return false;
  file_.noteIncluded(header->name());
  file_.includes.add(header.release());
  return true;
}

// Compiles the standard header and makes an image of it; null when there can be none.
std::shared_ptr<const tHeaderImage> tHeaderReader::recordStandard() {
  tHeaderRecorder recorder(shared_.recorder, shared_.rules, shared_.finder.included(),
                           {.depth = file_.depth(), .hashes = cache()->saves()});
  cache()->countCompiled();
  try {
    const bool done = compileStandard();
    cache()->setTryAgain(!done);
    if (!done) return nullptr;
  } catch (...) {
    cache()->setTryAgain(true);
    throw;
  }
  auto image = recorder.finish(file_.includes.last()->file().includedNames(), kWholeTables);
  if (image == nullptr) {
    cache()->giveUp(shared_.standardHeader);
    if (cache()->saves()) {
      cache()->noteProblem(
          reasonFor(shared_.standardHeader, "reading it depends on more than a cache can check"));
    }
  } else {
    cache()->add(shared_.standardHeader, image);
  }
  return image;
}

// Where the standard header is saved; empty when there is no header.
tString tHeaderReader::savedFile() const {
  const tString path = shared_.finder.locate(shared_.standardHeader);
  const tString resolved = path.empty() ? tString() : files_.resolve(path.c_str());
  if (resolved.empty()) return {};
  return savedName(cache()->directory(), resolved, shared_.rules.defines);
}

// False when it was not saved.
bool tHeaderReader::recordAndSave() {
  // The header will define names of its own.
  const tString name = cache()->saves() ? savedFile() : tString();
  const auto image = recordStandard();
  if (image == nullptr || name.empty()) return false;
  const bool small = static_cast<std::int64_t>(image->bytes().size()) <= kLargestImage;
  const tString problem = small ? saveImage(files_, cache()->directory(), name, image->bytes())
                                : reasonFor(shared_.standardHeader, "too large to be cached");
  if (!problem.empty()) cache()->noteProblem(problem);
  return problem.empty();
}

bool tHeaderReader::precompile() {
  return cache() != nullptr && recordAndSave();
}

bool tHeaderReader::loadSaved() {
  if (cache() == nullptr || !cache()->saves() || cache()->bTryAgain()) return false;
  const tString saved = savedFile();
  if (saved.empty()) return false;
  int error = 0;
  const auto image = readImage(files_, saved, error);
  if (error != 0) cache()->noteProblem(reasonFor(saved, reasonOf(error)));
  if (image == nullptr || !fits(*image, kWholeTables)) return false;
  const tHeaderNotes& notes = image->notes();
  if (notes.files[0].requested != shared_.standardHeader.view()) return false;
  for (const tHeaderFile& file : notes.files) {
    if (!hasContents(files_, file)) return false;
  }
  cache()->add(shared_.standardHeader, image);
  take(shared_.standardHeader, image, kWholeTables);
  return true;
}

bool tHeaderReader::include(tInclude& record) {
  tImageWork work;
  if (!begin(record, work)) return true;
  if (!record.process()) return false;
  finish(record, work);
  return true;
}

bool tHeaderReader::begin(tInclude& record, tImageWork& work) {
  // While an image is made, what the header includes is made part of it.
  if (shared_.recorder != nullptr || cache() == nullptr) return true;
  if (takeInclude(record)) return false;
  work.turn = std::make_unique<tHeaderCache::tTurn>(*cache(), includeName(record));
  if (takeInclude(record)) return false;
  if (!work.turn->wanted()) return true;
  const tHeaderRecorder::tSettings settings{.depth = file_.depth(), .hashes = false};
  work.recorder = std::make_unique<tHeaderRecorder>(shared_.recorder, shared_.rules,
                                                    shared_.finder.included(), settings);
  cache()->countCompiled();
  return true;
}

void tHeaderReader::finish(tInclude& record, tImageWork& work) {
  if (work.recorder != nullptr) keepInclude(record, *work.recorder);
  work = {};
}

void tHeaderReader::keepInclude(tInclude& record, tHeaderRecorder& recorder) {
  std::shared_ptr<const tHeaderImage> image;
  if (noteMarkers(record.file(), recorder)) {
    image = recorder.finish(record.file().includedNames(), !kWholeTables);
  }
  if (image == nullptr) {
    cache()->giveUp(includeName(record));
  } else {
    cache()->add(includeName(record), image);
  }
}

bool tHeaderReader::takeInclude(tInclude& record) {
  for (const tHeaderCache::tImage& image : cache()->find(includeName(record))) {
    if (!fits(*image, !kWholeTables)) continue;
    take(record.name(), image, !kWholeTables);
    record.setImage(image);
    return true;
  }
  return false;
}

bool tHeaderReader::takeStandard() {
  if (cache()->bTryAgain()) return false;
  for (const tHeaderCache::tImage& image : cache()->find(shared_.standardHeader)) {
    if (!fits(*image, kWholeTables)) continue;
    take(shared_.standardHeader, image, kWholeTables);
    return true;
  }
  return false;
}

// Whether the text of the header would give what the image holds; what the files contain is taken
// for granted.
bool tHeaderReader::fits(const tHeaderImage& image, bool wholeTables) {
  const tHeaderNotes& notes = image.notes();
  if (notes.largestText != tString::maxSize() || !mayCount(notes)) return false;
  for (const tTestedName& tested : notes.tested) {
    if (shared_.rules.isDefined(tested.name) != tested.defined) return false;
  }
  const tStoredRules& defines = image.table(tHeaderImage::kDefines);
  for (std::uint32_t i = 0; i < defines.count && !wholeTables; ++i) {
    if (shared_.rules.defines.index().countOf(defines.rules[i].keyText()) > 1) return false;
  }
  if (wholeTables && !fitsTables(image)) return false;
  return std::all_of(notes.files.begin(), notes.files.end(), [this](const tHeaderFile& file) {
    const tString path = shared_.finder.locate(tString(file.requested));
    if (path.view() != file.path || files_.resolve(path.c_str()).view() != file.resolved) {
      return false;
    }
    // Else it is a cycle, and ends somewhere.
    return !file_.anyUpwards(
        [&](const tProgramFile& above) { return above.names.resolved.view() == file.resolved; });
  });
}

// Whether the included files of the header may be counted once more.
bool tHeaderReader::mayCount(const tHeaderNotes& notes) const {
  constexpr std::uint64_t kAbsurd = std::uint64_t{1} << 31;
  if (notes.depth >= kAbsurd / 2 || notes.includedBytes >= kAbsurd) return false;
  return shared_.finder.mayCount(file_.depth() + static_cast<int>(notes.depth), countOf(notes));
}

// Whether the tables, in which predefined names may be, can be filled with those of the image.
bool tHeaderReader::fitsTables(const tHeaderImage& image) const {
  const tRuleSet& rules = shared_.rules;
  if (!rules.commands.empty() || !rules.translates.empty()) return false;
  const tStoredRules& defines = image.table(tHeaderImage::kDefines);
  for (int i = 0; i < rules.defines.count(); ++i) {
    const tString& name = rules.defines[i].key();
    const bool alone = rules.defines.index().countOf(name) == 1;
    if (!alone && defines.findName(name, hashOfWord(name)) != nullptr) return false;
  }
  return image.hasWholeTables();
}

// Removes the definitions whose places are taken.
void tHeaderReader::makeWay(const tStoredRules& stored, bool wholeTables) {
  const tXChgArray& defines = shared_.rules.defines;
  std::vector<tString> names;
  if (wholeTables) {
    for (int i = 0; i < defines.count(); ++i) {
      const tString& name = defines[i].key();
      if (stored.findName(name, hashOfWord(name)) != nullptr) names.push_back(name);
    }
  } else {
    for (std::uint32_t i = 0; i < stored.count; ++i) {
      const std::string_view name = stored.rules[i].keyText();
      if (shared_.rules.isDefined(name)) names.emplace_back(name);
    }
  }
  for (const tString& name : names) removeDefinitions(file_, name);
}

void tHeaderReader::take(const tString& name, const std::shared_ptr<const tHeaderImage>& image,
                         bool wholeTables) {
  tRuleSet& rules = shared_.rules;
  rules.keep(image);
  shared_.headerCache->countReused();
  makeWay(image->table(tHeaderImage::kDefines), wholeTables);
  const auto fill = [&](tXChgArray& table, tHeaderImage::eTable stored) {
    const tStoredRules& all = image->table(stored);
    if (wholeTables) {
      table.addStored(all, &rules);
      return;
    }
    for (std::uint32_t i = 0; i < all.count; ++i) table.addStored(all.rules[i], &rules);
  };
  fill(rules.defines, tHeaderImage::kDefines);
  fill(rules.commands, tHeaderImage::kCommands);
  fill(rules.translates, tHeaderImage::kTranslates);
  if (wholeTables) file_.noteIncluded(name);  // else the directive does
  const tHeaderNotes& notes = image->notes();
  shared_.finder.count(countOf(notes));
  for (const std::string_view included : notes.includedNames) {
    file_.noteIncluded(tString(included));
  }
  if (shared_.fileObserver == nullptr) return;
  for (const tHeaderFile& file : notes.files) shared_.fileObserver->fileRead(tString(file.path));
}

}  // namespace precomp
