// Scans over code units, many at a time: where do two texts differ, where does a unit occur?
//
// A scan is written once, as a test of one block of units; firstMatch runs it over blocks of 16
// bytes where the processor has them, of 8 bytes, or of one unit for what is shorter than those.
// The C runtime's own scans are several times slower where this program runs, and know neither
// folding nor 16-bit units. Nothing is read outside the units given.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>

#if defined(__SSE2__) || defined(_M_X64)
#define RAW_UNIT_SCAN_SSE2
#include <emmintrin.h>
#endif

// Compilers find the scans too large to be spread over their callers, but most texts are short:
// half of the time would go into calls.
#if defined(_MSC_VER)
#define RAW_UNIT_SCAN_INLINE __forceinline
#else
#define RAW_UNIT_SCAN_INLINE inline __attribute__((always_inline))
#endif

namespace RawLayer::UnitScan {

// Elsewhere than on Windows the C runtime scans bytes with the widest registers that the processor
// has, which no program built for all processors can do.
#if defined(_WIN32)
inline constexpr bool runtimeIsFast = false;
#else
inline constexpr bool runtimeIsFast = true;
#endif

// Each block type for units of 8 or 16 bits has: `size` in units; load; broadcast; folded, with a
// to z as A to Z; equal, a mask that tells which units are the same; differing, its opposite;
// above, which units are above a limit that is below 0x80; and first, the index of the first unit
// in a mask that is not 0.

template <typename Unit>
struct SingleBlock {
  static constexpr int32_t size = 1;
  Unit unit;

  static SingleBlock load(const Unit* from) { return {*from}; }
  static SingleBlock broadcast(Unit unit) { return {unit}; }
  [[nodiscard]] SingleBlock folded() const {
    return {unit >= 'a' && unit <= 'z' ? static_cast<Unit>(unit - 0x20) : unit};
  }
  [[nodiscard]] uint32_t equal(SingleBlock other) const { return unit == other.unit ? 1 : 0; }
  [[nodiscard]] uint32_t differing(SingleBlock other) const { return unit != other.unit ? 1 : 0; }
  [[nodiscard]] uint32_t above(Unit limit) const { return unit > limit ? 1 : 0; }
  static int32_t first(uint32_t) { return 0; }
};

// Eight bytes in a plain number: a mask has the highest bit of each unit.
template <typename Unit>
struct WordBlock {
  static constexpr int32_t size = 8 / sizeof(Unit);
  static constexpr int32_t bits = 8 * sizeof(Unit);
  static constexpr uint64_t ones = sizeof(Unit) == 1 ? 0x0101010101010101 : 0x0001000100010001;
  static constexpr uint64_t highs = ones << (bits - 1);
  uint64_t word;

  static WordBlock load(const Unit* from) {
    uint64_t word;
    std::memcpy(&word, from, sizeof word);
    return {word};
  }
  static WordBlock broadcast(Unit unit) { return {ones * unit}; }
  [[nodiscard]] WordBlock folded() const {
    // No sum carries into the next unit, for the highest bits are out of it.
    const uint64_t low = word & ~highs;
    const uint64_t fromA = low + (highs - ones * 'a');
    const uint64_t afterZ = low + (highs - ones * ('z' + 1));
    const uint64_t letters = fromA & ~afterZ & ~word & highs;
    return {word - (letters >> (bits - 6))};
  }
  [[nodiscard]] uint64_t differing(WordBlock other) const {
    const uint64_t bitsThatDiffer = word ^ other.word;
    return (((bitsThatDiffer & ~highs) + ~highs) | bitsThatDiffer) & highs;
  }
  [[nodiscard]] uint64_t equal(WordBlock other) const { return differing(other) ^ highs; }
  [[nodiscard]] uint64_t above(Unit limit) const {
    return (((word & ~highs) + (~highs - ones * limit)) | word) & highs;
  }
  static int32_t first(uint64_t mask) {
    const int32_t zeros = std::endian::native == std::endian::little ? std::countr_zero(mask)
                                                                     : std::countl_zero(mask);
    return zeros / bits;
  }
};

#ifdef RAW_UNIT_SCAN_SSE2
// Sixteen bytes: a mask has one bit for each byte.
template <typename Unit>
struct SseBlock {
  static constexpr int32_t size = 16 / sizeof(Unit);
  static constexpr bool isBytes = sizeof(Unit) == 1;
  __m128i units;

  static SseBlock load(const Unit* from) {
    return {_mm_loadu_si128(reinterpret_cast<const __m128i*>(from))};
  }
  static SseBlock broadcast(Unit unit) {
    if constexpr (isBytes) return {_mm_set1_epi8(static_cast<char>(unit))};
    return {_mm_set1_epi16(static_cast<short>(unit))};
  }
  [[nodiscard]] SseBlock folded() const {
    // The comparisons are signed, so units of the upper half are below "a" as they should be.
    const __m128i lower = isBytes ? _mm_and_si128(_mm_cmpgt_epi8(units, _mm_set1_epi8('a' - 1)),
                                                  _mm_cmplt_epi8(units, _mm_set1_epi8('z' + 1)))
                                  : _mm_and_si128(_mm_cmpgt_epi16(units, _mm_set1_epi16('a' - 1)),
                                                  _mm_cmplt_epi16(units, _mm_set1_epi16('z' + 1)));
    const __m128i change = isBytes ? _mm_set1_epi8(0x20) : _mm_set1_epi16(0x20);
    return {_mm_sub_epi8(units, _mm_and_si128(lower, change))};
  }
  [[nodiscard]] uint32_t equal(SseBlock other) const {
    return static_cast<uint32_t>(_mm_movemask_epi8(isBytes ? _mm_cmpeq_epi8(units, other.units)
                                                           : _mm_cmpeq_epi16(units, other.units)));
  }
  [[nodiscard]] uint32_t differing(SseBlock other) const { return equal(other) ^ 0xFFFF; }
  [[nodiscard]] uint32_t above(Unit limit) const {
    const __m128i limits = broadcast(limit).units;
    const __m128i excess = isBytes ? _mm_subs_epu8(units, limits) : _mm_subs_epu16(units, limits);
    return SseBlock{excess}.differing({_mm_setzero_si128()});
  }
  static int32_t first(uint32_t mask) {
    return std::countr_zero(mask) / static_cast<int32_t>(sizeof(Unit));
  }
};
template <typename Unit>
using WidestBlock = SseBlock<Unit>;
#else
template <typename Unit>
using WidestBlock = WordBlock<Unit>;
#endif

// Calls match(block type, index) for blocks from index 0 on, and gives the first index below
// `count` that is in a mask; `count` when there is none. `Block` is what to begin with.
template <typename Unit, template <typename> class Block = WidestBlock, typename Match>
RAW_UNIT_SCAN_INLINE int32_t firstMatch(int32_t count, const Match& match) {
  using Wide = Block<Unit>;
  if (count < Wide::size) {
    if constexpr (Wide::size * sizeof(Unit) > 8) return firstMatch<Unit, WordBlock>(count, match);
    if constexpr (Wide::size > 1) return firstMatch<Unit, SingleBlock>(count, match);
  }
  // Four blocks for one question, as long as there are so many: most scans find nothing for long.
  int32_t i = 0;
  for (; i <= count - 4 * Wide::size; i += 4 * Wide::size)
    if ((match(Wide{}, i) | match(Wide{}, i + Wide::size) | match(Wide{}, i + 2 * Wide::size) |
         match(Wide{}, i + 3 * Wide::size)) != 0)
      break;
  for (; i < count; i += Wide::size) {
    // The last block overlaps the one before instead of running over the end.
    if (i > count - Wide::size) i = count - Wide::size;
    if (const auto mask = match(Wide{}, i)) return i + Wide::first(mask);
  }
  return count;
}

template <typename Unit, template <typename> class Block = WidestBlock>
RAW_UNIT_SCAN_INLINE int32_t firstUnit(const Unit* units, int32_t count, Unit unit) {
  if constexpr (runtimeIsFast && std::is_same_v<Block<Unit>, WidestBlock<uint8_t>>) {
    if (count <= 0) return count;
    const void* place = std::memchr(units, unit, static_cast<std::size_t>(count));
    return place == nullptr ? count : static_cast<int32_t>(static_cast<const Unit*>(place) - units);
  }
  return firstMatch<Unit, Block>(count, [=](auto block, int32_t i) {
    return block.load(units + i).equal(block.broadcast(unit));
  });
}

// The first index with `unit` there and `later` behind it at the distance; that far the units go.
template <typename Unit, template <typename> class Block = WidestBlock>
RAW_UNIT_SCAN_INLINE int32_t firstPair(const Unit* units, int32_t count, Unit unit, Unit later,
                                       int32_t distance) {
  return firstMatch<Unit, Block>(count, [=](auto block, int32_t i) {
    return block.load(units + i).equal(block.broadcast(unit)) &
           block.load(units + i + distance).equal(block.broadcast(later));
  });
}

// The first unit above a limit, which is below 0x80.
template <typename Unit, template <typename> class Block = WidestBlock>
RAW_UNIT_SCAN_INLINE int32_t firstAbove(const Unit* units, int32_t count, Unit limit) {
  return firstMatch<Unit, Block>(
      count, [=](auto block, int32_t i) { return block.load(units + i).above(limit); });
}

template <typename Unit, template <typename> class Block = WidestBlock>
RAW_UNIT_SCAN_INLINE int32_t firstDifference(const Unit* a, const Unit* b, int32_t count) {
  if constexpr (runtimeIsFast && std::is_same_v<Block<Unit>, WidestBlock<uint8_t>>)
    if (count <= 0 || std::memcmp(a, b, static_cast<std::size_t>(count)) == 0) return count;
  return firstMatch<Unit, Block>(
      count, [=](auto block, int32_t i) { return block.load(a + i).differing(block.load(b + i)); });
}

template <typename Unit, template <typename> class Block = WidestBlock>
RAW_UNIT_SCAN_INLINE int32_t firstDifferenceNoCase(const Unit* a, const Unit* b, int32_t count) {
  return firstMatch<Unit, Block>(count, [=](auto block, int32_t i) {
    return block.load(a + i).folded().differing(block.load(b + i).folded());
  });
}

} // namespace RawLayer::UnitScan
