#include "win/WinInfoLayout.h"

#include <algorithm>

namespace WinLayer {

WinInfoLayout WinInfoLayout::of(WinSize image, WinSize text, WinSize row, int32_t margin) {
  WinInfoLayout layout;
  const int32_t width = std::max(image.width + text.width, row.width);
  const int32_t height = std::max(image.height, text.height);
  layout.upper = WinRect{0, 0, width, height}.movedBy(margin, margin);
  layout.image = layout.upper;
  layout.image.right = layout.image.left + image.width;
  layout.image.bottom = layout.image.top + image.height;
  layout.text = layout.upper;
  layout.text.left = layout.image.right;
  layout.lower = WinRect{0, 0, width, row.height}.movedBy(margin, margin + layout.upper.bottom);
  layout.row = layout.lower;
  layout.row.left = layout.row.right - row.width;
  layout.client = {layout.lower.right + margin, layout.lower.bottom + margin};
  return layout;
}

WinRect placedInMiddle(WinSize size, const WinRect& of, const WinRect& work) {
  const auto inside = [](int32_t from, int32_t to, int32_t length, int32_t low, int32_t high) {
    return std::max(std::min(from + (to - from - length) / 2, high - length), low);
  };
  const int32_t left = inside(of.left, of.right, size.width, work.left, work.right);
  const int32_t top = inside(of.top, of.bottom, size.height, work.top, work.bottom);
  return {left, top, left + size.width, top + size.height};
}

} // namespace WinLayer
