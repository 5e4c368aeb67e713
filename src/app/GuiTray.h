// GuiTray: the launcher's icon in the tray. A member of the main dialog, on its thread. The record
// for the platform is filled at the first showing and kept: icon and tip are those of that moment.
#pragma once

#include "win/WinGdi.h"
#include "win/WinText.h"

#include <shellapi.h>

namespace AppLayer {

class GuiTray {
 public:
  // What the window is sent when something happens to the icon; lParam the mouse message.
  static constexpr UINT CallbackMessage = 0x8005;
  enum Flag : uint16_t {
    IsShown = 0x0001,
    HasTip = 0x0002,
    HasIcon = 0x0004,
  };

  GuiTray();
  // The icon goes only by `hide`: the platform keeps it until then, or until the window has gone.
  ~GuiTray() = default;
  GuiTray(const GuiTray&) = delete;
  GuiTray& operator=(const GuiTray&) = delete;

  [[nodiscard]] uint16_t flags() const { return flags_; }
  // Puts the icon, of 32 by 32 pixels, into the tray. `tip` is cut to 127 units. Nothing when it is
  // there already.
  void show(HWND window, uint16_t iconId, const RawLayer::RawString& tip);
  void hide(); // nothing when it is not there

 private:
  void loadIcon(uint16_t iconId);
  void copyTip(const RawLayer::RawString& tip);

  NOTIFYICONDATAW record_;
  uint16_t flags_ = 0;
  WinLayer::WinIconOwner icon_;
};

} // namespace AppLayer
