// WinInfoLayout: where the parts of an info dialog stand in its client. Pure arithmetic in pixels.
#pragma once

#include "win/WinFitRect.h"

namespace WinLayer {

struct WinInfoLayout {
  WinRect upper; // icon and text
  WinRect lower; // the answers' area, as wide
  WinRect image; // at the left top of `upper`; empty without an icon
  WinRect text;  // behind the icon, to the right end of `upper`
  WinRect row;   // at the right bottom of `lower`
  WinSize client;

  // From the sizes of the fitted views; `image` empty when there is no icon.
  static WinInfoLayout of(WinSize image, WinSize text, WinSize row, int32_t margin);
};

// A window of that size in the middle of a rectangle, pushed into the work area where it is off;
// one too large for it keeps its left and top inside.
WinRect placedInMiddle(WinSize size, const WinRect& of, const WinRect& work);

} // namespace WinLayer
