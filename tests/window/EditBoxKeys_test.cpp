// The edit box under a real keyboard.
#include "window/EditBoxTest.h"

using namespace WindowTest;
using namespace WinLayer;

namespace {

constexpr uint16_t Lines = WinEditBoxInfo::MultiLine;
constexpr WinRect LinesPlace{10, 10, 210, 100};

class EditBoxKeys : public EditBoxFixture {
 protected:
  static void sendUnit(char16_t unit) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wScan = unit;
    input.ki.dwFlags = KEYEVENTF_UNICODE;
    SendInput(1, &input, sizeof input);
    input.ki.dwFlags |= KEYEVENTF_KEYUP;
    SendInput(1, &input, sizeof input);
    settle();
  }
};

} // namespace

TEST_F(EditBoxKeys, TypedLettersBecomeTheText) {
  open(u"");
  key('A');
  keyWith(VK_SHIFT, 'B');
  key(VK_SPACE);
  key('7');
  EXPECT_EQ(text(), u"aB 7");
  EXPECT_EQ(unitsOf(box.GetTitle()), u"aB 7");
  EXPECT_EQ(box.GetTitle().encoding(), RawLayer::EncodingUtf8);
  EXPECT_EQ(told("1006"), 4);
}

TEST_F(EditBoxKeys, ACharacterIsCutToEightBits) {
  open(u"");
  sendUnit(u'\u3042'); // leaves 0x42
  sendUnit(u'\u00E9');
  sendUnit(u'\u307F'); // leaves 127
  sendUnit(u'\u3010'); // leaves 16
  EXPECT_EQ(text(), u"B\u00E9");
}

TEST_F(EditBoxKeys, BackspaceAndControlHEraseBackwards) {
  open(u"abcdef");
  key(VK_END);
  key(VK_BACK);
  EXPECT_EQ(text(), u"abcde");
  control('H');
  EXPECT_EQ(text(), u"abcd");
  keyWith(VK_CONTROL, VK_BACK); // comes with character 127
  EXPECT_EQ(text(), u"abc");
}

TEST_F(EditBoxKeys, BackspaceBehindALineEndRemovesBothUnits) {
  open(u"abc\r\ndef", Lines, LinesPlace);
  box.setSelection(5, 5);
  key(VK_BACK);
  EXPECT_EQ(text(), u"abcdef");
  EXPECT_EQ(place(), "3");
}

TEST_F(EditBoxKeys, DeleteErasesForwardsAndControlXOnlyDeletes) {
  fillClipboard(u"kept");
  open(u"abcdef");
  key(VK_DELETE);
  EXPECT_EQ(text(), u"bcdef");
  box.setSelection(1, 3);
  control('X');
  EXPECT_EQ(text(), u"bef");
  EXPECT_EQ(clipboard(), u"kept");
  control('X');
  EXPECT_EQ(text(), u"bef");
}

TEST_F(EditBoxKeys, TabInsertsAndWithShiftOrControlMovesTheFocus) {
  dialog.addButtons(1); // 2500; the box is 2501
  open(u"ab");
  key(VK_END);
  key(VK_TAB);
  EXPECT_EQ(text(), u"ab\t");
  EXPECT_EQ(GetFocus(), box.window);
  keyWith(VK_SHIFT, VK_TAB);
  EXPECT_EQ(GetFocus(), dialog.focusOf(0));
  SetFocus(box.window);
  box.info.setFlag(WinEditBoxInfo::TabMovesFocus, true);
  key(VK_TAB);
  EXPECT_EQ(GetFocus(), dialog.focusOf(0));
  EXPECT_EQ(text(), u"ab\t");
}

TEST_F(EditBoxKeys, EnterInASingleLineBoxOnlyTellsTheParent) {
  open(u"ab");
  key(VK_RETURN);
  EXPECT_EQ(told("1002"), 1);
  control(VK_RETURN);
  control('M');
  EXPECT_EQ(told("1002"), 3);
  EXPECT_EQ(text(), u"ab");
  EXPECT_EQ(told("1006"), 0);
}

TEST_F(EditBoxKeys, EnterInAMultiLineBoxMakesALineEnd) {
  open(u"ab", Lines, LinesPlace);
  key(VK_RIGHT);
  key(VK_RETURN);
  EXPECT_EQ(text(), u"a\r\nb");
  control('M');
  EXPECT_EQ(text(), u"a\r\n\r\nb");
  EXPECT_EQ(told("1002"), 0);
  control(VK_RETURN);
  EXPECT_EQ(told("1002"), 1);
  EXPECT_EQ(text(), u"a\r\n\r\nb");
}

TEST_F(EditBoxKeys, EscapeTellsTheParentOnce) {
  dialog.mayClose = false;
  open(u"ab");
  key(VK_ESCAPE);
  EXPECT_EQ(told("1004"), 1);
  EXPECT_EQ(text(), u"ab");
}

TEST_F(EditBoxKeys, ArrowsAndTheirLettersMove) {
  open(u"abcdef");
  key(VK_RIGHT);
  control('L');
  EXPECT_EQ(place(), "2");
  key(VK_LEFT);
  control('J');
  EXPECT_EQ(place(), "0");
  control(VK_RIGHT);
  EXPECT_EQ(place(), "6");
  control(VK_LEFT);
  EXPECT_EQ(place(), "0");
  key(VK_END);
  EXPECT_EQ(place(), "6");
  key(VK_HOME);
  EXPECT_EQ(place(), "0");
}

TEST_F(EditBoxKeys, ShiftExtendsAndAnArrowCollapses) {
  open(u"abcdef");
  box.setSelection(2, 2);
  shift(VK_RIGHT);
  shift(VK_RIGHT);
  EXPECT_EQ(place(), "2-4");
  EXPECT_EQ(selected(), u"cd");
  key(VK_LEFT);
  EXPECT_EQ(place(), "2");
  shift(VK_END);
  EXPECT_EQ(place(), "2-6");
  key(VK_RIGHT);
  EXPECT_EQ(place(), "6");
  shift(VK_HOME);
  EXPECT_EQ(place(), "6-0");
}

TEST_F(EditBoxKeys, UpAndDownKeepTheColumn) {
  open(u"aaaaaa\r\na\r\naaaaaa", Lines, LinesPlace);
  box.setSelection(4, 4);
  key(VK_DOWN);
  EXPECT_EQ(place(), "9");
  control('K');
  EXPECT_EQ(place(), "15");
  key(VK_UP);
  control('I');
  EXPECT_EQ(place(), "4");
  shift(VK_DOWN);
  EXPECT_EQ(place(), "4-9");
}

TEST_F(EditBoxKeys, ControlASelectsControlCCopiesControlVPastes) {
  open(u"abc");
  control('A');
  EXPECT_EQ(place(), "0-3");
  control('C');
  EXPECT_EQ(clipboard(), u"abc");
  key(VK_END);
  control('V');
  EXPECT_EQ(text(), u"abcabc");
  EXPECT_EQ(place(), "6");
  fillClipboard(u"\u3042\u3044");
  control('A');
  control('V');
  EXPECT_EQ(text(), u"\u3042\u3044");
}

TEST_F(EditBoxKeys, CopyingNothingLeavesTheClipboard) {
  fillClipboard(u"kept");
  open(u"abc");
  control('C');
  EXPECT_EQ(clipboard(), u"kept");
}

TEST_F(EditBoxKeys, ControlZTwiceGivesBackTheTextAfterTheChange) {
  open(u"abc");
  control('A');
  key('X');
  EXPECT_EQ(text(), u"x");
  control('Z');
  EXPECT_EQ(text(), u"abc");
  EXPECT_EQ(place(), "0-3");
  control('Z');
  EXPECT_EQ(text(), u"x");
}

TEST_F(EditBoxKeys, AReadOnlyBoxSelectsAndCopiesButNeverChanges) {
  fillClipboard(u"pasted");
  open(u"abcdef", WinEditBoxInfo::ReadOnly);
  for (const int code : {int{'Q'}, VK_BACK, VK_DELETE, VK_TAB}) key(static_cast<uint16_t>(code));
  for (const char code : {'H', 'X', 'V', 'Z', 'M'}) control(static_cast<uint16_t>(code));
  EXPECT_EQ(text(), u"abcdef");
  EXPECT_EQ(told("1006"), 0);
  shift(VK_RIGHT);
  EXPECT_EQ(selected(), u"a");
  control('C');
  EXPECT_EQ(clipboard(), u"a");
}

TEST_F(EditBoxKeys, SpaceDoesNotPressWhatIsBelow) {
  open(u"");
  keyDown(VK_SPACE);
  keyUp(VK_SPACE);
  settle();
  EXPECT_EQ(text(), u" ");
  EXPECT_EQ(GetCapture(), nullptr);
  EXPECT_EQ(told("0"), 0);
}

TEST_F(EditBoxKeys, LettersWithControlAndAltAreNoCommands) {
  open(u"abc");
  keyDown(VK_CONTROL);
  keyDown(VK_MENU);
  pressKey('A');
  keyUp(VK_MENU);
  keyUp(VK_CONTROL);
  settle();
  EXPECT_EQ(place(), "0");
}
