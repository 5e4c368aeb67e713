#include "win/WinGdi.h"

#include <algorithm>

namespace WinLayer {

// Filling by an opaque, empty text needs no brush and is the platform's fastest fill.
void fillRect(HDC dc, const WinRect& rect, COLORREF colour) {
  const COLORREF old = SetBkColor(dc, colour);
  const RECT area = platformRect(rect);
  ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
  SetBkColor(dc, old);
}

void frameRect(HDC dc, const WinRect& rect, COLORREF colour) {
  if (rect.width() <= 0 || rect.height() <= 0) return;
  fillRect(dc, {rect.left, rect.top, rect.right, rect.top + 1}, colour);
  fillRect(dc, {rect.left, rect.bottom - 1, rect.right, rect.bottom}, colour);
  fillRect(dc, {rect.left, rect.top, rect.left + 1, rect.bottom}, colour);
  fillRect(dc, {rect.right - 1, rect.top, rect.right, rect.bottom}, colour);
}

WinOffscreen::~WinOffscreen() {
  if (oldBitmap_) SelectObject(dc_.get(), oldBitmap_);
}

HDC WinOffscreen::begin(HDC target, WinSize size) {
  target_ = target;
  size_ = size;
  if (!dc_) dc_.reset(CreateCompatibleDC(target));
  if (!dc_ || size.width <= 0 || size.height <= 0) return nullptr;
  if (size.width > capacity_.width || size.height > capacity_.height) {
    const WinSize grown{std::max(size.width, capacity_.width),
                        std::max(size.height, capacity_.height)};
    WinBitmapOwner bitmap(CreateCompatibleBitmap(target, grown.width, grown.height));
    if (!bitmap) return nullptr;
    const HGDIOBJ previous = SelectObject(dc_.get(), bitmap.get());
    if (!oldBitmap_) oldBitmap_ = previous;
    bitmap_ = std::move(bitmap);
    capacity_ = grown;
  }
  return dc_.get();
}

void WinOffscreen::end(WinPoint place) {
  if (oldBitmap_)
    BitBlt(target_, place.x, place.y, size_.width, size_.height, dc_.get(), 0, 0, SRCCOPY);
  target_ = nullptr;
}

} // namespace WinLayer
