// WinListBoxDraw: how a list box paints and measures itself: one hook for each step, for derived
// lists to override. Pixels of the surface; thread of the list box, inside a paint or a measuring.
// The hooks must not change the list.
#pragma once

#include "win/WinGdi.h"
#include "win/WinListBoxTarget.h"

namespace WinLayer {

class WinListBoxDraw {
 public:
  using Item = WinListBoxItemUnit;

  COLORREF background; // of the list; GetSysColor(COLOR_WINDOW) at first

  explicit WinListBoxDraw(WinListBoxTarget& target);
  virtual ~WinListBoxDraw() = default;
  WinListBoxDraw(const WinListBoxDraw&) = delete;
  WinListBoxDraw& operator=(const WinListBoxDraw&) = delete;

  // Slot order: FillBackground to PrepareRow.
  virtual void FillBackground(HDC dc, const WinRect& rect, COLORREF colour);
  virtual void RememberItemArea(const WinRect& area);
  virtual void DrawRows(HDC dc); // all below, down to DrawCursorFrame, the footer last
  virtual void DrawRow(HDC dc, const WinRect& rect, int32_t index, Item& item);
  virtual void DrawEmptyRow(HDC dc, int32_t index, Item& item);  // a row without extent
  virtual void NoteHiddenRow(HDC dc, int32_t index, Item& item); // a row out of sight
  virtual void DrawHeader(HDC dc, const WinRect& rect);
  virtual void DrawFooter(HDC dc, const WinRect& rect);
  // Reaches over the whole area where the row is narrower.
  virtual void DrawCursorFrame(HDC dc, const WinRect& rect, int32_t index);
  virtual void FillMargins(HDC dc, const WinRect& surface);
  virtual void DrawGridLines(HDC dc);
  virtual void DrawGridLine(HDC dc, int32_t top);
  virtual void FinishDrawing(HDC dc, const WinRect& surface);
  virtual void DrawFocusLine(HDC dc, const WinRect& surface);
  // Gives each row its size and place and answers with the size of the content.
  virtual void Measure(HDC dc, WinSize& size);
  virtual void BeforeMeasure(HDC dc); // sets the scroll step of one line
  // `rect` comes with the width of the area and no height; what it leaves is the row's size.
  virtual void MeasureRow(HDC dc, WinRect& rect, int32_t index, Item& item);
  virtual void AfterMeasure(HDC dc);
  virtual void PrepareRow(int32_t index, Item& item); // marks the row as measured

 protected:
  // The whole of a paint, on a surface from (0, 0); `colour` is the background of this paint.
  void drawAll(HDC dc, WinSize surface, COLORREF colour);
  // Measures all rows, or those alone that can be measured again and those that never were.
  void measureRows(HDC dc, bool all);
  [[nodiscard]] COLORREF paintedBackground() const { return paintedBackground_; }

 private:
  void drawItem(HDC dc, int32_t index, Item& item);
  void drawHeaders(HDC dc);
  WinListBoxTarget& target_;
  COLORREF paintedBackground_;
  bool measuresAll_ = true;
};

} // namespace WinLayer
