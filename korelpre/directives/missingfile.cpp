#include "korelpre/directives/missingfile.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "korelpre/errors/notes.h"
#include "lib_base/misc.h"
#include "lib_base/nearest.h"

namespace precomp {

namespace {

constexpr std::size_t kMostShown = 20;     // directories
constexpr std::size_t kMostLookedIn = 50;  // for a file of nearly that name

const char* orHere(const std::string& directory) {
  return directory.empty() ? "." : directory.c_str();
}

std::string inLowerCase(std::string_view text) {
  tString lower(text);
  lower.toLower();
  return lower.c_str();
}

// Splits at the first '/'; `rest` is empty behind the last part.
std::string_view takePart(std::string_view& rest) {
  const std::size_t end = std::min(rest.find('/'), rest.size());
  const std::string_view part = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return part;
}

/// The path of a file whose parts differ from those of `path` in case only; empty when there is
/// none.
std::string inOtherCase(tDiskMan& files, const std::string& path) {
  std::string_view rest = path;
  std::string found;
  if (rest.starts_with('/')) found = "/";
  while (!rest.empty()) {
    const std::string part(takePart(rest));
    if (part.empty()) continue;
    const std::string next = joinPath(found, part).c_str();
    if (part == "." || part == ".." || files.look(next.c_str()) != eStanding::kNothing) {
      found = next;
      continue;
    }
    const std::vector<std::string> names = files.namesIn(orHere(found));
    const auto same = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
      return equalNoCase(name, part);
    });
    if (same == names.end()) return {};
    found = joinPath(found, *same).c_str();
  }
  return files.exists(found.c_str()) ? found : std::string();
}

/// The path of a file in the same directory, and of the same kind, whose name is close to that of
/// `path`; empty when there is none.
std::string nearPath(tDiskMan& files, const std::string& path) {
  tPathParts parts;
  SplitPath(path, parts);
  const std::string extension = inLowerCase(parts.extension);
  std::vector<std::string> stems;
  std::vector<std::string> names;
  for (const std::string& name : files.namesIn(orHere(parts.directory.c_str()))) {
    const std::string lower = inLowerCase(name);
    if (!lower.ends_with(extension)) continue;
    stems.push_back(lower.substr(0, lower.size() - extension.size()));
    names.push_back(name);
  }
  const std::string nearest = nearestTo(inLowerCase(parts.base), stems);
  if (nearest.empty()) return {};
  const auto at = std::find(stems.begin(), stems.end(), nearest) - stems.begin();
  const std::string found = joinPath(parts.directory, names[static_cast<std::size_t>(at)]).c_str();
  return files.exists(found.c_str()) ? found : std::string();
}

}  // namespace

void noteNearFile(std::vector<tNote>& notes, tDiskMan& files,
                  const std::vector<std::string>& paths) {
  for (const std::string& path : paths) {
    const std::string found = inOtherCase(files, path);
    if (found.empty()) continue;
    notes.push_back(noted("upper and lower case differ in %1", {found}));
    return;
  }
  for (const std::string& path : paths) {
    const std::string found = nearPath(files, path);
    if (found.empty()) continue;
    notes.push_back(noted("did you mean %1?", {found}));
    return;
  }
}

std::vector<tNote> notesOfMissing(tFileFinder& finder, const tString& name) {
  std::vector<std::string> paths;
  std::vector<std::string> directories;
  finder.search(true, name, [&](const tString& directory, const tString& spelt) {
    if (paths.size() < kMostLookedIn) paths.emplace_back(joinPath(directory, spelt).c_str());
    const std::string shown = orHere(directory.c_str());
    const bool isNew =
        std::find(directories.begin(), directories.end(), shown) == directories.end();
    if (isNew) directories.push_back(shown);
    return false;
  });
  std::string list;
  for (std::size_t i = 0; i < std::min(directories.size(), kMostShown); ++i) {
    list.append(list.empty() ? "" : ", ").append(directories[i]);
  }
  if (directories.size() > kMostShown) list += ", ...";
  std::vector<tNote> notes = {noted("searched in: %1", {list})};

  noteNearFile(notes, finder.files(), paths);
  return notes;
}

}  // namespace precomp
