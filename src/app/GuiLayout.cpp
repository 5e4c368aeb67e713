#include "app/GuiLayout.h"

#include <algorithm>

namespace AppLayer {

namespace {

constexpr int32_t Line = 1;        // the frame that is drawn round the window
constexpr int32_t GlyphInset = 3;  // from the strip's height
constexpr int32_t SharePart = 2;   // the close button takes two thirds of the strip
constexpr int32_t ShareWhole = 3;  //
constexpr int32_t LeastWidth = 10; // of the widest selector

int32_t shareOf(int32_t extent) {
  return extent * SharePart / ShareWhole;
}

} // namespace

GuiLayout::Mode GuiLayout::modeOf(bool horizontal, bool viewSelector) {
  if (horizontal) return Row;
  return viewSelector ? Selectors : Column;
}

GuiLayout::Places GuiLayout::places(WinSize selectors, WinSize buttons) const {
  Places result;
  const int32_t edge = frameMargin + Line;
  const int32_t strip = captionHeight + Line;
  WinPoint corner{edge, frameMargin + strip};
  int32_t height = buttons.height;
  if (mode == Row) {
    corner.y = edge;
    result.edgeButton = {strip, shareOf(buttons.height)};
  } else {
    result.edgeButton = {shareOf(buttons.width), strip};
    result.glyph = {captionHeight - GlyphInset, captionHeight - GlyphInset};
  }
  if (mode == Selectors) {
    height = std::max(buttons.height, selectors.height);
    result.selectors = WinRect{0, 0, selectors.width, height}.movedTo(corner.x, corner.y);
    corner.x = result.selectors.right + frameMargin;
  }
  result.buttons = WinRect{0, 0, buttons.width, height}.movedTo(corner.x, corner.y);
  result.client = {result.buttons.right + edge + (mode == Row ? strip : 0),
                   result.buttons.bottom + edge};
  return result;
}

WinSize GuiLayout::growthWithSelectors(const Box& selectors, const Box& buttons) {
  const auto heightOf = [](const Box& box) {
    return box.needed.height + box.margins.top + box.margins.bottom;
  };
  const WinSize used{selectors.client.width + buttons.client.width,
                     std::max(selectors.client.height, buttons.client.height)};
  const int32_t width = buttons.margins.left + buttons.margins.right + selectors.margins.left +
                        selectors.margins.right + buttons.needed.width +
                        std::max(selectors.needed.width, LeastWidth);
  return {width - used.width, std::max(heightOf(selectors), heightOf(buttons)) - used.height};
}

WinSize GuiLayout::growth(const Box& buttons) {
  const WinRect& margins = buttons.margins;
  return {buttons.needed.width + margins.left + margins.right - buttons.client.width,
          buttons.needed.height + margins.top + margins.bottom - buttons.client.height};
}

WinRect GuiLayout::centred(WinSize size, const WinRect& area) {
  return WinRect{0, 0, size.width, size.height}.movedTo(
      (area.width() - size.width) / 2 + area.left, (area.height() - size.height) / 2 + area.top);
}

} // namespace AppLayer
