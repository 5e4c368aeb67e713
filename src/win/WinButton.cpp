// The platform's button reports presses of the mouse by itself. Its own handling of Space and of
// double clicks is passed over, so that every press is one press.
#include "win/WinButton.h"

#include "win/WinDialog.h"
#include "win/WinText.h"

namespace WinLayer {

namespace {

RawString withLineBreaks(const RawString& text) {
  RawString result(text.encoding(), text.length());
  for (int32_t i = 0; i < text.length(); ++i)
    if (text.startsWithAt(i, "\\n"_text, 2)) {
      result.append("\r\n"_text);
      ++i;
    } else {
      result.appendChar(text.at(i));
    }
  return result;
}

} // namespace

WinButton::WinButton() {
  className = "BUTTON"_text;
  style = WS_CHILD | WS_VISIBLE | BS_MULTILINE | BS_OWNERDRAW;
  fitFlags = TextCentre | TextMiddle;
  margins = WinButtonDraw::Margins;
}

void WinButton::SetUp(const RawString& text, uint32_t flags, uint32_t pressCommand) {
  SetTitle(withLineBreaks(text));
  drawFlags = flags;
  command = pressCommand;
}

int32_t WinButton::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_DRAWITEM:
    paint(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    return 1;
  case WM_SETFOCUS:
  case WM_KILLFOCUS:
    focused = message == WM_SETFOCUS;
    invalidate();
    return WinNotHandled;
  case WM_ERASEBKGND:
    return 1;
  case WM_LBUTTONDBLCLK:
    postCode(WinCodePress);
    return 0;
  case WM_KEYDOWN:
    if (onKey(wParam)) return 0;
    break;
  default:
    break;
  }
  return WinView::OnMessage(message, wParam, lParam);
}

bool WinButton::onKey(WPARAM key) {
  switch (key) {
  case VK_RETURN:
  case VK_SPACE:
    postCode(WinCodePress);
    return true;
  case VK_LEFT:
  case VK_UP:
    passFocus(true);
    return true;
  case VK_RIGHT:
  case VK_DOWN:
    passFocus(false);
    return true;
  default:
    return false;
  }
}

int32_t WinButton::OnChildNotify(uint32_t code) {
  if (code == WinCodePress) {
    if (drawFlags & WinButtonDraw::Toggle) {
      checked = !checked;
      if (window) SendMessageW(window, BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
      invalidate();
    }
    if (command != 0) postCode(command);
  }
  return WinView::OnChildNotify(code);
}

void WinButton::paint(const DRAWITEMSTRUCT& item) {
  uint32_t flags = drawFlags;
  if (item.itemState & ODS_SELECTED) flags |= WinButtonDraw::Pressed;
  if (item.itemState & ODS_FOCUS) flags |= WinButtonDraw::Focused;
  if (item.itemState & ODS_DISABLED) flags |= WinButtonDraw::Disabled;
  if (checked) flags |= WinButtonDraw::Checked;

  const WinSelect selected(item.hDC, fontHandle());
  const int oldMode = SetBkMode(item.hDC, TRANSPARENT);
  const WinRect whole = rectOf(item.rcItem);
  faces_.draw(item.hDC, whole, flags);
  const WinRect inner{whole.left + margins.left, whole.top + margins.top,
                      whole.right - margins.right, whole.bottom - margins.bottom};
  const WinRect text = measureText(item.hDC, GetTitle(), inner, textFormat(fitFlags));
  DrawContent(item.hDC, alignedInBox(inner, text.height(), fitFlags), flags);
  SetBkMode(item.hDC, oldMode);
}

void WinButton::DrawContent(HDC dc, const WinRect& area, uint32_t flags) {
  const COLORREF old = SetTextColor(dc, WinButtonDraw::textColour(flags, windowTextColour()));
  drawText(dc, GetTitle(), area, textFormat(fitFlags));
  SetTextColor(dc, old);
}

} // namespace WinLayer
