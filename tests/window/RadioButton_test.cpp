// Rows of joined cells, by mouse and keyboard, and what they look like.
#include "win/WinRadioButton.h"
#include "window/Faces.h"
#include "window/TestDialog.h"

using namespace WindowTest;
using namespace WinLayer;
using Draw = WinButtonDraw;
using RawLayer::RawLabelList;

namespace {

// A dialog with a row behind one button of its own (the row is number 2501).
template <class Row>
struct RowDialog : TestDialog {
  RawLabelList labels;
  int32_t value = 20;
  Row row;
  RowDialog() { addButtons(1); }
  void show(std::initializer_list<const char*> texts, const char* title = "") {
    int32_t answer = 0;
    for (const char* text : texts) labels.add(RawString::fromChars(text), answer += 10);
    row.SetTitle(RawString::fromChars(title));
    row.SetUp(labels, value);
    row.FitToContent();
    row.set(WinRect{0, 0, row.windowWidth, row.windowHeight}.movedTo(10, 60));
    Create();
    addChild(row);
    ASSERT_TRUE(pumpUntil([this] { return bringToFront(window); }));
    settle();
    diary.clear();
  }
  [[nodiscard]] WinPoint middleOf(int32_t cell) const {
    const WinRect place = row.cellRect(cell);
    const WinRect window = row.windowRect();
    return {window.left + (place.left + place.right) / 2,
            window.top + (place.top + place.bottom) / 2};
  }
  void press(int32_t cell) { pressMouse(middleOf(cell).x, middleOf(cell).y); }
  [[nodiscard]] bool wasTold(const std::string& line, int64_t times = 1) const {
    return pumpUntil([&] { return timesOf(diary, line) >= times; });
  }
  [[nodiscard]] bool shows(int32_t cell, uint32_t flags) const {
    return comesToShow(row.window, row.cellRect(cell), flags);
  }
};

struct RadioButton : Fixture {
  RowDialog<WinRadioButtonBody> dialog;
};
struct SelectorButton : Fixture {
  RowDialog<WinSelectorButton> dialog;
};

constexpr uint32_t Left = Draw::CornerTopLeft | Draw::CornerBottomLeft;
constexpr uint32_t Right = Draw::CornerTopRight | Draw::CornerBottomRight;

// The answer of a window to a number, as another process would send it.
LRESULT sendNumber(HWND window, const char* number) {
  COPYDATASTRUCT data{};
  data.cbData = static_cast<DWORD>(strlen(number));
  data.lpData = const_cast<char*>(number);
  return SendMessageW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
}

} // namespace

TEST_F(RadioButton, TheRowIsAsWideAsItsCellsAndAsHighAsALine) {
  dialog.show({"One", "Twenty-two", "3"});
  const WinRect first = dialog.row.cellRect(0);
  const WinRect second = dialog.row.cellRect(1);
  const WinRect third = dialog.row.cellRect(2);
  EXPECT_EQ(first.left, 0);
  EXPECT_EQ(second.left, first.right);
  EXPECT_EQ(third.left, second.right);
  EXPECT_EQ(third.right, dialog.row.windowWidth);
  EXPECT_GT(second.width(), first.width());
  WinView text;
  text.SetTitle("Twenty-two"_text);
  text.FitToContent();
  EXPECT_EQ(second.width(), text.clientWidth + 8);
  EXPECT_EQ(dialog.row.windowHeight, text.clientHeight + 8);
  EXPECT_EQ(dialog.row.cellAt(-1), -1);
  EXPECT_EQ(dialog.row.cellAt(0), 0);
  EXPECT_EQ(dialog.row.cellAt(second.left), 1);
  EXPECT_EQ(dialog.row.cellAt(third.right), -1);
}

TEST_F(RadioButton, ATitleStandsLeftOfTheCells) {
  dialog.show({"One", "Two"}, "Choose:");
  WinView text;
  text.SetTitle("Choose:"_text);
  text.FitToContent();
  EXPECT_EQ(dialog.row.firstLeft, text.clientWidth + 8);
  EXPECT_EQ(dialog.row.cellRect(0).left, dialog.row.firstLeft);
  EXPECT_EQ(dialog.row.cellRect(1).right, dialog.row.windowWidth);
  EXPECT_EQ(dialog.row.cellAt(2), -1);
  EXPECT_TRUE(dialog.shows(0, Left));
}

TEST_F(RadioButton, TheCurrentCellIsThatOfTheValue) {
  dialog.show({"One", "Two", "Three"});
  EXPECT_EQ(dialog.row.current, 1);
  int32_t unknown = 5;
  dialog.row.SetUp(dialog.labels, unknown);
  EXPECT_EQ(dialog.row.current, 0);
  EXPECT_EQ(unknown, 5);
}

TEST_F(RadioButton, OnlyTheEndsOfTheRowHaveCorners) {
  dialog.show({"One", "Two", "Three"});
  EXPECT_TRUE(dialog.shows(0, Left));
  EXPECT_TRUE(dialog.shows(1, Draw::Checked));
  EXPECT_TRUE(dialog.shows(2, Right));
}

TEST_F(RadioButton, TheCurrentCellIsFocusedOrChecked) {
  dialog.row.checkedFrames = Draw::FramesAll;
  dialog.show({"One", "Two", "Three"});
  EXPECT_TRUE(dialog.shows(1, Draw::Checked | Draw::FramesAll));
  SetFocus(dialog.row.window);
  EXPECT_TRUE(dialog.shows(1, Draw::Focused));
  SetFocus(dialog.focusOf(0));
  EXPECT_TRUE(dialog.shows(1, Draw::Checked | Draw::FramesAll));
}

TEST_F(RadioButton, APressTakesTheCellAndTheFocus) {
  dialog.show({"One", "Two", "Three"});
  const WinPoint point = dialog.middleOf(2);
  movePointer(point.x, point.y);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  ASSERT_TRUE(pumpUntil([&] { return dialog.value == 30; }));
  EXPECT_EQ(dialog.row.current, 2);
  EXPECT_TRUE(dialog.row.pressed);
  EXPECT_EQ(GetFocus(), dialog.row.window);
  EXPECT_TRUE(dialog.shows(2, Right | Draw::Pressed));
  mouseButton(MOUSEEVENTF_LEFTUP);
  EXPECT_TRUE(pumpUntil([&] { return !dialog.row.pressed; }));
  EXPECT_TRUE(dialog.shows(2, Right | Draw::Focused));
  EXPECT_TRUE(dialog.diary.empty()); // no command
}

TEST_F(RadioButton, ADisabledCellTakesNoPress) {
  static constexpr bool enabled[] = {true, true, false};
  dialog.row.enabledCells = enabled;
  dialog.show({"One", "Two", "Three"});
  EXPECT_TRUE(dialog.shows(2, Right | Draw::Disabled));
  dialog.press(2);
  ASSERT_TRUE(pumpUntil([&] { return GetFocus() == dialog.row.window; }));
  settle();
  EXPECT_EQ(dialog.value, 20);
  EXPECT_EQ(dialog.row.current, 1);
  SetFocus(dialog.row.window);
  pressKey(VK_RIGHT);
  pressKey(VK_RETURN);
  EXPECT_TRUE(dialog.wasTold("command 2501 0"));
  EXPECT_EQ(dialog.value, 20);
}

TEST_F(RadioButton, ArrowsMoveByOneWithoutWrapping) {
  dialog.show({"One", "Two", "Three"});
  SetFocus(dialog.row.window);
  for (const int32_t wanted : {0, 0}) {
    pressKey(VK_LEFT);
    settle();
    EXPECT_EQ(dialog.row.current, wanted);
  }
  for (const int32_t wanted : {1, 2, 2}) {
    pressKey(VK_RIGHT);
    settle();
    EXPECT_EQ(dialog.row.current, wanted);
  }
  EXPECT_TRUE(dialog.shows(2, Right | Draw::Focused));
  EXPECT_EQ(dialog.value, 20); // not before Enter
}

TEST_F(RadioButton, UpAndDownMoveTheFocus) {
  dialog.show({"One", "Two"});
  for (const uint16_t key : {uint16_t{VK_UP}, uint16_t{VK_DOWN}}) {
    SetFocus(dialog.row.window);
    pressKey(key);
    EXPECT_TRUE(pumpUntil([&] { return GetFocus() == dialog.focusOf(0); }));
  }
}

TEST_F(RadioButton, EnterAndSpaceWriteTheValueAndPostTheCommand) {
  dialog.row.command = 0x1234;
  dialog.show({"One", "Two", "Three"});
  SetFocus(dialog.row.window);
  pressKey(VK_LEFT);
  pressKey(VK_RETURN);
  EXPECT_TRUE(dialog.wasTold("command 2501 1234"));
  EXPECT_EQ(dialog.value, 10);
  pressKey(VK_RIGHT);
  pressKey(VK_RIGHT);
  pressKey(VK_SPACE);
  EXPECT_TRUE(dialog.wasTold("command 2501 1234", 2));
  EXPECT_EQ(dialog.value, 30);
}

TEST_F(RadioButton, ReadOnlyItTakesNothing) {
  dialog.row.command = 0x1234;
  dialog.row.readOnly = true;
  dialog.show({"One", "Two", "Three"});
  dialog.press(2);
  ASSERT_TRUE(pumpUntil([&] { return GetFocus() == dialog.row.window; }));
  settle();
  EXPECT_EQ(dialog.row.current, 1);
  pressKey(VK_RETURN);
  EXPECT_TRUE(dialog.wasTold("command 2501 0"));
  settle();
  EXPECT_EQ(timesOf(dialog.diary, "command 2501 1234"), 0);
  EXPECT_EQ(dialog.value, 20);
}

TEST_F(RadioButton, TheFocusBringsACurrentCellIntoRange) {
  dialog.show({"One", "Two"});
  for (const int32_t outside : {-1, 2, 99}) {
    SetFocus(dialog.focusOf(0));
    dialog.row.current = outside;
    SetFocus(dialog.row.window);
    EXPECT_EQ(dialog.row.current, 0);
  }
}

TEST_F(RadioButton, WithoutCellsItDoesNothing) {
  dialog.show({});
  SetFocus(dialog.row.window);
  pressKey(VK_RIGHT);
  pressKey(VK_RETURN);
  EXPECT_TRUE(dialog.wasTold("command 2501 0"));
  EXPECT_EQ(dialog.value, 20);
}

// --- The answer row of a dialog

TEST_F(SelectorButton, ASingleCellHasAllFourCorners) {
  dialog.value = 10;
  dialog.show({"OK"});
  EXPECT_TRUE(dialog.shows(0, Draw::CornersAll));
  SetFocus(dialog.row.window);
  EXPECT_TRUE(dialog.shows(0, Draw::CornersAll | Draw::Focused));
}

TEST_F(SelectorButton, CornersStandAtTheEndsOfALongerRow) {
  dialog.show({"One", "Two", "Three", "Four"});
  EXPECT_TRUE(dialog.shows(0, Left));
  EXPECT_TRUE(dialog.shows(1, 0));
  EXPECT_TRUE(dialog.shows(2, 0));
  EXPECT_TRUE(dialog.shows(3, Right));
}

TEST_F(SelectorButton, AReleaseChooses) {
  dialog.show({"One", "Two", "Three"});
  const WinPoint point = dialog.middleOf(0);
  movePointer(point.x, point.y);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  ASSERT_TRUE(pumpUntil([&] { return dialog.value == 10; }));
  settle();
  EXPECT_TRUE(dialog.diary.empty());
  mouseButton(MOUSEEVENTF_LEFTUP);
  EXPECT_TRUE(dialog.wasTold("command 2501 1100"));
}

TEST_F(SelectorButton, AReleaseOutsideChoosesNothing) {
  dialog.show({"One", "Two", "Three"});
  const WinPoint point = dialog.middleOf(0);
  movePointer(point.x, point.y);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  ASSERT_TRUE(pumpUntil([&] { return dialog.row.pressed; }));
  movePointer(point.x, point.y - 60);
  mouseButton(MOUSEEVENTF_LEFTUP);
  EXPECT_TRUE(pumpUntil([&] { return !dialog.row.pressed; }));
  settle();
  EXPECT_TRUE(dialog.diary.empty());
}

TEST_F(SelectorButton, ADisabledCellChoosesNothing) {
  static constexpr bool enabled[] = {false, true};
  dialog.row.enabledCells = enabled;
  dialog.show({"One", "Two"});
  dialog.press(0);
  dialog.press(0); // a double click
  ASSERT_TRUE(pumpUntil([&] { return GetFocus() == dialog.row.window; }));
  settle();
  EXPECT_TRUE(dialog.diary.empty());
}

TEST_F(SelectorButton, ADoubleClickChooses) {
  dialog.show({"One", "Two", "Three"});
  const WinPoint point = dialog.middleOf(2);
  SendMessageW(dialog.row.window, WM_LBUTTONDBLCLK, MK_LBUTTON,
               MAKELPARAM(point.x - dialog.row.windowRect().left, 5));
  EXPECT_TRUE(dialog.wasTold("command 2501 1100"));
  EXPECT_EQ(dialog.value, 30);
  ReleaseCapture();
}

TEST_F(SelectorButton, EnterChooses) {
  dialog.show({"One", "Two", "Three"});
  SetFocus(dialog.row.window);
  pressKey(VK_RIGHT);
  pressKey(VK_RETURN);
  EXPECT_TRUE(dialog.wasTold("command 2501 1100"));
  EXPECT_EQ(dialog.value, 30);
}

TEST_F(SelectorButton, AnotherProcessChoosesByANumber) {
  dialog.show({"One", "Two", "Three"});
  EXPECT_EQ(sendNumber(dialog.row.window, "42"), 1);
  EXPECT_EQ(dialog.value, 42);
  EXPECT_TRUE(dialog.wasTold("command 2501 1100"));
  EXPECT_EQ(sendNumber(dialog.row.window, "-3"), 1);
  EXPECT_EQ(dialog.value, -3);
  EXPECT_EQ(sendNumber(dialog.row.window, ""), 1);
  EXPECT_EQ(dialog.value, 0);
}
