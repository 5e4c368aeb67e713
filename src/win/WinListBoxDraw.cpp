#include "win/WinListBoxDraw.h"

#include "win/WinListBox.h"

#include <algorithm>

namespace WinLayer {

namespace {

constexpr COLORREF CursorColour = 0x00FF0000; // blue in the high byte
constexpr COLORREF HotColour = 0x004040FF;
constexpr int32_t MeasureLimit = 0x7FFF;

} // namespace

WinListBoxDraw::WinListBoxDraw(WinListBoxTarget& target)
    : background(GetSysColor(COLOR_WINDOW)), target_(target), paintedBackground_(background) {}

// --- Painting

void WinListBoxDraw::drawAll(HDC dc, WinSize size, COLORREF colour) {
  const WinRect surface{0, 0, size.width, size.height};
  paintedBackground_ = colour;
  SetTextAlign(dc, 0);
  FillBackground(dc, surface, colour);
  RememberItemArea(target_.area);
  DrawRows(dc);
  drawHeaders(dc);
  if (target_.footer.hasExtent()) DrawFooter(dc, target_.shownRect(target_.footer.rect));
  FillMargins(dc, surface);
  if (target_.hasFlag(WinListBoxTarget::HeaderPerGridRow)) DrawGridLines(dc);
  FinishDrawing(dc, surface);
  if (target_.hasFlag(WinListBoxTarget::HasFocus)) DrawFocusLine(dc, surface);
}

void WinListBoxDraw::FillBackground(HDC dc, const WinRect& rect, COLORREF colour) {
  fillRect(dc, rect, colour);
}

void WinListBoxDraw::RememberItemArea(const WinRect&) {}

void WinListBoxDraw::DrawRows(HDC dc) {
  int32_t index = 0;
  for (Item& item : target_.items.elements()) drawItem(dc, index++, item);
  drawItem(dc, WinListBoxTarget::FooterRow, target_.footer);
}

void WinListBoxDraw::drawItem(HDC dc, int32_t index, Item& item) {
  item.set(Item::SeenAtPaint, false);
  if (!item.hasExtent()) return DrawEmptyRow(dc, index, item);
  const WinRect rect = target_.shownRect(item.rect);
  if (rect.bottom <= target_.area.top || rect.top >= target_.area.bottom)
    return NoteHiddenRow(dc, index, item);
  item.set(Item::SeenAtPaint, true);
  DrawRow(dc, rect, index, item);
  DrawCursorFrame(dc, rect, index);
}

void WinListBoxDraw::DrawRow(HDC, const WinRect&, int32_t, Item&) {}

void WinListBoxDraw::DrawEmptyRow(HDC, int32_t, Item&) {}

void WinListBoxDraw::NoteHiddenRow(HDC, int32_t, Item&) {}

// The header stands once on top, or on top of each row of the grid.
void WinListBoxDraw::drawHeaders(HDC dc) {
  const WinRect rect = target_.headerRect();
  if (rect.height() <= 0) return;
  DrawHeader(dc, rect);
  if (!target_.hasFlag(WinListBoxTarget::HeaderPerGridRow)) return;
  for (int32_t row = 1; row < target_.grid.count; ++row)
    DrawHeader(dc, rect.movedBy(0, row * target_.rowStep));
}

void WinListBoxDraw::DrawHeader(HDC, const WinRect&) {}

void WinListBoxDraw::DrawFooter(HDC, const WinRect&) {}

void WinListBoxDraw::DrawCursorFrame(HDC dc, const WinRect& rect, int32_t index) {
  if (target_.hasFlag(WinListBoxTarget::DisplayOnly)) return;
  const WinRect frame{rect.left, rect.top, std::max(rect.right, target_.area.right), rect.bottom};
  if (index == target_.cursor)
    frameRect(dc, frame, CursorColour);
  else if (index == target_.hotIndex)
    frameRect(dc, frame, HotColour);
}

// A fixed header stands between the margin and the area.
void WinListBoxDraw::FillMargins(HDC dc, const WinRect& surface) {
  const WinRect inner = target_.area;
  const int32_t top = target_.hasFlag(WinListBoxTarget::HeaderFixed) && target_.header.hasExtent()
                          ? target_.headerRect().top
                          : inner.top;
  const COLORREF colour = paintedBackground();
  FillBackground(dc, {surface.left, surface.top, surface.right, top}, colour);
  FillBackground(dc, {surface.left, inner.bottom, surface.right, surface.bottom}, colour);
  FillBackground(dc, {surface.left, top, inner.left, inner.bottom}, colour);
  FillBackground(dc, {inner.right, top, surface.right, inner.bottom}, colour);
}

void WinListBoxDraw::DrawGridLines(HDC dc) {
  for (int32_t row = 0; row < target_.grid.count; ++row)
    DrawGridLine(dc, target_.grid.start + row * target_.grid.height);
}

void WinListBoxDraw::DrawGridLine(HDC dc, int32_t top) {
  fillRect(dc, {target_.area.left, top, target_.area.right, top + 1}, WinView::dialogColour());
}

void WinListBoxDraw::FinishDrawing(HDC, const WinRect&) {}

void WinListBoxDraw::DrawFocusLine(HDC dc, const WinRect& surface) {
  fillRect(dc, {surface.left, surface.top, surface.right, surface.top + 1}, CursorColour);
}

// --- Measuring

void WinListBoxDraw::measureRows(HDC dc, bool all) {
  measuresAll_ = all;
  WinSize size;
  Measure(dc, size);
}

void WinListBoxDraw::Measure(HDC dc, WinSize& size) {
  BeforeMeasure(dc);
  target_.beginPlacing();
  int32_t index = 0;
  for (Item& item : target_.items.elements()) {
    if (measuresAll_ || !item.has(Item::Measured) || target_.view->CanRemeasure(item)) {
      PrepareRow(index, item);
      WinRect rect{0, 0, target_.area.width(), 0};
      MeasureRow(dc, rect, index, item);
      item.rect = rect;
    }
    target_.place(item);
    ++index;
  }
  target_.endPlacing();
  AfterMeasure(dc);
  size = {target_.contentWidth, target_.contentHeight};
}

void WinListBoxDraw::BeforeMeasure(HDC dc) {
  const WinRect line =
      measureText(dc, "A"_text, {0, 0, MeasureLimit, MeasureLimit}, DT_SINGLELINE | DT_NOPREFIX);
  target_.lineStepX = target_.lineStepY = line.height();
}

void WinListBoxDraw::MeasureRow(HDC, WinRect&, int32_t, Item&) {}

void WinListBoxDraw::AfterMeasure(HDC) {}

void WinListBoxDraw::PrepareRow(int32_t, Item& item) {
  item.set(Item::Measured, true);
}

} // namespace WinLayer
