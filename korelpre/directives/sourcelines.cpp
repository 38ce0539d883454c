#include "korelpre/directives/sourcelines.h"

#include <algorithm>

namespace precomp {

void tSourceCode::expect(std::size_t bytes) {
  constexpr std::size_t kShortLine = 24;  // most sources have longer ones on average
  lines_.reserve(bytes / kShortLine + 1);
}

void tSourceCode::extendTo(int lines) {
  const auto size = static_cast<std::size_t>(std::max(lines, 0));
  if (lines_.size() < size) lines_.resize(size, kNothing);
}

void tSourceCode::set(int line, eKind kind, std::size_t value) {
  extendTo(line);
  lines_[static_cast<std::size_t>(line) - 1] =
      static_cast<std::uint32_t>(value << 2) | static_cast<std::uint32_t>(kind);
}

bool tSourceCode::hasContent(int line) const {
  switch (kind(line)) {
    case kNothing:
      return false;
    case kEntry:
      return entries_[offset(line)].hasContent();
    default:
      return true;
  }
}

void tSourceCode::addStatement(eKind kind, int line, std::size_t offset) {
  set(line, kind, offset);
  hasStatement_ = true;
}

void tSourceCode::addDirective(int line) {
  extendTo(line);
  if (kind(line) == kEntry) {
    entryAt(line).directive = true;
  } else {
    set(line, kDirective, 0);
  }
}

tSourceLine& tSourceCode::entry(int line) {
  extendTo(line);
  if (kind(line) != kEntry) {
    const bool directive = kind(line) == kDirective;
    entries_.emplace_back();
    entries_.back().directive = directive;
    set(line, kEntry, entries_.size() - 1);
  }
  return entryAt(line);
}

void tSourceCode::reset(int line) {
  if (line > count()) return;
  if (kind(line) != kEntry) return set(line, kNothing, 0);
  tSourceLine& entry = entryAt(line);
  entry.tokens.Destroy();
  entry.include = nullptr;
  entry.pendingDefine.reset();
  entry.pendingRules.clear();
  entry.directive = false;
}

void tSourceCode::clear() {
  lines_.clear();
  entries_.clear();
  headerStops_.clear();
  hasStatement_ = false;
}

void tSourceCode::keepHeaderStops() {
  bool behindInclude = false;
  for (int line = 1; line <= count(); ++line) {
    if (!hasContent(line)) continue;
    tInclude* const include = kind(line) == kEntry ? entryAt(line).include : nullptr;
    if (behindInclude || include != nullptr) headerStops_.push_back({line, behindInclude, include});
    behindInclude = include != nullptr;
  }
  lines_ = {};
  entries_.clear();
}

bool tSourceCode::hasStatements() const {
  return hasStatement_ || std::any_of(entries_.begin(), entries_.end(),
                                      [](const auto& entry) { return !entry.tokens.empty(); });
}

}  // namespace precomp
