// A byte is a member when the row of its low half holds the bit of its high half. A processor with
// SSSE3 looks up 16 bytes at once in a row table of 16 bytes, one with AVX2 32 bytes; two tables,
// one for ASCII and one for the other bytes, hold any set.

#include "korelpre/text/byteset.h"

#if defined(__x86_64__)
#include <immintrin.h>
// The header is written for C.
#define _Bool bool  // NOLINT(bugprone-reserved-identifier)
#include <sys/platform/x86.h>
#undef _Bool
#endif

namespace precomp {

const tByteSet::tLookUp tByteSet::kLookUp = tByteSet::ways().front();

std::uint64_t tByteSet::amongPlainly(const tByteSet& set, const char* p) {
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < kBlock; ++i) {
    bits |= std::uint64_t{set.members_[static_cast<unsigned char>(p[i])]} << i;
  }
  return bits;
}

#if defined(__x86_64__)

namespace {

constexpr long long kHighBits = static_cast<long long>(0x8040201008040201ULL);

[[gnu::target("avx2")]] inline __m256i twice(const std::array<std::uint8_t, 16>& row) {
  return _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(row.data())));
}

}  // namespace

// A table gives 0 for a byte from 128 on, so that each answers for its own half.
[[gnu::target("avx2")]] std::uint64_t tByteSet::amongBy32(const tByteSet& set, const char* p) {
  const __m256i ascii = twice(set.rows_[0]);
  const __m256i others = twice(set.rows_[1]);
  const __m256i bits = _mm256_set1_epi64x(kHighBits);
  std::uint64_t strangers = 0;
  for (unsigned at = 0; at < kBlock; at += sizeof(__m256i)) {
    const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + at));
    const __m256i inOthers = _mm256_xor_si256(bytes, _mm256_set1_epi8(-128));
    const __m256i row =
        _mm256_or_si256(_mm256_shuffle_epi8(ascii, bytes), _mm256_shuffle_epi8(others, inOthers));
    const __m256i high = _mm256_and_si256(_mm256_srli_epi16(bytes, 4), _mm256_set1_epi8(15));
    const __m256i found = _mm256_and_si256(row, _mm256_shuffle_epi8(bits, high));
    const int mask = _mm256_movemask_epi8(_mm256_cmpeq_epi8(found, _mm256_setzero_si256()));
    strangers |= static_cast<std::uint64_t>(static_cast<unsigned>(mask)) << at;
  }
  return ~strangers;
}

[[gnu::target("ssse3")]] std::uint64_t tByteSet::amongBy16(const tByteSet& set, const char* p) {
  const auto load = [](const void* from) {
    return _mm_loadu_si128(static_cast<const __m128i*>(from));
  };
  const __m128i ascii = load(set.rows_[0].data());
  const __m128i others = load(set.rows_[1].data());
  const __m128i bits = _mm_set1_epi64x(kHighBits);
  std::uint64_t strangers = 0;
  for (unsigned at = 0; at < kBlock; at += sizeof(__m128i)) {
    const __m128i bytes = load(p + at);
    const __m128i inOthers = _mm_xor_si128(bytes, _mm_set1_epi8(-128));
    const __m128i row =
        _mm_or_si128(_mm_shuffle_epi8(ascii, bytes), _mm_shuffle_epi8(others, inOthers));
    const __m128i high = _mm_and_si128(_mm_srli_epi16(bytes, 4), _mm_set1_epi8(15));
    const __m128i found = _mm_and_si128(row, _mm_shuffle_epi8(bits, high));
    const int mask = _mm_movemask_epi8(_mm_cmpeq_epi8(found, _mm_setzero_si128()));
    strangers |= static_cast<std::uint64_t>(static_cast<unsigned>(mask)) << at;
  }
  return ~strangers;
}

// The dynamic linker knows. Asking the processor itself takes 45 microseconds in a virtual machine,
// and a small source takes 1,000.
std::array<tByteSet::tLookUp, 3> tByteSet::ways() {
  const tLookUp by16 = CPU_FEATURE_ACTIVE(SSSE3) ? &amongBy16 : &amongPlainly;
  return {CPU_FEATURE_ACTIVE(AVX2) ? &amongBy32 : by16, by16, &amongPlainly};
}

#else

std::array<tByteSet::tLookUp, 3> tByteSet::ways() {
  return {&amongPlainly, &amongPlainly, &amongPlainly};
}

#endif

}  // namespace precomp
