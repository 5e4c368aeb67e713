// GuiPixelView: rows of 32-bit pixels of somebody else, drawn on in memory. Pure. Whatever reaches
// beyond the rows is cut off. Rectangles exclude their right and bottom edge.
#pragma once

#include "win/WinRect.h"

#include <cstddef>
#include <cstdint>

namespace AppLayer {

using WinLayer::WinPoint;
using WinLayer::WinRect;
using WinLayer::WinSize;

class GuiPixelView {
 public:
  GuiPixelView() = default;
  // `stride` is the distance of two rows in pixels.
  GuiPixelView(uint32_t* pixels, WinSize size, int32_t stride)
      : pixels_(pixels), size_(size), stride_(stride) {}

  [[nodiscard]] WinSize size() const { return size_; }
  [[nodiscard]] uint32_t* row(int32_t y) const {
    return pixels_ + static_cast<std::ptrdiff_t>(y) * stride_;
  }
  void fill(const WinRect& area, uint32_t pixel) const;
  // A picture without gaps between its rows, its left top at the point.
  void copy(WinPoint at, const uint32_t* picture, WinSize size) const;
  void blend(WinPoint at, const uint32_t* picture, WinSize size) const; // over what stands there
  // The picture of an area that lies within the rows.
  void read(const WinRect& area, uint32_t* picture) const;

 private:
  [[nodiscard]] WinRect cut(const WinRect& area) const;

  uint32_t* pixels_ = nullptr;
  WinSize size_;
  int32_t stride_ = 0;
};

} // namespace AppLayer
