#include "lib_gzip/zipfile.h"

#include <memory>

#include "lib_gzip/zipsource.h"

namespace {

/// An upper bound of the packed size, including the header, for incompressible text.
constexpr std::size_t packedBound(std::size_t size) {
  return size + size / 1024 + 64;
}

eFileResult readFile(tDiskMan& disk, const char* name, tString& bytes) {
  const std::unique_ptr<tFile> file = disk.open(name);
  if (!file) return eFileResult::kUnreadable;
  const std::int64_t size = file->size();
  if (size > static_cast<std::int64_t>(kLargestSource)) return eFileResult::kTooLarge;
  if (!file->readAll(bytes)) return eFileResult::kUnreadable;
  return bytes.size() > kLargestSource ? eFileResult::kTooLarge : eFileResult::kDone;
}

/// A file that replaces another once it is complete, and is removed otherwise.
class tReplacement {
 public:
  tReplacement(tDiskMan& disk, const char* target) : disk_(disk), target_(disk.resolve(target)) {
    if (target_.empty()) target_ = target;
    name_ = tString(target_).append(".krpre-new");
  }
  ~tReplacement() {
    if (exists_) disk_.remove(name_.c_str());
  }
  tReplacement(const tReplacement&) = delete;
  tReplacement& operator=(const tReplacement&) = delete;

  bool write(std::string_view bytes, const char* permissionsOf) {
    bool inTheWay = false;
    file_ = disk_.createNew(name_.c_str(), inTheWay);
    if (!file_ && inTheWay && disk_.removeLeftover(name_.c_str())) {
      file_ = disk_.createNew(name_.c_str(), inTheWay);
    }
    exists_ = file_ != nullptr;
    // A private file must not be readable by others while it is being written.
    if (!exists_ || !disk_.copyPermissions(permissionsOf, name_.c_str())) return false;
    if (!file_->write(bytes) || !file_->close()) return false;
    if (!disk_.rename(name_.c_str(), target_.c_str())) return false;
    exists_ = false;
    return true;
  }

 private:
  tDiskMan& disk_;
  tString target_;  // with links resolved
  tString name_;
  std::unique_ptr<tFile> file_;
  bool exists_ = false;
};

eFileResult writeFile(tDiskMan& disk, const char* in, const char* out, std::string_view bytes) {
  tReplacement file(disk, out);
  return file.write(bytes, in) ? eFileResult::kDone : eFileResult::kNotWritten;
}

/// Handles a file that needs no conversion.
eFileResult keepFile(tDiskMan& disk, const char* in, const char* out, std::string_view bytes) {
  if (disk.resolve(in) == disk.resolve(out)) return eFileResult::kUnchanged;
  const eFileResult result = writeFile(disk, in, out, bytes);
  return result == eFileResult::kDone ? eFileResult::kUnchanged : result;
}

}  // namespace

eFileResult packFile(tDiskMan& disk, const char* in, const char* out) {
  if (out == nullptr) out = in;
  tString text;
  const eFileResult read = readFile(disk, in, text);
  if (read != eFileResult::kDone) return read;
  if (isZipSource(text)) return keepFile(disk, in, out, text);
  if (packedBound(text.size()) > tString::maxSize()) return eFileResult::kTooLarge;
  const tString packed = packZipSource(text);
  if (packed.size() > kLargestSource) return eFileResult::kTooLarge;
  return writeFile(disk, in, out, packed);
}

eFileResult unpackFile(tDiskMan& disk, const char* in, const char* out) {
  if (out == nullptr) out = in;
  tString packed;
  const eFileResult read = readFile(disk, in, packed);
  if (read != eFileResult::kDone) return read;
  if (!isZipSource(packed)) return keepFile(disk, in, out, packed);
  tString text;
  if (unpackZipSource(packed, kLargestSource, text) != eZipResult::kOk)
    return eFileResult::kDamaged;
  return writeFile(disk, in, out, text);
}
