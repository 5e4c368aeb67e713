#include "win/WinTipDialog.h"

namespace WinLayer {

using RawLayer::RawLockScope;

namespace {

constexpr uint16_t BigIcon = 130;
constexpr uint16_t SmallIcon = 131;
constexpr COLORREF Ground = 0xFAFFF5;
constexpr COLORREF Ink = 0x404040;
constexpr int32_t AroundWidth = 6; // of the text, both sides together
constexpr int32_t AroundHeight = 2;
constexpr uint16_t FollowsClient = 0x1111;

} // namespace

// --- The text

RawString WinTipText::GetTitle() const {
  const RawLockScope scope(titleLock_);
  return WinStaticBox::GetTitle();
}

void WinTipText::ClearTitle() {
  const RawLockScope scope(titleLock_);
  WinStaticBox::ClearTitle();
}

void WinTipText::SetTitle(const RawString& newText) {
  const RawLockScope scope(titleLock_);
  WinStaticBox::SetTitle(newText);
}

void WinTipText::AppendTitle(const RawString& more) {
  const RawLockScope scope(titleLock_);
  WinStaticBox::AppendTitle(more);
}

// --- The window

WinTipDialog::WinTipDialog() {
  className = "Class_TipDialog"_text;
  bigIconId = BigIcon;
  smallIconId = SmallIcon;
  style = WS_POPUP | WS_BORDER;
  extendedStyle = WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE;
  showCommand = SW_SHOWNOACTIVATE;
  text.font = &WinFont::tip();
}

WinTipDialog::~WinTipDialog() {
  HideTip();
}

void WinTipDialog::prepareFirst() {
  text.style |= SS_CENTERIMAGE | SS_EDITCONTROL;
  text.fitFlags = TextCentre | TextMiddle;
  text.margins = {AroundWidth / 2, AroundHeight / 2, AroundWidth / 2, AroundHeight / 2};
  text.background = Ground;
  text.textColour = Ink;
  RECT frame{};
  AdjustWindowRectEx(&frame, style, FALSE, extendedStyle);
  frame_ = {rectOf(frame).width(), rectOf(frame).height()};
  isFirst_ = false;
}

WinSize WinTipDialog::wantedSize() const {
  return {text.clientWidth + AroundWidth, text.clientHeight + AroundHeight};
}

WinPoint WinTipDialog::placeAtPointer() {
  static const int32_t below = GetSystemMetrics(SM_CYCURSOR) * 2 / 3;
  POINT pointer{};
  GetCursorPos(&pointer);
  return {pointer.x, pointer.y + below};
}

void WinTipDialog::ShowTip(const RawString& tip) {
  text.SetTitle(tip);
  if (isFirst_) prepareFirst();
  text.FitToContent();
  const WinSize size = wantedSize();
  const WinPoint place = placeAtPointer();
  if (isReady()) {
    PostMessageW(window, WinMessageShow, 0, 0);
  } else {
    HideTip(); // one that could not be made, or that ended by itself
    fitToClient(size);
    set(rect.movedTo(place.x, place.y));
    text.set(client.rect);
    text.bind(&client, FollowsClient);
    startAndWait();
  }
  if (!window) return;
  SetWindowPos(window, HWND_TOPMOST, place.x, place.y, size.width + frame_.width,
               size.height + frame_.height, SWP_NOACTIVATE);
  text.invalidate();
}

void WinTipDialog::HideTip() {
  stopAndWait();
}

void WinTipDialog::OnCreateChildren() {
  addChild(text);
}

void WinTipDialog::OnResized() {
  text.ApplyAnchors();
  text.moveWindow(true);
}

} // namespace WinLayer
