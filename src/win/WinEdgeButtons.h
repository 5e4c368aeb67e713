// WinEdgeButtons: the small buttons for closing, maximising and minimising a window that has no
// frame of the system's: where they lie, what the pointer does to them, which shapes and colours
// they are drawn with. Pure; pixels of the client, colours as the platform's (blue in the high
// byte). The drawing itself is WinEdgePicker's.
#pragma once

#include "win/WinRect.h"

#include <array>

namespace WinLayer {

// What the hook over a window does, and the state that it is in.
enum WinEdgeFlag : uint16_t {
  EdgeMove = 0x0001,       // a left drag moves the window
  EdgeResize = 0x0002,     // the four edges resize it
  EdgeSystemMenu = 0x0004, // a right click opens the system menu
  EdgePaint = 0x0008,      // the hook paints the view
  EdgeCloseButton = 0x0010,
  EdgeMaximizeButton = 0x0020,
  EdgeMinimizeButton = 0x0040,
  EdgePointerOnEdge = 0x0100,
  EdgePointerOnButton = 0x0200,
  EdgeDragging = 0x0400,
  EdgeTracksLeave = 0x0800,
  EdgeKnowsLimits = 0x1000,
};

struct WinEdgeButton {
  uint16_t mask = 0; // the flag with which it exists
  uint32_t glyphColour = 0;
  uint32_t hoverGlyphColour = 0;
  uint32_t hoverBackground = 0;
  uint32_t command = 0; // of the system
  WinRect rect;
  uint8_t hover = 0;
  uint8_t pressed = 0;

  // Right and bottom edge excluded.
  [[nodiscard]] bool isHit(WinPoint point) const;
  // Behind the glyph while the pointer is on it.
  [[nodiscard]] uint32_t groundColour() const;
};

class WinEdgeButtons {
 public:
  enum Kind : uint32_t { Close, Maximize, Minimize, KindCount };
  static constexpr uint32_t FrameColour = 0xE0E0E0;

  std::array<WinEdgeButton, KindCount> buttons;
  int32_t buttonWidth = 0;
  int32_t buttonHeight = 0;
  int32_t glyphWidth = 0; // both 0: chosen at the first paint
  int32_t glyphHeight = 0;

  WinEdgeButtons();
  // Lays the buttons that exist from the right edge of the client; the others get no height.
  void layOut(const WinRect& client, uint16_t flags, bool isMaximised);
  [[nodiscard]] bool isAnyHovered() const;
  void chooseGlyphSize(); // where none was set
  [[nodiscard]] WinRect glyphRect(const WinEdgeButton& button) const;
};

// --- The glyphs, in the rectangle of a glyph

// A line of one pixel, its last point excluded.
struct WinEdgeLine {
  WinPoint from;
  WinPoint to;
  friend constexpr bool operator==(const WinEdgeLine&, const WinEdgeLine&) = default;
};
std::array<WinEdgeLine, 4> closeGlyph(const WinRect& glyph); // two diagonals of two pixels
WinRect maximizeGlyph(const WinRect& glyph);                 // a frame
WinRect restoreGlyphBack(const WinRect& glyph);              // a frame under the next
WinRect restoreGlyphFront(const WinRect& glyph);             // a frame that hides what it covers
WinRect minimizeGlyph(const WinRect& glyph);                 // a bar

// Each channel half-way to white, truncated.
uint32_t lightenedColour(uint32_t colour);

} // namespace WinLayer
