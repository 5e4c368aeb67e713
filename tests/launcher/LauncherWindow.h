// LauncherWindow: the real launcher with its window, in a folder of its own, driven as a user
// would: real mouse and key input, files and log read from outside. Nothing waits for a guessed
// time: every wait has a condition, and is false when that did not come within the limit.
//
//   LauncherWindow launcher;
//   launcher.configure("[Option]\r\nViewSelector=True\r\n[Button:Hello]\r\nTitle=Hello\r\n...");
//   ASSERT_TRUE(launcher.open());
//   launcher.press(launcher.buttons(), 10, 10);
//   EXPECT_TRUE(launcher.waitForLog("(Button)Hello"));
//   EXPECT_TRUE(launcher.close());
//
// The profile, gui profile and configuration are all in "Tarvellon.ini" of the folder; log, caches
// and dumps in its folder "Temp". Whatever still runs at the end is ended.
#pragma once

#include "program/ProgramRun.h"
#include "window/WindowTest.h"

class LauncherWindow {
 public:
  static constexpr const wchar_t* MainClass = L"Tarvellon";
  static constexpr const wchar_t* MenuClass = L"#32768"; // of the platform's popup menus

  ProgramRun run; // the folder: files of yours, logs

  LauncherWindow();
  ~LauncherWindow();
  LauncherWindow(const LauncherWindow&) = delete;
  LauncherWindow& operator=(const LauncherWindow&) = delete;

  // Writes "Tarvellon.ini": its section Common, then these.
  void configure(const std::string& sections) { run.writeProfile(sections); }
  [[nodiscard]] std::string configuration() const { return run.readFile("Tarvellon.ini"); }

  // Starts it. True when its window is on the screen and serves messages; false also when a dialog
  // comes before it.
  bool open(const std::string& arguments = {});
  // The same without waiting for the window.
  bool start(const std::string& arguments = {});
  bool waitForWindow();
  // In place of a launcher that ended: the one that it started anew. False when there is none.
  bool takeSuccessor();
  // Ends it as its close button would, and waits for that. True for exit code 0.
  bool close();
  // Whether the process has ended within the limit, by itself.
  bool waitForEnd();
  // Ends the process at once.
  void kill();
  [[nodiscard]] bool isRunning() const;
  [[nodiscard]] DWORD processId() const { return processId_; }
  [[nodiscard]] HANDLE process() const { return process_; }
  [[nodiscard]] DWORD exitCode() const; // STILL_ACTIVE while it runs

  // Windows of the process.
  [[nodiscard]] HWND window() const { return window_; } // the main one
  [[nodiscard]] HWND buttons() const;
  [[nodiscard]] HWND selectors() const; // null where it has none
  [[nodiscard]] std::vector<HWND> visibleWindows(const std::wstring& className) const;
  // The visible window of the class, once there is one; null when there never was.
  HWND waitForClass(const std::wstring& className);
  bool waitUntilGone(HWND other);
  // True once its thread has finished the message that it is at. Input and posted messages may
  // wait still: for those, wait for what they do.
  bool settle() const;
  bool bringToFront() const;

  // Input, in pixels of a window's client; left, right, middle as MOUSEEVENTF_..DOWN.
  static void pointAt(HWND where, int32_t x, int32_t y);
  static void press(HWND where, int32_t x, int32_t y);
  static void rightPress(HWND where, int32_t x, int32_t y);
  static void drag(HWND where, POINT from, POINT to); // left, in steps
  // A key with the modifiers (VK_MENU, VK_SHIFT, VK_CONTROL) held.
  static void keyWith(const std::vector<uint16_t>& modifiers, uint16_t key);

  // Looking.
  static RECT screenRect(HWND where);
  static SIZE clientSize(HWND where);
  [[nodiscard]] RECT rectIn(HWND child) const;                   // in the main window's client
  static COLORREF screenPixel(HWND where, int32_t x, int32_t y); // what the user sees there

  // The log, of the newest start.
  bool waitForLog(const std::string& part, int32_t times = 1) const;
  [[nodiscard]] int32_t countInLog(const std::string& part) const;
  bool waitForFile(const std::string& name, const std::string& part) const;

 private:
  void adopt(HANDLE process);

  HANDLE process_ = nullptr;
  DWORD processId_ = 0;
  HWND window_ = nullptr;
};

// Waits for any condition, within the limit.
inline bool waitUntil(const WindowTest::Condition& condition) {
  return WindowTest::pumpUntil(condition);
}
