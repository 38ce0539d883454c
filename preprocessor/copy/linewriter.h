#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "lib_base/diskman.h"

/// Writes a text to a file with "\r\n" after every line. A line of the text ends at "\r\n", at
/// "\r", at "\n" or at the end of the text; nothing follows the last line end, so an empty text
/// writes nothing.
class tLineWriter {
 public:
  static constexpr std::size_t kAnyLength = static_cast<std::size_t>(-1);
  enum eState { kGood, kTooLong, kFailed };

  /// `file` must outlive this object. A line of more than `longest` bytes, not counting its line
  /// end, stops the writer with kTooLong; the lines before it are written.
  explicit tLineWriter(tFile& file, std::size_t longest = kAnyLength);

  /// Writes the next part of the text, which may be split anywhere. Does nothing unless the state
  /// is kGood; returns whether it still is.
  bool write(std::string_view part);
  /// Ends the last line if the text does not.
  bool finish();

  eState state() const noexcept { return state_; }
  /// The number of complete lines written.
  int lines() const noexcept { return lines_; }

 private:
  char* copySlice(std::string_view slice, char* target) noexcept;
  char* endLine(char* target) noexcept;
  bool flush(const char* end);

  tFile& file_;
  std::unique_ptr<char[]> buffer_;
  std::size_t longest_;

  // What the part before has left.
  std::size_t length_ = 0;  // of the unfinished line
  int lines_ = 0;
  eState state_ = kGood;
  bool afterReturn_ = false;
};
