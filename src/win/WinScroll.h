// WinScrollAxis: one direction of a scrolled surface, in pixels. Pure arithmetic; any thread.
#pragma once

#include <cstdint>

namespace WinLayer {

// A turn of the wheel by one notch.
inline constexpr int32_t WinWheelNotch = 120;

// A scroll bar as the platform takes it: the range is 0 to `last`.
struct WinScrollBar {
  int32_t last = 0;
  int32_t page = 0;
  int32_t position = 0;
  friend constexpr bool operator==(const WinScrollBar&, const WinScrollBar&) = default;
};

struct WinScrollAxis {
  int32_t content = 0;
  int32_t view = 0;
  int32_t lineStep = 0;
  int32_t offset = 0;

  [[nodiscard]] int32_t limit() const;                // the greatest offset
  [[nodiscard]] int32_t clamped(int32_t value) const; // 0 where the content is smaller
  [[nodiscard]] WinScrollBar bar() const;
  // The offset, within its limits, after a message of the scroll bar: `code` is the platform's
  // (0 and 1 a line back and on, 2 and 3 half the view, 4 and 5 the tracked position, 6 the start,
  // 7 the end); any other leaves it as it is.
  [[nodiscard]] int32_t afterStep(uint32_t code, int32_t tracked) const;
  // The same after a turn of the wheel, 120 a notch, above 0 away from the user; control and shift
  // make it three times as much each.
  [[nodiscard]] int32_t afterWheel(int32_t delta, bool control, bool shift) const;
};

} // namespace WinLayer
