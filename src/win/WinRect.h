// WinRect, WinSize, WinPoint: plain pixel geometry, the same on every build.
#pragma once

#include <cstdint>

namespace WinLayer {

struct WinPoint {
  int32_t x = 0;
  int32_t y = 0;
  friend constexpr bool operator==(const WinPoint&, const WinPoint&) = default;
};

struct WinSize {
  int32_t width = 0;
  int32_t height = 0;
  friend constexpr bool operator==(const WinSize&, const WinSize&) = default;
};

struct WinRect {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;

  [[nodiscard]] constexpr int32_t width() const { return right - left; }
  [[nodiscard]] constexpr int32_t height() const { return bottom - top; }
  [[nodiscard]] constexpr WinRect movedBy(int32_t dx, int32_t dy) const {
    return {left + dx, top + dy, right + dx, bottom + dy};
  }
  [[nodiscard]] constexpr WinRect movedTo(int32_t x, int32_t y) const {
    return {x, y, x + width(), y + height()};
  }
  [[nodiscard]] constexpr WinRect shrunkBy(int32_t by) const {
    return {left + by, top + by, right - by, bottom - by};
  }
  // All four edges included.
  [[nodiscard]] constexpr bool holds(WinPoint point) const {
    return point.x >= left && point.x <= right && point.y >= top && point.y <= bottom;
  }
  friend constexpr bool operator==(const WinRect&, const WinRect&) = default;
};

} // namespace WinLayer
