// WinEdgePicker: a hook that gives a window without a system-drawn frame what the frame would: it
// is moved by dragging, resized by its edges, shows the system menu on a right click, and has small
// buttons drawn by hand. The window that is moved, resized and told is that of the view's dialog,
// or the view's own when it is a dialog.
//
//   class Main : public WinDialog {
//     WinEdgePicker edges_{*this, EdgeMove | EdgeSystemMenu | EdgePaint | EdgeCloseButton};
//     Main() { addHook(edges_); }
//   };
//   edges_.edgeButtons.buttonWidth = 40; // before the window is created
//
// A class that derives from a view and from this one overrides CanMoveAt and its like instead.
// What the picker acts on it answers; moves and leaves go on to the next hook.
// Belongs to the thread of its view, which must outlive it.
#pragma once

#include "win/WinEdgeButtons.h"
#include "win/WinEdgeRules.h"
#include "win/WinView.h"

namespace WinLayer {

// Moving and resizing. Slot order: CanResizeAt, CanMoveAt.
class WinEdgeResize {
 public:
  // The client rectangle, a point in it, and the edges at the point.
  virtual bool CanResizeAt(const WinRect& /*client*/, WinPoint, uint32_t /*edges*/) { return true; }
  virtual bool CanMoveAt(const WinRect& /*client*/, WinPoint) { return true; }

 protected:
  virtual ~WinEdgeResize() = default;

  void loadCursors();
  void setCursor() const; // of the present edges
  void startDrag(HWND window, WinPoint point);
  void moveWith(HWND window, WinPoint point) const;
  void resizeWith(HWND window, WinPoint point) const;
  void askLimits(HWND window);

  uint32_t edges_ = EdgeNone;
  WinPoint dragPoint_;               // in the client
  WinSize dragSize_;                 // of the window, when the drag began
  std::array<HCURSOR, 5> cursors_{}; // by WinEdgeShape; shared ones of the system
  MINMAXINFO limits_{};
};

// Slot order behind WinViewHook's: CanOpenSystemMenuAt, PaintEdge.
class WinEdgePicker : public WinViewHook, public WinEdgeResize {
 public:
  static constexpr COLORREF FrameColour = 0xC0C0C0;

  uint16_t edgeFlags; // WinEdgeFlag
  WinEdgeButtons edgeButtons;

  WinEdgePicker(WinView& view, uint16_t flags);
  WinEdgePicker(const WinEdgePicker&) = delete;
  WinEdgePicker& operator=(const WinEdgePicker&) = delete;

  int32_t OnHookMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  virtual bool CanOpenSystemMenuAt(const WinRect& /*client*/, WinPoint) { return true; }
  // Ground, buttons and frame; the rectangle is the whole client, the context an off-screen one.
  virtual void PaintEdge(HDC dc, const WinRect& rect);

  [[nodiscard]] const WinRect& edgeClient() const { return client_; }
  [[nodiscard]] bool hasEdgeFlag(WinEdgeFlag flag) const { return (edgeFlags & flag) != 0; }

 private:
  void setEdgeFlag(WinEdgeFlag flag, bool on);
  [[nodiscard]] HWND dialogWindow() const;
  [[nodiscard]] bool hasStyle(DWORD style) const; // of the dialog
  void takeSize(WPARAM kind, WinSize size);
  void refreshClient();

  int32_t handlePaint();
  int32_t handleCursor(HWND over, uint32_t hit);
  int32_t handleMove(WinPoint point);
  int32_t handleLeftPress(WinPoint point);
  int32_t handleLeftRelease(WinPoint point);
  int32_t handleRightPress(WinPoint point);
  void handleLeave();
  void handleCaptureLost();

  void updateHover(WinPoint point);
  void dragStep(WinPoint point);
  void postCommand(uint32_t command, WinPoint point) const;
  void prepareEntries(HMENU menu) const;
  void invalidateButton(const WinEdgeButton& button) const;
  void drawButton(HDC dc, const WinEdgeButton& button);
  void drawGlyph(HDC dc, const WinEdgeButton& button, COLORREF colour);

  WinView& edgeView_;
  WinRect client_; // left and top 0
  WinOffscreen edgeSurface_;
};

} // namespace WinLayer
