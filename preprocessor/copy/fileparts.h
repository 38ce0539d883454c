#pragma once

#include <cstddef>
#include <string_view>

#include "lib_base/diskman.h"

/// Reads a file part by part, for searches that need not hold it whole. Each part is seen together
/// with the last bytes before it, so that a word across the boundary of two parts is found.
class tFileParts {
 public:
  static constexpr std::size_t kMaxOverlap = 31;

  /// `file` must outlive this object. `overlap` is one less than the length of the longest word.
  tFileParts(tFile& file, std::size_t overlap) : file_(file), overlap_(overlap) {}

  /// Reads the next part. Returns false at the end of the file and after a failure.
  bool next();
  bool failed() const { return failed_; }

  /// The part itself, and the part with the bytes before it.
  std::string_view part() const { return {buffer_ + kMaxOverlap, size_}; }
  std::string_view seen() const { return {part().data() - before_, before_ + size_}; }

 private:
  static constexpr std::size_t kPart = 32 * 1024;

  tFile& file_;
  std::size_t overlap_;
  std::size_t before_ = 0;  // bytes in front of the part
  std::size_t size_ = 0;
  bool failed_ = false;
  char buffer_[kMaxOverlap + kPart];
};

/// Copies a file from its current position on. False when it cannot be read or written whole.
bool copyFile(tFile& from, tFile& to);
