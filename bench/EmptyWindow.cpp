// A program with one empty window: EmptyWindow WIDTH HEIGHT, of its client. It loads the libraries
// that the launcher loads, and ends when its window is closed.
#include <windows.h>

#include <commctrl.h>
#include <cwchar>
#include <objbase.h>
#include <shellapi.h>

namespace {

LRESULT CALLBACK serve(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DESTROY) PostQuitMessage(0);
  return DefWindowProcW(window, message, wParam, lParam);
}

// Their addresses keep the imports in.
bool loadsAll() {
  const void* volatile imports[] = {
      reinterpret_cast<const void*>(&CoInitializeEx),
      reinterpret_cast<const void*>(&DragFinish),
      reinterpret_cast<const void*>(&GdiFlush),
      reinterpret_cast<const void*>(&GetUserNameW),
      reinterpret_cast<const void*>(&InitCommonControlsEx),
  };
  return imports[0] != nullptr;
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR arguments, int) {
  wchar_t* next = arguments;
  const auto width = static_cast<int>(std::wcstol(next, &next, 10));
  const auto height = static_cast<int>(std::wcstol(next, &next, 10));
  if (!loadsAll()) return 1;
  WNDCLASSEXW record{};
  record.cbSize = sizeof record;
  record.lpfnWndProc = serve;
  record.hInstance = instance;
  record.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  record.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<UINT_PTR>(COLOR_BTNFACE + 1));
  record.lpszClassName = L"Class_BenchWindow";
  RegisterClassExW(&record);
  const HWND window = CreateWindowExW(0, record.lpszClassName, L"Bench", WS_POPUP | WS_SYSMENU, 100,
                                      100, width, height, nullptr, nullptr, instance, nullptr);
  ShowWindow(window, SW_SHOWNORMAL);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  return 0;
}
