// What the matchers of RawPattern have in common: the units of a text, the escapes, and the
// segments of a wildcard pattern. For RawPattern's own sources alone.
#pragma once

#include "raw/RawString.h"

namespace RawLayer {

// A stretch of units of one width, widened when read. The text behind it stays the caller's.
template <class Unit>
struct RawUnits {
  const Unit* first;
  int32_t size;
  [[nodiscard]] uint16_t operator[](int32_t position) const { return first[position]; }
};

// Calls `use` with the units of the clamped range.
template <class Use>
auto withUnits(const RawString& text, RawRange range, Use use) {
  const RawRange part = range.clamped(text.length());
  if (text.encoding() == EncodingWide)
    return use(RawUnits<char16_t>{text.wide() + part.start, part.size()});
  return use(RawUnits<unsigned char>{
      reinterpret_cast<const unsigned char*>(text.text()) + part.start, part.size()});
}

// The cases of an ASCII letter differ in one bit.
inline bool unitsEqual(uint16_t a, uint16_t b, bool fold) {
  return a == b || (fold && (a ^ b) == 0x20 && rawFold(a) == rawFold(b));
}

struct RawPatternEscape {
  char letter;
  char unit;
};
// What "%" and a letter stand for. A unit that is not in the table stands for itself.
inline constexpr RawPatternEscape RawPatternEscapes[] = {
    {'B', '['}, {'E', ']'},  {'O', '('}, {'C', ')'},  {'c', ';'},
    {'i', ';'}, {'e', '%'},  {'l', ':'}, {'m', ','},  {'n', '\n'},
    {'q', '"'}, {'r', '\r'}, {'s', ' '}, {'t', '\t'}, {'v', '|'},
};

inline uint16_t unescaped(uint16_t letter) {
  for (const RawPatternEscape& escape : RawPatternEscapes)
    if (escape.letter == letter) return static_cast<unsigned char>(escape.unit);
  return letter;
}

// A stretch of a wildcard pattern without "*", and how many items it has.
struct RawPatternSegment {
  int32_t start;
  int32_t end; // at the "*" behind it, or the pattern's end
  int32_t items;
};

// A "%" at the very end is an item of its own.
template <class Unit>
RawPatternSegment segmentFrom(RawUnits<Unit> pattern, int32_t start) {
  RawPatternSegment segment{start, start, 0};
  while (segment.end < pattern.size && pattern[segment.end] != '*') {
    segment.end += pattern[segment.end] == '%' && segment.end + 1 < pattern.size ? 2 : 1;
    ++segment.items;
  }
  return segment;
}

} // namespace RawLayer
