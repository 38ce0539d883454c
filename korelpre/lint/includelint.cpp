#include "korelpre/lint/includelint.h"

#include <algorithm>
#include <map>

#include "korelpre/directives/programfile.h"
#include "korelpre/errors/notes.h"
#include "korelpre/lint/headeruse.h"
#include "lib_base/misc.h"
#include "lib_base/pathname.h"

namespace precomp {

namespace {

std::string textOf(const tString& text) {
  return std::string(text.view());
}

bool sameButCase(std::string_view a, std::string_view b) {
  return a != b && equalNoCase(a, b);
}

}  // namespace

void tIncludeLint::fileCompiled(const tProgramFile& file) {
  if (file.lines.hasStatements()) withCode_.insert(textOf(file.names.opened));
  const tProgramFile* const includer = file.includer();
  if (includer == nullptr) return;
  reads_.push_back({textOf(file.names.opened), textOf(file.names.requested),
                    textOf(file.names.resolved), textOf(includer->names.opened), file.includedAt(),
                    includer->isMain()});
}

void tIncludeLint::includeSkipped(tProgramFile& file, const tString& name, int line) {
  const auto before = std::find_if(reads_.rbegin(), reads_.rend(), [&](const tRead& read) {
    return sameButCase(read.requested, name);
  });
  if (before == reads_.rend()) return;
  tFileFinder& finder = file.shared().finder;
  const tString found = finder.locate(name);
  const bool other = !found.empty() && !before->resolved.empty() &&
                     finder.files().resolve(found.c_str()) == before->resolved;
  const tLintPlace place{file.names.opened, line, 0, 0};
  if (found.empty() || other) {
    findings_.tell(eWarning::kIncludeCase, place, {name, before->requested});
  } else {
    findings_.tell(eWarning::kShadowedInclude, place, {name, before->requested});
  }
}

void tIncludeLint::finish() {
  judgeSpelling();
  if (!failed_ && findings_.wants(eWarning::kUnneededInclude)) judgeNeed();
  failed_ = false;
  reads_.clear();
}

void tIncludeLint::judgeSpelling() {
  std::map<std::string, const tRead*> byFile;
  for (const tRead& read : reads_) {
    const tLintPlace place = placeOf(read);
    const tString file = bareName(read.resolved);
    if (read.line > 0 && sameButCase(bareName(slashedPath(read.requested)), file)) {
      findings_.tell(eWarning::kIncludeCase, place, {read.requested, file});
    }
    if (read.resolved.empty()) continue;
    const tRead& first = *byFile.emplace(read.resolved, &read).first->second;
    if (first.requested == read.requested || read.line == 0) continue;
    std::vector<tNote> notes = {noted("read here before")};
    notes.back().file = tString(first.includer.c_str());
    notes.back().line = first.line;
    findings_.tell(eWarning::kIncludeSpelling, place, {read.requested, first.requested},
                   first.line > 0 ? std::move(notes) : std::vector<tNote>());
  }
}

void tIncludeLint::judgeNeed() {
  tHeaderUse use(findings_.files());
  for (const std::string& name : withCode_) use.addNeeded(name);
  for (const tRead& read : reads_) use.addInclude(read.includer, read.opened);
  use.readTexts();
  std::unordered_set<std::string> told;
  for (const tRead& read : reads_) {
    if (!read.byMain || read.line == 0 || use.isNeeded(read.opened)) continue;
    if (!told.insert(read.opened).second) continue;
    findings_.tell(eWarning::kUnneededInclude, placeOf(read), {read.requested});
  }
}

// That of the name in the directive.
tLintPlace tIncludeLint::placeOf(const tRead& read) const {
  tLintPlace place{read.includer, read.line, 0, 0};
  const tLintedFile* const file = findings_.fileNamed(read.includer);
  const std::size_t at =
      file == nullptr ? std::string::npos : lineOf(*file, read.line).find(read.requested);
  if (at == std::string::npos) return place;
  place.column = static_cast<int>(at) + 1;
  place.size = read.requested.size();
  return place;
}

}  // namespace precomp
