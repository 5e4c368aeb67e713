// List boxes: mouse, keys, wheel and scroll bars of a real window.
#include "window/ListBoxTest.h"

using namespace WindowTest;

namespace {

class ListBox : public ListBoxFixture {};

} // namespace

// --- The window

TEST_F(ListBox, IsAnOwnerDrawnButtonOfThePlatform) {
  const WinListBox plain;
  EXPECT_EQ(plain.style, static_cast<DWORD>(WS_CHILD | WS_VISIBLE | WS_VSCROLL | BS_OWNERDRAW));
  EXPECT_EQ(plain.className, "BUTTON"_text);
  EXPECT_EQ(plain.margins, (WinRect{1, 1, 1, 1}));
  EXPECT_EQ(plain.background, GetSysColor(COLOR_WINDOW));
  EXPECT_EQ(plain.view, &plain);
}

TEST_F(ListBox, WithoutAWindowTheCursorMovesAlone) {
  list.fill({20, 20});
  list.SetCursorRow(0);
  EXPECT_EQ(list.cursor, 0);
  EXPECT_EQ(list.marks(), "x.");
  EXPECT_EQ(list.measured, 0);
  list.RelayoutAndInvalidate();
  EXPECT_TRUE(list.pressKey(VK_DOWN, false, false));
  EXPECT_EQ(list.cursor, 0); // nothing has been measured
}

// --- The mouse

TEST_F(ListBox, APressSelectsTheRow) {
  show();
  press(5, 22);
  EXPECT_EQ(list.cursor, 1);
  EXPECT_EQ(list.marks(), ".x...");
  EXPECT_EQ(times("1008"), 1);
  press(99, 5); // beside the row's own width
  EXPECT_EQ(list.cursor, 0);
  EXPECT_EQ(times("1008"), 1);
}

TEST_F(ListBox, APressBelowTheRowsUnmarksThem) {
  show({20});
  press(5, 5);
  press(5, 30);
  EXPECT_EQ(list.cursor, -1);
  EXPECT_EQ(list.marks(), ".");
  EXPECT_EQ(times("1008"), 2);
}

TEST_F(ListBox, APressGivesTheFocus) {
  show();
  SetFocus(dialog.window);
  press(5, 5);
  EXPECT_EQ(GetFocus(), list.window);
  EXPECT_TRUE(list.hasFlag(TestList::HasFocus));
}

TEST_F(ListBox, ControlTogglesAndShiftMarksARange) {
  show({10, 10, 10, 10, 10});
  list.setFlag(TestList::MultipleSelection, true);
  press(5, 12);
  pressWith(VK_CONTROL, 5, 35);
  EXPECT_EQ(list.marks(), ".x.x.");
  pressWith(VK_SHIFT, 5, 45);
  EXPECT_EQ(list.marks(), ".xxxx");
  EXPECT_EQ(list.cursor, 4);
  EXPECT_EQ(list.anchor, 1);
  EXPECT_EQ(times("1008"), 3);
}

TEST_F(ListBox, ADoubleClickTellsAfterTheFirstPress) {
  show();
  press(5, 22);
  press(5, 22);
  EXPECT_EQ(dialog.diary, (Diary{"command 2500 1008", "command 2500 1002"}));
}

TEST_F(ListBox, ADoubleClickBesideTheRowsTellsNothing) {
  show({20});
  press(5, 40);
  press(5, 40);
  EXPECT_EQ(times("1002"), 0);
}

TEST_F(ListBox, PressesCanBeRefused) {
  show();
  list.mayPress = list.mayDoubleClick = false;
  press(5, 22);
  press(5, 22);
  rightPress(5, 22);
  EXPECT_EQ(list.cursor, -1);
  EXPECT_EQ(list.opened, "");
  EXPECT_EQ(dialog.diary, Diary());
}

TEST_F(ListBox, ADoubleClickCanBeRefused) {
  show();
  list.mayDoubleClick = false;
  press(5, 22);
  press(5, 22);
  EXPECT_EQ(dialog.diary, (Diary{"command 2500 1008"}));
}

TEST_F(ListBox, ARightPressOpensTheMenuAndLeavesTheCursor) {
  show({20, 20});
  press(5, 5);
  rightPress(7, 22);
  rightPress(8, 45);
  EXPECT_EQ(list.opened, "7,22,1 8,45,-1 ");
  EXPECT_EQ(list.cursor, 0);
  EXPECT_EQ(list.marks(), "x.");
}

TEST_F(ListBox, TheWheelScrollsByLinesThreeTimesAsFarWithShift) {
  show({20, 20, 20, 20, 20, 20, 20, 20, 20, 20});
  list.lineStepY = 10;
  wheel(-120);
  EXPECT_EQ(list.scrollY, 10);
  wheel(-120, VK_SHIFT);
  EXPECT_EQ(list.scrollY, 40);
  EXPECT_EQ(times("100a"), 2);
  wheel(120 * 30);
  EXPECT_EQ(list.scrollY, 0);
  wheel(120);
  EXPECT_EQ(list.scrollY, 0);
  EXPECT_EQ(times("100a"), 1);
}

TEST_F(ListBox, ALineIsAsHighAsTheFont) {
  show();
  const WinWindowDc dc(list.window);
  const WinSelect selected(dc.get(), list.fontHandle());
  TEXTMETRICW metrics;
  GetTextMetricsW(dc.get(), &metrics);
  EXPECT_EQ(list.lineStepY, metrics.tmHeight);
}

// --- Zooming the font

namespace {

int32_t heightOf(const WinView& view) {
  LOGFONTW description{};
  GetObjectW(view.fontHandle(), sizeof description, &description);
  return description.lfHeight;
}

} // namespace

TEST_F(ListBox, ControlAndTheWheelStepTheFontAndMeasureAnew) {
  show();
  const int32_t height = heightOf(list);
  const int32_t sign = height < 0 ? -1 : 1;
  list.measured = 0;
  wheel(120, VK_CONTROL);
  EXPECT_EQ(heightOf(list), height + sign);
  EXPECT_EQ(list.measured, 5);
  EXPECT_EQ(list.font, list.zoomFont);
  wheel(-120, VK_CONTROL);
  wheel(-120, VK_CONTROL);
  EXPECT_EQ(heightOf(list), height - sign);
  EXPECT_EQ(list.scrollY, 0);
}

TEST_F(ListBox, TheSmallestFontStays) {
  WinFont smallest;
  smallest.description.lfHeight = -6;
  smallest.create();
  list.font = &smallest;
  show();
  list.measured = 0;
  wheel(-120, VK_CONTROL);
  EXPECT_EQ(list.font, &smallest);
  EXPECT_EQ(heightOf(list), -6);
  EXPECT_EQ(list.measured, 0);
  wheel(120, VK_CONTROL);
  EXPECT_EQ(heightOf(list), -7);
}

// --- Keys

TEST_F(ListBox, ArrowsMoveTheCursor) {
  show();
  key(VK_DOWN);
  key(VK_DOWN);
  key(VK_DOWN);
  EXPECT_EQ(list.cursor, 2);
  EXPECT_EQ(list.scrollY, 10);
  key(VK_UP);
  EXPECT_EQ(list.cursor, 1);
  key(VK_END);
  EXPECT_EQ(list.cursor, 4);
  EXPECT_EQ(list.scrollY, 50);
  key(VK_HOME);
  EXPECT_EQ(list.cursor, 0);
  EXPECT_EQ(list.scrollY, 0);
  EXPECT_EQ(times("1008"), 6);
}

TEST_F(ListBox, KeysTakeTheirModifiersFromTheKeyboard) {
  show();
  list.setFlag(TestList::MultipleSelection, true);
  key(VK_DOWN);
  keyWith(VK_SHIFT, VK_DOWN);
  EXPECT_EQ(list.marks(), "xx...");
  keyWith(VK_CONTROL, VK_DOWN);
  EXPECT_EQ(list.cursor, 2);
  EXPECT_EQ(list.marks(), "xx...");
  key(VK_SPACE);
  EXPECT_EQ(list.marks(), "xxx..");
  keyWith(VK_CONTROL, 'A');
  EXPECT_EQ(list.marks(), "xxxxx");
  EXPECT_EQ(times("1008"), 5);
}

TEST_F(ListBox, PageKeysScrollHalfTheArea) {
  show();
  key(VK_NEXT);
  EXPECT_EQ(list.scrollY, 25);
  key(VK_PRIOR);
  EXPECT_EQ(list.scrollY, 0);
  EXPECT_EQ(list.cursor, -1);
}

TEST_F(ListBox, EnterTells) {
  show();
  key(VK_RETURN);
  EXPECT_EQ(dialog.diary, (Diary{"command 2500 1002"}));
}

TEST_F(ListBox, SpaceIsNoPressOfAButton) {
  show();
  key(VK_SPACE);
  press(5, 5);
  EXPECT_EQ(times("0"), 0);
}

TEST_F(ListBox, TabAndEscAreThoseOfAnyView) {
  dialog.addButtons(1);
  list.fill({20});
  dialog.Create();
  dialog.addChild(list);
  ASSERT_TRUE(pumpUntil([this] { return bringToFront(dialog.window); }));
  target = list.window;
  SetFocus(target);
  key(VK_TAB);
  EXPECT_EQ(GetFocus(), dialog.focusOf(0));
  EXPECT_FALSE(list.hasFlag(TestList::HasFocus));
  dialog.mayClose = false;
  SetFocus(list.window);
  key(VK_ESCAPE);
  EXPECT_EQ(timesOf(dialog.diary, "command 2501 1004"), 1);
}

// --- Scroll bars

TEST_F(ListBox, TheBarShowsContentPageAndPosition) {
  list.style |= WS_VSCROLL;
  show({50, 50, 50, 50});
  list.SetCursorRow(2);
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  GetScrollInfo(list.window, SB_VERT, &info);
  EXPECT_EQ(info.nMin, 0);
  EXPECT_EQ(info.nMax, 199);
  EXPECT_EQ(info.nPage, 50u);
  EXPECT_EQ(info.nPos, 100);
  EXPECT_EQ(list.area.width(), 100 - GetSystemMetrics(SM_CXVSCROLL));
}

TEST_F(ListBox, TheBarScrolls) {
  list.style |= WS_VSCROLL;
  show({50, 50, 50, 50});
  list.lineStepY = 8;
  const auto bar = [this](WORD code) {
    SendMessageW(list.window, WM_VSCROLL, code, 0);
    return list.scrollY;
  };
  EXPECT_EQ(bar(SB_LINEDOWN), 8);
  EXPECT_EQ(bar(SB_PAGEDOWN), 33);
  EXPECT_EQ(bar(SB_BOTTOM), 150);
  EXPECT_EQ(bar(SB_LINEDOWN), 150);
  EXPECT_EQ(bar(SB_PAGEUP), 125);
  EXPECT_EQ(bar(SB_LINEUP), 117);
  EXPECT_EQ(bar(SB_TOP), 0);
  EXPECT_EQ(bar(SB_ENDSCROLL), 0);
  EXPECT_EQ(times("100a"), 6);
}

TEST_F(ListBox, ARealPressOnTheBarsArrowScrolls) {
  list.style |= WS_VSCROLL;
  show({50, 50, 50, 50});
  const WinRect client = list.clientRect();
  press(client.right + 5, client.bottom - 5);
  EXPECT_TRUE(pumpUntil([this] { return list.scrollY >= list.lineStepY; }));
  EXPECT_EQ(list.cursor, -1);
}

TEST_F(ListBox, WithoutTheStyleThereIsNoBar) {
  show({50, 50, 50, 50});
  list.SetCursorRow(3);
  EXPECT_EQ(list.clientRect().width(), Place.width());
  EXPECT_FALSE(GetWindowLongPtrW(list.window, GWL_STYLE) & WS_VSCROLL);
}

TEST_F(ListBox, ASidewaysBarComesWithItsStyle) {
  list.style |= WS_HSCROLL;
  list.rect.right = list.rect.left + 42;
  show({10});
  key(VK_RIGHT);
  EXPECT_EQ(list.scrollX, std::min(list.lineStepX, 20));
  keyWith(VK_CONTROL, VK_RIGHT);
  EXPECT_EQ(list.scrollX, 20);
  SendMessageW(list.window, WM_HSCROLL, SB_TOP, 0);
  EXPECT_EQ(list.scrollX, 0);
}

TEST_F(ListBox, AGrowingWindowPullsTheOffsetBack) {
  show();
  list.SetCursorRow(4);
  EXPECT_EQ(list.scrollY, 50);
  list.rect.bottom += 30;
  list.moveWindow(true);
  EXPECT_EQ(list.scrollY, 20);
  list.rect.bottom += 200;
  list.moveWindow(true);
  EXPECT_EQ(list.scrollY, 0);
}

// --- Nothing dangles

namespace {

// Empties the list whenever it tells something.
class ClearingList : public TestList {
 public:
  int told = 0;
  int32_t OnChildNotify(uint32_t) override {
    ++told;
    Clear();
    return 0;
  }
};

} // namespace

TEST_F(ListBox, WhoeverIsToldMayEmptyTheList) {
  ClearingList clearing;
  dialog.Create();
  dialog.addChild(clearing);
  ASSERT_TRUE(pumpUntil([this] { return bringToFront(dialog.window); }));
  SetFocus(clearing.window);
  clearing.setFlag(TestList::MultipleSelection, true);
  for (const uint16_t code : std::initializer_list<uint16_t>{VK_DOWN, VK_END, VK_HOME, VK_RETURN}) {
    clearing.fill({20, 20, 20, 20, 20});
    const int before = clearing.told;
    key(code);
    EXPECT_GT(clearing.told, before) << code;
    EXPECT_EQ(clearing.items.count(), 0) << code;
    clearing.Clear();
  }
  clearing.fill({20, 20});
  const WinPoint centre = centreOf(clearing.window);
  pressMouse(centre.x, centre.y);
  settle();
  EXPECT_EQ(clearing.items.count(), 0);
}

TEST_F(ListBox, WhoeverIsToldMayEndTheDialog) {
  struct Ending : TestList {
    int32_t OnChildNotify(uint32_t) override {
      DestroyWindow(owner->window);
      return 0;
    }
  } ending;
  ending.fill({20, 20});
  dialog.Create();
  dialog.addChild(ending);
  ASSERT_TRUE(pumpUntil([this] { return bringToFront(dialog.window); }));
  const WinPoint centre = centreOf(ending.window);
  pressMouse(centre.x, centre.y);
  EXPECT_TRUE(pumpUntil([&] { return !IsWindow(dialog.window); }));
  EXPECT_EQ(ending.window, nullptr);
  ending.SetCursorRow(1);
  EXPECT_EQ(ending.cursor, 1);
}
