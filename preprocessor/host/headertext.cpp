#include "preprocessor/host/headertext.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "lib_gzip/zipsource.h"

namespace {

constexpr std::string_view kEnd = "\r\n";
constexpr std::size_t kLongestHeader = (std::size_t{16} << 20) - kEnd.size();

bool readFile(tDiskMan& disk, const char* name, tString& text) {
  const std::unique_ptr<tFile> file = disk.open(name);
  if (file == nullptr) return false;
  const std::int64_t size = file->size();
  if (size < 0 || static_cast<std::uint64_t>(size) > kLongestHeader) return false;
  text.reserve(static_cast<std::size_t>(size) + kEnd.size());
  // A file may grow while it is read.
  return file->readAll(text) && text.size() <= kLongestHeader;
}

eHeaderText unpack(tString& text) {
  tString unpacked;
  switch (unpackZipSource(text, kLongestHeader, unpacked)) {
    case eZipResult::kOk:
      break;
    case eZipResult::kDamaged:
      return eHeaderText::kDamaged;
    default:
      return eHeaderText::kUnreadable;
  }
  // Kept on purpose: a packed header ends at its first zero byte, a plain one does not.
  text = unpacked.substr(0, unpacked.find(std::string_view("\0", 1)));
  return eHeaderText::kRead;
}

}  // namespace

eHeaderText readHeaderText(tDiskMan& disk, const char* name, tString& text) {
  tString read;
  if (!readFile(disk, name, read)) return eHeaderText::kUnreadable;
  if (isZipSource(read)) {
    if (const eHeaderText result = unpack(read); result != eHeaderText::kRead) return result;
  }
  text = std::move(read);
  text.append(kEnd);
  return eHeaderText::kRead;
}
