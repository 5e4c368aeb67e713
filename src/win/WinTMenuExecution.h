// WinTMenuExecution: a hook that extends the system menu of a view's window. The menu is obtained
// when the window is created with a system menu in its style; what is put into it, and when, is for
// derived classes. The hook only looks on: every message goes on to the platform.
//
// Belongs to the thread of the view, which must outlive the hook.
#pragma once

#include "win/WinView.h"

namespace WinLayer {

class WinTMenuExecution : public WinViewHook {
 public:
  explicit WinTMenuExecution(WinView& view) : view_(view) {}
  WinTMenuExecution(const WinTMenuExecution&) = delete;
  WinTMenuExecution& operator=(const WinTMenuExecution&) = delete;

  int32_t OnHookMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  virtual void OnMenuObtained() {}
  virtual void OnMenuOpening() = 0;
  virtual void OnSystemCommand(WPARAM command) = 0; // any; the platform's own included

 protected:
  WinView& view_;
  HMENU menu_ = nullptr; // the window's; null before its creation and without such a menu
};

} // namespace WinLayer
