// A program that does nothing but load the libraries that the launcher loads.
#include <windows.h>

#include <commctrl.h>
#include <objbase.h>
#include <shellapi.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  // Their addresses keep the imports in.
  const void* volatile imports[] = {
      reinterpret_cast<const void*>(&CoInitializeEx),
      reinterpret_cast<const void*>(&DragFinish),
      reinterpret_cast<const void*>(&GetSysColor),
      reinterpret_cast<const void*>(&GdiFlush),
      reinterpret_cast<const void*>(&GetUserNameW),
      reinterpret_cast<const void*>(&InitCommonControlsEx),
  };
  return imports[0] ? 0 : 1;
}
