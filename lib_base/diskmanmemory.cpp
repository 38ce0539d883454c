#include <algorithm>
#include <cstring>
#include <utility>

#include "lib_base/diskman.h"

namespace {

/// `name` without "." components and doubled slashes.
std::string normalised(std::string_view name) {
  std::string result;
  if (!name.empty() && name.front() == '/') result = "/";
  while (!name.empty()) {
    const std::string_view part = name.substr(0, name.find('/'));
    name.remove_prefix(std::min(part.size() + 1, name.size()));
    if (part.empty() || part == ".") continue;
    if (!result.empty() && result.back() != '/') result += '/';
    result += part;
  }
  return result;
}

std::string normalised(const char* name) {
  return normalised(std::string_view(name ? name : ""));
}

/// Copies up to `count` bytes from `position` on and steps over them.
std::int64_t readPart(std::string_view all, std::size_t& position, void* bytes, std::size_t count) {
  const std::string_view part = all.substr(std::min(position, all.size()), count);
  if (!part.empty()) std::memcpy(bytes, part.data(), part.size());
  position += part.size();
  return static_cast<std::int64_t>(part.size());
}

}  // namespace

// --- the file system for tests ----------------------------------------------------------------

/// An open file of tDiskManMemory; it keeps its bytes when the name goes to another file.
class tMemoryFile : public tFile {
 public:
  explicit tMemoryFile(std::shared_ptr<std::string> bytes, bool writable = false,
                       std::size_t limit = tString::npos)
      : bytes_(std::move(bytes)), limit_(limit), writable_(writable) {}

  std::int64_t size() override { return static_cast<std::int64_t>(bytes_->size()); }
  std::int64_t read(void* bytes, std::size_t count) override {
    return open_ && !writable_ ? readPart(*bytes_, position_, bytes, count) : -1;
  }
  bool seek(std::int64_t position) override {
    if (position < 0 || !open_) return false;
    position_ = static_cast<std::size_t>(position);
    return true;
  }
  bool write(std::string_view bytes) override {
    if (!open_ || !writable_) return false;
    // As a disk does, it takes what still fits.
    const std::size_t room = limit_ - std::min(limit_, position_);
    const std::string_view fitting = bytes.substr(0, room);
    if (position_ > bytes_->size()) bytes_->resize(position_);
    bytes_->replace(position_, fitting.size(), fitting);
    position_ += fitting.size();
    if (fitting.size() < bytes.size()) lost_ = true;
    return fitting.size() == bytes.size();
  }
  bool close() override {
    open_ = false;
    return !lost_;
  }

 private:
  const std::shared_ptr<std::string> bytes_;
  const std::size_t limit_;
  const bool writable_;
  std::size_t position_ = 0;
  bool open_ = true;
  bool lost_ = false;
};

std::unique_ptr<tFile> tDiskManMemory::open(const char* name) {
  const auto at = files_.find(normalised(name));
  return at == files_.end() ? nullptr : std::make_unique<tMemoryFile>(at->second.bytes);
}

std::unique_ptr<tFile> tDiskManMemory::create(const char* name) {
  const std::string key = normalised(name);
  if (key.empty() || refusedCreates_.contains(key)) return nullptr;
  std::shared_ptr<std::string>& bytes = files_[key].bytes;
  if (!bytes) bytes = std::make_shared<std::string>();
  bytes->clear();
  const auto limit = writeLimits_.find(key);
  return std::make_unique<tMemoryFile>(bytes, true,
                                       limit == writeLimits_.end() ? tString::npos : limit->second);
}

std::unique_ptr<tFile> tDiskManMemory::createNew(const char* name, bool& exists) {
  exists = this->exists(name);
  return exists ? nullptr : create(name);
}

bool tDiskManMemory::removeLeftover(const char* name) {
  const auto at = files_.find(normalised(name));
  if (at == files_.end() || at->second.bytes.use_count() > 1) return false;
  files_.erase(at);
  return true;
}

bool tDiskManMemory::exists(const char* name) {
  return files_.contains(normalised(name));
}

bool tDiskManMemory::remove(const char* name) {
  return files_.erase(normalised(name)) > 0;
}

bool tDiskManMemory::rename(const char* from, const char* to) {
  const std::string source = normalised(from);
  const std::string target = normalised(to);
  const auto at = files_.find(source);
  if (at == files_.end() || target.empty() || refusedRenames_.contains(source)) return false;
  if (source == target) return true;
  tEntry entry = std::move(at->second);
  files_.erase(at);
  files_[target] = std::move(entry);
  return true;
}

tString tDiskManMemory::resolve(const char* name) {
  const std::string key = normalised(name);
  return files_.contains(key) ? tString(key) : tString();
}

void tDiskManMemory::put(std::string_view name, std::string_view bytes) {
  files_[normalised(name)].bytes = std::make_shared<std::string>(bytes);
}

const std::string* tDiskManMemory::bytes(std::string_view name) const {
  const auto at = files_.find(normalised(name));
  return at == files_.end() ? nullptr : at->second.bytes.get();
}

void tDiskManMemory::refuseCreate(std::string_view name) {
  refusedCreates_[normalised(name)] = true;
}

void tDiskManMemory::limitWrites(std::string_view name, std::size_t bytes) {
  writeLimits_[normalised(name)] = bytes;
}

void tDiskManMemory::refuseRename(std::string_view from) {
  refusedRenames_[normalised(from)] = true;
}

// --- files kept in memory in front of another file system -------------------------------------

namespace {

/// An open file that is kept in memory. Writing goes to its end.
class tKeptFile : public tFile {
 public:
  tKeptFile(std::shared_ptr<tString> bytes, bool writable)
      : bytes_(std::move(bytes)), writable_(writable) {}

  std::int64_t size() override { return static_cast<std::int64_t>(bytes_->size()); }
  std::int64_t read(void* bytes, std::size_t count) override {
    return open_ && !writable_ ? readPart(*bytes_, position_, bytes, count) : -1;
  }
  bool seek(std::int64_t position) override {
    if (position < 0 || !open_ || writable_) return false;
    position_ = static_cast<std::size_t>(position);
    return true;
  }
  void expect(std::int64_t bytes) override {
    const auto most = static_cast<std::int64_t>(tString::maxSize());
    if (writable_ && bytes > 0) bytes_->reserve(static_cast<std::size_t>(std::min(bytes, most)));
  }
  bool write(std::string_view bytes) override {
    if (!open_ || !writable_) return false;
    if (bytes.size() > tString::maxSize() - std::min(tString::maxSize(), bytes_->size())) {
      lost_ = true;
      return false;
    }
    bytes_->append(bytes);
    return true;
  }
  bool close() override {
    open_ = false;
    return !lost_;
  }

  bool readAll(tString& text) override {
    if (!open_ || writable_) return false;
    const std::size_t start = std::min(position_, bytes_->size());
    const std::string_view rest = bytes_->view().substr(start);
    if (rest.size() > tString::maxSize() - std::min(tString::maxSize(), text.size())) return false;
    if (start == 0 && text.empty()) {
      text = std::move(*bytes_);
    } else {
      text.append(rest);
    }
    *bytes_ = tString();
    position_ = 0;
    return true;
  }

 private:
  const std::shared_ptr<tString> bytes_;
  const bool writable_;
  std::size_t position_ = 0;
  bool open_ = true;
  bool lost_ = false;
};

}  // namespace

void tDiskManOverlay::keepInMemory(std::string_view name) {
  kept_[normalised(name)];
}

void tDiskManOverlay::release(std::string_view name) {
  kept_.erase(normalised(name));
}

tDiskManOverlay::tKept* tDiskManOverlay::kept(const char* name) {
  if (kept_.empty()) return nullptr;
  const auto at = kept_.find(normalised(name));
  return at == kept_.end() ? nullptr : &at->second;
}

std::unique_ptr<tFile> tDiskManOverlay::open(const char* name) {
  const tKept* file = kept(name);
  if (!file) return below_.open(name);
  return file->bytes ? std::make_unique<tKeptFile>(file->bytes, false) : nullptr;
}

std::unique_ptr<tFile> tDiskManOverlay::create(const char* name) {
  tKept* file = kept(name);
  if (!file) return below_.create(name);
  file->bytes = std::make_shared<tString>();
  return std::make_unique<tKeptFile>(file->bytes, true);
}

std::unique_ptr<tFile> tDiskManOverlay::createNew(const char* name, bool& exists) {
  const tKept* file = kept(name);
  if (!file) return below_.createNew(name, exists);
  exists = file->bytes != nullptr;
  return exists ? nullptr : create(name);
}

bool tDiskManOverlay::removeLeftover(const char* name) {
  const tKept* file = kept(name);
  if (!file) return below_.removeLeftover(name);
  return file->bytes.use_count() == 1 && remove(name);
}

bool tDiskManOverlay::exists(const char* name) {
  const tKept* file = kept(name);
  return file ? file->bytes != nullptr : below_.exists(name);
}

bool tDiskManOverlay::remove(const char* name) {
  tKept* file = kept(name);
  if (!file) return below_.remove(name);
  return std::exchange(file->bytes, nullptr) != nullptr;
}

bool tDiskManOverlay::rename(const char* from, const char* to) {
  tKept* source = kept(from);
  tKept* target = kept(to);
  if (!source && !target) return below_.rename(from, to);
  if (!source || !target || !source->bytes) return false;
  if (source != target) target->bytes = std::exchange(source->bytes, nullptr);
  return true;
}

tString tDiskManOverlay::resolve(const char* name) {
  const tKept* file = kept(name);
  if (!file) return below_.resolve(name);
  return file->bytes ? tString(normalised(name)) : tString();
}
