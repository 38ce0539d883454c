#include "lib_base/misc.h"

#include <algorithm>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

/// The scalar search; `what` is not empty.
std::size_t findByFirst(std::string_view text, std::string_view what, std::size_t from) noexcept {
  while (from + what.size() <= text.size()) {
    const std::size_t starts = text.size() - what.size() + 1 - from;
    const void* hit = std::memchr(text.data() + from, what.front(), starts);
    if (!hit) break;
    const auto at = static_cast<std::size_t>(static_cast<const char*>(hit) - text.data());
    if (std::memcmp(text.data() + at, what.data(), what.size()) == 0) return at;
    from = at + 1;
  }
  return std::string_view::npos;
}

struct tAsTyped {
  static constexpr char kFold = 0;
  static bool same(const char* at, std::string_view what) noexcept {
    return std::memcmp(at, what.data(), what.size()) == 0;
  }
};

struct tAnyCase {
  static constexpr char kFold = 0x20;  // folds letters, and some other characters too
  static bool same(const char* at, std::string_view what) noexcept {
    return equalNoCase({at, what.size()}, what);
  }
};

/// Tests sixteen starting points at a time and compares those where both the first and the last
/// byte match. Advances `from` past what has been searched; the caller searches the rest.
template <class tCase>
std::size_t findInBlocks([[maybe_unused]] std::string_view text,
                         [[maybe_unused]] std::string_view what,
                         [[maybe_unused]] std::size_t& from) noexcept {
#if defined(__SSE2__)
  const std::size_t toLast = what.size() - 1;
  const __m128i fold = _mm_set1_epi8(tCase::kFold);
  const __m128i first = _mm_or_si128(_mm_set1_epi8(what.front()), fold);
  const __m128i last = _mm_or_si128(_mm_set1_epi8(what.back()), fold);
  for (; text.size() - from >= toLast + 16; from += 16) {
    const char* start = text.data() + from;
    const auto load = [fold](const char* at) {
      return _mm_or_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at)), fold);
    };
    auto fits = static_cast<unsigned>(_mm_movemask_epi8(_mm_and_si128(
        _mm_cmpeq_epi8(load(start), first), _mm_cmpeq_epi8(load(start + toLast), last))));
    for (; fits != 0; fits &= fits - 1) {
      const auto at = static_cast<unsigned>(__builtin_ctz(fits));
      if (tCase::same(start + at, what)) return from + at;
    }
  }
#endif
  return std::string_view::npos;
}

}  // namespace

bool equalNoCase(std::string_view a, std::string_view b) noexcept {
  return a.size() == b.size() && startsWithNoCase(a, b);
}

bool startsWithNoCase(std::string_view text, std::string_view start) noexcept {
  return text.size() >= start.size() &&
         std::equal(start.begin(), start.end(), text.begin(),
                    [](char a, char b) { return a == b || upperAscii(a) == upperAscii(b); });
}

int compareNoCase(std::string_view a, std::string_view b) noexcept {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    if (a[i] == b[i]) continue;
    const auto left = static_cast<unsigned char>(upperAscii(a[i]));
    const auto right = static_cast<unsigned char>(upperAscii(b[i]));
    if (left != right) return left < right ? -1 : 1;
  }
  return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

std::string_view trimmedRight(std::string_view text) noexcept {
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::string_view trimmed(std::string_view text) noexcept {
  text = trimmedRight(text);
  return text.substr(std::min(text.find_first_not_of(kBlanks), text.size()));
}

std::size_t findText(std::string_view text, std::string_view what, std::size_t from) noexcept {
  if (from > text.size() || what.size() > text.size() - from) return std::string_view::npos;
  if (what.empty()) return from;
  const std::size_t at = findInBlocks<tAsTyped>(text, what, from);
  return at != std::string_view::npos ? at : findByFirst(text, what, from);
}

std::size_t findTextNoCase(std::string_view text, std::string_view what,
                           std::size_t from) noexcept {
  if (from > text.size() || what.size() > text.size() - from) return std::string_view::npos;
  if (what.empty()) return from;
  const std::size_t at = findInBlocks<tAnyCase>(text, what, from);
  if (at != std::string_view::npos) return at;
  for (; text.size() - from >= what.size(); ++from) {
    if (tAnyCase::same(text.data() + from, what)) return from;
  }
  return std::string_view::npos;
}
