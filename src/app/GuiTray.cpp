#include "app/GuiTray.h"

#include "win/WinView.h"

#include <algorithm>
#include <iterator>

namespace AppLayer {

namespace {

constexpr int IconExtent = 32;
constexpr UINT IconId = 1; // of ours in the window's tray icons

} // namespace

GuiTray::GuiTray() : record_{} {
  record_.cbSize = sizeof record_;
}

void GuiTray::show(HWND window, uint16_t iconId, const RawLayer::RawString& tip) {
  loadIcon(iconId);
  copyTip(tip);
  record_.hWnd = window;
  record_.uID = IconId;
  record_.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
  record_.uCallbackMessage = CallbackMessage;
  if (flags_ & IsShown) return;
  flags_ |= IsShown;
  Shell_NotifyIconW(NIM_ADD, &record_);
}

void GuiTray::hide() {
  if (!(flags_ & IsShown)) return;
  flags_ = static_cast<uint16_t>(flags_ & ~IsShown);
  Shell_NotifyIconW(NIM_DELETE, &record_);
}

void GuiTray::loadIcon(uint16_t iconId) {
  if (flags_ & HasIcon) return;
  flags_ |= HasIcon;
  icon_.reset(
      static_cast<HICON>(LoadImageW(WinLayer::WinViewStyle::instance(), MAKEINTRESOURCEW(iconId),
                                    IMAGE_ICON, IconExtent, IconExtent, LR_DEFAULTCOLOR)));
  record_.hIcon = icon_.get();
}

void GuiTray::copyTip(const RawLayer::RawString& tip) {
  if (flags_ & HasTip) return;
  flags_ |= HasTip;
  const RawLayer::RawString wide = tip.shareAs(RawLayer::EncodingWide);
  const wchar_t* units = WinLayer::wideUnits(wide);
  const size_t room = std::size(record_.szTip) - 1;
  const size_t length = std::min(static_cast<size_t>(wide.length()), room);
  std::copy_n(units, length, record_.szTip);
  record_.szTip[length] = 0;
}

} // namespace AppLayer
