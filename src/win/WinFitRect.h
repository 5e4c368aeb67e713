// WinFitRect: a rectangle that follows a parent rectangle by anchor flags. Pure arithmetic in
// pixels; belongs to the thread of its view. The parent must outlive it or be taken off.
#pragma once

#include "win/WinRect.h"

namespace WinLayer {

class WinFitRect {
 public:
  // Each adds a change of the parent to one side; a value is the sum of the wanted rules.
  enum Anchor : uint16_t {
    LeftByLeft = 0x0001,
    LeftByRight = 0x0002,
    LeftByCentre = 0x0004,
    RightByRight = 0x0010,
    RightByLeft = 0x0020,
    RightByCentre = 0x0040,
    TopByTop = 0x0100,
    TopByBottom = 0x0200,
    TopByCentre = 0x0400,
    BottomByBottom = 0x1000,
    BottomByTop = 0x2000,
    BottomByCentre = 0x4000,
  };

  WinRect rect;
  WinRect saved; // the rectangle when it was last set from outside
  const WinFitRect* parent = nullptr;
  WinRect parentRect; // the parent's when last applied
  uint16_t anchors = 0;

  // Sets the rectangle from outside.
  void set(const WinRect& newRect);
  // Follows `newParent` from its present rectangle on; null follows nothing.
  void bind(const WinFitRect* newParent, uint16_t newAnchors);
  // Adds the parent's changes since the last time, of which the parent's rectangle is remembered
  // even when no anchor takes any. False, with nothing changed, without a parent. Nothing keeps a
  // rectangle from turning inside out when its parent shrinks too far.
  bool ApplyAnchors();
};

} // namespace WinLayer
