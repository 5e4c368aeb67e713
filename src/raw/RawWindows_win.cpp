#include "raw/RawWindows.h"

#include "raw/RawWinText.h"

#include <windows.h>

namespace RawLayer {

namespace {

constexpr int32_t TextUnits = 260;

HWND handleOf(uintptr_t window) {
  return reinterpret_cast<HWND>(window);
}

BOOL CALLBACK addWindow(HWND window, LPARAM windows) {
  reinterpret_cast<RawArrayC<uintptr_t>*>(windows)->append(reinterpret_cast<uintptr_t>(window));
  return TRUE;
}

// A thread may put a window to the front while it shares the input of the thread that is there.
void raise(HWND window) {
  const DWORD own = GetCurrentThreadId();
  const DWORD foreground = GetWindowThreadProcessId(GetForegroundWindow(), nullptr);
  AttachThreadInput(own, foreground, TRUE);
  SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  SetForegroundWindow(window);
  AttachThreadInput(own, foreground, FALSE);
}

} // namespace

RawArrayC<uintptr_t> listWindows() {
  RawArrayC<uintptr_t> windows;
  EnumWindows(addWindow, reinterpret_cast<LPARAM>(&windows));
  return windows;
}

RawString windowText(uintptr_t window, int32_t encoding) {
  return queryText(
      encoding, TextUnits,
      [window](char* buffer, int32_t room) {
        return GetWindowTextA(handleOf(window), buffer, room) != 0;
      },
      [window](wchar_t* buffer, int32_t room) {
        return GetWindowTextW(handleOf(window), buffer, room) != 0;
      });
}

RawString className(uintptr_t window, int32_t encoding) {
  return queryText(
      encoding, TextUnits,
      [window](char* buffer, int32_t room) {
        return GetClassNameA(handleOf(window), buffer, room) != 0;
      },
      [window](wchar_t* buffer, int32_t room) {
        return GetClassNameW(handleOf(window), buffer, room) != 0;
      });
}

RawPopupResult popupWindow(uintptr_t window) {
  const HWND handle = handleOf(window);
  if (window == 0 || !IsWindow(handle)) return RawPopupResult::NoWindow;
  if (IsIconic(handle)) {
    ShowWindow(handle, SW_SHOWNORMAL);
    return RawPopupResult::Restored;
  }
  // The system may refuse for a while, so this goes on until it has happened. A window that has
  // gone will never be in front.
  while (GetForegroundWindow() != handle && IsWindow(handle)) raise(handle);
  return RawPopupResult::Raised;
}

} // namespace RawLayer
