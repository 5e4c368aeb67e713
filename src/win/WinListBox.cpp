// The messages of a list box. Mouse and keys never reach the "BUTTON" below, which would take
// presses and the space bar for its own and tell the owner.
#include "win/WinListBox.h"

#include <windowsx.h>

namespace WinLayer {

namespace {

constexpr int32_t DefaultMargin = 1;

bool isControlDown() {
  return GetKeyState(VK_CONTROL) < 0;
}

bool isShiftDown() {
  return GetKeyState(VK_SHIFT) < 0;
}

WinPoint pointOf(LPARAM lParam) {
  return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

} // namespace

WinListBox::WinListBox() {
  view = this;
  className = "BUTTON"_text;
  style = WS_CHILD | WS_VISIBLE | WS_VSCROLL | BS_OWNERDRAW;
  margins = {DefaultMargin, DefaultMargin, DefaultMargin, DefaultMargin};
}

void WinListBox::OnCreated() {
  UpdateScroll();
}

void WinListBox::OpenContextMenu(WinPoint, int32_t) {}

bool WinListBox::CanRemeasure(const WinListBoxItemUnit&) const {
  return false;
}

bool WinListBox::CanLeftPress(WinPoint, int32_t) const {
  return true;
}

bool WinListBox::CanDoubleClick() const {
  return true;
}

bool WinListBox::CanRightPress(WinPoint, int32_t) const {
  return true;
}

// --- Layout

void WinListBox::measure(bool all) {
  dirty = 0;
  const WinWindowDc dc(window);
  const WinSelect selected(dc.get(), fontHandle());
  measureRows(dc.get(), all);
  fitTo(windowSize, margins); // the header may have got a height
}

void WinListBox::UpdateScroll() {
  if (!window) return;
  const WinRect client = clientRect();
  const bool isMoved = fitTo({client.width(), client.height()}, margins);
  if (dirty || isMoved) measure(dirty != 0);
  scrollTo({scrollX, scrollY});
  UpdateBars();
}

void WinListBox::Relayout() {
  dirty = 1;
  UpdateScroll();
}

void WinListBox::RelayoutAndInvalidate() {
  Relayout();
  invalidate();
}

void WinListBox::setBar(int bar, const WinListBoxBar& state) const {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = state.last;
  info.nPage = static_cast<UINT>(std::max(state.page, 0));
  info.nPos = state.position;
  SetScrollInfo(window, bar, &info, TRUE);
}

// Without the style a call would make the platform show the bar.
void WinListBox::UpdateBars() {
  if (window && (style & WS_VSCROLL)) setBar(SB_VERT, verticalBar());
  if (window && CanScrollSideways()) setBar(SB_HORZ, horizontalBar());
}

bool WinListBox::CanScrollSideways() const {
  return (style & WS_HSCROLL) != 0;
}

void WinListBox::Notify(uint32_t code) {
  sendCode(code);
}

void WinListBox::Repaint() {
  invalidate();
}

// --- Messages

int32_t WinListBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_DRAWITEM:
    return handleDraw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
  case WM_SIZE:
    UpdateScroll();
    invalidate();
    return WinNotHandled;
  case WM_SETFOCUS:
  case WM_KILLFOCUS:
    return handleFocus(message == WM_SETFOCUS);
  case WM_LBUTTONDOWN:
    return handleLeftPress(wParam, pointOf(lParam));
  case WM_LBUTTONDBLCLK:
    return handleDoubleClick();
  case WM_RBUTTONDOWN:
  case WM_RBUTTONDBLCLK:
    return handleRightPress(pointOf(lParam));
  case WM_LBUTTONUP:
  case WM_RBUTTONUP:
  case WM_KEYUP:
  case WM_CHAR:
    return 0;
  case WM_MOUSEWHEEL:
    return handleWheel(wParam);
  case WM_VSCROLL:
    return handleBar(SB_VERT, LOWORD(wParam));
  case WM_HSCROLL:
    return handleBar(SB_HORZ, LOWORD(wParam));
  case WM_KEYDOWN:
    return handleKey(message, wParam, lParam);
  default:
    return WinView::OnMessage(message, wParam, lParam);
  }
}

int32_t WinListBox::handleDraw(const DRAWITEMSTRUCT& draw) {
  UpdateScroll();
  const WinSize size = surfaceSize();
  HDC dc = surface_.begin(draw.hDC, size);
  if (!dc) return 1;
  const COLORREF colour = draw.itemState & ODS_DISABLED ? dialogColour() : background;
  {
    const WinSelect selected(dc, fontHandle());
    drawAll(dc, size, colour);
  }
  if (size == windowSize) {
    surface_.end({0, 0});
  } else {
    SetStretchBltMode(draw.hDC, HALFTONE);
    SetBrushOrgEx(draw.hDC, 0, 0, nullptr);
    StretchBlt(draw.hDC, 0, 0, windowSize.width, windowSize.height, dc, 0, 0, size.width,
               size.height, SRCCOPY);
  }
  return 1;
}

int32_t WinListBox::handleFocus(bool isThere) {
  setFlag(HasFocus, isThere);
  invalidate();
  return 0;
}

int32_t WinListBox::handleLeftPress(WPARAM keys, WinPoint point) {
  UpdateScroll();
  const int32_t row = hitTest(point);
  if (CanLeftPress(point, row)) press(row, (keys & MK_CONTROL) != 0, (keys & MK_SHIFT) != 0);
  return 0;
}

int32_t WinListBox::handleDoubleClick() {
  if (cursor >= 0 && cursor < items.count() && CanDoubleClick()) Notify(WinCodeDoubleClick);
  return 0;
}

int32_t WinListBox::handleRightPress(WinPoint point) {
  UpdateScroll();
  const int32_t row = hitTest(point);
  if (CanRightPress(point, row)) OpenContextMenu(point, row);
  return 0;
}

int32_t WinListBox::handleWheel(WPARAM wParam) {
  const int32_t delta = GET_WHEEL_DELTA_WPARAM(wParam);
  const WORD keys = GET_KEYSTATE_WPARAM(wParam);
  if (keys & MK_CONTROL)
    zoomFontBy(delta);
  else
    turnWheel(delta, (keys & MK_SHIFT) != 0);
  return 0;
}

void WinListBox::zoomFontBy(int32_t direction) {
  LOGFONTW description{};
  if (!GetObjectW(fontHandle(), sizeof description, &description)) return;
  const int32_t height = steppedFontHeight(description.lfHeight, direction);
  if (height == description.lfHeight) return;
  description.lfHeight = height;
  ownFont_.description = description;
  ownFont_.create();
  font = zoomFont = &ownFont_;
  RelayoutAndInvalidate();
}

int32_t WinListBox::handleBar(int bar, uint32_t code) {
  UpdateScroll();
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS;
  GetScrollInfo(window, bar, &info);
  if (bar == SB_VERT)
    scrollTo({scrollX, verticalTarget(code, info.nTrackPos)});
  else
    scrollTo({horizontalTarget(code, info.nTrackPos), scrollY});
  return 0;
}

int32_t WinListBox::handleKey(UINT message, WPARAM key, LPARAM lParam) {
  if (pressKey(static_cast<uint32_t>(key), isControlDown(), isShiftDown())) return 0;
  WinView::OnMessage(message, key, lParam);
  return 0;
}

} // namespace WinLayer
