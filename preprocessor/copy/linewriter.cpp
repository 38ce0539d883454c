// Copies a text and makes all line ends alike, at about the speed of a plain copy.
//
// The text is taken in slices. A slice is copied line by line into a buffer that holds it even when
// every byte of it is a line end and doubles. A short line is copied as a whole block, which is
// longer than most, so that the processor guesses right what to do; that is worth more than the
// bytes that are copied twice. What a slice leaves behind for the next one is the length of the
// unfinished line and whether a carriage return came last.

#include "preprocessor/copy/linewriter.h"

#include <array>
#include <cstring>

#include "korelpre/text/byteset.h"

namespace {

using precomp::tByteSet;

constexpr std::size_t kSlice = 128 * 1024;
constexpr std::size_t kBlock = 64;

constexpr tByteSet makeLineEnds() {
  std::array<bool, 256> bytes{};
  bytes['\r'] = bytes['\n'] = true;
  return tByteSet(bytes);
}

constexpr tByteSet kLineEnds = makeLineEnds();

/// Copies the bytes from `from` to `to` and may write one block; the slice ends at `end`.
inline void copyLine(const char* from, const char* to, const char* end, char* target) noexcept {
  if (static_cast<std::size_t>(end - from) >= kBlock &&
      static_cast<std::size_t>(to - from) <= kBlock) {
    std::memcpy(target, from, kBlock);
  } else {
    std::memcpy(target, from, static_cast<std::size_t>(to - from));
  }
}

}  // namespace

tLineWriter::tLineWriter(tFile& file, std::size_t longest)
    : file_(file), buffer_(new char[2 * kSlice + kBlock]), longest_(longest) {}

bool tLineWriter::write(std::string_view part) {
  while (!part.empty() && state_ == kGood) {
    const std::string_view slice = part.substr(0, kSlice);
    part.remove_prefix(slice.size());
    flush(copySlice(slice, buffer_.get()));
  }
  return state_ == kGood;
}

bool tLineWriter::finish() {
  if (state_ == kGood && length_ > 0) flush(endLine(buffer_.get()));
  return state_ == kGood;
}

inline char* tLineWriter::endLine(char* target) noexcept {
  *target++ = '\r';
  *target++ = '\n';
  ++lines_;
  length_ = 0;
  return target;
}

/// Returns the end of what is to be written of the slice.
char* tLineWriter::copySlice(std::string_view slice, char* target) noexcept {
  const char* from = slice.data();
  const char* const end = from + slice.size();
  if (afterReturn_ && *from == '\n') ++from;
  afterReturn_ = false;
  precomp::tStops<false> lineEnds(kLineEnds, from, end);
  while (from != end) {
    const char* const lineEnd = lineEnds.next();
    length_ += static_cast<std::size_t>(lineEnd - from);
    if (length_ > longest_) {
      state_ = kTooLong;
      return target;
    }
    copyLine(from, lineEnd, end, target);
    target += lineEnd - from;
    from = lineEnd;
    if (from == end) break;
    target = endLine(target);
    if (*from++ == '\r') {
      afterReturn_ = from == end;
      if (!afterReturn_ && *from == '\n') lineEnds.goTo(++from);
    }
  }
  return target;
}

bool tLineWriter::flush(const char* end) {
  const std::string_view bytes(buffer_.get(), static_cast<std::size_t>(end - buffer_.get()));
  if (!bytes.empty() && !file_.write(bytes)) state_ = kFailed;
  return state_ == kGood;
}
