#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace precomp {

/// The form of a precompiled header's records: numbers and texts one after the other.
///
/// A stream is either being written or being read. Reading trusts nothing: what lies outside the
/// bytes, or is no number, fails the stream, and a failed stream gives zeros and empty texts. Texts
/// that are read refer to the bytes of the stream.
class tPCHStream {
 public:
  /// Writes. The first byte will stand at `origin` of the bytes that are read later.
  explicit tPCHStream(std::size_t origin = 0) : origin_(origin) {}
  /// Reads `bytes` from `position` on; they must outlive the stream and the texts read from it.
  tPCHStream(std::string_view bytes, std::size_t position)
      : bytes_(bytes), position_(position), failed_(position > bytes.size()) {}

  void putByte(std::uint8_t byte) { written_.push_back(static_cast<char>(byte)); }
  /// Small numbers take little room.
  void putNumber(std::uint64_t number);
  void putText(std::string_view text);
  /// A text that is likely to come again; it is written once.
  void putName(std::string_view name);
  const std::string& written() const { return written_; }
  /// Where the next byte will stand.
  std::size_t end() const { return origin_ + written_.size(); }

  std::uint8_t byte();
  std::uint64_t number();
  /// A number of 32 bits; fails the stream when there is a larger one.
  std::uint32_t number32() { return numberUpTo(0xFFFFFFFFu); }
  /// The same for 16 bits.
  std::uint16_t number16() { return static_cast<std::uint16_t>(numberUpTo(0xFFFFu)); }
  std::string_view text();
  std::string_view name();

  void fail() { failed_ = true; }
  bool failed() const { return failed_; }
  std::size_t position() const { return position_; }

  /// For records that hold records: false, and the stream has failed, when they nest too deeply.
  bool enter();
  void leave() { --depth_; }

 private:
  std::uint32_t numberUpTo(std::uint32_t most);

  std::string written_;
  std::size_t origin_ = 0;
  std::map<std::string, std::size_t, std::less<>> names_;  // where each was written

  std::string_view bytes_;
  std::size_t position_ = 0;
  int depth_ = 0;
  bool failed_ = false;
};

}  // namespace precomp
