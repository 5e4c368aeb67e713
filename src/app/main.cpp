// The entry of the process.
#include "app/Launcher.h"
#include "raw/RawSystem.h"

#include <windows.h>

#include <objbase.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  AppLayer::Launcher::installCrashHandler();
  // Libraries come from the system's folder only, never from where a document lies.
  SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
  (void)CoInitializeEx(nullptr, COINIT_MULTITHREADED);
  const int32_t code = AppLayer::Launcher().run(RawLayer::commandLine());
  CoUninitialize();
  return code;
}
