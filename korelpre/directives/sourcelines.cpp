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
      return entries_[offset(line)]->hasContent();
    default:
      return true;
  }
}

void tSourceCode::addPlain(int line, std::size_t offset) {
  set(line, kPlain, offset);
  hasPlain_ = true;
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
    entries_.push_back(std::make_unique<tSourceLine>(line));
    entries_.back()->directive = directive;
    set(line, kEntry, entries_.size() - 1);
  }
  return entryAt(line);
}

void tSourceCode::reset(int line) {
  if (line > count()) return;
  if (kind(line) == kEntry) entries_[offset(line)] = std::make_unique<tSourceLine>(line);
  if (kind(line) != kEntry) set(line, kNothing, 0);
}

void tSourceCode::clear() {
  lines_.clear();
  entries_.clear();
  hasPlain_ = false;
}

bool tSourceCode::hasStatements() const {
  return hasPlain_ || std::any_of(entries_.begin(), entries_.end(),
                                  [](const auto& entry) { return entry->count() > 0; });
}

}  // namespace precomp
