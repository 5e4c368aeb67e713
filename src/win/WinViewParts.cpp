#include "win/WinViewParts.h"

namespace WinLayer {

// --- Title, style and font

RawString WinViewStyle::GetTitle() const {
  return title_.shareAs(RawLayer::EncodingUtf8);
}

void WinViewStyle::ClearTitle() {
  title_.release();
  ++titleRevision;
}

void WinViewStyle::SetTitle(const RawString& text) {
  title_ = text;
  ++titleRevision;
}

void WinViewStyle::AppendTitle(const RawString& text) {
  title_.append(text.shareAs(title_.encoding()));
  ++titleRevision;
}

HFONT WinViewStyle::fontHandle() const {
  for (const WinViewStyle* each = this; each; each = each->styleParent)
    if (each->font) return each->font->handle();
  return WinFont::window().handle();
}

HINSTANCE WinViewStyle::instance() {
  return GetModuleHandleW(nullptr);
}

COLORREF WinViewStyle::windowTextColour() {
  static const COLORREF colour = GetSysColor(COLOR_WINDOWTEXT);
  return colour;
}

COLORREF WinViewStyle::dialogColour() {
  static const COLORREF colour = GetSysColor(COLOR_3DFACE);
  return colour;
}

// --- Measuring

void WinViewFitting::FitToContent() {
  WinRect area;
  MeasureText(area);
  clientWidth = area.width();
  clientHeight = area.height();
  area.left -= margins.left;
  area.top -= margins.top;
  area.right += margins.right;
  area.bottom += margins.bottom;
  AdjustFrame(area);
  windowWidth = area.width();
  windowHeight = area.height();
}

UINT textFormat(uint16_t fitFlags) {
  UINT format = DT_NOPREFIX;
  if (fitFlags & WinViewFitting::TextWrapped) format |= DT_WORDBREAK | DT_EDITCONTROL;
  if (fitFlags & WinViewFitting::TextRight) format |= DT_RIGHT;
  if (fitFlags & WinViewFitting::TextCentre) format |= DT_CENTER;
  return format;
}

WinRect alignedInBox(const WinRect& box, int32_t height, uint16_t fitFlags) {
  int32_t top = box.top;
  if (fitFlags & WinViewFitting::TextBottom) top = box.bottom - height;
  if (fitFlags & WinViewFitting::TextMiddle) top = box.top + (box.height() - height) / 2;
  return {box.left, top, box.right, top + height};
}

// --- The window

void WinViewAction::setBlockingWindow(HWND blocking) {
  const RawLayer::RawLockScope scope(lock_);
  blockingWindow_ = blocking;
}

HWND WinViewAction::blockingWindow() {
  const RawLayer::RawLockScope scope(lock_);
  return blockingWindow_;
}

} // namespace WinLayer
