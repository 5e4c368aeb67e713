// The geometry is fitted ahead of measuring, so bars that a first measuring changes are set at the
// paint after it, which is asked for then.
#include "win/WinPlaneBox.h"

namespace WinLayer {

WinPlaneBox::WinPlaneBox() {
  className = "BUTTON"_text;
  style = WS_CHILD | WS_VISIBLE | BS_OWNERDRAW;
  fitFlags = TextLeft | TextTop;
}

int32_t WinPlaneBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_DRAWITEM:
    paint(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    return TRUE;
  case WM_SIZE:
    takeSize();
    return WinNotHandled;
  case WM_SETFOCUS:
    setFlag(HasFocus, true);
    invalidate();
    return WinNotHandled;
  case WM_KILLFOCUS:
    setFlag(HasFocus, false);
    invalidate();
    sendCode(WinCodeFocusLost);
    return WinNotHandled;
  case WM_HSCROLL:
    scrollByBar(SB_HORZ, LOWORD(wParam));
    return 0;
  case WM_VSCROLL:
    scrollByBar(SB_VERT, LOWORD(wParam));
    return 0;
  case WM_MOUSEWHEEL:
    scrollByWheel(wParam);
    return 0;
  default:
    return WinView::OnMessage(message, wParam, lParam);
  }
}

// The first size comes before the view sees its messages.
void WinPlaneBox::OnCreated() {
  takeSize();
}

// --- Size and content

WinScrollAxis WinPlaneBox::horizontal() const {
  return {contentWidth, viewRect.width(), lineStepX, scrollX};
}

WinScrollAxis WinPlaneBox::vertical() const {
  return {contentHeight, viewRect.height(), lineStepY, scrollY};
}

void WinPlaneBox::clampOffsets() {
  scrollX = horizontal().clamped(scrollX);
  scrollY = vertical().clamped(scrollY);
}

void WinPlaneBox::takeSize() {
  const WinRect area = clientRect();
  viewRect = {area.left + margins.left, area.top + margins.top, area.right - margins.right,
              area.bottom - margins.bottom};
  clampOffsets();
  setFlag(MustFitGeometry, true);
}

void WinPlaneBox::contentChanged() {
  setFlag(MustMeasure, true);
  invalidate();
}

void WinPlaneBox::measureIfNeeded() {
  if (!hasFlag(MustMeasure) || !window) return;
  const WinWindowDc dc(window);
  measure(dc.get());
}

void WinPlaneBox::measure(HDC dc) {
  const WinSelect selected(dc, fontHandle());
  setFlag(MustMeasure, false);
  const WinSize before{contentWidth, contentHeight};
  MeasureContent(dc);
  clampOffsets();
  if (before != WinSize{contentWidth, contentHeight}) setFlag(MustFitGeometry, true);
  AfterMeasure();
}

// --- Painting

void WinPlaneBox::paint(const DRAWITEMSTRUCT& item) {
  if (hasFlag(MustFitGeometry)) fitBars();
  if (hasFlag(MustMeasure)) measure(item.hDC);
  const WinRect place = rectOf(item.rcItem);
  if (const HDC dc = surface_.begin(item.hDC, {place.width(), place.height()})) {
    const WinSelect selected(dc, fontHandle());
    fillRect(dc, place.movedTo(0, 0), dialogColour());
    DrawContent(dc, {viewRect.left - scrollX, viewRect.top - scrollY});
    surface_.end({place.left, place.top});
  }
  if (hasFlag(MustFitGeometry) && (style & (WS_HSCROLL | WS_VSCROLL))) invalidate();
}

// A bar that comes or goes changes the client, and with it the view, at once.
void WinPlaneBox::fitBars() {
  setFlag(MustFitGeometry, false);
  const auto set = [this](int which, const WinScrollBar& bar) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = bar.last;
    info.nPage = static_cast<UINT>(bar.page > 0 ? bar.page : 0);
    info.nPos = bar.position;
    SetScrollInfo(window, which, &info, TRUE);
  };
  if (style & WS_VSCROLL) set(SB_VERT, vertical().bar());
  if (style & WS_HSCROLL) set(SB_HORZ, horizontal().bar());
}

// --- Scrolling

void WinPlaneBox::scrollTo(int32_t x, int32_t y) {
  scrollX = horizontal().clamped(x);
  scrollY = vertical().clamped(y);
  setFlag(MustFitGeometry, true);
  invalidate();
}

void WinPlaneBox::scrollByBar(int bar, uint32_t code) {
  measureIfNeeded();
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS;
  GetScrollInfo(window, bar, &info);
  if (bar == SB_HORZ)
    scrollTo(horizontal().afterStep(code, info.nTrackPos), scrollY);
  else
    scrollTo(scrollX, vertical().afterStep(code, info.nTrackPos));
}

void WinPlaneBox::scrollByWheel(WPARAM wParam) {
  measureIfNeeded();
  const WORD keys = LOWORD(wParam);
  const auto delta = static_cast<int16_t>(HIWORD(wParam));
  scrollTo(scrollX, vertical().afterWheel(delta, keys & MK_CONTROL, keys & MK_SHIFT));
}

} // namespace WinLayer
