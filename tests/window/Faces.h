// What a window with faces of buttons shows, compared with the faces themselves.
#pragma once

#include "win/WinButtonFaces.h"
#include "window/WindowTest.h"

namespace WindowTest {

// How many of the pixels along the edges of a rectangle of the window's client, five deep, differ
// from the face. The middle is left out: the content stands there.
inline int differingPixels(HWND window, const WinLayer::WinRect& rect, uint32_t drawFlags) {
  constexpr int32_t Depth = 4;
  WinLayer::WinButtonFaces faces;
  const WinLayer::WinSize size{rect.width(), rect.height()};
  const uint32_t* face = faces.pixels(size, drawFlags);
  if (!face) return -1;
  const WinLayer::WinWindowDc dc(window);
  int differing = 0;
  for (int32_t y = 0; y < size.height; ++y)
    for (int32_t x = 0; x < size.width; ++x) {
      if (x >= Depth && x < size.width - Depth && y >= Depth && y < size.height - Depth) continue;
      const uint32_t wanted = face[y * size.width + x];
      const COLORREF seen = GetPixel(dc.get(), rect.left + x, rect.top + y);
      if (seen != RGB(wanted >> 16 & 0xFF, wanted >> 8 & 0xFF, wanted & 0xFF)) ++differing;
    }
  return differing;
}

// Whether the window comes to show the face there.
inline bool comesToShow(HWND window, const WinLayer::WinRect& rect, uint32_t drawFlags) {
  return pumpUntil([&] { return differingPixels(window, rect, drawFlags) == 0; });
}

// How many pixels of the window's client have the colour.
inline int pixelsOf(HWND window, COLORREF colour) {
  RECT area{};
  GetClientRect(window, &area);
  const WinLayer::WinWindowDc dc(window);
  int count = 0;
  for (int y = 0; y < area.bottom; ++y)
    for (int x = 0; x < area.right; ++x)
      if (GetPixel(dc.get(), x, y) == colour) ++count;
  return count;
}

} // namespace WindowTest
