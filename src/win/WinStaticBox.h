// WinStaticBox: a text on a coloured ground, in one or two bands. The title, with its line breaks,
// stands inside the margins by the fit flags. Takes no focus.
//
// Belongs to the thread of its dialog.
#pragma once

#include "win/WinView.h"

namespace WinLayer {

// In place of a colour: there is none.
inline constexpr COLORREF WinNoColour = 0xFFFFFFFF;

class WinStaticBox : public WinView {
 public:
  COLORREF background = dialogColour();
  COLORREF secondBackground = WinNoColour; // of the lower half
  COLORREF textColour = windowTextColour();

  WinStaticBox();
  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void paint(const DRAWITEMSTRUCT& item);
  WinOffscreen surface_;
};

} // namespace WinLayer
