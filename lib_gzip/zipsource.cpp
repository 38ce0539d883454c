#include "lib_gzip/zipsource.h"

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <utility>

#include "lib_base/fatal.h"
#include "lib_base/misc.h"

namespace {

constexpr char kUnit[] = "lib_gzip/zipsource";
constexpr std::string_view kTag = "#zip";
constexpr std::size_t kUnpackedAt = 4;
constexpr std::size_t kPackedAt = 8;
constexpr std::size_t kHeaderSize = 12;

std::size_t readLength(std::string_view file, std::size_t at) noexcept {
  std::size_t length = 0;
  for (std::size_t i = 4; i-- > 0;) length = length << 8 | static_cast<unsigned char>(file[at + i]);
  return length;
}

void appendLength(tString& file, std::size_t length) {
  for (int shift = 0; shift < 32; shift += 8)
    file.append(static_cast<char>(length >> shift & 0xff));
}

}  // namespace

bool isZipSource(std::string_view file) noexcept {
  return startsWithNoCase(file, kTag);
}

std::size_t unpackedSize(std::string_view file) noexcept {
  return file.size() < kHeaderSize ? 0 : readLength(file, kUnpackedAt);
}

eZipResult unpackZipSource(std::string_view file, std::size_t limit, tString& text) {
  if (!isZipSource(file) || file.size() < kHeaderSize) return eZipResult::kShortHeader;
  const std::size_t unpacked = unpackedSize(file);
  const std::string_view data = file.substr(kHeaderSize);
  const std::size_t packed = readLength(file, kPackedAt);
  if (packed > data.size() || unpacked > std::min(limit, tString::maxSize())) {
    return eZipResult::kBadLengths;
  }

  tString result;
  uLongf size = unpacked;
  const int code = uncompress(reinterpret_cast<Bytef*>(result.extend(unpacked)), &size,
                              reinterpret_cast<const Bytef*>(data.data()), packed);
  if (code == Z_MEM_ERROR) fatalAllocation(unpacked, kUnit, __LINE__);
  if (code != Z_OK || size != unpacked) return eZipResult::kDamaged;
  text = std::move(result);
  return eZipResult::kOk;
}

tString packZipSource(std::string_view text) {
  uLongf packed = compressBound(text.size());
  tString data;
  const int code = compress(reinterpret_cast<Bytef*>(data.extend(packed)), &packed,
                            reinterpret_cast<const Bytef*>(text.data()), text.size());
  if (code == Z_MEM_ERROR) fatalAllocation(packed, kUnit, __LINE__);
  krpreAssert(code == Z_OK, "text cannot be packed", kUnit);

  tString file;
  file.reserve(kHeaderSize + packed);
  file.append(kTag);
  appendLength(file, text.size());
  appendLength(file, packed);
  file.append(data.view().substr(0, packed));
  return file;
}
