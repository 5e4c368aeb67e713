// RawRange: a half-open pair of positions in a text, counted in code units.
//
// Every operation that takes a range clamps it: a negative start counts as 0 and an end past the
// length counts as the length. A range whose end is not above its start is empty.
#pragma once

#include <cstdint>

namespace RawLayer {

struct RawRange {
  int32_t start = 0;
  int32_t end = 0;

  [[nodiscard]] constexpr bool isEmpty() const { return end <= start; }
  [[nodiscard]] constexpr int32_t size() const { return isEmpty() ? 0 : end - start; }

  // The part that lies inside a text of `length` units. Never has its end below its start.
  [[nodiscard]] constexpr RawRange clamped(int32_t length) const {
    const int32_t last = end > length ? length : end;
    const int32_t first = start < 0 ? 0 : start;
    return first < last
               ? RawRange{first, last}
               : RawRange{first < length ? first : length, first < length ? first : length};
  }

  friend constexpr bool operator==(const RawRange&, const RawRange&) = default;
};

} // namespace RawLayer
