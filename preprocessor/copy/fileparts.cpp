#include "preprocessor/copy/fileparts.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

bool tFileParts::next() {
  char* const part = buffer_ + kMaxOverlap;
  const std::size_t before = std::min(before_ + size_, overlap_);
  std::memmove(part - before, part + size_ - before, before);
  before_ = before;
  const std::int64_t count = file_.read(part, kPart);
  failed_ = count < 0;
  size_ = static_cast<std::size_t>(std::max<std::int64_t>(count, 0));
  return count > 0;
}

bool copyFile(tFile& from, tFile& to) {
  tFileParts parts(from, 0);
  while (parts.next()) {
    if (!to.write(parts.part())) return false;
  }
  return !parts.failed();
}
