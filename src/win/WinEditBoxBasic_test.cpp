#include "win/WinEditBoxBasic.h"

#include "EditBoxBed.h"
#include "TestText.h"
#include "raw/RawClipboard.h"

#include <gtest/gtest.h>

using namespace WinLayer;
using namespace RawLayer::RawLiterals;
using RawLayer::RawString;

namespace {

constexpr uint16_t Lines = WinEditBoxInfo::MultiLine;
constexpr uint16_t ReadOnly = WinEditBoxInfo::ReadOnly;

enum : uint32_t {
  Backspace = 8,
  Tab = 9,
  Enter = 13,
  Escape = 27,
  Blank = 32,
  End = 35,
  Home = 36,
  Left = 37,
  Up = 38,
  Right = 39,
  Down = 40,
  Delete = 46,
};

using Codes = std::vector<uint32_t>;

bool plain(EditBoxBed& box, uint32_t key) {
  return box.pressKey(key, false, false);
}
bool withShift(EditBoxBed& box, uint32_t key) {
  return box.pressKey(key, true, false);
}
bool withControl(EditBoxBed& box, uint32_t key) {
  return box.pressKey(key, false, true);
}

std::u16string clipboard() {
  const RawString text = RawLayer::getClipboard(1000);
  return {text.wide(), static_cast<std::size_t>(text.length())};
}
void fillClipboard(const RawString& text) {
  ASSERT_TRUE(RawLayer::setClipboard(text, text.all()));
}

} // namespace

// --- Keys that erase

TEST(WinEditBoxKeys, BackspaceAndControlHEraseTheStepBefore) {
  EditBoxBed box(u"abcd");
  EXPECT_TRUE(plain(box, Backspace));
  EXPECT_EQ(box.text(), u"abc");
  EXPECT_TRUE(withControl(box, 'H'));
  EXPECT_EQ(box.text(), u"ab");
  EXPECT_TRUE(withControl(box.selecting(0, 2), 'H'));
  EXPECT_EQ(box.text(), u"");
}

TEST(WinEditBoxKeys, BackspaceBehindALineEndRemovesBothUnits) {
  EditBoxBed box(u"abc\r\n", Lines);
  plain(box, Backspace);
  EXPECT_EQ(box.text(), u"abc");
}

TEST(WinEditBoxKeys, DeleteErasesTheNextStepOrTheSelection) {
  EditBoxBed box(u"abcd");
  EXPECT_TRUE(plain(box.at(1), Delete));
  EXPECT_EQ(box.text(), u"acd");
  EXPECT_TRUE(plain(box.selecting(0, 2), Delete));
  EXPECT_EQ(box.text(), u"d");
}

TEST(WinEditBoxKeys, ControlXOnlyDeletesAndLeavesTheClipboard) {
  fillClipboard("kept"_text);
  EditBoxBed box(u"abcd");
  EXPECT_TRUE(withControl(box.selecting(1, 3), 'X'));
  EXPECT_EQ(box.text(), u"ad");
  EXPECT_EQ(clipboard(), u"kept");
  EXPECT_TRUE(withControl(box, 'X')); // without a selection it takes nothing
  EXPECT_EQ(box.text(), u"ad");
}

// --- Tab, Enter, Esc

TEST(WinEditBoxKeys, TabInsertsATabUnlessItIsLeftToTheDialog) {
  EditBoxBed box(u"ab");
  EXPECT_TRUE(plain(box, Tab));
  EXPECT_EQ(box.text(), u"ab\t");
  EXPECT_FALSE(withShift(box, Tab));
  EXPECT_FALSE(withControl(box, Tab));
  box.info.setFlag(WinEditBoxInfo::TabMovesFocus, true);
  EXPECT_FALSE(plain(box, Tab));
  EXPECT_EQ(box.text(), u"ab\t");
}

TEST(WinEditBoxKeys, EnterInASingleLineBoxOnlyTellsTheParent) {
  EditBoxBed box(u"ab");
  EXPECT_TRUE(plain(box, Enter));
  EXPECT_TRUE(withControl(box, Enter));
  EXPECT_TRUE(withControl(box, 'M'));
  EXPECT_EQ(box.told, (Codes{0x1002, 0x1002, 0x1002}));
  EXPECT_EQ(box.text(), u"ab");
}

TEST(WinEditBoxKeys, EnterInAMultiLineBoxMakesALineEnd) {
  EditBoxBed box(u"ab", Lines);
  EXPECT_TRUE(plain(box.at(1), Enter));
  EXPECT_EQ(box.text(), u"a\r\nb");
  EXPECT_EQ(box.place(), "3");
  EXPECT_TRUE(withControl(box, 'M'));
  EXPECT_EQ(box.text(), u"a\r\n\r\nb");
  EXPECT_TRUE(box.told.empty());
  EXPECT_TRUE(withControl(box, Enter));
  EXPECT_EQ(box.told, (Codes{0x1002}));
  EXPECT_EQ(box.text(), u"a\r\n\r\nb");
}

TEST(WinEditBoxKeys, AReadOnlyBoxOfLinesTakesNoLineEndAndTellsNothing) {
  EditBoxBed box(u"ab", Lines | ReadOnly);
  EXPECT_TRUE(plain(box, Enter));
  EXPECT_TRUE(withControl(box, 'M'));
  EXPECT_EQ(box.text(), u"ab");
  EXPECT_TRUE(box.told.empty());
}

TEST(WinEditBoxKeys, EscapeTellsTheParent) {
  EditBoxBed box(u"ab");
  EXPECT_TRUE(plain(box, Escape));
  EXPECT_EQ(box.told, (Codes{0x1004}));
}

// --- Keys that move

TEST(WinEditBoxKeys, LeftAndRightMoveByStepsAndCollapse) {
  EditBoxBed box(u"abc\r\nd", Lines);
  plain(box.at(5), Left);
  EXPECT_EQ(box.place(), "3");
  withControl(box, 'J');
  EXPECT_EQ(box.place(), "2");
  withControl(box, 'L');
  plain(box, Right);
  EXPECT_EQ(box.place(), "5");
  plain(box.selecting(1, 3), Left);
  EXPECT_EQ(box.place(), "1");
  plain(box.selecting(1, 3), Right);
  EXPECT_EQ(box.place(), "3");
}

TEST(WinEditBoxKeys, ShiftExtendsTheSelection) {
  EditBoxBed box(u"abcd");
  withShift(box.at(2), Left);
  EXPECT_EQ(box.place(), "2-1");
  withShift(box, Home);
  EXPECT_EQ(box.place(), "2-0");
  withShift(box, End);
  EXPECT_EQ(box.place(), "2-4");
  box.pressKey('J', true, true);
  EXPECT_EQ(box.place(), "2-3");
}

TEST(WinEditBoxKeys, HomeAndEndGoToTheEndsOfTheText) {
  EditBoxBed box(u"ab\r\ncd\r\nef", Lines);
  plain(box.at(5), Home);
  EXPECT_EQ(box.place(), "0");
  plain(box, End);
  EXPECT_EQ(box.place(), "10");
  withControl(box, Left);
  EXPECT_EQ(box.place(), "0");
  withControl(box, Right);
  EXPECT_EQ(box.place(), "10");
}

TEST(WinEditBoxKeys, UpAndDownMoveByLinesInAMultiLineBox) {
  EditBoxBed box(u"abc\r\nd\r\nefg", Lines);
  EXPECT_TRUE(plain(box.at(2), Down));
  EXPECT_EQ(box.place(), "6");
  EXPECT_TRUE(withControl(box, 'K'));
  EXPECT_EQ(box.place(), "10");
  EXPECT_TRUE(withControl(box, 'I'));
  EXPECT_TRUE(withShift(box, Up));
  EXPECT_EQ(box.place(), "6-2");
}

TEST(WinEditBoxKeys, AnyOtherKeyForgetsTheColumn) {
  EditBoxBed box(u"abc\r\nd\r\nefg", Lines);
  plain(box.at(2), Down);
  EXPECT_EQ(box.info.wantedColumn, 20);
  plain(box, 'Q');
  EXPECT_EQ(box.info.wantedColumn, -1);
  plain(box, Down);
  EXPECT_EQ(box.place(), "9");
}

TEST(WinEditBoxKeys, KeysThatAreHeldForOthersForgetNothing) {
  EditBoxBed box(u"abc\r\nd\r\nefg", Lines);
  plain(box.at(2), Down);
  for (const uint32_t modifier : {0x10, 0x11, 0x12}) EXPECT_FALSE(withShift(box, modifier));
  EXPECT_EQ(box.info.wantedColumn, 20);
}

TEST(WinEditBoxKeys, ASingleLineBoxLeavesUpAndDown) {
  EditBoxBed box(u"abc");
  EXPECT_FALSE(plain(box, Up));
  EXPECT_FALSE(plain(box, Down));
  EXPECT_TRUE(box.told.empty());
}

TEST(WinEditBoxKeys, DownAsksForTheHintsWhereThereAreSome) {
  EditBoxBed box(u"abc", WinEditBoxInfo::OpensHints);
  EXPECT_TRUE(plain(box, Down));
  EXPECT_TRUE(withControl(box, 'K'));
  EXPECT_EQ(box.told, (Codes{0x1003, 0x1003}));
  EXPECT_FALSE(plain(box, Up));
}

// --- Selecting, clipboard, undo

TEST(WinEditBoxKeys, ControlASelectsAll) {
  EditBoxBed box(u"abc");
  EXPECT_TRUE(withControl(box.at(1), 'A'));
  EXPECT_EQ(box.place(), "0-3");
}

TEST(WinEditBoxKeys, ControlCCopiesTheSelection) {
  EditBoxBed box(u"a\u3042\r\nb");
  EXPECT_TRUE(withControl(box.selecting(1, 4), 'C'));
  EXPECT_EQ(clipboard(), u"\u3042\r\n");
  EXPECT_EQ(box.text(), u"a\u3042\r\nb");
}

TEST(WinEditBoxKeys, WithoutASelectionTheClipboardStays) {
  fillClipboard("kept"_text);
  EditBoxBed box(u"abc");
  EXPECT_TRUE(withControl(box, 'C'));
  EXPECT_EQ(clipboard(), u"kept");
}

TEST(WinEditBoxKeys, ControlVPastesInPlaceOfTheSelection) {
  fillClipboard("XYZ"_text);
  EditBoxBed box(u"abcd");
  EXPECT_TRUE(withControl(box.selecting(1, 3), 'V'));
  EXPECT_EQ(box.text(), u"aXYZd");
  EXPECT_EQ(box.place(), "4");
}

TEST(WinEditBoxKeys, PastingNothingLeavesTheSelection) {
  fillClipboard(""_text);
  EditBoxBed box(u"abcd");
  withControl(box.selecting(1, 3), 'V');
  EXPECT_EQ(box.text(), u"abcd");
  EXPECT_EQ(box.place(), "1-3");
}

TEST(WinEditBoxKeys, ASingleLineBoxPastesThroughItsFilter) {
  struct FirstThree : WinEditBoxBasic::TextFilter {
    RawString textToInsert(const RawString& text) override {
      return RawString::fromRange(text.encoding(), text, {0, 3});
    }
  };
  FirstThree filter;
  fillClipboard("abcdef"_text);
  EditBoxBed box(u"");
  box.pasteFilter = &filter;
  withControl(box, 'V');
  EXPECT_EQ(box.text(), u"abc");
  EditBoxBed lines(u"", Lines);
  lines.pasteFilter = &filter;
  withControl(lines, 'V');
  EXPECT_EQ(lines.text(), u"abcdef");
}

TEST(WinEditBoxKeys, ControlZUndoesAndRedoes) {
  EditBoxBed box(u"abc");
  withControl(box.selecting(0, 2), 'X');
  EXPECT_TRUE(withControl(box, 'Z'));
  EXPECT_EQ(box.text(), u"abc");
  EXPECT_TRUE(withControl(box, 'Z'));
  EXPECT_EQ(box.text(), u"c");
}

TEST(WinEditBoxKeys, LettersAndUnknownKeysAreLeft) {
  EditBoxBed box(u"abc");
  for (const uint32_t key : {'A', 'C', 'H', 'I', 'J', 'K', 'L', 'M', 'V', 'X', 'Z'})
    EXPECT_FALSE(plain(box, key)) << key;
  EXPECT_FALSE(plain(box, Blank));
  EXPECT_FALSE(withControl(box, 'B'));
  EXPECT_EQ(box.text(), u"abc");
}

TEST(WinEditBoxKeys, AReadOnlyBoxStillMovesSelectsAndCopies) {
  fillClipboard("pasted"_text);
  EditBoxBed box(u"abc", ReadOnly);
  for (const uint32_t key : {Backspace, Delete, Tab}) EXPECT_TRUE(plain(box.at(1), key));
  for (const uint32_t key : {'H', 'V', 'Z'}) EXPECT_TRUE(withControl(box, key));
  withControl(box.selecting(0, 2), 'X');
  EXPECT_EQ(box.text(), u"abc");
  EXPECT_EQ(box.info.changeCount, 0);
  withShift(box.at(1), Right);
  EXPECT_EQ(box.selected(), u"b");
  withControl(box, 'A');
  withControl(box, 'C');
  EXPECT_EQ(clipboard(), u"abc");
  plain(box, Enter);
  EXPECT_EQ(box.told, (Codes{0x1002}));
}

TEST(WinEditBoxKeys, WhatWasChangedBeforeABoxBecameReadOnlyStays) {
  EditBoxBed box(u"abc");
  box.typeCharacter('d');
  box.info.setFlag(WinEditBoxInfo::ReadOnly, true);
  withControl(box, 'Z');
  EXPECT_EQ(box.text(), u"abcd");
}

// --- Characters

TEST(WinEditBoxCharacters, TheyAreCutToEightBits) {
  EditBoxBed box(u"");
  box.typeCharacter('a');
  box.typeCharacter(0xE9);
  box.typeCharacter(0x3042); // leaves 0x42
  box.typeCharacter(0x2020); // leaves a blank
  EXPECT_EQ(box.text(), u"a\u00E9B ");
}

TEST(WinEditBoxCharacters, ControlCharactersInsertNothing) {
  EditBoxBed box(u"");
  for (uint32_t code = 0; code < 32; ++code) box.typeCharacter(code);
  box.typeCharacter(127);
  box.typeCharacter(0x300D); // leaves 13
  box.typeCharacter(0x307F); // leaves 127
  EXPECT_EQ(box.text(), u"");
  box.typeCharacter(128);
  EXPECT_EQ(box.text(), u"\u0080");
}

TEST(WinEditBoxCharacters, TheyStandInPlaceOfTheSelection) {
  EditBoxBed box(u"abc");
  box.selecting(0, 2).typeCharacter('X');
  EXPECT_EQ(box.text(), u"Xc");
  EditBoxBed fixed(u"abc", ReadOnly);
  fixed.typeCharacter('X');
  EXPECT_EQ(fixed.text(), u"abc");
}

// --- What menu and dropped files do

TEST(WinEditBoxOperations, EraseTakesTheSelectionOnly) {
  EditBoxBed box(u"abc");
  box.at(1).erase();
  EXPECT_EQ(box.text(), u"abc");
  box.selecting(1, 2).erase();
  EXPECT_EQ(box.text(), u"ac");
}

TEST(WinEditBoxOperations, InsertTabWorksAlsoWhereTheKeyMovesTheFocus) {
  EditBoxBed box(u"ab", WinEditBoxInfo::TabMovesFocus);
  box.at(1).insertTab();
  EXPECT_EQ(box.text(), u"a\tb");
}

TEST(WinEditBoxOperations, NothingChangesAReadOnlyText) {
  fillClipboard("x"_text);
  EditBoxBed box(u"abc", ReadOnly);
  box.selectAll();
  box.erase();
  box.insertTab();
  box.paste();
  RawLayer::RawStringList paths;
  paths.add("C:\\a"_text);
  box.dropPaths(paths);
  EXPECT_EQ(box.text(), u"abc");
  EXPECT_TRUE(box.told.empty());
}

TEST(WinEditBoxOperations, DroppedPathsReplaceTheWholeText) {
  EditBoxBed box(u"old");
  RawLayer::RawStringList paths;
  paths.add("C:\\My Files\\a.txt"_text);
  paths.add("D:\\b"_text);
  box.dropPaths(paths);
  EXPECT_EQ(box.text(), u"C:\\My Files\\a.txt D:\\b");
  EXPECT_EQ(box.told, (Codes{0x1007}));
  box.undo();
  EXPECT_EQ(box.text(), u"old");
}
