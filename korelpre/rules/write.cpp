#include "korelpre/rules/write.h"

#include <string>
#include <unordered_map>
#include <vector>

#include "lib_base/misc.h"

namespace precomp {

namespace {

bool isCapturing(const tMatchMarker& marker) {
  return marker.kind() != kMatchIdentifier && marker.kind() != kMatchMarkerOpt;
}

// The capturing markers of a pattern, to be found by name.
class tNamedMarkers {
 public:
  explicit tNamedMarkers(tMatchMarker* head) { collect(head, false); }

  // Calls `take` with each marker of that name, in the order of the pattern.
  template <class Taker>
  void find(const tString& name, Taker take) {
    if (markers_.size() <= kFew) {
      for (const tEntry& entry : markers_) {
        if (equalNoCase(entry.marker->token(), name)) take(entry);
      }
      return;
    }
    if (byName_.empty()) fillMap();
    const auto found = byName_.find(folded(name));
    if (found == byName_.end()) return;
    for (const std::size_t index : found->second) take(markers_[index]);
  }

  struct tEntry {
    tMatchMarker* marker;
    bool inGroup;
  };

 private:
  static constexpr std::size_t kFew = 32;

  void collect(tMatchMarker* head, bool inGroup) {
    for (tMatchMarker* marker = head; marker != nullptr; marker = marker->next()) {
      if (isCapturing(*marker)) markers_.push_back({marker, inGroup});
      for (int i = 0; i < marker->groups().count(); ++i) collect(marker->groups()[i], true);
    }
  }

  static std::string folded(const tString& name) {
    std::string text(name.view());
    for (char& c : text) c = upperAscii(c);
    return text;
  }

  void fillMap() {
    for (std::size_t i = 0; i < markers_.size(); ++i) {
      byName_[folded(markers_[i].marker->token())].push_back(i);
    }
  }

  std::vector<tEntry> markers_;
  std::unordered_map<std::string, std::vector<std::size_t>> byName_;
};

// Which marker of a clause is the one that the clause follows.
struct tDriver {
  const tResultMarker* inGroup = nullptr;
  const tResultMarker* any = nullptr;

  void meet(const tDriver& later) {
    if (inGroup == nullptr) inGroup = later.inGroup;
    if (any == nullptr) any = later.any;
  }
};

class tLinker {
 public:
  tLinker(tRuleHome* rule, tMatchMarker* matchHead, int& count)
      : rule_(rule), markers_(matchHead), count_(count) {}

  tDriver linkChain(tMatchMarker* head) {
    tDriver driver;
    for (tMatchMarker* marker = head; marker != nullptr; marker = marker->next()) {
      driver.meet(linkMarker(static_cast<tResultMarker&>(*marker)));
      for (int i = 0; i < marker->groups().count(); ++i)
        driver.meet(linkClause(*marker->groups()[i]));
    }
    return driver;
  }

 private:
  tDriver linkMarker(tResultMarker& marker) {
    tDriver driver;
    if (marker.kind() == kResultIdentifier || marker.kind() == kMatchMarkerOpt) return driver;
    markers_.find(marker.token(), [&](const tNamedMarkers::tEntry& entry) {
      marker.link(rule_, *entry.marker);
      ++count_;
      driver.any = &marker;
      if (entry.inGroup) driver.inGroup = &marker;
    });
    return driver;
  }

  tDriver linkClause(tMatchMarker& head) {
    const tDriver driver = linkChain(&head);
    const tResultMarker* followed = driver.inGroup != nullptr ? driver.inGroup : driver.any;
    if (followed != nullptr) static_cast<tResultMarker&>(head).setDriver(followed);
    return driver;
  }

  tRuleHome* rule_;
  tNamedMarkers markers_;
  int& count_;
};

// Kept on purpose: the counter of a clause goes on over the repetitions of the clause around it, so
// a nested clause is written in the first of them only.
void replaceClause(const tRuleHome* rule, tMatchMarker& clause, tTknString* t) {
  const int count = clause.getRecurLevel();
  for (int level = 0; level < count && clause.countRepetition(count); ++level) {
    if (!rreplace(rule, &clause, t, level)) return;
  }
}

}  // namespace

void rlink(tRuleHome* rule, tMatchMarker* matchHead, tMatchMarker* resultHead, int& count) {
  if (resultHead != nullptr) tLinker(rule, matchHead, count).linkChain(resultHead);
}

bool rreplace(const tRuleHome* rule, tMatchMarker* head, tTknString* t, int level) {
  for (tMatchMarker* marker = head; marker != nullptr; marker = marker->next()) {
    if (!t->step()) return false;
    if (!marker->isGroupHead() && !marker->replace(t, level)) return false;
    for (int i = 0; i < marker->groups().count(); ++i) {
      tMatchMarker& clause = *marker->groups()[i];
      // Kept on purpose: such a clause is never written.
      if (clause.token() == "\"") continue;
      replaceClause(rule, clause, t);
      if (t->overrun()) return false;
    }
    if (marker->isGroupHead() && (!marker->isMatchOk() || !marker->replace(t, level))) return false;
  }
  return true;
}

}  // namespace precomp
