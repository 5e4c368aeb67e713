#include "app/GuiMenuRules.h"

#include <algorithm>

namespace AppLayer {

using WinLayer::WinRect;
using WinLayer::WinSide;
using WinLayer::WinSize;

namespace {

// The platform's flags: the id comes back as the result, either button chooses.
constexpr uint32_t ReturnsId = 0x0100;
constexpr uint32_t EitherButton = 0x0002;
constexpr uint32_t EndsAtX = 0x0008;
constexpr uint32_t EndsAtY = 0x0020;
constexpr uint32_t Plain = ReturnsId | EitherButton;

constexpr uint32_t White = 0xFF;

} // namespace

GuiMenuRules::Placement GuiMenuRules::placement(WinSide side, const WinRect& pressed) {
  switch (side) {
  case WinSide::Left:
    return {pressed.left, pressed.top, Plain | EndsAtX};
  case WinSide::Right:
    return {pressed.right, pressed.top, Plain};
  case WinSide::Above:
    return {pressed.left, pressed.top, Plain | EndsAtY};
  case WinSide::Below:
    break;
  }
  return {pressed.left, pressed.bottom, Plain};
}

WinSize GuiMenuRules::entrySize(WinSize title, int32_t iconSize, bool isSeparator) {
  const int32_t height = std::max(title.height, iconSize) + 2 * Border;
  return {title.width + iconSize + IconGap + 2 * Border, isSeparator ? height / 2 : height};
}

WinRect GuiMenuRules::innerRect(const WinRect& entry) {
  return entry.shrunkBy(Border);
}

WinRect GuiMenuRules::iconRect(const WinRect& inner, int32_t iconSize) {
  const int32_t top = inner.top + (inner.height() - iconSize) / 2;
  return {inner.left, top, inner.left + iconSize, top + iconSize};
}

WinRect GuiMenuRules::titleRect(const WinRect& inner, int32_t iconSize) {
  return {inner.left + iconSize + IconGap, inner.top, inner.right, inner.bottom};
}

uint32_t GuiMenuRules::normalColour(uint32_t menuColour) {
  uint32_t colour = 0;
  for (uint32_t shift = 0; shift < 24; shift += 8) {
    const uint32_t channel = (menuColour >> shift) & White;
    colour |= (channel + (White - channel) / 2) << shift;
  }
  return colour;
}

} // namespace AppLayer
