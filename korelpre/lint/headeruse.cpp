#include "korelpre/lint/headeruse.h"

#include <algorithm>
#include <utility>

#include "korelpre/lint/directivelines.h"
#include "korelpre/lint/foldedword.h"
#include "korelpre/text/cursor.h"
#include "korelpre/text/words.h"

namespace precomp {

namespace {

constexpr std::size_t kMostOwners = 64;

}  // namespace

tHeaderUse::tHeaderUse(const std::deque<tLintedFile>& files)
    : files_(files), needed_(files.size()), included_(files.size()) {
  for (std::size_t i = 0; i < files.size(); ++i) byName_.emplace(files[i].name.view(), i);
}

void tHeaderUse::addNeeded(const std::string& name) {
  const auto found = byName_.find(name);
  if (found != byName_.end()) needed_[found->second] = true;
}

void tHeaderUse::addInclude(const std::string& includer, const std::string& included) {
  const auto from = byName_.find(includer);
  const auto to = byName_.find(included);
  if (from == byName_.end() || to == byName_.end()) return;
  included_[from->second].insert(to->second);
}

void tHeaderUse::readTexts() {
  for (std::size_t i = 0; i < files_.size(); ++i) {
    if (!files_[i].includedFrom.empty()) learnKeys(i);
  }
  for (std::size_t i = 0; i < files_.size(); ++i) readWords(i);
}

// A rule whose key is no word may take anything.
void tHeaderUse::learnKeys(std::size_t file) {
  for (const tDirectiveLine& line : directiveLinesOf(files_[file].text)) {
    const bool pattern = makesPattern(line.directive);
    if (!pattern && line.directive != eDirective::kDefine) continue;
    if (line.name.empty()) {
      needed_[file] = true;
    } else {
      addKey(line.name, pattern && abbreviates(line.directive), file);
    }
  }
}

void tHeaderUse::addKey(std::string_view key, bool abbreviates, std::size_t file) {
  const std::string folded = foldedWord(key);
  gate_.set(gateOf(key));
  const bool cut = abbreviates && folded.size() > kShortestAbbreviation;
  tOwners& owners = cut ? starts_[folded.substr(0, kShortestAbbreviation)] : keys_[folded];
  if (!owners.files.empty() && owners.files.back() == file) return;
  // What so many define is used somewhere.
  if (owners.files.size() < kMostOwners) {
    owners.files.push_back(file);
  } else {
    needed_[file] = true;
  }
}

// The words outside of strings and comments.
void tHeaderUse::readWords(std::size_t file) {
  const std::string_view text = files_[file].text;
  const char* const end = text.data() + text.size();
  for (const char* p = text.data(); p < end;) {
    if (isWordByte(*p)) {
      const char* const word = p;
      p = behindWord(p);
      take({word, static_cast<std::size_t>(p - word)}, file);
    } else if (isQuote(*p)) {
      const char* const behind = behindString(p);
      p = behind != nullptr ? behind : p + 1;
    } else if (*p == '#') {
      p = behindWord(p + 1);  // of a directive
    } else if (startsLineComment(p)) {
      p = lineFeedFrom(p, end);
    } else if (startsBlockComment(p)) {
      p = behindBlockComment(p, end);
    } else {
      ++p;
    }
  }
}

void tHeaderUse::take(std::string_view word, std::size_t file) {
  if (!gate_[gateOf(word)]) return;
  const std::string folded = foldedWord(word);
  const auto use = [&](std::unordered_map<std::string, tOwners>& keys, const std::string& key) {
    const auto found = keys.find(key);
    if (found == keys.end() || std::exchange(found->second.user, file) == file) return;
    for (const std::size_t owner : found->second.files) uses_.emplace(owner, file);
  };
  use(keys_, folded);
  if (folded.size() >= kShortestAbbreviation) {
    use(starts_, folded.substr(0, kShortestAbbreviation));
  }
}

std::set<std::size_t> tHeaderUse::reachedFrom(std::size_t file) const {
  std::set<std::size_t> reached = {file};
  std::vector<std::size_t> waiting = {file};
  while (!waiting.empty()) {
    const std::size_t next = waiting.back();
    waiting.pop_back();
    for (const std::size_t included : included_[next]) {
      if (reached.insert(included).second) waiting.push_back(included);
    }
  }
  return reached;
}

bool tHeaderUse::isNeeded(const std::string& name) const {
  const auto found = byName_.find(name);
  if (found == byName_.end()) return true;
  const std::set<std::size_t> own = reachedFrom(found->second);
  return std::any_of(own.begin(), own.end(), [&](std::size_t file) {
    if (needed_[file]) return true;
    for (auto use = uses_.lower_bound({file, 0}); use != uses_.end() && use->first == file; ++use) {
      if (own.count(use->second) == 0) return true;
    }
    return false;
  });
}

}  // namespace precomp
