// WinPlaneBox: a surface that scrolls in pixels and draws itself, the base of views with content of
// their own. Derived classes measure the content and draw it; the box keeps the offsets, the
// scroll bars that its style has, the wheel and the focus.
//
// Belongs to the thread of its dialog.
#pragma once

#include "win/WinScroll.h"
#include "win/WinView.h"

namespace WinLayer {

class WinPlaneBox : public WinView {
 public:
  enum PlaneFlag : uint16_t {
    HasFocus = 0x0001,
    MustMeasure = 0x0002,     // the content, before it is drawn or scrolled
    MustFitGeometry = 0x0004, // the scroll bars, at the next paint
  };

  uint16_t planeFlags = MustMeasure;
  WinRect viewRect; // the client less the margins; pixels of the client
  int32_t contentWidth = 0;
  int32_t contentHeight = 0;
  int32_t lineStepX = 10;
  int32_t lineStepY = 10;
  int32_t scrollX = 0; // 0 to content less view, never below 0
  int32_t scrollY = 0;
  int32_t lastX = -1; // for derived classes
  int32_t lastY = -1;

  WinPlaneBox();

  // WM_SIZE, WM_DRAWITEM, focus, scroll bars and wheel; all else is WinView's.
  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnCreated() override; // takes over the client's size

  // Slot order: DrawContent, MeasureContent, AfterMeasure.
  //
  // Draws the content with its left top at `place`, in pixels of the client. The context is an
  // off-screen surface of the client's size in the dialog's colour, with the view's font selected.
  virtual void DrawContent(HDC, WinPoint /*place*/) {}
  // Sets contentWidth and contentHeight; the view's font is selected.
  virtual void MeasureContent(HDC) {}
  virtual void AfterMeasure() {} // the offsets are within the new content

 protected:
  [[nodiscard]] bool hasFlag(PlaneFlag flag) const { return (planeFlags & flag) != 0; }
  void setFlag(PlaneFlag flag, bool on) {
    planeFlags = static_cast<uint16_t>(on ? planeFlags | flag : planeFlags & ~flag);
  }
  // The content has changed: it is measured and drawn at the next paint.
  void contentChanged();
  void measureIfNeeded();
  // Offsets within the content; invalidates.
  void scrollTo(int32_t x, int32_t y);

 private:
  void takeSize();
  void measure(HDC dc);
  void paint(const DRAWITEMSTRUCT& item);
  void fitBars();
  void scrollByBar(int bar, uint32_t code);
  void scrollByWheel(WPARAM wParam);
  void clampOffsets();
  [[nodiscard]] WinScrollAxis horizontal() const;
  [[nodiscard]] WinScrollAxis vertical() const;

  WinOffscreen surface_;
};

} // namespace WinLayer
