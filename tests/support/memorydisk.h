#pragma once

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lib_base/diskman.h"
#include "lib_base/pathname.h"

/// A file system in memory. Names are compared byte for byte after "./" and doubled slashes are
/// dropped; there are no directories. Failures can be ordered by name.
class tDiskManMemory : public tDiskMan {
 public:
  using tDiskMan::open;
  std::unique_ptr<tFile> open(const char* name, int& error) override {
    error = 0;
    const auto at = files_.find(plainPath(name));
    auto file = at == files_.end() ? nullptr : std::make_unique<tOpenFile>(at->second);
    const auto refused = refusals_.find(plainPath(name));
    if (refused == refusals_.end() || refused->second.times-- <= 0) return file;
    if (!refused->second.opens) error = refused->second.error;
    if (error != 0 || !file) return nullptr;
    file->fail(refused->second.error);
    return file;
  }
  std::unique_ptr<tFile> create(const char* name) override {
    const std::string key = plainPath(name);
    errno = EACCES;
    if (key.empty() || refusedCreates_.contains(key)) return nullptr;
    std::shared_ptr<std::string>& bytes = files_[key];
    if (!bytes) bytes = std::make_shared<std::string>();
    bytes->clear();
    const auto limit = writeLimits_.find(key);
    return std::make_unique<tOpenFile>(bytes, true,
                                       limit == writeLimits_.end() ? kNoLimit : limit->second);
  }
  std::unique_ptr<tFile> createNew(const char* name, bool& exists) override {
    exists = this->exists(name);
    return exists ? nullptr : create(name);
  }
  bool removeLeftover(const char* name) override {
    const auto at = files_.find(plainPath(name));
    if (at == files_.end() || at->second.use_count() > 1) return false;
    files_.erase(at);
    return true;
  }
  eStanding look(const char* name) override {
    if (files_.contains(plainPath(name))) return eStanding::kFile;
    return refusals_.contains(plainPath(name)) ? eStanding::kUnknown : eStanding::kNothing;
  }
  bool remove(const char* name) override { return files_.erase(plainPath(name)) > 0; }
  bool rename(const char* from, const char* to) override {
    const std::string source = plainPath(from);
    const std::string target = plainPath(to);
    errno = EXDEV;
    if (!files_.contains(source) || target.empty() || refusedRenames_.contains(source)) {
      return false;
    }
    if (source == target) return true;
    files_[target] = std::move(files_[source]);
    files_.erase(source);
    return true;
  }
  tString resolve(const char* name) override {
    const std::string key = plainPath(name);
    return files_.contains(key) ? tString(key) : tString();
  }
  std::vector<std::string> namesIn(const char* directory) override {
    std::string above = plainPath(directory);
    if (!above.empty()) above += '/';
    std::set<std::string> names;
    for (const auto& [name, bytes] : files_) {
      if (name.starts_with(above))
        names.insert(name.substr(above.size(), name.find('/', above.size()) - above.size()));
    }
    return {names.begin(), names.end()};
  }

  /// Puts a file there, replacing any.
  void put(std::string_view name, std::string_view bytes) {
    files_[plainPath(name)] = std::make_shared<std::string>(bytes);
  }
  /// The bytes of a file; null when there is none. Valid until the file changes.
  const std::string* bytes(std::string_view name) const {
    const auto at = files_.find(plainPath(name));
    return at == files_.end() ? nullptr : at->second.get();
  }
  std::size_t fileCount() const { return files_.size(); }
  /// How a file cannot be read: opening it fails, or else reading it, so many times.
  struct tRefusal {
    int error;
    bool opens;
    int times;
  };
  void refuse(std::string_view name, tRefusal refusal) { refusals_[plainPath(name)] = refusal; }
  /// From now on creating a file of this name fails.
  void refuseCreate(std::string_view name) { refusedCreates_.insert(plainPath(name)); }
  /// From now on writes to a file of this name fail after `bytes` bytes, as on a full disk.
  void limitWrites(std::string_view name, std::size_t bytes) {
    writeLimits_[plainPath(name)] = bytes;
  }
  void refuseRename(std::string_view from) { refusedRenames_.insert(plainPath(from)); }

 private:
  static constexpr std::size_t kNoLimit = std::string::npos;

  /// Keeps its bytes when the name goes to another file.
  class tOpenFile : public tFile {
   public:
    explicit tOpenFile(std::shared_ptr<std::string> bytes, bool writable = false,
                       std::size_t limit = kNoLimit)
        : bytes_(std::move(bytes)), limit_(limit), writable_(writable) {}

    std::int64_t size() override { return static_cast<std::int64_t>(bytes_->size()); }
    std::int64_t read(void* bytes, std::size_t count) override {
      if (!open_ || writable_ || error_ != 0) return -1;
      position_ = std::min(position_, bytes_->size());
      const std::size_t got = bytes_->copy(static_cast<char*>(bytes), count, position_);
      position_ += got;
      return static_cast<std::int64_t>(got);
    }
    bool seek(std::int64_t position) override {
      if (position < 0 || !open_) return false;
      position_ = static_cast<std::size_t>(position);
      return true;
    }
    bool write(std::string_view bytes) override {
      if (!open_ || !writable_) return false;
      // As a disk does, it takes what still fits.
      const std::string_view fitting = bytes.substr(0, limit_ - std::min(limit_, position_));
      if (position_ > bytes_->size()) bytes_->resize(position_);
      bytes_->replace(position_, fitting.size(), fitting);
      position_ += fitting.size();
      if (fitting.size() < bytes.size()) {
        lost_ = true;
        error_ = ENOSPC;
      }
      return fitting.size() == bytes.size();
    }
    bool close() override {
      open_ = false;
      return !lost_;
    }
    int error() const override { return error_; }
    void fail(int error) { error_ = error; }

   private:
    const std::shared_ptr<std::string> bytes_;
    const std::size_t limit_;
    const bool writable_;
    std::size_t position_ = 0;
    bool open_ = true;
    bool lost_ = false;
    int error_ = 0;
  };

  std::map<std::string, std::shared_ptr<std::string>> files_;
  std::map<std::string, std::size_t> writeLimits_;
  std::map<std::string, tRefusal> refusals_;
  std::set<std::string> refusedCreates_;
  std::set<std::string> refusedRenames_;
};
