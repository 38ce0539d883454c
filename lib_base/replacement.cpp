#include "lib_base/replacement.h"

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <thread>
#include <utility>

#include "lib_base/pathname.h"

namespace {

/// Takes bytes as a file that is written does, and compares them with what another file holds. A
/// write fails at the first difference.
class tComparison : public tFile {
 public:
  /// `other` must outlive this object.
  explicit tComparison(tFile& other) : other_(other) {}

  std::int64_t size() override { return -1; }
  std::int64_t read(void* /*bytes*/, std::size_t /*count*/) override { return -1; }
  bool seek(std::int64_t /*position*/) override { return false; }
  bool close() override { return true; }

  bool write(std::string_view bytes) override {
    if (held_.size() < bytes.size()) held_.resize(bytes.size());
    const std::int64_t count = other_.read(held_.data(), bytes.size());
    return count >= 0 && bytes == std::string_view(held_.data(), static_cast<std::size_t>(count));
  }

  /// Whether the other file holds nothing more.
  bool atEnd() {
    char next = 0;
    return other_.read(&next, 1) == 0;
  }

 private:
  tFile& other_;
  std::string held_;
};

tString besides(const tString& target, const tString& temporary) {
  tPathParts parts;
  SplitPath(target, parts);
  return parts.directory.append(temporary);
}

}  // namespace

tReplacement::tReplacement(tDiskMan& disk, const tString& name, eName whose,
                           const tString& temporary, tWriting write)
    : disk_(disk),
      derived_(whose == kDerived),
      inPlace_(!derived_ && disk.look(name.c_str()) == eStanding::kSpecial),
      target_(derived_ || inPlace_ ? name : disk.follow(name.c_str())),
      temporary_(besides(target_, temporary)),
      write_(std::move(write)) {}

tReplacement::~tReplacement() {
  if (temporaryExists_) disk_.remove(temporary_.c_str());
}

bool tReplacement::isUpToDate() {
  // A link that somebody has made of our name could lead elsewhere tomorrow.
  if (inPlace_ || isStrange()) return false;
  const std::unique_ptr<tFile> older = disk_.open(target_.c_str());
  if (!older) return false;
  tComparison comparison(*older);
  if (!write_(comparison) || !comparison.atEnd()) return false;
  disk_.removeLeftover(temporary_.c_str());
  return true;
}

bool tReplacement::tryCreate(bool& exists) {
  errno = 0;
  file_ = disk_.createNew(temporary_.c_str(), exists);
  if (!file_ && exists && disk_.removeLeftover(temporary_.c_str())) {
    file_ = disk_.createNew(temporary_.c_str(), exists);
  }
  error_ = file_ ? 0 : errno;
  temporaryExists_ = file_ != nullptr;
  return temporaryExists_;
}

bool tReplacement::create(bool patient) {
  constexpr auto kPatience = std::chrono::seconds(10);
  constexpr auto kPause = std::chrono::milliseconds(1);
  if (target_.empty()) {
    error_ = ELOOP;
    return false;
  }
  bool exists = false;
  if (inPlace_ || tryCreate(exists)) return true;
  if (!exists || !patient) return false;
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(kPause);
    if (tryCreate(exists) || !exists) break;
  }
  return temporaryExists_;
}

bool tReplacement::fill(tFile& file) {
  const bool filled = write_(file);
  const bool closed = file.close();
  if (!filled || !closed) error_ = file.error();
  return filled && closed;
}

bool tReplacement::write() {
  return inPlace_ || fill(*file_);
}

bool tReplacement::publish() {
  errno = 0;
  if (inPlace_) {
    const std::unique_ptr<tFile> special = disk_.openSpecial(target_.c_str());
    if (special) return fill(*special);
  } else if (disk_.rename(temporary_.c_str(), target_.c_str())) {
    temporaryExists_ = false;
    if (!isStrange()) return true;
    // Somebody has replaced the temporary file. A later run must not follow what came instead.
    removeOld();
    errno = EBUSY;
  }
  error_ = errno;
  return false;
}

bool tReplacement::isStrange() {
  return disk_.follow(target_.c_str()) != target_ ||
         disk_.look(target_.c_str()) == eStanding::kSpecial;
}

void tReplacement::removeOld() {
  if (!inPlace_) disk_.remove(target_.c_str());
}

int tReplacement::error() const {
  return error_ != 0 ? error_ : EIO;
}
