// Error reports over the launcher's window: where they stand, and what they block.
#include "launcher/LauncherWindow.h"

namespace {

constexpr const wchar_t* ReportClass = L"Class_InfoDialog";
constexpr const char* Faulty = "[Button:Bad]\r\nTitle=Bad button\r\nNonsense\r\n"
                               "[Button:Good]\r\nTitle=Good\r\nDefine {\r\nDone=1\r\n}\r\n";

class ReportWindow : public ::testing::Test {
 protected:
  // Opens the launcher with its left top there, and presses its faulty button.
  HWND reportAt(POINT corner, const std::string& options = {}) {
    launcher.configure("[Option]\r\n" + options + "\r\n" + Faulty);
    if (!launcher.open()) return nullptr;
    SetWindowPos(launcher.window(), nullptr, corner.x, corner.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    waitUntil([&] {
      const RECT place = LauncherWindow::screenRect(launcher.window());
      return place.left == corner.x && place.top == corner.y;
    });
    launcher.bringToFront();
    LauncherWindow::press(launcher.buttons(), 12, 12);
    return launcher.waitForClass(ReportClass);
  }
  void answer(HWND report) const {
    waitUntil([&] { return !IsWindow(report) || WindowTest::bringToFront(report); });
    WindowTest::pressKey(VK_RETURN);
  }

  LauncherWindow launcher;
};

} // namespace

TEST_F(ReportWindow, StandsAtTheSideWithMoreRoom) {
  const HWND report = reportAt({100, 120});
  ASSERT_NE(report, nullptr);
  const RECT main = LauncherWindow::screenRect(launcher.window());
  const RECT place = LauncherWindow::screenRect(report);
  EXPECT_EQ(place.left, main.right - 7);
  EXPECT_EQ(place.top, main.top);
  EXPECT_EQ(WindowTest::textOf(report), L"Tarvellon");
  answer(report);
  EXPECT_TRUE(launcher.waitUntilGone(report));
}

TEST_F(ReportWindow, StandsAtTheLeftOfALauncherAtTheRight) {
  const HWND report = reportAt({GetSystemMetrics(SM_CXSCREEN) - 200, 120});
  ASSERT_NE(report, nullptr);
  const RECT main = LauncherWindow::screenRect(launcher.window());
  EXPECT_EQ(LauncherWindow::screenRect(report).right, main.left + 7);
  EXPECT_EQ(LauncherWindow::screenRect(report).top, main.top);
  answer(report);
  EXPECT_TRUE(launcher.waitUntilGone(report));
}

TEST_F(ReportWindow, StandsBelowAHorizontalLauncherAtTheTop) {
  const HWND report = reportAt({100, 120}, "Horizontal=True\r\n");
  ASSERT_NE(report, nullptr);
  const RECT main = LauncherWindow::screenRect(launcher.window());
  EXPECT_EQ(LauncherWindow::screenRect(report).left, main.left);
  EXPECT_EQ(LauncherWindow::screenRect(report).top, main.bottom);
  answer(report);
  EXPECT_TRUE(launcher.waitUntilGone(report));
}

TEST_F(ReportWindow, BlocksTheLauncherUntilItIsAnswered) {
  const HWND report = reportAt({100, 120});
  ASSERT_NE(report, nullptr);
  EXPECT_TRUE(IsWindowEnabled(launcher.window())); // the platform knows nothing of it
  LauncherWindow::press(launcher.buttons(), 12, 36);
  ASSERT_TRUE(waitUntil([&] { return WindowTest::bringToFront(report); }));
  EXPECT_EQ(launcher.countInLog("(Button)Good"), 0);
  WindowTest::pressKey(VK_RETURN);
  ASSERT_TRUE(launcher.waitUntilGone(report));
  ASSERT_TRUE(launcher.waitForLog("$ Failed", 2)); // of the block and of the button
  ASSERT_TRUE(waitUntil([&] { return launcher.settle() && launcher.bringToFront(); }));
  LauncherWindow::press(launcher.buttons(), 12, 36);
  EXPECT_TRUE(launcher.waitForLog("(Button)Good"));
  EXPECT_TRUE(launcher.close());
}

TEST_F(ReportWindow, AnotherProcessAnswersIt) {
  const HWND report = reportAt({100, 120});
  ASSERT_NE(report, nullptr);
  char number[] = "1";
  COPYDATASTRUCT data{};
  data.cbData = 1;
  data.lpData = number;
  EXPECT_EQ(SendMessageW(report, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data)), 1);
  EXPECT_TRUE(launcher.waitUntilGone(report));
  EXPECT_TRUE(launcher.close());
}
