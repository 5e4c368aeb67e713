// Vector scans over raw bytes, for the readers of text files. Pure; any thread.
//
// Each answers a position and takes a whole buffer: it never reads outside `start` to `end`.
#pragma once

#include <cstdint>
#include <cstring>

#if defined(__SSE2__) || defined(_M_X64)
#define RAW_SCAN_SSE2 1
#include <bit>
#include <emmintrin.h>
#endif

namespace RawLayer {

// The first byte from `start` on that is no plain text (0x01 to 0x7E); `end` when all are.
inline int32_t rawSkipPlain(const uint8_t* data, int32_t start, int32_t end) {
#ifdef RAW_SCAN_SSE2
  const __m128i one = _mm_set1_epi8(1);
  const __m128i last = _mm_set1_epi8(0x7D);
  // Zero for each plain byte of sixteen.
  const auto oddOf = [&](int32_t position) {
    const auto* block = reinterpret_cast<const __m128i*>(data + position);
    return _mm_subs_epu8(_mm_sub_epi8(_mm_loadu_si128(block), one), last);
  };
  const auto plainMask = [](__m128i odd) {
    return static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(odd, _mm_setzero_si128())));
  };
  for (; end - start >= 64; start += 64) {
    const __m128i first = _mm_or_si128(oddOf(start), oddOf(start + 16));
    const __m128i second = _mm_or_si128(oddOf(start + 32), oddOf(start + 48));
    if (plainMask(_mm_or_si128(first, second)) != 0xFFFF) break;
  }
  for (; end - start >= 16; start += 16) {
    const uint32_t plain = plainMask(oddOf(start));
    if (plain != 0xFFFF) return start + std::countr_one(plain);
  }
#else
  constexpr uint64_t Ones = 0x0101010101010101;
  constexpr uint64_t Highs = 0x8080808080808080;
  for (; end - start >= 8; start += 8) {
    uint64_t word;
    std::memcpy(&word, data + start, sizeof word);
    if (((word | (word + Ones) | (word - Ones)) & Highs) != 0) break;
  }
#endif
  while (start < end && data[start] - 1u < 0x7E) ++start;
  return start;
}

// The first byte from `start` on of 0x80 or above; `end` when there is none.
inline int32_t rawSkipAscii(const uint8_t* data, int32_t start, int32_t end) {
  constexpr uint64_t Highs = 0x8080808080808080;
  for (; end - start >= 8; start += 8) {
    uint64_t word;
    std::memcpy(&word, data + start, sizeof word);
    if ((word & Highs) != 0) break;
  }
  while (start < end && data[start] < 0x80) ++start;
  return start;
}

// The first carriage return or line feed from `start` on; `end` when there is none.
inline uint32_t rawFindLineEnd8(const uint8_t* data, uint32_t start, uint32_t end) {
#ifdef RAW_SCAN_SSE2
  const __m128i feed = _mm_set1_epi8('\n');
  const __m128i carriage = _mm_set1_epi8('\r');
  for (; end - start >= 16; start += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(data + start));
    const auto hits = static_cast<uint32_t>(_mm_movemask_epi8(
        _mm_or_si128(_mm_cmpeq_epi8(bytes, feed), _mm_cmpeq_epi8(bytes, carriage))));
    if (hits != 0) return start + static_cast<uint32_t>(std::countr_zero(hits));
  }
#endif
  while (start < end && data[start] != '\n' && data[start] != '\r') ++start;
  return start;
}

// The same over 16-bit units in the byte order given; `end` also when a lone byte is left over.
inline uint32_t rawFindLineEnd16(const uint8_t* data, uint32_t start, uint32_t end,
                                 bool bigEndian) {
#ifdef RAW_SCAN_SSE2
  const __m128i feed = _mm_set1_epi16(bigEndian ? 0x0A00 : 0x000A);
  const __m128i carriage = _mm_set1_epi16(bigEndian ? 0x0D00 : 0x000D);
  for (; end - start >= 16; start += 16) {
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(data + start));
    const auto hits = static_cast<uint32_t>(_mm_movemask_epi8(
        _mm_or_si128(_mm_cmpeq_epi16(units, feed), _mm_cmpeq_epi16(units, carriage))));
    if (hits != 0) return start + static_cast<uint32_t>(std::countr_zero(hits));
  }
#endif
  const uint32_t high = bigEndian ? 0 : 1;
  for (; end - start >= 2; start += 2) {
    const uint8_t low = data[start + 1 - high];
    if (data[start + high] == 0 && (low == '\n' || low == '\r')) return start;
  }
  return end;
}

} // namespace RawLayer
