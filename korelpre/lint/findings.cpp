#include "korelpre/lint/findings.h"

#include <algorithm>
#include <tuple>

#include "korelpre/directives/programfile.h"
#include "korelpre/errors/notes.h"

namespace precomp {

namespace {

constexpr int kMostTold = 1000;  // of one warning
constexpr std::size_t kMostArguments = 3;

tString shortened(std::string_view text) {
  constexpr std::size_t kLongest = 100;
  return tString(text.substr(0, kLongest)).append(text.size() > kLongest ? "..." : "");
}

// Where a reader meets a line: at the include that leads to it.
std::tuple<int, int, std::string_view, int, int> orderOf(const tDiagnosis& diagnosis) {
  const bool main = diagnosis.includedFrom.empty();
  return {main ? diagnosis.line : diagnosis.includedFrom.back().line, main ? 0 : 1,
          diagnosis.file.view(), diagnosis.line, diagnosis.column};
}

}  // namespace

void tFindings::add(const tProgramFile& file) {
  if (!byName_.emplace(file.names.opened.view(), files_.size()).second) return;
  files_.push_back({file.names.opened, file.text, {}, tSuppressions(file.text), {}});
  for (const tProgramFile* at = &file; at->includer() != nullptr; at = at->includer()) {
    files_.back().includedFrom.push_back({at->includer()->names.opened, at->includedAt()});
  }
}

const tLintedFile* tFindings::fileNamed(std::string_view name) const {
  const auto found = byName_.find(std::string(name));
  return found == byName_.end() ? nullptr : &files_[found->second];
}

bool tFindings::hears(eWarning warning) {
  if (!wants(warning)) return false;
  int& told = told_[static_cast<std::size_t>(warning)];
  if (told < kMostTold) return true;
  ++told;
  return false;
}

void tFindings::tell(eWarning warning, const tLintPlace& place,
                     std::initializer_list<std::string_view> arguments, std::vector<tNote> notes) {
  if (!hears(warning)) return;
  ++told_[static_cast<std::size_t>(warning)];
  std::array<tString, kMostArguments> texts;
  std::array<std::string_view, kMostArguments> views;
  std::size_t count = 0;
  for (const std::string_view argument : arguments) {
    texts[count] = shortened(argument);
    views[count] = texts[count];
    ++count;
  }
  tDiagnosis diagnosis =
      diagnosisOf(warning, wanted_.isError(warning), {views[0], views[1], views[2]});
  diagnosis.notes.insert(diagnosis.notes.begin(), notes.begin(), notes.end());
  diagnosis.file = tString(place.file);
  diagnosis.line = place.line;
  diagnosis.column = place.column;
  if (place.column > 0) diagnosis.endColumn = place.column + static_cast<int>(place.size);
  found_.push_back({warning, std::move(diagnosis)});
}

// False for what a comment switches off.
bool tFindings::complete(tFinding& finding) {
  tDiagnosis& diagnosis = finding.diagnosis;
  const tLintedFile* const file = fileNamed(diagnosis.file);
  if (file == nullptr) return true;
  if (file->suppressions.covers(diagnosis.slug, diagnosis.line)) return false;
  // A line may be long, and much may be told of it.
  if (lastFile_ != file || lastLine_ != diagnosis.line) {
    lastFile_ = file;
    lastLine_ = diagnosis.line;
    lastText_ = tString(lineOf(*file, diagnosis.line));
  }
  diagnosis.sourceLine = lastText_;
  diagnosis.includedFrom = file->includedFrom;
  if (diagnosis.column == 0) {
    const std::size_t first = diagnosis.sourceLine.view().find_first_not_of(" \t");
    if (first != std::string_view::npos) diagnosis.column = static_cast<int>(first) + 1;
  }
  return true;
}

std::vector<tDiagnosis> tFindings::take() {
  std::vector<tDiagnosis> all;
  for (tFinding& finding : found_) {
    if (complete(finding)) all.push_back(std::move(finding.diagnosis));
  }
  for (const tFinding& finding : found_) {
    int& told = told_[static_cast<std::size_t>(finding.warning)];
    if (told <= kMostTold || all.empty()) continue;
    all.back().notes.push_back(
        noted("not told: %1 more of %2",
              {tString::format("%d", told - kMostTold), warningTextOf(finding.warning).slug}));
    told = 0;
  }
  told_ = {};
  found_.clear();
  std::stable_sort(all.begin(), all.end(), [](const tDiagnosis& a, const tDiagnosis& b) {
    return orderOf(a) < orderOf(b);
  });
  return all;
}

std::string_view lineOf(const tLintedFile& file, int line) {
  const std::string_view text = file.text;
  if (line < 1) return {};
  if (file.lineStarts.empty()) {
    for (std::size_t at = 0; at < text.size(); at = text.find('\n', at) + 1) {
      file.lineStarts.push_back(at);
      if (text.find('\n', at) == std::string_view::npos) break;
    }
  }
  const auto index = static_cast<std::size_t>(line) - 1;
  if (index >= file.lineStarts.size()) return {};
  std::string_view rest = text.substr(file.lineStarts[index]);
  rest = rest.substr(0, rest.find('\n'));
  if (rest.ends_with('\r')) rest.remove_suffix(1);
  return rest;
}

}  // namespace precomp
