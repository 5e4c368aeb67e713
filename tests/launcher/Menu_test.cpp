// Popup menus of scripts in the real launcher: what they show and where, what a choice runs, and
// what becomes of a menu that is closed.
#include "launcher/ScriptLauncher.h"

namespace {

constexpr COLORREF SelectedColour = 0xFFD0C0; // blue highest
constexpr int32_t EntryBorder = 2;

class ScriptMenu : public ScriptLauncher {
 protected:
  static std::string menu(const std::string& lines) { return block("Menu", lines); }
  // One button with a menu and a command behind it.
  void openMenuOf(const std::string& lines, const std::string& options = {}) {
    openWith(button("Menu", menu(lines) + Behind), options);
  }
  // Of the menu of a button, opened and closed again; -1 when that fails.
  LONG heightOfMenu(int32_t row) {
    const int32_t ends = launcher.countInLog("@Executor>User");
    const HWND shown = menuAfterPress(row);
    if (!shown) return -1;
    const LONG height = heightOf(shown);
    keys({VK_ESCAPE});
    return launcher.waitUntilGone(shown) && launcher.waitForLog("@Executor>User", ends + 1) &&
                   isBack()
               ? height
               : -1;
  }
  static COLORREF normalColour() {
    COLORREF colour = GetSysColor(COLOR_MENU);
    const auto raised = [](BYTE channel) {
      return static_cast<BYTE>(channel + (255 - channel) / 2);
    };
    return RGB(raised(GetRValue(colour)), raised(GetGValue(colour)), raised(GetBValue(colour)));
  }
  void expectPlace(const std::string& options, POINT corner,
                   const std::function<void(const RECT&, const RECT&)>& check) {
    openWith(button("Menu", menu(item("First") + item("Second"))), options);
    moveTo(corner.x, corner.y);
    const HWND shown = menuAfterPress();
    ASSERT_NE(shown, nullptr);
    check(LauncherWindow::screenRect(shown), LauncherWindow::screenRect(launcher.buttons()));
    keys({VK_ESCAPE});
    EXPECT_TRUE(launcher.waitUntilGone(shown));
  }
};

} // namespace

// --- Choosing

TEST_F(ScriptMenu, AnEntryIsChosenByTheMouseAndTheRunGoesOn) {
  openMenuOf(item("First") + item("Second") + item("Third"));
  const HWND shown = menuAfterPress();
  ASSERT_NE(shown, nullptr);
  pressEntry(shown, 1, 3);
  EXPECT_TRUE(launcher.waitForLog(BehindRan));
  EXPECT_EQ(marks("Second"), 1);
  EXPECT_EQ(marks("First") + marks("Third"), 0) << "only what was chosen runs";
  EXPECT_EQ(launcher.countInLog("$ Failed"), 0);
  EXPECT_TRUE(launcher.close());
}

TEST_F(ScriptMenu, TheRightMouseKeyChoosesToo) {
  openMenuOf(item("First") + item("Second"));
  const HWND shown = menuAfterPress();
  ASSERT_NE(shown, nullptr);
  const POINT point = entry(shown, 0, 2);
  LauncherWindow::rightPress(shown, point.x, point.y);
  EXPECT_TRUE(launcher.waitForLog(BehindRan));
  EXPECT_EQ(marks("First"), 1);
}

TEST_F(ScriptMenu, AnEntryIsChosenByKeys) {
  openMenuOf(item("First") + item("Second") + item("Third"));
  ASSERT_NE(menuAfterPress(), nullptr);
  keys({VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN});
  EXPECT_TRUE(launcher.waitForLog(BehindRan));
  EXPECT_EQ(marks("Third"), 1);
}

TEST_F(ScriptMenu, AnEntryOfASubmenuRunsInTheOutermostMenusRun) {
  openMenuOf(item("First") + menu("Title=More\r\n" + item("Inner") + item("Innermost")));
  const HWND outer = menuAfterPress();
  ASSERT_NE(outer, nullptr);
  EXPECT_EQ(menus().size(), 1U) << "the inner one shows nothing by itself";
  keys({VK_DOWN, VK_DOWN, VK_RIGHT});
  ASSERT_TRUE(waitForMenus(2));
  keys({VK_DOWN, VK_RETURN});
  EXPECT_TRUE(launcher.waitForLog(BehindRan));
  EXPECT_EQ(marks("Innermost"), 1);
  EXPECT_EQ(launcher.countInLog("$ Failed"), 0);
  EXPECT_TRUE(waitForMenus(0));
}

TEST_F(ScriptMenu, ASubmenuOpensUnderTheMouse) {
  openMenuOf(item("First") + menu("Title=More\r\n" + item("Inner") + item("Innermost")));
  const HWND outer = menuAfterPress();
  ASSERT_NE(outer, nullptr);
  pressEntry(outer, 1, 2);
  ASSERT_TRUE(waitForMenus(2));
  const std::vector<HWND> both = menus();
  pressEntry(both[0] == outer ? both[1] : both[0], 0, 2);
  EXPECT_TRUE(launcher.waitForLog(BehindRan));
  EXPECT_EQ(marks("Inner"), 1);
}

TEST_F(ScriptMenu, ABreakInAnEntryEndsTheLoopAround) {
  openWith(button("Loop", block("While", "Condition=True\r\n" + mark("Round") +
                                             menu(item("Go on") +
                                                  block("MenuItem", "Title=Leave\r\nBreak\r\n"))) +
                              Behind));
  ASSERT_NE(menuAfterPress(), nullptr);
  keys({VK_DOWN, VK_RETURN});
  ASSERT_TRUE(launcher.waitForLog("[Mark=Round]", 2));
  ASSERT_TRUE(waitForMenus(1));
  keys({VK_DOWN, VK_DOWN, VK_RETURN});
  EXPECT_TRUE(launcher.waitForLog(BehindRan));
  EXPECT_EQ(marks("Round"), 2);
  EXPECT_EQ(marks("Go on"), 1);
}

// --- Closing

TEST_F(ScriptMenu, EscapeEndsTheRunSilentlyAsFailed) {
  openMenuOf(item("First") + item("Second"));
  const HWND shown = menuAfterPress();
  ASSERT_NE(shown, nullptr);
  keys({VK_ESCAPE});
  ASSERT_TRUE(launcher.waitUntilGone(shown));
  EXPECT_TRUE(launcher.waitForLog("|$ Failed\r\n", 2)) << "of the menu and of the button";
  EXPECT_EQ(launcher.countInLog(BehindRan), 0);
  EXPECT_TRUE(launcher.visibleWindows(QuestionClass).empty()) << "no message";
  EXPECT_EQ(launcher.countInLog("#Error"), 0);
  EXPECT_TRUE(launcher.close());
}

TEST_F(ScriptMenu, APressElsewhereClosesItToo) {
  openMenuOf(item("First"));
  const HWND shown = menuAfterPress();
  ASSERT_NE(shown, nullptr);
  WindowTest::movePointer(3, 3);
  ASSERT_TRUE(launcher.settle());
  WindowTest::pressMouse(3, 3);
  ASSERT_TRUE(launcher.waitUntilGone(shown));
  EXPECT_TRUE(launcher.waitForLog("|$ Failed\r\n", 2));
  EXPECT_EQ(marks("First"), 0);
}

TEST_F(ScriptMenu, AWindowClosedUnderItsOwnMenuLeavesNothingBehind) {
  openMenuOf(item("First") + item("Second"));
  ASSERT_NE(menuAfterPress(), nullptr);
  PostMessageW(launcher.window(), WM_CLOSE, 0, 0);
  EXPECT_TRUE(launcher.waitForEnd());
  EXPECT_EQ(launcher.exitCode(), 0U);
  EXPECT_EQ(launcher.countInLog(BehindRan), 0);
  EXPECT_EQ(launcher.countInLog("|$ Terminate\r\n"), 1);
}

TEST_F(ScriptMenu, AQuitBeforeAMenuEndsTheLauncher) {
  openWith(button("Leave", "QuitLauncher\r\n" + menu(item("First")) + Behind));
  pressButton();
  EXPECT_TRUE(launcher.waitForEnd());
  EXPECT_EQ(launcher.exitCode(), 0U);
  EXPECT_EQ(launcher.countInLog("|$ Terminate\r\n"), 1);
}

// --- Building

TEST_F(ScriptMenu, ASecondPressShowsTheSameEntriesWithoutBuilding) {
  openMenuOf(mark("Built") + item("First") + item("Second"));
  const HWND first = menuAfterPress();
  ASSERT_NE(first, nullptr);
  const LONG height = heightOf(first);
  pressEntry(first, 0, 2);
  ASSERT_TRUE(launcher.waitForLog(BehindRan));
  ASSERT_TRUE(launcher.waitUntilGone(first));
  const HWND second = menuAfterPress();
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(heightOf(second), height);
  pressEntry(second, 1, 2);
  ASSERT_TRUE(launcher.waitForLog(BehindRan, 2));
  EXPECT_EQ(marks("Built"), 1);
  EXPECT_EQ(marks("First"), 1);
  EXPECT_EQ(marks("Second"), 1);
}

TEST_F(ScriptMenu, AnIfInsideDecidesOnceForAll) {
  openMenuOf(block("If", "Condition=$(IsMissing:$(Grown))\r\n" + item("Seldom")) + item("Always") +
             block("Define", "Grown=1\r\n"));
  for (int32_t round = 1; round <= 2; ++round) {
    const HWND shown = menuAfterPress();
    ASSERT_NE(shown, nullptr);
    pressEntry(shown, 0, 2);
    ASSERT_TRUE(launcher.waitForLog(BehindRan, round));
    ASSERT_TRUE(launcher.waitUntilGone(shown));
  }
  EXPECT_EQ(marks("Seldom"), 2);
}

TEST_F(ScriptMenu, AFailedBuildShowsAtTheNextPressAsFarAsItCame) {
  openMenuOf(item("First") + block("OpenFile", "") + item("Never"));
  const HWND report = dialogAfterPress(QuestionClass);
  ASSERT_NE(report, nullptr);
  ASSERT_TRUE(answer(report, {VK_RETURN}));
  ASSERT_TRUE(launcher.waitForLog("|$ Failed\r\n", 3));
  EXPECT_TRUE(menus().empty());
  ASSERT_TRUE(isBack());
  const HWND shown = menuAfterPress();
  ASSERT_NE(shown, nullptr);
  pressEntry(shown, 0, 1);
  EXPECT_TRUE(launcher.waitForLog(BehindRan));
  EXPECT_EQ(marks("First"), 1);
}

TEST_F(ScriptMenu, EntriesOutsideAMenuAreReported) {
  openWith(button("Item", item("Lost")) + button("Line", "Separator\r\n"));
  const char* names[] = {"MenuItem", "Separator"};
  for (int32_t row = 0; row < 2; ++row) {
    const HWND report = dialogAfterPress(QuestionClass, row);
    ASSERT_NE(report, nullptr);
    const std::string text = utf8Of(textsOf(report));
    EXPECT_NE(text.find("Out of menu scope !"), std::string::npos) << text;
    EXPECT_NE(text.find(std::string("[command] ") + names[row]), std::string::npos) << text;
    ASSERT_TRUE(answer(report, {VK_RETURN}));
    ASSERT_TRUE(isBack());
  }
}

// --- Separators

TEST_F(ScriptMenu, LeadingAndDoubledSeparatorsAreDroppedAndATrailingOneStays) {
  const std::string line = "Separator\r\n";
  openWith(button("Plain", menu(item("A") + item("B"))) +
           button("Third", menu(item("A") + item("B") + item("C"))) +
           button("One", menu(item("A") + line + item("B"))) +
           button("Lead", menu(line + line + item("A") + item("B"))) +
           button("Double", menu(item("A") + line + line + line + item("B"))) +
           button("Trail", menu(item("A") + item("B") + line + line)));
  const LONG plain = heightOfMenu(0);
  ASSERT_GT(plain, 0);
  const LONG entryHeight = heightOfMenu(1) - plain;
  const LONG half = entryHeight / 2;
  EXPECT_GE(entryHeight, 16 + 2 * EntryBorder) << "an entry has room for an icon";
  EXPECT_EQ(heightOfMenu(2), plain + half) << "half an entry high";
  EXPECT_EQ(heightOfMenu(3), plain);
  EXPECT_EQ(heightOfMenu(4), plain + half);
  EXPECT_EQ(heightOfMenu(5), plain + half);
}

// --- Place

TEST_F(ScriptMenu, OpensAtTheRightOfAButtonOnTheLeft) {
  expectPlace("", {100, 120}, [](const RECT& shown, const RECT& pressed) {
    EXPECT_EQ(shown.left, pressed.right);
    EXPECT_EQ(shown.top, pressed.top);
  });
}

TEST_F(ScriptMenu, OpensAtTheLeftOfAButtonOnTheRight) {
  expectPlace("", {GetSystemMetrics(SM_CXSCREEN) - 200, 120},
              [](const RECT& shown, const RECT& pressed) {
                EXPECT_EQ(shown.right, pressed.left);
                EXPECT_EQ(shown.top, pressed.top);
              });
}

TEST_F(ScriptMenu, OpensBelowAButtonOfARowAtTheTop) {
  expectPlace("Horizontal=True\r\n", {100, 120}, [](const RECT& shown, const RECT& pressed) {
    EXPECT_EQ(shown.left, pressed.left);
    EXPECT_EQ(shown.top, pressed.bottom);
  });
}

TEST_F(ScriptMenu, OpensAboveAButtonOfARowAtTheBottom) {
  expectPlace("Horizontal=True\r\n", {100, GetSystemMetrics(SM_CYSCREEN) - 200},
              [](const RECT& shown, const RECT& pressed) {
                EXPECT_EQ(shown.left, pressed.left);
                EXPECT_EQ(shown.bottom, pressed.top);
              });
}

TEST_F(ScriptMenu, StandsBesideThePressedButtonNotTheWindow) {
  openWith(button("Other", mark("Other")) + button("Menu", menu(item("First"))));
  moveTo(100, 120);
  const HWND shown = menuAfterPress(1);
  ASSERT_NE(shown, nullptr);
  const RECT box = LauncherWindow::screenRect(launcher.buttons());
  EXPECT_EQ(LauncherWindow::screenRect(shown).left, box.right);
  EXPECT_EQ(LauncherWindow::screenRect(shown).top, box.top + RowHeight);
}

// --- Look

TEST_F(ScriptMenu, TheEntryUnderThePointerHasItsOwnColour) {
  openMenuOf(item("First") + item("Second"));
  const HWND shown = menuAfterPress();
  ASSERT_NE(shown, nullptr);
  const POINT first = entry(shown, 0, 2);
  const POINT second = entry(shown, 1, 2);
  const int32_t right = LauncherWindow::clientSize(shown).cx - EntryBorder - 6; // beside the title
  LauncherWindow::pointAt(shown, first.x, first.y);
  EXPECT_TRUE(waitUntil(
      [&] { return LauncherWindow::screenPixel(shown, right, first.y) == SelectedColour; }));
  EXPECT_EQ(LauncherWindow::screenPixel(shown, right, second.y), normalColour());
  LauncherWindow::pointAt(shown, second.x, second.y);
  EXPECT_TRUE(waitUntil(
      [&] { return LauncherWindow::screenPixel(shown, right, second.y) == SelectedColour; }));
  EXPECT_EQ(LauncherWindow::screenPixel(shown, right, first.y), normalColour());
}

TEST_F(ScriptMenu, TheIconSizeCountsForHeightAndWidth) {
  SIZE sizes[2] = {};
  for (int32_t round = 0; round < 2; ++round) {
    const char* iconSizes[] = {"32", "64"};
    openMenuOf(item("First"),
               std::string("[WindowParameter]\r\nMenuIconSize=") + iconSizes[round] + "\r\n");
    const HWND shown = menuAfterPress();
    ASSERT_NE(shown, nullptr);
    sizes[round] = LauncherWindow::clientSize(shown);
    keys({VK_ESCAPE});
    ASSERT_TRUE(launcher.waitUntilGone(shown));
    ASSERT_TRUE(launcher.close());
  }
  EXPECT_EQ(sizes[1].cy - sizes[0].cy, 32);
  EXPECT_EQ(sizes[1].cx - sizes[0].cx, 32);
}

// --- PickupMenu

TEST_F(ScriptMenu, APickedValueStaysRawUntilItIsRead) {
  openWith(button("Pick", block("Define", "Name=World\r\n") +
                              block("PickupMenu", "One=1\r\nGreeting=Hello $(Name)\r\n") +
                              reading("Pickup")));
  const HWND shown = menuAfterPress();
  ASSERT_NE(shown, nullptr);
  pressEntry(shown, 1, 2);
  EXPECT_TRUE(launcher.waitForLog("[Pickup=Hello $(Name)]"));
  EXPECT_TRUE(launcher.waitForLog("Success (Hello $(Name))"));
  EXPECT_TRUE(launcher.waitForLog("Success (World)"));
}

TEST_F(ScriptMenu, SeparatorsOfBothKindsInAPickupMenuAreNoEntries) {
  openWith(button("Plain", block("PickupMenu", "A=1\r\nB=2\r\n")) +
           button("Third", block("PickupMenu", "A=1\r\nB=2\r\nC=3\r\n")) +
           button("Lines", block("PickupMenu", "Separator=x\r\nA=1\r\nSeparator=x\r\nSeparator\r\n"
                                               "B=2\r\nNonsense {\r\n}\r\n")));
  const LONG plain = heightOfMenu(0);
  const LONG half = (heightOfMenu(1) - plain) / 2;
  ASSERT_GT(half, 0);
  EXPECT_EQ(heightOfMenu(2), plain + half);
}
