#include "preprocessor/run/outputfile.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <thread>
#include <utility>

#include "preprocessor/copy/linewriter.h"

namespace {

/// Takes bytes as a file that is written does, and compares them with what another file holds. A
/// write fails at the first difference.
class tComparison : public tFile {
 public:
  /// `other` must outlive this object.
  explicit tComparison(tFile& other) : other_(other), buffer_(new char[kPart]) {}

  std::int64_t size() override { return -1; }
  std::int64_t read(void* /*bytes*/, std::size_t /*count*/) override { return -1; }
  bool seek(std::int64_t /*position*/) override { return false; }
  bool close() override { return true; }

  bool write(std::string_view bytes) override {
    while (!bytes.empty()) {
      const std::int64_t count = other_.read(buffer_.get(), std::min(bytes.size(), kPart));
      if (count <= 0) return false;
      const auto length = static_cast<std::size_t>(count);
      if (std::memcmp(buffer_.get(), bytes.data(), length) != 0) return false;
      bytes.remove_prefix(length);
    }
    return true;
  }

  /// Whether the other file holds nothing more.
  bool atEnd() { return other_.read(buffer_.get(), 1) == 0; }

 private:
  static constexpr std::size_t kPart = 64 * 1024;

  tFile& other_;
  std::unique_ptr<char[]> buffer_;
};

/// Whether a file of `size` bytes can hold the text with a "\r\n" after every line.
bool mayHold(std::int64_t size, std::string_view text) {
  const auto feeds = std::count(text.begin(), text.end(), '\n');
  // A return may stand for a line end or be a part of one: then only the comparison tells.
  if (text.find('\r') != std::string_view::npos) return true;
  const int last = text.empty() || text.back() == '\n' ? 0 : 2;
  return size == static_cast<std::int64_t>(text.size()) + feeds + last;
}

}  // namespace

tOutputFile::tOutputFile(tDiskMan& disk, tString temporaryName, tString finalName)
    : disk_(disk), temporaryName_(std::move(temporaryName)), finalName_(std::move(finalName)) {}

tOutputFile::~tOutputFile() {
  if (temporaryExists_) disk_.remove(temporaryName_.c_str());
}

bool tOutputFile::isUpToDate(std::string_view text) {
  const std::unique_ptr<tFile> older = disk_.open(finalName_.c_str());
  if (!older || !mayHold(older->size(), text)) return false;
  tComparison comparison(*older);
  tLineWriter lines(comparison);
  if (!lines.write(text) || !lines.finish() || !comparison.atEnd()) return false;
  disk_.removeLeftover(temporaryName_.c_str());
  return true;
}

bool tOutputFile::tryCreate(bool& exists) {
  file_ = disk_.createNew(temporaryName_.c_str(), exists);
  if (!file_ && exists && disk_.removeLeftover(temporaryName_.c_str())) {
    file_ = disk_.createNew(temporaryName_.c_str(), exists);
  }
  temporaryExists_ = file_ != nullptr;
  return temporaryExists_;
}

bool tOutputFile::create(bool patient) {
  constexpr auto kPatience = std::chrono::seconds(10);
  constexpr auto kPause = std::chrono::milliseconds(1);
  bool exists = false;
  if (tryCreate(exists) || !exists || !patient) return temporaryExists_;
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(kPause);
    if (tryCreate(exists) || !exists) break;
  }
  return temporaryExists_;
}

bool tOutputFile::write(std::string_view text) {
  tLineWriter lines(*file_);
  return lines.write(text) && lines.finish() && file_->close();
}

bool tOutputFile::rename() {
  if (!disk_.rename(temporaryName_.c_str(), finalName_.c_str())) return false;
  temporaryExists_ = false;
  return true;
}
