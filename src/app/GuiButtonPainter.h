// GuiButtonPainter: draws all buttons of the box into one off-screen buffer. Main thread.
//
// Faces are painted once for their look and size, icons of the buttons' size are blended in memory;
// only titles go through the platform.
#pragma once

#include "app/GuiButtonLayout.h"
#include "app/GuiIconPainter.h"
#include "win/WinButtonFaces.h"

#include <vector>

namespace AppLayer {

class GuiButtonPainter {
 public:
  struct Frame {
    const JobButtonList& buttons; // laid out
    const GuiButtonLayout& layout;
    HFONT font = nullptr;
    WinSize client;
    int32_t cursor = -1;
    uint32_t cursorLook = 0; // WinButtonDraw's look of the current button; all others are normal
    WinRect part = {0, 0, INT32_MAX, INT32_MAX}; // what is wanted of the client
  };

  explicit GuiButtonPainter(JobLayer::JobIconControl& icons) : icons_(icons) {}

  // Draws the wanted part of a frame into the buffer, which is compatible with the target; what
  // lies beside the part is undefined. False when there is no buffer.
  bool draw(HDC target, const Frame& frame);
  void copyTo(HDC target) const { buffer_.copyTo(target); }

 private:
  // A title that waits until the faces before it are drawn.
  struct PendingTitle {
    const RawString* title;
    WinRect area;
  };
  [[nodiscard]] static bool isWanted(const Frame& frame, const JobButtonUnit& unit);
  void drawGround(const Frame& frame);
  void drawUnit(const Frame& frame, const JobButtonUnit& unit, uint32_t look);
  void drawTitles();
  void drawTitle(const PendingTitle& title) const;

  GuiIconPainter icons_;
  GuiPixelBuffer buffer_;
  WinLayer::WinButtonFaces faces_;
  std::vector<PendingTitle> titles_;
};

} // namespace AppLayer
