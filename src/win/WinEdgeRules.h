// The arithmetic of edges and drags: on which edges a point lies, and where a window goes when it
// is dragged by them. Pure; pixels; any thread.
#pragma once

#include "win/WinRect.h"

namespace WinLayer {

// A set of edges of a rectangle.
enum WinEdge : uint32_t {
  EdgeNone = 0,
  EdgeLeft = 1,
  EdgeTop = 2,
  EdgeRight = 4,
  EdgeBottom = 8,
};
// How far inward an edge reaches.
inline constexpr int32_t WinEdgeReach = 3;

enum class WinEdgeShape : uint32_t { WestEast, NorthSouth, NorthWest, NorthEast, Arrow };

// Every edge of the rectangle that is within reach of the point, itself and the reach included.
uint32_t edgesAt(const WinRect& rect, WinPoint point);
// The shape of the pointer on edges; an arrow for a set that is no edge and no corner.
WinEdgeShape shapeOf(uint32_t edges);

struct WinSizeLimits {
  WinSize least;
  WinSize greatest;
};
// A window dragged by `edges`: `window` is where it is now, `start` the size that it had when the
// drag began, `delta` what the pointer is away from where it took hold, in the client.
WinRect resizedBy(const WinRect& window, uint32_t edges, WinPoint delta, WinSize start,
                  const WinSizeLimits& limits);

} // namespace WinLayer
