// The button box under real mouse and key input.
#include "gui/ButtonBoxBed.h"

#include "app/GuiMainCommands.h"
#include "job/JobWindowContext.h"

using namespace AppLayer;
using namespace WindowTest;
using Property = GuiButtonBoxProperty;

namespace {

class GuiButtonBoxMouse : public ButtonBoxTest {};
class GuiButtonBoxKeys : public ButtonBoxTest {};
class GuiButtonBoxLife : public ButtonBoxTest {};

} // namespace

// --- Presses

TEST_F(GuiButtonBoxMouse, ALeftReleaseRunsTheButton) {
  open(button("a") + button("b"));
  pointAt(1);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  EXPECT_EQ(cursor(), 1);
  EXPECT_TRUE(has(Property::PressInProgress));
  EXPECT_TRUE(runs().empty());
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
  ASSERT_EQ(runs().size(), 1U);
  EXPECT_EQ(runs()[0].substr(0, 9), "b LButton");
  EXPECT_FALSE(has(Property::PressInProgress));
  EXPECT_NE(bed.log().find("(Button)b"), std::string::npos);
}

TEST_F(GuiButtonBoxMouse, ARightReleaseRunsItWithItsOwnKey) {
  open(button("a"));
  pressRight(0);
  ASSERT_EQ(runs().size(), 1U);
  EXPECT_EQ(runs()[0].substr(0, 9), "a RButton");
}

TEST_F(GuiButtonBoxMouse, TheScriptKnowsWhereItsButtonStandsOnTheScreen) {
  open(button("a") + button("b"));
  JobLayer::JobRectangle known;
  bed.dialogs.onReport = [&] { known = JobLayer::JobWindowContext::instance().rectangle; };
  pressLeft(1);
  const WinRect area = GuiButtonLayout::rectOf(*buttons().at(1));
  const WinPoint topLeft = onScreen(area.left, area.top);
  const WinPoint bottomRight = onScreen(area.right, area.bottom);
  const JobLayer::JobRectangle expected{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y};
  EXPECT_EQ(known, expected);
  known = {};
  key(VK_RETURN);
  EXPECT_EQ(known, expected);
  bed.dialogs.onReport = nullptr;
}

TEST_F(GuiButtonBoxMouse, TheFaceIsBackBeforeTheScriptStarts) {
  open(button("a"));
  bool wasPressed = true;
  COLORREF line = 0; // the outer upper one
  bed.dialogs.onReport = [&] {
    wasPressed = has(Property::PressInProgress);
    line = pixel(box().window, 8, 0);
  };
  pointAt(0);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  EXPECT_EQ(pixel(box().window, 8, 0), 0U);
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
  EXPECT_FALSE(wasPressed);
  EXPECT_EQ(line, 0xFF0000U); // of a focused face
}

TEST_F(GuiButtonBoxMouse, ThePointersButtonAtTheReleaseRuns) {
  open(button("a") + button("b"));
  pointAt(0);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  pointAt(1);
  EXPECT_EQ(cursor(), 1);
  EXPECT_TRUE(has(Property::PressInProgress));
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
  ASSERT_EQ(runs().size(), 1U);
  EXPECT_EQ(runs()[0].substr(0, 9), "b LButton");
}

TEST_F(GuiButtonBoxMouse, AReleaseOnASeparatorOrOutsideRunsNothing) {
  open(button("a") + Separator + button("b"));
  pointAt(0);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  pointAt(1);
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
  EXPECT_TRUE(runs().empty());
  pointAt(0);
  mouseButton(MOUSEEVENTF_RIGHTDOWN);
  settle();
  movePointer(20, 20);
  mouseButton(MOUSEEVENTF_RIGHTUP);
  settle();
  EXPECT_TRUE(runs().empty());
  EXPECT_EQ(cursor(), -1);
  EXPECT_FALSE(has(Property::PressInProgress));
}

TEST_F(GuiButtonBoxMouse, TwoQuickPressesRunTwice) {
  open(button("a"));
  pressLeft(0);
  pressLeft(0);
  pressRight(0);
  pressRight(0);
  EXPECT_EQ(runs().size(), 4U);
}

// The second of two quick presses moves no window, but its release is seen wherever it comes.
TEST_F(GuiButtonBoxMouse, NoPressIsLeftBehindByTwoQuickOnesOnASeparator) {
  open(button("a") + Separator + button("b"));
  pressLeft(1);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  EXPECT_TRUE(has(Property::PressInProgress));
  movePointer(20, 20);
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
  EXPECT_FALSE(has(Property::PressInProgress));
  pointAt(0);
  EXPECT_EQ(cursor(), -1);
  EXPECT_TRUE(runs().empty());
}

TEST_F(GuiButtonBoxMouse, MovesWithoutAPressLeaveTheCursor) {
  open(button("a") + button("b"));
  pressLeft(0);
  pointAt(1);
  EXPECT_EQ(cursor(), 0);
}

TEST_F(GuiButtonBoxMouse, AHiddenButtonIsHitOnItsLineAndRunsNothing) {
  open(button("h", "Hidden=True\r\n") + button("a"));
  const WinPoint line = onScreen(3, 0);
  pressMouse(line.x, line.y);
  settle();
  EXPECT_EQ(cursor(), 0);
  EXPECT_TRUE(runs().empty());
  const WinPoint below = onScreen(3, 1);
  pressMouse(below.x, below.y);
  settle();
  EXPECT_EQ(cursor(), 1);
  EXPECT_EQ(runs().size(), 1U);
}

TEST_F(GuiButtonBoxMouse, WithAltALeftPressOnlyMovesTheFocusLook) {
  open(button("a") + button("b"));
  pointAt(1);
  keyDown(VK_MENU);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
  keyUp(VK_MENU);
  settle();
  EXPECT_EQ(cursor(), 1);
  EXPECT_TRUE(has(Property::FocusLook));
  EXPECT_FALSE(has(Property::PressInProgress));
  EXPECT_TRUE(runs().empty());
}

TEST_F(GuiButtonBoxMouse, WithAltARightPressOpensTheMenuAndRunsNothing) {
  open(button("a") + button("b"));
  const WinPoint point = centreOf(1);
  const MenuSeen seen = menu(
      [&] {
        pointAt(1);
        keyDown(VK_MENU);
        mouseButton(MOUSEEVENTF_RIGHTDOWN);
        mouseButton(MOUSEEVENTF_RIGHTUP);
      },
      0);
  EXPECT_EQ(seen.texts, (std::vector<std::wstring>{
                            L"Insert separator.", L"Delete selected buttons.", L"-",
                            L"Move up selected buttons.", L"Move down selected buttons."}));
  EXPECT_EQ(seen.enabled, std::vector<bool>(4, true));
  EXPECT_EQ(seen.rect.left, point.x);
  EXPECT_EQ(seen.rect.top, point.y);
  EXPECT_EQ(cursor(), 1);
  EXPECT_TRUE(has(Property::FocusLook));
  EXPECT_TRUE(runs().empty());
}

TEST_F(GuiButtonBoxMouse, WithAltARightPressBesideAllButtonsOpensNothing) {
  open(button("a") + button("b"));
  keyDown(VK_MENU);
  SendMessageW(box().window, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(3, 2000));
  keyUp(VK_MENU);
  settle();
  EXPECT_EQ(cursor(), -1);
  EXPECT_TRUE(windowsOfClass(L"#32768").empty());
}

TEST_F(GuiButtonBoxMouse, ADragFromASeparatorMovesTheWindow) {
  open(button("a") + Separator + button("b"));
  const WinRect before = dialog().windowRect();
  pointAt(1);
  const WinPoint from = centreOf(1);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  movePointer(from.x + 30, from.y + 20);
  settle();
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
  EXPECT_EQ(dialog().windowRect(), before.movedBy(30, 20));
  EXPECT_TRUE(runs().empty());
  EXPECT_FALSE(has(Property::PressInProgress));
}

TEST_F(GuiButtonBoxMouse, ADragFromAButtonDoesNotMoveTheWindow) {
  open(button("a"));
  const WinRect before = dialog().windowRect();
  pointAt(0);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  const WinPoint from = centreOf(0);
  movePointer(from.x + 3, from.y + 2);
  settle();
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
  EXPECT_EQ(dialog().windowRect(), before);
}

TEST_F(GuiButtonBoxMouse, ARightPressOnASeparatorOpensTheSystemMenu) {
  open(button("a") + Separator);
  const MenuSeen seen = menu(
      [&] {
        pointAt(1);
        mouseButton(MOUSEEVENTF_RIGHTDOWN);
        mouseButton(MOUSEEVENTF_RIGHTUP);
      },
      0);
  EXPECT_FALSE(seen.texts.empty());
  EXPECT_TRUE(runs().empty());
  // No press is left behind by the button that the menu swallowed.
  pointAt(0);
  EXPECT_FALSE(has(Property::PressInProgress));
  EXPECT_EQ(cursor(), 1);
}

TEST_F(GuiButtonBoxMouse, APressGivesTheBoxTheFocusAndItsLook) {
  open(button("a"));
  EXPECT_FALSE(has(Property::FocusLook));
  pressLeft(0);
  EXPECT_EQ(GetFocus(), box().window);
  EXPECT_TRUE(has(Property::FocusLook));
}

TEST_F(GuiButtonBoxMouse, LosingTheFocusEndsLookAndPress) {
  open(button("a"));
  pointAt(0);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  SetFocus(nullptr);
  EXPECT_FALSE(has(Property::FocusLook));
  EXPECT_FALSE(has(Property::PressInProgress));
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
  EXPECT_TRUE(runs().empty());
}

// --- Keys

TEST_F(GuiButtonBoxKeys, EnterAndSpaceRunTheCurrentButton) {
  open(button("a") + button("b"));
  SetFocus(box().window);
  key(VK_RETURN); // none is current yet
  EXPECT_TRUE(runs().empty());
  key(VK_DOWN);
  key(VK_DOWN);
  key(VK_RETURN);
  key(VK_SPACE);
  ASSERT_EQ(runs().size(), 2U);
  EXPECT_EQ(runs()[0].substr(0, 9), "b LButton");
  EXPECT_EQ(runs()[1].substr(0, 9), "b LButton");
}

TEST_F(GuiButtonBoxKeys, InAColumnUpAndDownMoveOverHiddenButtonsAndSeparators) {
  open(button("a") + Separator + button("h", "Hidden=True\r\n") + button("b"));
  SetFocus(box().window);
  key(VK_UP);
  EXPECT_EQ(cursor(), -1);
  key(VK_DOWN);
  EXPECT_EQ(cursor(), 0);
  key(VK_DOWN);
  EXPECT_EQ(cursor(), 3);
  key(VK_DOWN);
  EXPECT_EQ(cursor(), 3);
  key(VK_UP);
  EXPECT_EQ(cursor(), 0);
  key(VK_UP);
  EXPECT_EQ(cursor(), 0);
}

TEST_F(GuiButtonBoxKeys, InARowLeftAndRightDo) {
  LauncherOptions::instance().horizontal = true;
  open(button("a") + Separator + button("b"));
  SetFocus(box().window);
  key(VK_RIGHT);
  EXPECT_EQ(cursor(), 0);
  key(VK_RIGHT);
  EXPECT_EQ(cursor(), 2);
  key(VK_LEFT);
  EXPECT_EQ(cursor(), 0);
}

TEST_F(GuiButtonBoxKeys, FirstAndLast) {
  open(Separator + button("a") + button("b") + button("c") + Separator);
  SetFocus(box().window);
  key(VK_END);
  EXPECT_EQ(cursor(), 3);
  key(VK_HOME);
  EXPECT_EQ(cursor(), 1);
  key(VK_NEXT);
  EXPECT_EQ(cursor(), 3);
  key(VK_PRIOR);
  EXPECT_EQ(cursor(), 1);
}

TEST_F(GuiButtonBoxKeys, AnArrowAcrossOpensTheMenuAtTheButtonsCorner) {
  open(button("a") + button("b"));
  SetFocus(box().window);
  key(VK_END);
  const WinRect area = GuiButtonLayout::rectOf(*buttons().at(1));
  const WinPoint corner = onScreen(area.right, area.top);
  for (const uint16_t across : {uint16_t{VK_LEFT}, uint16_t{VK_RIGHT}}) {
    const MenuSeen seen = menu([&] { pressKey(across); }, 0);
    EXPECT_EQ(seen.rect.left, corner.x);
    EXPECT_EQ(seen.rect.top, corner.y);
    EXPECT_EQ(seen.enabled, std::vector<bool>(4, true));
  }
  const MenuSeen seen = menu(
      [&] {
        keyDown(VK_MENU);
        pressKey(VK_RIGHT);
        keyUp(VK_MENU);
      },
      0);
  EXPECT_EQ(seen.rect.left, corner.x);
}

TEST_F(GuiButtonBoxKeys, InARowUpAndDownOpenTheMenu) {
  LauncherOptions::instance().horizontal = true;
  open(button("a") + button("b"));
  SetFocus(box().window);
  key(VK_END);
  const WinRect area = GuiButtonLayout::rectOf(*buttons().at(1));
  const WinPoint corner = onScreen(area.right, area.top);
  for (const uint16_t across : {uint16_t{VK_UP}, uint16_t{VK_DOWN}})
    EXPECT_EQ(menu([&] { pressKey(across); }, 0).rect.left, corner.x);
}

TEST_F(GuiButtonBoxKeys, WithoutACurrentButtonAllEntriesAreDisabled) {
  open(button("a"));
  SetFocus(box().window);
  const MenuSeen seen = menu([&] { pressKey(VK_LEFT); }, 0);
  EXPECT_EQ(seen.texts.size(), 5U);
  EXPECT_EQ(seen.enabled, std::vector<bool>(4, false));
}

TEST_F(GuiButtonBoxKeys, EscapeGoesToTheOwner) {
  open(button("a"));
  SetFocus(box().window);
  key(VK_ESCAPE);
  EXPECT_TRUE(pumpUntil([&] { return !dialog().codes.empty(); }));
  EXPECT_EQ(dialog().codes, std::vector<uint32_t>{WinLayer::WinCodeEscape});
}

// --- Life

// What a script does to the list and the window while the box waits for it.
TEST_F(GuiButtonBoxLife, TheListAndTheWindowMayBeGoneWhenTheScriptEnds) {
  for (const bool byKey : {false, true}) {
    open(button("a") + button("b"));
    bed.dialogs.onReport = [&] {
      buttons().clear();
      DestroyWindow(dialog().window);
    };
    if (byKey) {
      SetFocus(box().window);
      key(VK_DOWN);
      key(VK_RETURN);
    } else {
      pressLeft(1);
    }
    EXPECT_EQ(buttons().count(), 0);
    EXPECT_FALSE(box().window);
    bed.dialogs.onReport = nullptr;
    close();
  }
  EXPECT_EQ(runs().size(), 2U);
}

TEST_F(GuiButtonBoxLife, TheMenuMayOutliveTheWindow) {
  open(button("a"));
  SetFocus(box().window);
  key(VK_DOWN);
  const HWND window = dialog().window;
  Steps steps;
  steps.when([] { return !windowsOfClass(L"#32768").empty(); }, [&] { DestroyWindow(window); });
  pressKey(VK_LEFT);
  EXPECT_TRUE(pumpUntil([&] { return steps.areDone() && !IsWindow(window); }));
  settle();
}

TEST_F(GuiButtonBoxLife, PressesLeaveNoDrawingObjectsBehind) {
  open(button("a") + button("b"));
  pressLeft(0);
  pressLeft(1);
  bed.dialogs.reports.clear();
  const uint32_t before = drawingObjects();
  for (int i = 0; i < 50; ++i) pressLeft(i % 2);
  EXPECT_EQ(runs().size(), 50U);
  EXPECT_LE(drawingObjects(), before + 2);
}
