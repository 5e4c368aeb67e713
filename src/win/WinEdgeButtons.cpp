#include "win/WinEdgeButtons.h"

namespace WinLayer {

namespace {

// The commands of the system's menu.
constexpr uint32_t CommandClose = 0xF060;
constexpr uint32_t CommandMaximize = 0xF030;
constexpr uint32_t CommandMinimize = 0xF020;
constexpr uint32_t CommandRestore = 0xF120;

constexpr uint32_t Glyph = 0x404040;
constexpr uint32_t White = 0xFFFFFF;
constexpr uint32_t Black = 0x000000;
constexpr uint32_t Red = 0x0000FF;
constexpr uint32_t Grey = 0xC0C0C0;

constexpr int32_t ClosePart = 5;    // of the glyph's height: free on each side of the cross
constexpr int32_t MinimizeSide = 7; // of its width: free on each side of the bar
constexpr int32_t MinimizeTop = 4;  // so many of the next, of its height, above the bar
constexpr int32_t MinimizeParts = 6;

} // namespace

bool WinEdgeButton::isHit(WinPoint point) const {
  return point.x >= rect.left && point.x < rect.right && point.y >= rect.top &&
         point.y < rect.bottom;
}

uint32_t WinEdgeButton::groundColour() const {
  return pressed ? lightenedColour(hoverBackground) : hoverBackground;
}

uint32_t lightenedColour(uint32_t colour) {
  uint32_t result = 0;
  for (uint32_t shift = 0; shift <= 16; shift += 8) {
    const uint32_t channel = colour >> shift & 0xFF;
    result |= (channel + (0xFF - channel) / 2) << shift;
  }
  return result;
}

WinEdgeButtons::WinEdgeButtons() {
  buttons[Close] = {EdgeCloseButton, Glyph, White, Red, CommandClose, {}, 0, 0};
  buttons[Maximize] = {EdgeMaximizeButton, Glyph, Black, Grey, CommandMaximize, {}, 0, 0};
  buttons[Minimize] = {EdgeMinimizeButton, Glyph, Black, Grey, CommandMinimize, {}, 0, 0};
}

void WinEdgeButtons::layOut(const WinRect& client, uint16_t flags, bool isMaximised) {
  int32_t right = client.right;
  for (WinEdgeButton& each : buttons) {
    const bool exists = (flags & each.mask) != 0;
    const int32_t left = exists ? right - buttonWidth : right;
    each.rect = {left, client.top, right, client.top + (exists ? buttonHeight : 0)};
    right = left;
  }
  buttons[Maximize].command = isMaximised ? CommandRestore : CommandMaximize;
}

bool WinEdgeButtons::isAnyHovered() const {
  for (const WinEdgeButton& each : buttons)
    if (each.hover) return true;
  return false;
}

void WinEdgeButtons::chooseGlyphSize() {
  if (glyphWidth != 0 || glyphHeight != 0) return;
  int32_t side = buttonHeight / 2 + 1;
  if (buttonWidth <= side) side = buttonWidth / 2 + 1;
  glyphWidth = glyphHeight = side;
}

WinRect WinEdgeButtons::glyphRect(const WinEdgeButton& button) const {
  const int32_t left = button.rect.left + (button.rect.width() - glyphWidth) / 2;
  const int32_t top = button.rect.top + (button.rect.height() - glyphHeight) / 2;
  return {left, top, left + glyphWidth, top + glyphHeight};
}

// --- The glyphs

std::array<WinEdgeLine, 4> closeGlyph(const WinRect& glyph) {
  WinRect box = glyph.shrunkBy(glyph.height() / ClosePart);
  if (box.width() > box.height()) {
    const int32_t side = box.height();
    box.left += (box.width() - side) / 2;
    box.right = box.left + side;
  }
  const int32_t last = box.right - 1;
  const int32_t foot = box.bottom - 1;
  return {{{{box.left, box.top}, {last, foot}},
           {{box.left + 1, box.top}, {box.right, foot}},
           {{last, box.top}, {box.left, foot}},
           {{last - 1, box.top}, {box.left - 1, foot}}}};
}

WinRect maximizeGlyph(const WinRect& glyph) {
  return {glyph.left + 1, glyph.top + 1, glyph.right - 1, glyph.bottom};
}

WinRect restoreGlyphBack(const WinRect& glyph) {
  return {glyph.left + 3, glyph.top + 1, glyph.right - 1, glyph.bottom - 3};
}

WinRect restoreGlyphFront(const WinRect& glyph) {
  return {glyph.left + 1, glyph.top + 3, glyph.right - 3, glyph.bottom};
}

WinRect minimizeGlyph(const WinRect& glyph) {
  const int32_t side = glyph.width() / MinimizeSide;
  return {glyph.left + side, glyph.top + glyph.height() * MinimizeTop / MinimizeParts,
          glyph.right - side, glyph.bottom};
}

} // namespace WinLayer
