#include "win/WinEdgeRules.h"

#include <algorithm>

namespace WinLayer {

uint32_t edgesAt(const WinRect& rect, WinPoint point) {
  const auto isWithin = [](int32_t value, int32_t from, int32_t to) {
    return value >= from && value <= to;
  };
  uint32_t edges = EdgeNone;
  if (isWithin(point.x, rect.left, rect.left + WinEdgeReach)) edges |= EdgeLeft;
  if (isWithin(point.y, rect.top, rect.top + WinEdgeReach)) edges |= EdgeTop;
  if (isWithin(point.x, rect.right - WinEdgeReach, rect.right)) edges |= EdgeRight;
  if (isWithin(point.y, rect.bottom - WinEdgeReach, rect.bottom)) edges |= EdgeBottom;
  return edges;
}

WinEdgeShape shapeOf(uint32_t edges) {
  switch (edges) {
  case EdgeLeft | EdgeTop:
  case EdgeRight | EdgeBottom:
    return WinEdgeShape::NorthWest;
  case EdgeRight | EdgeTop:
  case EdgeLeft | EdgeBottom:
    return WinEdgeShape::NorthEast;
  case EdgeLeft:
  case EdgeRight:
    return WinEdgeShape::WestEast;
  case EdgeTop:
  case EdgeBottom:
    return WinEdgeShape::NorthSouth;
  default:
    return WinEdgeShape::Arrow;
  }
}

namespace {

// The least counts more than the greatest, should they ever cross.
int32_t within(int32_t value, int32_t least, int32_t greatest) {
  return std::max(std::min(value, greatest), least);
}

} // namespace

// The left and the top edge take the client with them, and with it the point that the delta is
// measured from: they add to where the window is now. The right and the bottom edge leave it where
// it is: they add to the size at the start.
WinRect resizedBy(const WinRect& window, uint32_t edges, WinPoint delta, WinSize start,
                  const WinSizeLimits& limits) {
  const auto width = [&limits](int32_t value) {
    return within(value, limits.least.width, limits.greatest.width);
  };
  const auto height = [&limits](int32_t value) {
    return within(value, limits.least.height, limits.greatest.height);
  };
  WinRect result = window;
  if (edges & EdgeLeft) result.left = result.right - width(result.right - (result.left + delta.x));
  if (edges & EdgeTop) result.top = result.bottom - height(result.bottom - (result.top + delta.y));
  if (edges & EdgeRight) result.right = result.left + width(start.width + delta.x);
  if (edges & EdgeBottom) result.bottom = result.top + height(start.height + delta.y);
  return result;
}

} // namespace WinLayer
