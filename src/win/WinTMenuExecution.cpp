#include "win/WinTMenuExecution.h"

namespace WinLayer {

int32_t WinTMenuExecution::OnHookMessage(UINT message, WPARAM wParam, LPARAM) {
  switch (message) {
  case WM_CREATE:
    if (!(GetWindowLongW(view_.window, GWL_STYLE) & WS_SYSMENU)) break;
    menu_ = GetSystemMenu(view_.window, FALSE);
    if (menu_) OnMenuObtained();
    break;
  case WM_INITMENUPOPUP:
    if (menu_ && reinterpret_cast<HMENU>(wParam) == menu_) OnMenuOpening();
    break;
  case WM_SYSCOMMAND:
    OnSystemCommand(wParam);
    break;
  default:
    break;
  }
  return WinNotHandled;
}

} // namespace WinLayer
