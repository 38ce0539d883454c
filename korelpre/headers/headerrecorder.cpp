#include "korelpre/headers/headerrecorder.h"

#include <algorithm>

#include "korelpre/headers/contenthash.h"
#include "korelpre/headers/imagebuilder.h"
#include "korelpre/tables/ruleset.h"

namespace precomp {

tHeaderRecorder::tHeaderRecorder(tHeaderRecorder*& slot, const tRuleSet& rules,
                                 const tIncludeCount& included, tSettings settings)
    : slot_(slot), rules_(rules), included_(included), before_(included), settings_(settings) {
  slot_ = this;
}

tHeaderRecorder::~tHeaderRecorder() {
  slot_ = nullptr;
}

void tHeaderRecorder::fileRead(const tString& requested, const tString& path,
                               const tString& resolved, std::string_view text, int depth) {
  const auto kept = [this](const tString& name) { return texts_.emplace_back(name.view()).view(); };
  notes_.depth = std::max(notes_.depth, static_cast<std::uint32_t>(depth - settings_.depth));
  notes_.files.push_back({kept(requested), kept(path), kept(resolved), text.size(),
                          settings_.hashes ? contentHash(text) : 0});
}

void tHeaderRecorder::tested(std::string_view name, bool defined) {
  const std::string text(name);
  if (defined_.count(text) > 0 || !testedNames_.insert(text).second) return;
  notes_.tested.push_back({texts_.emplace_back(name).view(), defined});
}

// A definition takes the place of the only one of its name; how many there will be of a name that
// has several already depends on how often the header defines it.
void tHeaderRecorder::defining(std::string_view name, int known) {
  if (defined_.insert(std::string(name)).second && known > 1) spoilt_ = true;
}

void tHeaderRecorder::marker(int line, std::string_view name) {
  notes_.markers.push_back({static_cast<std::uint32_t>(line), texts_.emplace_back(name).view()});
}

// Those that are still there of the rules that arrived, in that order. A rule that is gone may have
// left its place to another one; the last arrival counts.
std::vector<const tBaseXChg*> tHeaderRecorder::rulesOf(const tXChgArray& table) const {
  std::vector<const tBaseXChg*> rules;
  if (arrived_.empty()) return rules;
  std::unordered_set<const tBaseXChg*> there;
  // Those that came out of another image did not arrive.
  for (int i = 0; i < table.count(); ++i) there.insert(table.madeRule(i));
  for (auto rule = arrived_.rbegin(); rule != arrived_.rend(); ++rule) {
    if (there.erase(*rule) > 0) rules.push_back(*rule);
  }
  std::reverse(rules.begin(), rules.end());
  return rules;
}

std::shared_ptr<const tHeaderImage> tHeaderRecorder::finish(
    const std::unordered_set<std::string>& includedNames, bool wholeTables) {
  if (spoilt_) return nullptr;
  notes_.largestText = tString::maxSize();
  notes_.includedFiles = static_cast<std::uint32_t>(included_.files - before_.files);
  notes_.includedBytes = static_cast<std::uint64_t>(included_.bytes - before_.bytes);
  for (const std::string& name : includedNames) notes_.includedNames.emplace_back(name);
  std::sort(notes_.includedNames.begin(), notes_.includedNames.end());
  tImageBuilder builder;
  for (const tXChgArray* table : {&rules_.defines, &rules_.commands, &rules_.translates}) {
    builder.addTable(*table, rulesOf(*table), wholeTables);
  }
  return builder.finish(notes_);
}

}  // namespace precomp
