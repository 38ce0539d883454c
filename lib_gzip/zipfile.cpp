#include "lib_gzip/zipfile.h"

#include <memory>

#include "lib_base/pathname.h"
#include "lib_base/replacement.h"
#include "lib_gzip/zipsource.h"

namespace {

/// An upper bound of the packed size, including the header, for incompressible text.
constexpr std::size_t packedBound(std::size_t size) {
  return size + size / 1024 + 64;
}

eFileResult readFile(tDiskMan& disk, const char* name, tString& bytes, int& error) {
  const std::unique_ptr<tFile> file = disk.open(name, error);
  if (!file) return eFileResult::kUnreadable;
  const std::int64_t size = file->size();
  if (size > static_cast<std::int64_t>(kLargestSource)) return eFileResult::kTooLarge;
  if (!file->readAll(bytes)) {
    error = file->error();
    return eFileResult::kUnreadable;
  }
  return bytes.size() > kLargestSource ? eFileResult::kTooLarge : eFileResult::kDone;
}

eFileResult writeFile(tDiskMan& disk, const char* in, const char* out, std::string_view bytes,
                      int& error) {
  const tString temporary = bareName(out).append(".krpre-new");
  tReplacement file(disk, tString(out), tReplacement::kChosen, temporary,
                    [&](tFile& to) { return to.write(bytes); });
  // A private file must not be readable by others while it is being written.
  if (file.create() && file.copyPermissions(in) && file.write() && file.publish()) {
    return eFileResult::kDone;
  }
  error = file.error();
  return eFileResult::kNotWritten;
}

/// Handles a file that needs no conversion.
eFileResult keepFile(tDiskMan& disk, const char* in, const char* out, std::string_view bytes,
                     int& error) {
  const tString source = disk.resolve(in);
  if (!source.empty() && source == disk.resolve(out)) return eFileResult::kUnchanged;
  const eFileResult result = writeFile(disk, in, out, bytes, error);
  return result == eFileResult::kDone ? eFileResult::kUnchanged : result;
}

}  // namespace

eFileResult packFile(tDiskMan& disk, const char* in, const char* out, int& error) {
  error = 0;
  if (out == nullptr) out = in;
  tString text;
  const eFileResult read = readFile(disk, in, text, error);
  if (read != eFileResult::kDone) return read;
  if (isZipSource(text)) return keepFile(disk, in, out, text, error);
  if (packedBound(text.size()) > tString::maxSize()) return eFileResult::kTooLarge;
  const tString packed = packZipSource(text);
  if (packed.size() > kLargestSource) return eFileResult::kTooLarge;
  return writeFile(disk, in, out, packed, error);
}

eFileResult unpackFile(tDiskMan& disk, const char* in, const char* out, int& error) {
  error = 0;
  if (out == nullptr) out = in;
  tString packed;
  const eFileResult read = readFile(disk, in, packed, error);
  if (read != eFileResult::kDone) return read;
  if (!isZipSource(packed)) return keepFile(disk, in, out, packed, error);
  tString text;
  if (unpackZipSource(packed, kLargestSource, text) != eZipResult::kOk)
    return eFileResult::kDamaged;
  return writeFile(disk, in, out, text, error);
}
