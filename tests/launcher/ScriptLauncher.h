// ScriptLauncher: the real launcher with one button for each script, for tests of what a script
// shows: its menus, questions and forms.
#pragma once

#include "launcher/LauncherWindow.h"

#include <algorithm>
#include <string>
#include <vector>

class ScriptLauncher : public ::testing::Test {
 protected:
  static constexpr int32_t RowHeight = 24; // of a button: its icon of 16 and the margins
  static constexpr const wchar_t* QuestionClass = L"Class_InfoDialog"; // of reports, too
  static constexpr const wchar_t* FormClass = L"Class_InputDialog";
  // A command behind the others, and what the log has of it.
  static constexpr const char* Behind = "Define {\r\nBehind=1\r\n}\r\n";
  static constexpr const char* BehindRan = "[Behind=1]";

  LauncherWindow launcher;

  // --- Scripts
  static std::string block(const std::string& command, const std::string& lines) {
    return command + " {\r\n" + lines + "}\r\n";
  }
  // Leaves its mark in the log.
  static std::string mark(const std::string& name) {
    return block("Define", "Mark=" + name + "\r\n");
  }
  [[nodiscard]] int32_t marks(const std::string& name) const {
    return launcher.countInLog("[Mark=" + name + "]");
  }
  static std::string item(const std::string& title) {
    return block("MenuItem", "Title=" + title + "\r\n" + mark(title));
  }
  static std::string button(const std::string& name, const std::string& script) {
    return "[Button:" + name + "]\r\nTitle=" + name + "\r\n" + script + "\r\n";
  }
  // The log has the variable's value once this has run.
  static std::string reading(const std::string& variable) {
    return block("If", "Condition=$(" + variable + ")\r\n");
  }

  // --- Driving
  void openWith(const std::string& buttons, const std::string& options = {}) {
    launcher.configure("[Option]\r\n" + options + buttons);
    ASSERT_TRUE(launcher.open());
    ASSERT_TRUE(launcher.bringToFront());
    ASSERT_NE(launcher.buttons(), nullptr);
  }
  void moveTo(int32_t x, int32_t y) {
    SetWindowPos(launcher.window(), nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    ASSERT_TRUE(waitUntil([&] {
      const RECT place = LauncherWindow::screenRect(launcher.window());
      return place.left == x && place.top == y;
    }));
  }
  // In a column.
  void pressButton(int32_t row = 0) {
    LauncherWindow::press(launcher.buttons(), 12, row * RowHeight + RowHeight / 2);
  }
  // What a press opened, ready for keys; null when nothing came.
  HWND dialogAfterPress(const wchar_t* className, int32_t row = 0) {
    pressButton(row);
    return dialog(className);
  }
  HWND dialog(const wchar_t* className) {
    const HWND found = launcher.waitForClass(className);
    const auto isReady = [&] { return WindowTest::bringToFront(found) && hasFocus(found); };
    return found && waitUntil(isReady) ? found : nullptr;
  }
  // Whether keys reach a part of that window.
  static bool hasFocus(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) &&
           IsChild(window, info.hwndFocus);
  }
  HWND menuAfterPress(int32_t row = 0) {
    pressButton(row);
    return launcher.waitForClass(LauncherWindow::MenuClass);
  }
  [[nodiscard]] std::vector<HWND> menus() const {
    return launcher.visibleWindows(LauncherWindow::MenuClass);
  }
  bool waitForMenus(size_t count) {
    return waitUntil([&] { return menus().size() == count; });
  }
  // One of several entries of equal height, without separators.
  static POINT entry(HWND menu, int32_t index, int32_t count) {
    const SIZE size = LauncherWindow::clientSize(menu);
    return {size.cx / 2, size.cy * (2 * index + 1) / (2 * count)};
  }
  static void pressEntry(HWND menu, int32_t index, int32_t count) {
    const POINT point = entry(menu, index, count);
    LauncherWindow::press(menu, point.x, point.y);
  }
  static void keys(const std::vector<uint16_t>& all) {
    for (uint16_t each : all) WindowTest::pressKey(each);
  }
  bool answer(HWND dialog, const std::vector<uint16_t>& all) {
    keys(all);
    return launcher.waitUntilGone(dialog);
  }
  // The main window serves and has no dialog in front.
  bool isBack() { return launcher.settle() && launcher.bringToFront(); }

  // --- Looking
  static LONG heightOf(HWND window) {
    const RECT area = LauncherWindow::screenRect(window);
    return area.bottom - area.top;
  }
  // Of all texts that stand in the dialog.
  static std::wstring textsOf(HWND dialog) {
    std::wstring all;
    EnumChildWindows(dialog, addText, reinterpret_cast<LPARAM>(&all));
    return all;
  }

 private:
  static BOOL CALLBACK addText(HWND window, LPARAM parameter) {
    wchar_t text[1024] = {};
    SendMessageTimeoutW(window, WM_GETTEXT, 1023, reinterpret_cast<LPARAM>(text), SMTO_ABORTIFHUNG,
                        2000, nullptr);
    *reinterpret_cast<std::wstring*>(parameter) += text;
    return TRUE;
  }
};
