// A dialog from its creation to the end of its first paint, beside an empty window of the same
// style and size. What the platform needs to take a window away again is not counted.
#include "win/WinInfoDialog.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

using namespace RawLayer::RawLiterals;
using namespace WinLayer;

namespace {

constexpr int Runs = 101;
constexpr wchar_t EmptyClass[] = L"Class_BenchEmpty";
constexpr WinRect Screen{0, 0, 800, 600};

void registerEmpty() {
  WNDCLASSEXW record{};
  record.cbSize = sizeof record;
  record.style = CS_VREDRAW | CS_HREDRAW;
  record.lpfnWndProc = DefWindowProcW;
  record.hInstance = GetModuleHandleW(nullptr);
  record.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  record.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<UINT_PTR>(COLOR_BTNFACE + 1));
  record.lpszClassName = EmptyClass;
  RegisterClassExW(&record);
}

void paintAll(HWND window) {
  RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
  GdiFlush();
}

void takeAway(HWND window) {
  DestroyWindow(window);
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

template <class Show>
double milliseconds(Show show) {
  const auto start = std::chrono::steady_clock::now();
  const HWND window = show();
  paintAll(window);
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
  takeAway(window);
  return taken.count();
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

} // namespace

int main() {
  registerEmpty();
  RawLayer::RawLabelList answers;
  answers.add("Yes"_text, 1);
  answers.add("No"_text, 2);
  WinRect place;
  const auto showDialog = [&](WinInfoDialog& dialog) {
    dialog.Prepare("Bench"_text, "Shall it go on?\r\n  [command] Action"_text, answers,
                   WinInfoDialog::IconQuestion, 1, Screen);
    place = dialog.rect;
    dialog.Create();
    return dialog.window;
  };
  const auto showEmpty = [&] {
    const HWND window = CreateWindowExW(
        WS_EX_TOOLWINDOW, EmptyClass, L"Bench", WS_CAPTION | WS_SYSMENU | WS_THICKFRAME, place.left,
        place.top, place.width(), place.height(), nullptr, nullptr, nullptr, nullptr);
    ShowWindow(window, SW_SHOWNORMAL);
    UpdateWindow(window);
    return window;
  };
  std::vector<double> own;
  std::vector<double> peer;
  for (int i = 0; i < Runs; ++i) { // by turns, so that both see the same machine
    WinInfoDialog dialog;
    own.push_back(milliseconds([&] { return showDialog(dialog); }));
    peer.push_back(milliseconds(showEmpty));
  }
  std::printf("dialog to its first paint: %.2f ms, empty window %.2f ms, ratio %.2f (goal 1.20)\n",
              median(own), median(peer), median(own) / median(peer));
  return 0;
}
