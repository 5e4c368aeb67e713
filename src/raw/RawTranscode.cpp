#include "raw/RawTranscode.h"

#include "raw/RawCodePage.h"
#include "raw/RawScan.h"
#include "raw/RawString.h"

#include <atomic>
#include <memory>

namespace RawLayer {

namespace {

constexpr uint8_t FirstLead = 0x81;
constexpr uint8_t LastLead = 0xFC;
constexpr uint8_t FirstTrail = 0x40;
constexpr uint8_t LastTrail = 0xFC;
constexpr uint8_t NoTrail = 0x7F;
constexpr int32_t RowSize = LastTrail - FirstTrail + 1;
constexpr char16_t FirstHalfWidth = 0xFF61; // of byte 0xA1
constexpr char16_t Replacement = 0xFFFD;

constexpr bool isTrail(uint8_t byte) {
  return byte >= FirstTrail && byte <= LastTrail && byte != NoTrail;
}
constexpr bool isHalfWidth(uint8_t byte) {
  return byte >= 0xA1 && byte <= 0xDF;
}
constexpr bool isLead(uint8_t byte) {
  return byte >= FirstLead && byte <= LastLead && byte != 0xA0 && !isHalfWidth(byte);
}
constexpr bool isSurrogate(char16_t unit) {
  return (unit & 0xF800) == 0xD800;
}
constexpr bool isHighSurrogate(char16_t unit) {
  return (unit & 0xFC00) == 0xD800;
}
constexpr bool isLowSurrogate(char16_t unit) {
  return (unit & 0xFC00) == 0xDC00;
}

// The units of the pairs of one lead byte, learnt from the platform when the lead is first met and
// kept for the life of the process. Two threads may learn one row; the second then drops its own.
std::atomic<const char16_t*> rows[LastLead - FirstLead + 1];

const char16_t* learnRow(uint8_t lead) {
  char bytes[RowSize * 2];
  int32_t size = 0;
  for (int32_t trail = FirstTrail; trail <= LastTrail; ++trail) {
    // A place in the row for the byte that is no trail keeps the index plain.
    bytes[size++] = static_cast<char>(lead);
    bytes[size++] = static_cast<char>(trail == NoTrail ? FirstTrail : trail);
  }
  std::unique_ptr<char16_t[]> row(new char16_t[RowSize]);
  const RawConversion done =
      rawToWide(rawCodePageOf(EncodingShiftJis), bytes, size, row.get(), RowSize);
  // Where a pair is not exactly one unit the platform has to be asked each time.
  if (done.error != 0 || done.count != RowSize) return nullptr;
  const char16_t* expected = nullptr;
  if (rows[lead - FirstLead].compare_exchange_strong(expected, row.get(),
                                                     std::memory_order_acq_rel))
    return row.release();
  return expected;
}

const char16_t* rowOf(uint8_t lead) {
  const char16_t* row = rows[lead - FirstLead].load(std::memory_order_acquire);
  return row != nullptr ? row : learnRow(lead);
}

// Copies the run of ASCII at the front, giving its length.
int32_t widenAscii(const uint8_t* bytes, int32_t size, char16_t* target) {
  int32_t i = 0;
#ifdef RAW_SCAN_SSE2
  const __m128i zero = _mm_setzero_si128();
  for (; size - i >= 16; i += 16) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + i));
    auto* to = reinterpret_cast<__m128i*>(target + i);
    _mm_storeu_si128(to, _mm_unpacklo_epi8(block, zero));
    _mm_storeu_si128(to + 1, _mm_unpackhi_epi8(block, zero));
    const auto beyond = static_cast<uint32_t>(_mm_movemask_epi8(block));
    if (beyond != 0) return i + std::countr_zero(beyond);
  }
#endif
  for (; i < size && bytes[i] < 0x80; ++i) target[i] = bytes[i];
  return i;
}

int32_t narrowAscii(const char16_t* units, int32_t count, uint8_t* target) {
  int32_t i = 0;
#ifdef RAW_SCAN_SSE2
  const __m128i highs = _mm_set1_epi16(static_cast<int16_t>(0xFF80));
  const __m128i zero = _mm_setzero_si128();
  for (; count - i >= 8; i += 8) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units + i));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(target + i), _mm_packus_epi16(block, zero));
    const auto ascii = static_cast<uint32_t>(
        _mm_movemask_epi8(_mm_cmpeq_epi16(_mm_and_si128(block, highs), zero)));
    if (ascii != 0xFFFF) return i + std::countr_one(ascii) / 2;
  }
#endif
  for (; i < count && units[i] < 0x80; ++i) target[i] = static_cast<uint8_t>(units[i]);
  return i;
}

uint8_t* putUtf8(uint8_t* to, uint32_t character) {
  const auto continuation = [&](int32_t shift) {
    return static_cast<uint8_t>(0x80 | ((character >> shift) & 0x3F));
  };
  if (character < 0x800) {
    *to++ = static_cast<uint8_t>(0xC0 | (character >> 6));
  } else {
    if (character < 0x10000) {
      *to++ = static_cast<uint8_t>(0xE0 | (character >> 12));
    } else {
      *to++ = static_cast<uint8_t>(0xF0 | (character >> 18));
      *to++ = continuation(12);
    }
    *to++ = continuation(6);
  }
  *to++ = continuation(0);
  return to;
}

} // namespace

int32_t rawShiftJisToWide(const uint8_t* bytes, int32_t size, char16_t* target) {
  char16_t* to = target;
  for (int32_t i = 0; i < size;) {
    const int32_t ascii = widenAscii(bytes + i, size - i, to);
    to += ascii;
    for (i += ascii; i < size && bytes[i] >= 0x80;) {
      const uint8_t byte = bytes[i];
      if (isHalfWidth(byte)) {
        *to++ = static_cast<char16_t>(FirstHalfWidth + (byte - 0xA1));
        ++i;
        continue;
      }
      if (!isLead(byte) || i + 1 >= size || !isTrail(bytes[i + 1])) return -1;
      const char16_t* row = rowOf(byte);
      if (row == nullptr) return -1;
      *to++ = row[bytes[i + 1] - FirstTrail];
      i += 2;
    }
  }
  return static_cast<int32_t>(to - target);
}

int32_t rawWideToUtf8(const char16_t* units, int32_t count, uint8_t* target) {
  uint8_t* to = target;
  for (int32_t i = 0; i < count;) {
    const int32_t ascii = narrowAscii(units + i, count - i, to);
    to += ascii;
    for (i += ascii; i < count && units[i] >= 0x80; ++i) {
      uint32_t character = units[i];
      if (isSurrogate(units[i])) {
        if (isHighSurrogate(units[i]) && i + 1 < count && isLowSurrogate(units[i + 1]))
          character = 0x10000 + ((character & 0x3FF) << 10) + (units[++i] & 0x3FFu);
        else
          character = Replacement;
      }
      to = putUtf8(to, character);
    }
  }
  return static_cast<int32_t>(to - target);
}

} // namespace RawLayer
