#include "win/WinImageBox.h"

namespace WinLayer {

namespace {

constexpr int32_t Margin = 2;

} // namespace

// --- WinIconHolder

void WinIconHolder::setOwned(HICON icon, WinSize size) {
  own_.reset(icon);
  shared_ = nullptr;
  width = size.width;
  height = size.height;
}

void WinIconHolder::setShared(HICON icon, WinSize size) {
  own_.reset();
  shared_ = icon;
  width = size.width;
  height = size.height;
}

// --- WinImageBox

WinImageBox::WinImageBox() {
  className = "STATIC"_text;
  style = WS_CHILD | WS_VISIBLE | SS_OWNERDRAW;
  viewFlags |= NotSubclassed;
  fitFlags = TextCentre | TextMiddle;
  margins = {Margin, Margin, Margin, Margin};
}

int32_t WinImageBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_DRAWITEM) return WinView::OnMessage(message, wParam, lParam);
  paint(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
  return TRUE;
}

void WinImageBox::MeasureText(WinRect& area) {
  area = icon ? WinRect{0, 0, icon->width, icon->height} : WinRect{};
}

// The icon is drawn over the ground off the screen: it may be half transparent.
void WinImageBox::paint(const DRAWITEMSTRUCT& item) {
  const WinRect place = rectOf(item.rcItem);
  const HDC dc = surface_.begin(item.hDC, {place.width(), place.height()});
  if (!dc) return;
  const WinRect area = place.movedTo(0, 0);
  fillRect(dc, area, dialogColour());
  if (icon && icon->handle()) {
    const WinRect inner{area.left + margins.left, area.top + margins.top,
                        area.right - margins.right, area.bottom - margins.bottom};
    const WinRect at = alignedInBox(inner, icon->height, fitFlags);
    DrawIconEx(dc, at.left, at.top, icon->handle(), icon->width, icon->height, 0, nullptr,
               DI_NORMAL);
  }
  surface_.end({place.left, place.top});
}

} // namespace WinLayer
