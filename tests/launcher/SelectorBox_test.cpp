// The selectors of the real launcher: what runs, what the menu and keys edit, and what the file
// keeps of it.
#include "launcher/LauncherWindow.h"

#include <algorithm>

namespace {

constexpr int32_t Margin = 1;
constexpr int32_t SeparatorHeight = 5;
constexpr const char* Separator = "[Selector:-]\r\n\r\n";

// A selector that leaves its name and its key in the log.
std::string selector(const std::string& name) {
  return "[Selector:" + name +
         "]\r\nExpand {\r\n  Key=$(KeyState)\r\n  Define {\r\n    Row=" + name +
         ":$(Key)\r\n  }\r\n}\r\n\r\n";
}
std::string selectorsOf(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += name == "-" ? Separator : selector(name);
  return text;
}
// What stands behind the selectors: comments and line ends of every kind.
constexpr const char* Tail =
    "[Other]\nkey = value \r\n// a note\r[Button:\xE9\x81\xB8]\r\nTitle=x\n"
    "Define {\r\n  y=\xF0\x9F\x98\x80\r\n}\r\n// the end";

class SelectorBox : public ::testing::Test {
 protected:
  // Opens the launcher and waits for the run of the first one.
  bool openWith(const std::vector<std::string>& names) {
    launcher.configure("[Option]\r\nViewSelector=True\r\n" + selectorsOf(names) + Tail);
    const std::string text = launcher.configuration();
    head_ = text.substr(0, text.find(selectorsOf(names)));
    if (!launcher.open() || !launcher.bringToFront() || !launcher.selectors()) return false;
    if (!measureRows(names) || !launcher.waitForLog(runOf(names.front()))) return false;
    layouts_ = launcher.countInLog(Layout);
    return layouts_ > 0;
  }
  static std::string runOf(const std::string& name) { return "|$ (Selector)" + name + "\r\n"; }
  static std::string traceOf(const std::string& name, const std::string& key) {
    return "[Row=" + name + ":" + key + "]";
  }
  [[nodiscard]] int32_t runs() const { return launcher.countInLog("|$ (Selector)"); }
  void press(int32_t row) const {
    sendAt(row, {buttonInput(MOUSEEVENTF_LEFTDOWN), buttonInput(MOUSEEVENTF_LEFTUP)});
  }
  void pressButton(POINT place) const {
    sendAt(launcher.buttons(), place,
           {buttonInput(MOUSEEVENTF_LEFTDOWN), buttonInput(MOUSEEVENTF_LEFTUP)});
  }
  void pressWith(uint16_t modifier, int32_t row) const {
    sendAt(row, {keyInput(modifier, 0), buttonInput(MOUSEEVENTF_LEFTDOWN),
                 buttonInput(MOUSEEVENTF_LEFTUP), keyInput(modifier, KEYEVENTF_KEYUP)});
  }
  void rightPress(int32_t row) const {
    sendAt(row, {buttonInput(MOUSEEVENTF_RIGHTDOWN), buttonInput(MOUSEEVENTF_RIGHTUP)});
  }
  void pressAndRun(int32_t row, const std::string& name, int32_t times = 1) const {
    press(row);
    ASSERT_TRUE(launcher.waitForLog(runOf(name), times)) << launcher.run.log();
  }
  static void key(uint16_t virtualKey) { WindowTest::pressKey(virtualKey); }
  static void keyWith(uint16_t modifier, uint16_t virtualKey) {
    send({keyInput(modifier, 0), keyInput(virtualKey, 0), keyInput(virtualKey, KEYEVENTF_KEYUP),
          keyInput(modifier, KEYEVENTF_KEYUP)});
  }
  // Of the five rows "axbyc", by keys.
  void markEveryOther() const {
    pressAndRun(0, "a", 2);
    for (const char* name : {"b", "c"}) {
      keyWith(VK_CONTROL, VK_DOWN);
      keyWith(VK_CONTROL, VK_DOWN);
      ASSERT_TRUE(launcher.waitForLog(runOf(name)));
      key(VK_SPACE);
      ASSERT_TRUE(launcher.waitForLog(runOf(name), 2));
    }
  }
  // Whether the menu has gone and its loop, which takes all input, is over.
  bool hasEnded(HWND menu) {
    return launcher.waitUntilGone(menu) && waitUntil([this] {
             GUITHREADINFO info{};
             info.cbSize = sizeof info;
             GetGUIThreadInfo(GetWindowThreadProcessId(launcher.window(), nullptr), &info);
             return !(info.flags & (GUI_INMENUMODE | GUI_POPUPMENUMODE)) && !info.hwndCapture;
           });
  }
  // Chooses the entry of the open menu that so many presses of the arrow lead to.
  void choose(uint16_t arrow, int32_t presses) {
    const HWND menu = launcher.waitForClass(LauncherWindow::MenuClass);
    ASSERT_NE(menu, nullptr);
    std::vector<INPUT> inputs;
    for (int32_t i = 0; i <= presses; ++i) {
      const uint16_t virtualKey = i < presses ? arrow : VK_RETURN;
      inputs.push_back(keyInput(virtualKey, 0));
      inputs.push_back(keyInput(virtualKey, KEYEVENTF_KEYUP));
    }
    send(inputs);
    ASSERT_TRUE(hasEnded(menu));
  }
  // The whole file, to the byte.
  [[nodiscard]] std::string fileWith(const std::vector<std::string>& names) const {
    return head_ + selectorsOf(names) + Tail;
  }
  // What the next edit leaves. The file is looked at when it has been saved, and not before: one
  // that somebody reads at that moment cannot be replaced.
  ::testing::AssertionResult fileBecomes(const std::vector<std::string>& names) {
    if (!launcher.waitForLog(Layout, ++layouts_) || !launcher.settle())
      return ::testing::AssertionFailure() << "no edit: " << launcher.run.log();
    const std::string text = launcher.configuration();
    return text == fileWith(names) ? ::testing::AssertionSuccess()
                                   : ::testing::AssertionFailure() << text;
  }

  LauncherWindow launcher;

 private:
  static INPUT keyInput(uint16_t virtualKey, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = virtualKey;
    input.ki.dwFlags = flags;
    return input;
  }
  static INPUT buttonInput(DWORD flags) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    return input;
  }
  // In one go: what the display tells of a moved pointer or a new focus comes late. It lets go of
  // keys that nobody holds on a real keyboard, and takes the choice in a menu away.
  static void send(std::vector<INPUT> inputs) {
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
  }
  void sendAt(int32_t row, const std::vector<INPUT>& inputs) const {
    sendAt(launcher.selectors(), {5, middleOf(row)}, inputs);
  }
  // The same behind one more move to the place, which the pointer may have been taken from.
  void sendAt(HWND box, POINT place, std::vector<INPUT> inputs) const {
    LauncherWindow::pointAt(box, place.x, place.y);
    WindowTest::settle();
    EXPECT_TRUE(launcher.settle());
    ClientToScreen(box, &place);
    INPUT move = buttonInput(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE);
    move.mi.dx = absolute(place.x, SM_CXSCREEN);
    move.mi.dy = absolute(place.y, SM_CYSCREEN);
    inputs.insert(inputs.begin(), move);
    send(inputs);
  }
  // The middle of a pixel, of 65,536 for the whole screen.
  static int32_t absolute(int32_t pixel, int metric) {
    return (2 * pixel + 1) * 0x8000 / GetSystemMetrics(metric);
  }
  [[nodiscard]] int32_t middleOf(int32_t row) const { return middles_[static_cast<size_t>(row)]; }
  // There are so many rows that they, and not the buttons, make the height.
  bool measureRows(const std::vector<std::string>& names) {
    const auto lines = static_cast<int32_t>(std::count(names.begin(), names.end(), "-"));
    const int32_t titles = static_cast<int32_t>(names.size()) - lines;
    const int32_t height = LauncherWindow::clientSize(launcher.selectors()).cy;
    const int32_t rowHeight = (height - 2 * Margin - lines * SeparatorHeight) / titles;
    int32_t top = Margin;
    for (const std::string& name : names) {
      const int32_t extent = name == "-" ? SeparatorHeight : rowHeight;
      middles_.push_back(top + extent / 2);
      top += extent;
    }
    return top + Margin == height;
  }

  static constexpr const char* Layout = "|$ SetupButtons"; // each edit asks for the size
  int32_t layouts_ = 0;
  std::string head_;
  std::vector<int32_t> middles_;
};

} // namespace

// --- Running

TEST_F(SelectorBox, TheFirstOneRunsAtEachStartAsIfItWasPressed) {
  ASSERT_TRUE(openWith({"a", "b", "c"}));
  EXPECT_TRUE(launcher.waitForLog(traceOf("a", "LButton")));
  EXPECT_EQ(runs(), 1);
  ASSERT_TRUE(launcher.close());
  ASSERT_TRUE(launcher.open());
  EXPECT_TRUE(launcher.waitForLog(runOf("a")));
  EXPECT_TRUE(launcher.close());
  EXPECT_EQ(runs(), 1);
}

TEST_F(SelectorBox, ASeparatorThatIsTheFirstRunsItsEmptyBlock) {
  ASSERT_TRUE(openWith({"-", "a", "b", "c"}));
  EXPECT_TRUE(launcher.close());
  EXPECT_EQ(runs(), 1);
  EXPECT_EQ(launcher.countInLog("[Row="), 0);
}

TEST_F(SelectorBox, InARowOfButtonsNoneRunsWhateverTheOptionSays) {
  launcher.configure("[Option]\r\nViewSelector=True\r\nHorizontal=True\r\n" +
                     selectorsOf({"a", "b"}) + "[Button:x]\r\nDefine {\r\ny=1\r\n}\r\n");
  const std::string before = launcher.configuration();
  ASSERT_TRUE(launcher.open());
  ASSERT_TRUE(launcher.bringToFront());
  EXPECT_EQ(launcher.selectors(), nullptr);
  pressButton({12, 12});
  EXPECT_TRUE(launcher.waitForLog("|$ (Button)x\r\n"));
  EXPECT_EQ(launcher.configuration(), before);
  EXPECT_TRUE(launcher.close());
  EXPECT_EQ(runs(), 0);
}

TEST_F(SelectorBox, ArrowKeysRunEachRowThatTheyComeTo) {
  ASSERT_TRUE(openWith({"a", "b", "-", "c"}));
  pressAndRun(1, "b");
  key(VK_DOWN);
  EXPECT_TRUE(launcher.waitForLog(runOf("-")));
  key(VK_DOWN);
  EXPECT_TRUE(launcher.waitForLog(traceOf("c", "LButton")));
  key(VK_HOME);
  EXPECT_TRUE(launcher.waitForLog(runOf("a"), 2));
  key(VK_END);
  EXPECT_TRUE(launcher.waitForLog(runOf("c"), 2));
  key(VK_UP);
  EXPECT_TRUE(launcher.waitForLog(runOf("-"), 2));
  EXPECT_EQ(runs(), 7);
}

TEST_F(SelectorBox, ADoubleClickRunsItOnceForEachOfItsPresses) {
  ASSERT_TRUE(openWith({"a", "b", "c"}));
  press(1);
  press(1);
  EXPECT_TRUE(launcher.waitForLog(traceOf("b", "DClick"))) << launcher.run.log();
  EXPECT_EQ(launcher.countInLog(traceOf("b", "LButton")), 1);
  EXPECT_EQ(launcher.countInLog(runOf("b")), 2);
  key(VK_RETURN); // the same as the second
  EXPECT_TRUE(launcher.waitForLog(traceOf("b", "DClick"), 2));
  EXPECT_EQ(runs(), 4);
}

TEST_F(SelectorBox, AChangeOfMarksRunsTheRowUnderThePointer) {
  ASSERT_TRUE(openWith({"a", "b", "c", "d"}));
  pressWith(VK_CONTROL, 2);
  EXPECT_TRUE(launcher.waitForLog(traceOf("c", "LButton,LControl"))) << launcher.run.log();
  pressWith(VK_SHIFT, 1);
  EXPECT_TRUE(launcher.waitForLog(traceOf("b", "LButton,LShift"))) << launcher.run.log();
  EXPECT_EQ(runs(), 3);
  key(VK_DELETE); // the range began at the first
  EXPECT_TRUE(fileBecomes({"c", "d"}));
}

TEST_F(SelectorBox, AScriptMayQuitTheLauncher) {
  ASSERT_TRUE(openWith({"a", "b", "c"}));
  ASSERT_TRUE(launcher.close());
  launcher.configure("[Option]\r\nViewSelector=True\r\n" + selectorsOf({"a", "b"}) +
                     "[Selector:c]\r\nQuitLauncher\r\nDefine {\r\nBehind=1\r\n}\r\n");
  ASSERT_TRUE(launcher.open());
  ASSERT_TRUE(launcher.bringToFront());
  press(2);
  EXPECT_TRUE(launcher.waitForEnd());
  EXPECT_EQ(launcher.exitCode(), 0U);
  EXPECT_EQ(launcher.countInLog("[Behind=1]"), 1) << "the command behind runs";
  EXPECT_EQ(launcher.countInLog("|$ Terminate\r\n"), 1);
}

// --- The menu

TEST_F(SelectorBox, TheMenuOfARightPressWorksOnTheMarksNotOnTheRowBelowIt) {
  ASSERT_TRUE(openWith({"a", "b", "c"}));
  pressAndRun(1, "b");
  rightPress(0);
  choose(VK_DOWN, 1);
  EXPECT_TRUE(fileBecomes({"a", "-", "b", "c"}));
  EXPECT_EQ(runs(), 2) << "neither the right press nor the edit runs anything";
}

TEST_F(SelectorBox, EscOfTheMenuLeavesAllAsItWas) {
  ASSERT_TRUE(openWith({"a", "b", "c"}));
  rightPress(2);
  const HWND menu = launcher.waitForClass(LauncherWindow::MenuClass);
  ASSERT_NE(menu, nullptr);
  WindowTest::pressKey(VK_ESCAPE);
  ASSERT_TRUE(hasEnded(menu));
  key(VK_DOWN); // and it serves still
  EXPECT_TRUE(launcher.waitForLog(runOf("b")));
  EXPECT_EQ(launcher.configuration(), fileWith({"a", "b", "c"}));
  EXPECT_EQ(runs(), 2);
}

TEST_F(SelectorBox, EntriesOfTheMenuEditTheFile) {
  ASSERT_TRUE(openWith({"b", "c", "-", "a", "\xE9\x81\xB8"}));
  pressAndRun(1, "c");
  rightPress(1);
  choose(VK_DOWN, 3); // up
  EXPECT_TRUE(fileBecomes({"c", "b", "-", "a", "\xE9\x81\xB8"}));
  rightPress(1);
  choose(VK_DOWN, 4); // down
  EXPECT_TRUE(fileBecomes({"b", "c", "-", "a", "\xE9\x81\xB8"}));
  keyWith(VK_CONTROL, 'A');
  key(VK_RIGHT);
  choose(VK_DOWN, 5); // sort
  EXPECT_TRUE(fileBecomes({"-", "a", "b", "c", "\xE9\x81\xB8"}));
  for (int32_t i = 0; i < 2; ++i) { // a sort downwards, not a reversal
    key(VK_LEFT);
    choose(VK_UP, 1);
    EXPECT_TRUE(fileBecomes({"\xE9\x81\xB8", "c", "b", "a", "-"}));
  }
  key(VK_HOME);
  rightPress(3);
  choose(VK_DOWN, 2); // delete
  EXPECT_TRUE(fileBecomes({"c", "b", "a", "-"}));
}

// --- Keys

TEST_F(SelectorBox, AltArrowsMoveTheRowAndTheNextStartBeginsWithTheNewFirst) {
  ASSERT_TRUE(openWith({"a", "b", "c"}));
  pressAndRun(1, "b");
  keyWith(VK_MENU, VK_UP);
  EXPECT_TRUE(fileBecomes({"b", "a", "c"}));
  keyWith(VK_MENU, VK_DOWN);
  EXPECT_TRUE(fileBecomes({"a", "b", "c"}));
  keyWith(VK_MENU, VK_DOWN);
  EXPECT_TRUE(fileBecomes({"a", "c", "b"}));
  keyWith(VK_MENU, VK_UP);
  EXPECT_TRUE(fileBecomes({"a", "b", "c"}));
  keyWith(VK_MENU, VK_UP);
  EXPECT_TRUE(fileBecomes({"b", "a", "c"}));
  EXPECT_EQ(runs(), 2) << "a move runs nothing";
  ASSERT_TRUE(launcher.close());
  ASSERT_TRUE(launcher.open());
  EXPECT_TRUE(launcher.waitForLog(runOf("b")));
  EXPECT_TRUE(launcher.close());
  EXPECT_EQ(runs(), 1);
}

TEST_F(SelectorBox, ScatteredRowsGatherUpwardsInTheirOrder) {
  ASSERT_TRUE(openWith({"a", "x", "b", "y", "c"}));
  markEveryOther();
  keyWith(VK_MENU, VK_UP);
  EXPECT_TRUE(fileBecomes({"a", "b", "c", "x", "y"}));
}

TEST_F(SelectorBox, ScatteredRowsGatherDownwardsInReverse) {
  ASSERT_TRUE(openWith({"a", "x", "b", "y", "c"}));
  markEveryOther();
  keyWith(VK_MENU, VK_DOWN);
  EXPECT_TRUE(fileBecomes({"x", "y", "b", "a", "c"}));
}

TEST_F(SelectorBox, DeleteTakesTheRowAndMarksTheOneInItsPlace) {
  ASSERT_TRUE(openWith({"a", "b", "c", "d"}));
  pressAndRun(1, "b");
  key(VK_DELETE);
  EXPECT_TRUE(fileBecomes({"a", "c", "d"}));
  keyWith(VK_MENU, VK_DELETE);
  EXPECT_TRUE(fileBecomes({"a", "d"}));
  EXPECT_EQ(runs(), 2) << "a deletion runs nothing";
  key(VK_DELETE);
  EXPECT_TRUE(fileBecomes({"a"}));
}

TEST_F(SelectorBox, WithoutAMarkDeleteWritesNoFile) {
  ASSERT_TRUE(openWith({"a", "b", "c"}));
  pressAndRun(1, "b");
  key(VK_SPACE);
  EXPECT_TRUE(launcher.waitForLog(runOf("b"), 2));
  launcher.run.writeFile("Tarvellon.ini", "as somebody else left it");
  key(VK_DELETE);
  keyWith(VK_MENU, VK_UP);
  key(VK_DOWN);
  EXPECT_TRUE(launcher.waitForLog(runOf("c")));
  EXPECT_EQ(launcher.configuration(), "as somebody else left it");
}

TEST_F(SelectorBox, AListWithoutRowsIsTenWideInsideItsMargins) {
  ASSERT_TRUE(openWith({"a long title", "b", "c"}));
  pressAndRun(1, "b");
  keyWith(VK_CONTROL, 'A');
  key(VK_DELETE);
  EXPECT_TRUE(fileBecomes({}));
  EXPECT_TRUE(waitUntil([this] {
    return LauncherWindow::clientSize(launcher.selectors()).cx == 10 + 2 * Margin;
  })) << LauncherWindow::clientSize(launcher.selectors()).cx;
  ASSERT_TRUE(launcher.close());
  ASSERT_TRUE(launcher.open());
  EXPECT_EQ(LauncherWindow::clientSize(launcher.selectors()).cx, 10 + 2 * Margin);
  EXPECT_TRUE(launcher.close());
  EXPECT_EQ(runs(), 0);
}
