#include "raw/RawWindows.h"

#include "TestText.h"
#include "raw/RawLock.h"
#include "raw/RawProcess.h"
#include "raw/RawShell.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <atomic>
#include <thread>

using namespace RawLayer;

namespace {

constexpr const wchar_t* ClassName = L"RawWindowsTest\u30BD";

HWND handleOf(uintptr_t window) {
  return reinterpret_cast<HWND>(window);
}

// True as soon as the condition holds; false when ten seconds have passed.
template <class Condition>
bool comesTrue(Condition condition) {
  for (int i = 0; i < 1000; ++i) {
    if (condition()) return true;
    rawSleep(10);
  }
  return condition();
}

// A window with a thread and a message loop of its own, so that it answers while a test waits.
class TestWindow {
 public:
  explicit TestWindow(const wchar_t* title, DWORD style = WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                      HWND parent = nullptr)
      : thread_([this, title, style, parent] { run(title, style, parent); }) {
    while (!isReady_) rawSleep(1);
    EXPECT_NE(window_, nullptr);
  }
  ~TestWindow() {
    close();
    thread_.join();
  }
  TestWindow(const TestWindow&) = delete;
  TestWindow& operator=(const TestWindow&) = delete;

  [[nodiscard]] uintptr_t number() const { return reinterpret_cast<uintptr_t>(window_); }
  [[nodiscard]] HWND handle() const { return window_; }
  void close() const { PostMessageW(window_, WM_CLOSE, 0, 0); }

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(window, message, wParam, lParam);
  }

  void run(const wchar_t* title, DWORD style, HWND parent) {
    WNDCLASSEXW type{};
    type.cbSize = sizeof type;
    type.lpfnWndProc = procedure;
    type.hInstance = GetModuleHandleW(nullptr);
    type.lpszClassName = ClassName;
    RegisterClassExW(&type);
    window_ = CreateWindowExW(0, ClassName, title, style, 50, 50, 200, 100, parent, nullptr,
                              type.hInstance, nullptr);
    isReady_ = true;
    if (window_ == nullptr) return;
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  }

  HWND window_ = nullptr;
  std::atomic<bool> isReady_ = false;
  std::thread thread_;
};

bool isListed(uintptr_t window) {
  const RawArrayC<uintptr_t> windows = listWindows();
  for (int32_t i = 0; i < windows.count(); ++i)
    if (windows.at(i) == window) return true;
  return false;
}

} // namespace

TEST(RawWindows, TopLevelWindowsAreListed) {
  uintptr_t window = 0;
  {
    const TestWindow shown(L"shown");
    const TestWindow child(L"child", WS_CHILD | WS_VISIBLE, shown.handle());
    window = shown.number();
    EXPECT_TRUE(isListed(window));
    EXPECT_FALSE(isListed(child.number()));
  }
  EXPECT_FALSE(isListed(window));
}

TEST(RawWindows, TextAndClassComeInTheEncodingAskedFor) {
  const TestWindow window(L"title \u30BD");
  EXPECT_EQ(windowText(window.number()), raw("title \xE3\x82\xBD"));
  EXPECT_EQ(windowText(window.number(), EncodingWide), RawString::fromWide(u"title \u30BD"));
  EXPECT_EQ(className(window.number()), raw("RawWindowsTest\xE3\x82\xBD"));
  const TestWindow plain(L"plain");
  EXPECT_EQ(windowText(plain.number(), EncodingAnsi), raw("plain"));
  EXPECT_EQ(windowText(plain.number(), EncodingAnsi).encoding(), EncodingAnsi);
}

TEST(RawWindows, TextsAreCutAt260Units) {
  const std::wstring title(300, L'x');
  const TestWindow window(title.c_str());
  EXPECT_EQ(windowText(window.number()).length(), 260);
  EXPECT_EQ(windowText(window.number(), EncodingAnsi).length(), 260);
}

TEST(RawWindows, AWindowIsFoundByClassAndTitle) {
  const TestWindow first(L"First title");
  const TestWindow second(L"Second title");
  const RawString type = raw("RawWindowsTest*");
  EXPECT_EQ(findWindow(type, raw("Second*")), RawString::fromUInt64(second.number(), 10));
  EXPECT_EQ(findWindow(raw(""), raw("First title")), RawString::fromUInt64(first.number(), 10));
  EXPECT_EQ(findWindow(type, raw("<First*")), RawString::fromUInt64(second.number(), 10));
  EXPECT_TRUE(findWindow(type, raw("first*")).isEmpty());
  EXPECT_TRUE(findWindow(raw("rawwindowstest*"), raw("")).isEmpty());
  EXPECT_FALSE(findWindow(type, raw("")).isEmpty());
}

TEST(RawWindows, AMinimisedWindowIsRestored) {
  const TestWindow window(L"minimised");
  ShowWindow(window.handle(), SW_MINIMIZE);
  ASSERT_TRUE(IsIconic(window.handle()));
  EXPECT_EQ(popupWindow(window.number()), RawPopupResult::Restored);
  EXPECT_FALSE(IsIconic(window.handle()));
}

TEST(RawWindows, ABackgroundWindowIsForcedToTheFront) {
  const TestWindow back(L"back");
  const TestWindow front(L"front");
  ASSERT_TRUE(comesTrue([&] {
    SetForegroundWindow(front.handle());
    return GetForegroundWindow() == front.handle();
  }));
  EXPECT_EQ(popupWindow(back.number()), RawPopupResult::Raised);
  EXPECT_TRUE(comesTrue([&] { return GetForegroundWindow() == back.handle(); }));
  // What is in front already stays there.
  EXPECT_EQ(popupWindow(back.number()), RawPopupResult::Raised);
}

TEST(RawWindows, AWindowOfAnotherProgramIsFoundAndRaised) {
  RawShell shell(raw("notepad.exe"));
  ASSERT_TRUE(shell.execute(raw(""), raw("")));
  shell.waitForIdle(10000);
  RawString number;
  ASSERT_TRUE(comesTrue([&] {
    number = findWindow(raw("Notepad"), raw(""));
    return !number.isEmpty();
  }));
  const auto notepad = static_cast<uintptr_t>(std::stoull(bytesOf(number)));
  const TestWindow front(L"front");
  SetForegroundWindow(front.handle());
  EXPECT_EQ(popupWindow(notepad), RawPopupResult::Raised);
  EXPECT_TRUE(comesTrue([&] { return GetForegroundWindow() == handleOf(notepad); }));
  ShowWindow(handleOf(notepad), SW_MINIMIZE);
  ASSERT_TRUE(comesTrue([&] { return IsIconic(handleOf(notepad)) != 0; }));
  EXPECT_EQ(popupWindow(notepad), RawPopupResult::Restored);
  EXPECT_TRUE(comesTrue([&] { return IsIconic(handleOf(notepad)) == 0; }));
  terminateProcess(shell.processId, 5000);
  EXPECT_TRUE(comesTrue([&] { return !IsWindow(handleOf(notepad)); }));
  EXPECT_EQ(popupWindow(notepad), RawPopupResult::NoWindow);
}

TEST(RawWindows, AWindowThatHasGoneEndsTheForcing) {
  const TestWindow frame(L"frame");
  // A child can never be the foreground window.
  const TestWindow child(L"child", WS_CHILD | WS_VISIBLE, frame.handle());
  std::thread closer([&] {
    rawSleep(200);
    child.close();
  });
  EXPECT_EQ(popupWindow(child.number()), RawPopupResult::Raised);
  EXPECT_FALSE(IsWindow(child.handle()));
  closer.join();
}
