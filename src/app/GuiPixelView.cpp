#include "app/GuiPixelView.h"

#include "win/WinPixels.h"

#include <algorithm>
#include <cstring>

namespace AppLayer {

namespace {

// The row of a picture that belongs to a row of the view, from the area's left on.
const uint32_t* sourceRow(const uint32_t* picture, WinSize size, WinPoint at, int32_t x,
                          int32_t y) {
  return picture + static_cast<std::ptrdiff_t>(y - at.y) * size.width + (x - at.x);
}

// Blocks of a fixed size become a few moves of the widest registers; the copy and the fill of the C
// runtime are calls that take several times as long for rows as short as these.
constexpr int32_t Block = 16;

void copyRow(uint32_t* to, const uint32_t* from, int32_t count) {
  for (; count >= Block; count -= Block, to += Block, from += Block)
    std::memcpy(to, from, Block * sizeof(uint32_t));
  for (; count > 0; --count) *to++ = *from++;
}

void fillRow(uint32_t* to, uint32_t pixel, int32_t count) {
  uint32_t block[Block];
  for (uint32_t& each : block) each = pixel;
  for (; count >= Block; count -= Block, to += Block) std::memcpy(to, block, sizeof block);
  for (; count > 0; --count) *to++ = pixel;
}

} // namespace

WinRect GuiPixelView::cut(const WinRect& area) const {
  WinRect inside{std::max(area.left, 0), std::max(area.top, 0), std::min(area.right, size_.width),
                 std::min(area.bottom, size_.height)};
  if (inside.left >= inside.right) inside.bottom = inside.top;
  return inside;
}

void GuiPixelView::fill(const WinRect& area, uint32_t pixel) const {
  const WinRect inside = cut(area);
  for (int32_t y = inside.top; y < inside.bottom; ++y)
    fillRow(row(y) + inside.left, pixel, inside.width());
}

void GuiPixelView::copy(WinPoint at, const uint32_t* picture, WinSize size) const {
  const WinRect inside = cut({at.x, at.y, at.x + size.width, at.y + size.height});
  for (int32_t y = inside.top; y < inside.bottom; ++y)
    std::copy_n(sourceRow(picture, size, at, inside.left, y), inside.width(), row(y) + inside.left);
}

void GuiPixelView::blend(WinPoint at, const uint32_t* picture, WinSize size) const {
  const WinRect inside = cut({at.x, at.y, at.x + size.width, at.y + size.height});
  for (int32_t y = inside.top; y < inside.bottom; ++y)
    WinLayer::blendPixels(row(y) + inside.left, sourceRow(picture, size, at, inside.left, y),
                          static_cast<std::size_t>(inside.width()));
}

void GuiPixelView::read(const WinRect& area, uint32_t* picture) const {
  for (int32_t y = area.top; y < area.bottom; ++y, picture += area.width())
    copyRow(picture, row(y) + area.left, area.width());
}

} // namespace AppLayer
