// Copies a text and makes all line ends alike, at about the speed of a plain copy.
//
// The text is taken in slices. A slice is copied a block at a time into a buffer that holds it even
// when every byte of it is a line end and doubles; the block is compared with both line end
// characters at once, and where one is found the copy stops there, the line end is written, and the
// copy goes on behind it. A block is longer than most lines, so that nearly every block ends a line
// and the processor guesses that right, which is worth more than the bytes that are copied twice.
// What a slice leaves behind for the next one is the length of the unfinished line and whether a
// carriage return came last.

#include "preprocessor/copy/linewriter.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <cstdint>

namespace {

constexpr std::size_t kSlice = 128 * 1024;
constexpr std::size_t kBlock = 64;

#if defined(__SSE2__)
/// Copies one block. Bit i of the result tells whether byte i is a line end character.
inline std::uint64_t copyBlock(const char* from, char* target) noexcept {
  const __m128i returns = _mm_set1_epi8('\r');
  const __m128i feeds = _mm_set1_epi8('\n');
  std::uint64_t ends = 0;
  for (unsigned at = 0; at < kBlock; at += sizeof(__m128i)) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + at));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(target + at), bytes);
    const int mask = _mm_movemask_epi8(
        _mm_or_si128(_mm_cmpeq_epi8(bytes, returns), _mm_cmpeq_epi8(bytes, feeds)));
    ends |= static_cast<std::uint64_t>(static_cast<unsigned>(mask)) << at;
  }
  return ends;
}
#endif

/// Copies up to the next line end or the end of the slice and returns where that is. May write one
/// block too far.
inline const char* copyToLineEnd(const char* from, const char* end, char*& target) noexcept {
#if defined(__SSE2__)
  while (static_cast<std::size_t>(end - from) >= kBlock) {
    const std::uint64_t ends = copyBlock(from, target);
    const auto count = ends == 0 ? kBlock : static_cast<std::size_t>(__builtin_ctzll(ends));
    from += count;
    target += count;
    if (ends != 0) return from;
  }
#endif
  while (from != end && *from != '\r' && *from != '\n') *target++ = *from++;
  return from;
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
  while (from != end) {
    const char* const start = from;
    char* const lineStart = target;
    from = copyToLineEnd(from, end, target);
    length_ += static_cast<std::size_t>(from - start);
    if (length_ > longest_) {
      state_ = kTooLong;
      return lineStart;
    }
    if (from == end) break;
    target = endLine(target);
    if (*from++ == '\r') {
      afterReturn_ = from == end;
      if (!afterReturn_ && *from == '\n') ++from;
    }
  }
  return target;
}

bool tLineWriter::flush(const char* end) {
  const std::string_view bytes(buffer_.get(), static_cast<std::size_t>(end - buffer_.get()));
  if (!bytes.empty() && !file_.write(bytes)) state_ = kFailed;
  return state_ == kGood;
}
