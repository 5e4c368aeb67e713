// WinButtonDraw: the face that all buttons have, those of dialogs and those that a box draws by
// hand. Painting is arithmetic on pixels in memory, the same on every machine; WinButtonFaces
// brings faces to a device context and keeps those that it has painted.
//
// Colours are those of the platform, blue in the high byte. Sizes are pixels. Any thread.
#pragma once

#include "win/WinRect.h"

#include <cstdint>

namespace WinLayer {

// What a face consists of.
struct WinButtonFace {
  uint32_t outerUpper = 0; // lines: the upper colour on top and left, the lower on bottom and right
  uint32_t innerUpper = 0;
  uint32_t innerLower = 0;
  uint32_t outerLower = 0;
  uint32_t upperFill = 0;
  uint32_t lowerFill = 0;
  uint32_t upperFrame = 0; // of the second, outer frame
  uint32_t lowerFrame = 0;
  bool hasGloss = false;
};

class WinButtonDraw {
 public:
  enum Flag : uint32_t {
    CornerTopLeft = 0x0001, // rounded
    CornerBottomLeft = 0x0002,
    CornerTopRight = 0x0004,
    CornerBottomRight = 0x0008,
    CornersAll = 0x000F,
    FrameLeft = 0x0010, // the second, outer frame on that side
    FrameRight = 0x0020,
    FrameTop = 0x0040,
    FrameBottom = 0x0080,
    FramesAll = 0x00F0,
    Disabled = 0x0100, // goes before Pressed, that before Focused
    Pressed = 0x0200,
    Focused = 0x0400,
    Checked = 0x0800,
    Toggle = 0x1000, // nothing to the face; see WinButton
  };
  static constexpr uint32_t FaceFlags = 0x0FFF; // those that change a face
  static constexpr int32_t CornerRadius = 3;
  static constexpr int32_t FrameWidth = 2;
  static constexpr WinRect Margins{4, 4, 4, 4}; // between a face's edges and its content

  static WinButtonFace face(uint32_t drawFlags, uint32_t dialogColour);
  static uint32_t textColour(uint32_t drawFlags, uint32_t windowText);
  // Paints a whole face of `size` into `pixels`: rows from the top, 0x00RRGGBB each, without gaps.
  // What is outside its rounded corners gets the dialog colour. Nothing for an empty size; a size
  // too small for its corners and lines is painted as far as it goes.
  static void paint(uint32_t* pixels, WinSize size, uint32_t drawFlags, uint32_t dialogColour);

  // Paints a triangle that points down over the whole of `size` into `pixels`: black with a grey
  // core and soft edges, rows from the top, each 0xAARRGGBB with its colour multiplied by its
  // alpha. Nothing for an empty size.
  static void paintArrow(uint32_t* pixels, WinSize size);

  // Each channel v becomes v - (v * parts >> 8), or goes half of its way to white.
  static uint32_t darkened(uint32_t colour, uint32_t parts);
  static uint32_t lightened(uint32_t colour);
};

} // namespace WinLayer
