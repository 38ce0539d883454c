#include "korelpre/headers/headercache.h"

#include <utility>

namespace precomp {

namespace {

// A header that is another one for every file is not worth an image.
constexpr int kMostImages = 8;

}  // namespace

std::vector<tHeaderCache::tImage> tHeaderCache::find(std::string_view name) const {
  const std::lock_guard lock(mutex_);
  const auto found = entries_.find(name);
  if (found == entries_.end()) return {};
  return {found->second.images.rbegin(), found->second.images.rend()};
}

void tHeaderCache::add(std::string_view name, tImage image) {
  const std::lock_guard lock(mutex_);
  tEntry& entry = entries_[std::string(name)];
  entry.images.push_back(std::move(image));
  if (static_cast<int>(entry.images.size()) == kMostImages) entry.hopeless = true;
}

void tHeaderCache::giveUp(std::string_view name) {
  const std::lock_guard lock(mutex_);
  entries_[std::string(name)].hopeless = true;
}

std::string tHeaderCache::problem() const {
  const std::lock_guard lock(mutex_);
  return problem_;
}

void tHeaderCache::noteProblem(std::string_view problem) {
  const std::lock_guard lock(mutex_);
  if (problem_.empty()) problem_ = problem;
}

tHeaderCache::tTurn::tTurn(tHeaderCache& cache, std::string_view name)
    : cache_(cache), name_(name) {
  std::unique_lock lock(cache_.mutex_);
  tEntry& entry = cache_.entries_[name_];
  cache_.turnOver_.wait(lock, [&] { return !entry.building || entry.hopeless; });
  if (entry.hopeless) return;
  wanted_ = entry.building = true;
}

tHeaderCache::tTurn::~tTurn() {
  if (!wanted_) return;
  {
    const std::lock_guard lock(cache_.mutex_);
    cache_.entries_[name_].building = false;
  }
  cache_.turnOver_.notify_all();
}

}  // namespace precomp
