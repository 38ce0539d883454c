#include "korelpre/text/lineends.h"

#include <algorithm>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace precomp {

namespace {

// The index of the next carriage return or line feed from `i` on, or the size of the text.
std::size_t nextLineEnd(std::string_view text, std::size_t i) {
#if defined(__SSE2__)
  const __m128i returns = _mm_set1_epi8('\r');
  const __m128i feeds = _mm_set1_epi8('\n');
  for (; i + 16 <= text.size(); i += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + i));
    const __m128i ends = _mm_or_si128(_mm_cmpeq_epi8(bytes, returns), _mm_cmpeq_epi8(bytes, feeds));
    const auto found = static_cast<unsigned>(_mm_movemask_epi8(ends));
    if (found != 0) return i + static_cast<unsigned>(__builtin_ctz(found));
  }
#endif
  while (i < text.size() && text[i] != '\r' && text[i] != '\n') ++i;
  return i;
}

}  // namespace

bool hasNormalLineEnds(std::string_view text) {
  std::size_t i = 0;
  bool afterReturn = false;
#if defined(__SSE2__)
  const __m128i returns = _mm_set1_epi8('\r');
  const __m128i feeds = _mm_set1_epi8('\n');
  for (; i + 16 <= text.size(); i += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + i));
    const auto r = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, returns)));
    const auto f = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, feeds)));
    if (f != ((r << 1 | (afterReturn ? 1u : 0u)) & 0xFFFFu)) return false;
    afterReturn = (r & 0x8000u) != 0;
  }
#endif
  for (; i < text.size(); ++i) {
    if (afterReturn != (text[i] == '\n')) return false;
    afterReturn = text[i] == '\r';
  }
  return !afterReturn;
}

bool normaliseLineEnds(tString& text) {
  if (hasNormalLineEnds(text)) return true;
  tString normal;
  const std::size_t most = tString::maxSize();
  normal.reserve(std::min(text.size() + text.size() / 16 + 16, most));
  const std::string_view from = text.view();
  std::size_t i = 0;
  while (i < from.size()) {
    const std::size_t stop = nextLineEnd(from, i);
    if (stop - i + 2 > most - normal.size()) return false;
    normal.append(from.substr(i, stop - i));
    if (stop == from.size()) break;
    normal.append("\r\n");
    i = from.substr(stop, 2) == "\r\n" ? stop + 2 : stop + 1;
  }
  text = std::move(normal);
  return true;
}

}  // namespace precomp
