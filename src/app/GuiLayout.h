// GuiLayout: where the parts of the main window stand, and how its size follows their content. Pure
// arithmetic in pixels; divisions truncate. Knows no window: sizes come in, places go out.
#pragma once

#include "win/WinRect.h"

namespace AppLayer {

using WinLayer::WinPoint;
using WinLayer::WinRect;
using WinLayer::WinSize;

class GuiLayout {
 public:
  enum Mode : uint8_t {
    Column,    // the buttons below a strip
    Row,       // the buttons at the left of a strip; never with selectors
    Selectors, // both boxes side by side below a strip
  };
  // The two options that decide on it.
  static Mode modeOf(bool horizontal, bool viewSelector);

  Mode mode = Column;
  int32_t frameMargin = 2;
  int32_t captionHeight = 12;

  struct Places {
    WinRect selectors; // empty but in mode Selectors
    WinRect buttons;
    WinSize client;
    WinSize edgeButton;
    WinSize glyph; // (0, 0): chosen by whoever draws it
  };
  // From the window sizes that the boxes were fitted to; `selectors` counts in its mode only.
  [[nodiscard]] Places places(WinSize selectors, WinSize buttons) const;

  // One box as the size delta sees it.
  struct Box {
    WinSize client;  // its present size
    WinRect margins; // its four inner margins
    WinSize needed;  // of its measured content, without the margins
  };
  // By how much the window must grow to hold its content, in mode Selectors.
  static WinSize growthWithSelectors(const Box& selectors, const Box& buttons);
  // The same in the other modes.
  static WinSize growth(const Box& buttons);

  // A window of the size in the middle of an area.
  static WinRect centred(WinSize size, const WinRect& area);
};

} // namespace AppLayer
