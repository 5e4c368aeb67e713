// WinImageBox: an icon on the dialog's ground, and WinIconHolder, an icon with its size.
//
// Belongs to the thread of its dialog. The holder stays its maker's and must outlive the box.
#pragma once

#include "win/WinView.h"

namespace WinLayer {

// Destroys the icon at its end when it owns it; icons of the system are shared and not owned.
class WinIconHolder {
 public:
  int32_t width = 0; // pixels at which it is drawn
  int32_t height = 0;

  [[nodiscard]] HICON handle() const { return shared_ ? shared_ : own_.get(); }
  [[nodiscard]] bool isOwned() const { return static_cast<bool>(own_); }
  // What was held goes; null holds nothing.
  void setOwned(HICON icon, WinSize size);
  void setShared(HICON icon, WinSize size);

 private:
  WinIconOwner own_;
  HICON shared_ = nullptr;
};

class WinImageBox : public WinView {
 public:
  const WinIconHolder* icon = nullptr; // null: only the ground

  WinImageBox();
  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void MeasureText(WinRect& area) override; // the icon's size from (0, 0)

 private:
  void paint(const DRAWITEMSTRUCT& item);
  WinOffscreen surface_;
};

} // namespace WinLayer
