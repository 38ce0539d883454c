#include <algorithm>
#include <cstring>
#include <utility>

#include "lib_base/diskman.h"
#include "lib_base/pathname.h"

namespace {

/// An open file that is kept in memory. Writes append.
class tKeptFile : public tFile {
 public:
  tKeptFile(std::shared_ptr<tString> bytes, bool writable, bool lasts = false)
      : bytes_(std::move(bytes)), writable_(writable), lasts_(lasts) {}

  std::int64_t size() override { return static_cast<std::int64_t>(bytes_->size()); }
  std::int64_t read(void* bytes, std::size_t count) override {
    if (!open_ || writable_) return -1;
    const std::string_view part = rest().substr(0, count);
    if (!part.empty()) std::memcpy(bytes, part.data(), part.size());
    position_ += part.size();
    return static_cast<std::int64_t>(part.size());
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
    const std::size_t room = tString::maxSize() - std::min(tString::maxSize(), text.size());
    if (rest().size() > room) return false;
    if (lasts_) {
      text.append(rest());
      position_ += rest().size();
      return true;
    }
    if (position_ == 0 && text.empty()) {
      text = std::move(*bytes_);
    } else {
      text.append(rest());
    }
    *bytes_ = tString();
    position_ = 0;
    return true;
  }

 private:
  /// From the current position on.
  std::string_view rest() const {
    return bytes_->view().substr(std::min(position_, bytes_->size()));
  }

  const std::shared_ptr<tString> bytes_;
  const bool writable_;
  const bool lasts_;
  std::size_t position_ = 0;
  bool open_ = true;
  bool lost_ = false;
};

}  // namespace

void tDiskManOverlay::keepInMemory(std::string_view name) {
  kept_[plainPath(name)];
}

void tDiskManOverlay::keepText(std::string_view name, std::string_view text) {
  kept_[plainPath(name)] = {std::make_shared<tString>(tString::borrow(text)), true};
}

void tDiskManOverlay::release(std::string_view name) {
  kept_.erase(plainPath(name));
}

tDiskManOverlay::tKept* tDiskManOverlay::kept(const char* name) {
  if (kept_.empty()) return nullptr;
  const auto at = kept_.find(plainPath(name));
  return at == kept_.end() ? nullptr : &at->second;
}

std::unique_ptr<tFile> tDiskManOverlay::open(const char* name, int& error) {
  const tKept* file = kept(name);
  if (!file) return below_.open(name, error);
  error = 0;
  return file->bytes ? std::make_unique<tKeptFile>(file->bytes, false, file->lasts) : nullptr;
}

std::unique_ptr<tFile> tDiskManOverlay::create(const char* name) {
  tKept* file = kept(name);
  if (!file) return below_.create(name);
  *file = {std::make_shared<tString>(), false};
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

eStanding tDiskManOverlay::look(const char* name) {
  const tKept* file = kept(name);
  if (!file) return below_.look(name);
  return file->bytes ? eStanding::kFile : eStanding::kNothing;
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
  return file->bytes ? tString(plainPath(name)) : tString();
}
