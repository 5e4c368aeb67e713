// The buttons of the real launcher: presses, keys, edits and what the file keeps of them.
#include "launcher/LauncherWindow.h"

namespace {

constexpr int32_t RowHeight = 24;
constexpr const wchar_t* TipClass = L"Class_TipDialog";

// A button that leaves its key and its name in the log.
std::string button(const std::string& name) {
  return "[Button:" + name + "]\r\nAction {\r\n  Name=$(KeyState)\r\n}\r\n\r\n";
}
const char Actions[] = "[Action:LButton]\r\nDefine {\r\n  By=left\r\n}\r\n"
                       "[Action:RButton]\r\nDefine {\r\n  By=right\r\n}\r\n";

class ButtonBox : public ::testing::Test {
 protected:
  void openWith(const std::string& options, const std::string& sections) {
    launcher.configure("[Option]\r\n" + options + sections + Actions);
    ASSERT_TRUE(launcher.open());
    ASSERT_TRUE(launcher.bringToFront());
    ASSERT_NE(launcher.buttons(), nullptr);
  }
  // The middle of the n-th row of a column of buttons.
  static int32_t row(int32_t index) { return index * RowHeight + RowHeight / 2; }
  void press(int32_t x, int32_t y) const {
    LauncherWindow::press(launcher.buttons(), x, y);
    EXPECT_TRUE(launcher.settle());
  }
  void key(uint16_t virtualKey, const std::vector<uint16_t>& modifiers = {}) const {
    LauncherWindow::keyWith(modifiers, virtualKey);
    EXPECT_TRUE(launcher.settle());
  }
  [[nodiscard]] size_t placeOf(const std::string& section) const {
    return launcher.configuration().find(section);
  }

  LauncherWindow launcher;
};

} // namespace

TEST_F(ButtonBox, EachMouseKeyRunsTheButtonInItsName) {
  openWith("", button("a") + button("b"));
  press(10, row(1));
  EXPECT_TRUE(launcher.waitForLog("(Button)b"));
  EXPECT_TRUE(launcher.waitForLog("[By=left]"));
  LauncherWindow::rightPress(launcher.buttons(), 10, row(0));
  EXPECT_TRUE(launcher.waitForLog("(Button)a"));
  EXPECT_TRUE(launcher.waitForLog("[By=right]"));
  EXPECT_EQ(launcher.countInLog("[By=left]"), 1);
  EXPECT_TRUE(launcher.close());
}

TEST_F(ButtonBox, KeysRunTheButtonsOfARow) {
  openWith("Horizontal=True\r\n", button("a") + "[Button:-]\r\n\r\n" + button("b"));
  press(10, 10);
  EXPECT_TRUE(launcher.waitForLog("(Button)a"));
  key(VK_RIGHT);
  key(VK_RETURN);
  EXPECT_TRUE(launcher.waitForLog("(Button)b"));
  key(VK_LEFT);
  key(VK_SPACE);
  EXPECT_TRUE(launcher.waitForLog("(Button)a", 2));
  EXPECT_TRUE(launcher.close());
}

TEST_F(ButtonBox, AMovedButtonIsBackInItsOldPlaceAtTheNextStart) {
  openWith("", button("a") + button("b") + button("c"));
  press(10, row(2));
  EXPECT_TRUE(launcher.waitForLog("(Button)c"));
  key(VK_UP, {VK_MENU});
  press(10, row(1));
  EXPECT_TRUE(launcher.waitForLog("(Button)c", 2)); // it stands there now
  EXPECT_LT(placeOf("[Button:b]"), placeOf("[Button:c]"));
  EXPECT_TRUE(launcher.close());
  ASSERT_TRUE(launcher.open());
  ASSERT_TRUE(launcher.bringToFront());
  press(10, row(1));
  EXPECT_TRUE(launcher.waitForLog("(Button)b"));
  EXPECT_TRUE(launcher.close());
}

TEST_F(ButtonBox, TheNextSavingEditKeepsTheMove) {
  openWith("", button("a") + button("b") + button("c"));
  press(10, row(0));
  key(VK_DOWN, {VK_MENU});
  key(VK_END);
  key(VK_DELETE);
  EXPECT_TRUE(launcher.waitForLog("SetupButtons", 2));
  EXPECT_LT(placeOf("[Button:b]"), placeOf("[Button:a]"));
  EXPECT_EQ(placeOf("[Button:c]"), std::string::npos);
  EXPECT_NE(placeOf("[Action:RButton]"), std::string::npos);
  EXPECT_TRUE(launcher.close());
}

TEST_F(ButtonBox, ADeletedButtonMakesTheWindowSmallerByItsRow) {
  openWith("", button("a") + button("b"));
  const RECT before = LauncherWindow::screenRect(launcher.window());
  press(10, row(0));
  key(VK_DELETE, {VK_MENU});
  EXPECT_TRUE(waitUntil([&] {
    const RECT now = LauncherWindow::screenRect(launcher.window());
    return now.bottom - now.top == before.bottom - before.top - RowHeight;
  }));
  EXPECT_EQ(placeOf("[Button:a]"), std::string::npos);
  EXPECT_TRUE(launcher.close());
}

TEST_F(ButtonBox, ADragFromASeparatorMovesTheMainWindow) {
  openWith("", button("a") + "[Button:-]\r\n\r\n" + button("b"));
  const RECT before = LauncherWindow::screenRect(launcher.window());
  LauncherWindow::drag(launcher.buttons(), {10, RowHeight + 3}, {50, RowHeight + 33});
  EXPECT_TRUE(waitUntil([&] {
    const RECT now = LauncherWindow::screenRect(launcher.window());
    return now.left == before.left + 40 && now.top == before.top + 30;
  }));
  EXPECT_EQ(launcher.countInLog("(Button)"), 0);
  EXPECT_TRUE(launcher.close());
}

TEST_F(ButtonBox, TipsComeWithTheirOptionAndGoWithTheWindow) {
  openWith("ViewTip=True\r\n", button("a"));
  LauncherWindow::pointAt(launcher.buttons(), 10, 10);
  EXPECT_NE(launcher.waitForClass(TipClass), nullptr);
  EXPECT_TRUE(launcher.close());
  EXPECT_FALSE(launcher.isRunning());
}
