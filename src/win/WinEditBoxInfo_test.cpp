#include "win/WinEditBoxInfo.h"

#include "EditBoxBed.h"
#include "TestText.h"

#include <gtest/gtest.h>

using namespace WinLayer;
using RawLayer::RawRange;
using RawLayer::RawString;

namespace {

constexpr uint16_t Lines = WinEditBoxInfo::MultiLine;

RawString wide(const std::u16string& text) {
  return RawString::fromWide(text.data(), static_cast<int32_t>(text.size()));
}

std::u16string wordAt(const EditBoxBed& box, int32_t position) {
  const RawRange word = box.info.wordAt(position);
  return box.text().substr(static_cast<std::size_t>(word.start),
                           static_cast<std::size_t>(word.size()));
}

} // namespace

// --- At the start

TEST(WinEditBoxInfo, BeginsEmptyWithoutAColumnAndWithNothingToUndo) {
  const EditBoxBed box;
  EXPECT_EQ(box.info.text.length(), 0);
  EXPECT_EQ(box.info.text.encoding(), RawLayer::EncodingWide);
  EXPECT_EQ(box.place(), "0");
  EXPECT_EQ(box.info.wantedColumn, -1);
  EXPECT_FALSE(box.info.canUndo());
  EXPECT_FALSE(box.info.composing);
}

TEST(WinEditBoxInfo, FlagsHaveTheirNumbers) {
  EXPECT_EQ(WinEditBoxInfo::MultiLine, 1 << 0);
  EXPECT_EQ(WinEditBoxInfo::ReadOnly, 1 << 1);
  EXPECT_EQ(WinEditBoxInfo::NoInputMethod, 1 << 2);
  EXPECT_EQ(WinEditBoxInfo::TabMovesFocus, 1 << 3);
  EXPECT_EQ(WinEditBoxInfo::HasCancel, 1 << 4);
  EXPECT_EQ(WinEditBoxInfo::Marked, 1 << 5);
  EXPECT_EQ(WinEditBoxInfo::SteadyCaret, 1 << 6);
  EXPECT_EQ(WinEditBoxInfo::ContextAttached, 1 << 8);
  EXPECT_EQ(WinEditBoxInfo::InputMethodOpen, 1 << 9);
  EXPECT_EQ(WinEditBoxInfo::Dragging, 1 << 11);
}

TEST(WinEditBoxInfo, SettingOneFlagLeavesTheOthers) {
  EditBoxBed box(u"", WinEditBoxInfo::MultiLine | WinEditBoxInfo::Marked);
  box.info.setFlag(WinEditBoxInfo::ReadOnly, true);
  box.info.setFlag(WinEditBoxInfo::Marked, false);
  EXPECT_EQ(box.info.flags, WinEditBoxInfo::MultiLine | WinEditBoxInfo::ReadOnly);
}

// --- Text and selection from outside

TEST(WinEditBoxInfo, ATextFromOutsideCutsTheSelectionBackAndIsNoStepOfUndo) {
  EditBoxBed box(u"abcdef");
  box.info.insert(wide(u"gh"));
  box.selecting(2, 8);
  const int32_t count = box.info.changeCount;
  box.info.setText(RawString::fromChars("\xC3\xA9t\xC3\xA9"));
  EXPECT_EQ(box.text(), u"\u00E9t\u00E9");
  EXPECT_EQ(box.place(), "2-3");
  EXPECT_EQ(box.info.changeCount, count + 1);
  EXPECT_FALSE(box.info.canUndo());
  EXPECT_EQ(box.ruler.changes, 2);
}

TEST(WinEditBoxInfo, ASelectionIsCutBackToTheText) {
  EditBoxBed box(u"abc");
  box.info.select(-5, 99);
  EXPECT_EQ(box.place(), "0-3");
  EXPECT_EQ(box.selected(), u"abc");
  box.info.select(99, -1);
  EXPECT_EQ(box.info.selection(), (RawRange{0, 3}));
  EXPECT_EQ(box.info.caret, 0);
}

// --- Edits

TEST(WinEditBoxInfo, AnInsertionStandsInPlaceOfTheSelectionWithTheCaretBehindIt) {
  EditBoxBed box(u"abcdef");
  box.selecting(4, 1);
  box.info.insert(wide(u"XY"));
  EXPECT_EQ(box.text(), u"aXYef");
  EXPECT_EQ(box.place(), "3");
  EXPECT_EQ(box.info.changeCount, 1);
  EXPECT_EQ(box.ruler.changes, 1);
}

TEST(WinEditBoxInfo, AnEditRecordsWhatItTookAndWhereItPut) {
  EditBoxBed box(u"abcdef");
  box.info.replace({1, 4}, wide(u"XY"));
  EXPECT_EQ(box.info.undoText, wide(u"bcd"));
  EXPECT_EQ(box.info.undoStart, 1);
  EXPECT_EQ(box.info.undoEnd, 3);
}

TEST(WinEditBoxInfo, AnEditOfNothingByNothingIsNone) {
  EditBoxBed box(u"abc");
  box.info.insert(wide(u"d"));
  box.info.replace({2, 2}, wide(u""));
  EXPECT_EQ(box.info.changeCount, 1);
  box.info.undo();
  EXPECT_EQ(box.text(), u"abc");
}

TEST(WinEditBoxInfo, ARangeBeyondTheTextIsCutBack) {
  EditBoxBed box(u"abc");
  box.info.replace({2, 99}, wide(u"Z"));
  EXPECT_EQ(box.text(), u"abZ");
  box.info.replace({50, 60}, wide(u"!"));
  EXPECT_EQ(box.text(), u"abZ!");
  EXPECT_EQ(box.place(), "4");
}

TEST(WinEditBoxInfo, TextOfOtherEncodingsIsInsertedAsWhatItSays) {
  EditBoxBed box;
  box.info.insert(RawString::fromChars("\xE3\x81\x82"));
  EXPECT_EQ(box.text(), u"\u3042");
  EXPECT_EQ(box.info.text.encoding(), RawLayer::EncodingWide);
}

TEST(WinEditBoxInfo, TheDrawerHearsOfAChangeWithTheCaretAtItsStart) {
  struct Listener : EditBoxRuler {
    const WinEditBoxInfo* info = nullptr;
    int32_t caret = -1;
    int32_t length = -1;
    void onTextChanged() override {
      caret = info->caret;
      length = info->text.length();
    }
  };
  Listener listener;
  WinEditBoxInfo info(listener);
  listener.info = &info;
  info.insert(wide(u"abc"));
  info.replace({1, 2}, wide(u"XYZ"));
  EXPECT_EQ(listener.caret, 1);
  EXPECT_EQ(listener.length, 5);
  EXPECT_EQ(info.caret, 4);
}

// --- One step back and forward

TEST(WinEditBoxInfo, AStepBackTakesALineEndWhole) {
  const EditBoxBed box(u"abc\r\nd");
  EXPECT_EQ(box.info.stepBack(6), 5);
  EXPECT_EQ(box.info.stepBack(5), 3);
  EXPECT_EQ(box.info.stepBack(4), 3);
  EXPECT_EQ(box.info.stepBack(3), 2);
}

TEST(WinEditBoxInfo, UpToTheSecondPositionAStepBackIsOneUnitEvenInALineEnd) {
  const EditBoxBed box(u"\r\n\r\n");
  EXPECT_EQ(box.info.stepBack(4), 2);
  EXPECT_EQ(box.info.stepBack(3), 2);
  EXPECT_EQ(box.info.stepBack(2), 1);
  EXPECT_EQ(box.info.stepBack(1), 0);
  EXPECT_EQ(box.info.stepBack(0), 0);
  const EditBoxBed shifted(u"a\r\n");
  EXPECT_EQ(shifted.info.stepBack(3), 1);
}

TEST(WinEditBoxInfo, HalvesOfALineEndAloneAreStepsOfTheirOwn) {
  const EditBoxBed box(u"abc\rd\ne");
  EXPECT_EQ(box.info.stepBack(4), 3);
  EXPECT_EQ(box.info.stepBack(6), 5);
  EXPECT_EQ(box.info.stepForward(3), 4);
  EXPECT_EQ(box.info.stepForward(5), 6);
}

TEST(WinEditBoxInfo, AStepForwardTakesALineEndWhole) {
  const EditBoxBed box(u"\r\nab");
  EXPECT_EQ(box.info.stepForward(0), 2);
  EXPECT_EQ(box.info.stepForward(1), 2);
  EXPECT_EQ(box.info.stepForward(2), 3);
  EXPECT_EQ(box.info.stepForward(4), 4);
}

TEST(WinEditBoxInfo, StepsFromBeyondTheTextStayInIt) {
  const EditBoxBed box(u"abcd");
  EXPECT_EQ(box.info.stepBack(99), 3);
  EXPECT_EQ(box.info.stepBack(-3), 0);
  EXPECT_EQ(box.info.stepForward(99), 4);
  EXPECT_EQ(box.info.stepForward(-3), 1);
}

// --- Erasing

TEST(WinEditBoxInfo, ErasingBackBehindALineEndRemovesBothUnits) {
  EditBoxBed box(u"abc\r\nd", Lines);
  box.at(5).info.eraseBack();
  EXPECT_EQ(box.text(), u"abcd");
  EXPECT_EQ(box.place(), "3");
}

TEST(WinEditBoxInfo, ErasingTakesTheSelectionFirst) {
  EditBoxBed box(u"abcdef");
  box.selecting(1, 3).info.eraseBack();
  EXPECT_EQ(box.text(), u"adef");
  box.selecting(3, 1).info.eraseForward();
  EXPECT_EQ(box.text(), u"af");
  EXPECT_EQ(box.place(), "1");
}

TEST(WinEditBoxInfo, ErasingForwardTakesALineEndWhole) {
  EditBoxBed box(u"ab\r\nc");
  box.at(2).info.eraseForward();
  EXPECT_EQ(box.text(), u"abc");
}

TEST(WinEditBoxInfo, ErasingAtTheEndsOrWithoutASelectionChangesNothing) {
  EditBoxBed box(u"abc");
  box.at(0).info.eraseBack();
  box.at(3).info.eraseForward();
  box.info.eraseSelection();
  EXPECT_EQ(box.text(), u"abc");
  EXPECT_EQ(box.info.changeCount, 0);
}

// --- Undo

TEST(WinEditBoxInfo, UndoTwiceGivesBackTheTextAfterTheChange) {
  EditBoxBed box(u"abcdef");
  box.info.replace({1, 4}, wide(u"XY"));
  box.info.undo();
  EXPECT_EQ(box.text(), u"abcdef");
  EXPECT_EQ(box.place(), "1-4");
  EXPECT_EQ(box.selected(), u"bcd");
  box.info.undo();
  EXPECT_EQ(box.text(), u"aXYef");
  EXPECT_EQ(box.selected(), u"XY");
  EXPECT_EQ(box.info.changeCount, 3);
}

TEST(WinEditBoxInfo, OnlyTheLastChangeCanBeUndone) {
  EditBoxBed box(u"");
  box.info.insert(wide(u"a"));
  box.info.insert(wide(u"b"));
  box.info.undo();
  EXPECT_EQ(box.text(), u"a");
  box.info.undo();
  EXPECT_EQ(box.text(), u"ab");
}

TEST(WinEditBoxInfo, ADeletionComesBackAndGoesAgain) {
  EditBoxBed box(u"abc");
  box.selecting(0, 3).info.eraseSelection();
  box.info.undo();
  EXPECT_EQ(box.text(), u"abc");
  box.info.undo();
  EXPECT_EQ(box.text(), u"");
  EXPECT_EQ(box.place(), "0");
}

TEST(WinEditBoxInfo, UndoWithNothingStoredDoesNothing) {
  EditBoxBed box(u"abc");
  box.info.undo();
  EXPECT_EQ(box.text(), u"abc");
  EXPECT_EQ(box.info.changeCount, 0);
}

// --- Moving

TEST(WinEditBoxInfo, LeftAndRightCollapseASelectionToItsEnds) {
  EditBoxBed box(u"abcdef");
  box.selecting(4, 2).info.moveLeft(false);
  EXPECT_EQ(box.place(), "2");
  box.selecting(4, 2).info.moveRight(false);
  EXPECT_EQ(box.place(), "4");
}

TEST(WinEditBoxInfo, ExtendingLeavesTheAnchor) {
  EditBoxBed box(u"abcdef");
  box.at(3).info.moveLeft(true);
  EXPECT_EQ(box.place(), "3-2");
  box.info.moveRight(true);
  box.info.moveRight(true);
  EXPECT_EQ(box.place(), "3-4");
  box.info.moveTo(0, true);
  EXPECT_EQ(box.place(), "3-0");
}

TEST(WinEditBoxInfo, RowsKeepTheColumnOverShortLines) {
  EditBoxBed box(u"abcdef\r\nab\r\nabcdef", Lines);
  box.at(5).info.moveRows(1, false);
  EXPECT_EQ(box.place(), "10");
  EXPECT_EQ(box.info.wantedColumn, 50);
  box.info.moveRows(1, false);
  EXPECT_EQ(box.place(), "17");
  box.info.moveRows(-1, true);
  EXPECT_EQ(box.place(), "17-10");
}

TEST(WinEditBoxInfo, AboveTheFirstLineAndBelowTheLastTheCaretStays) {
  EditBoxBed box(u"ab\r\ncd", Lines);
  box.at(1).info.moveRows(-1, false);
  EXPECT_EQ(box.place(), "1");
  box.at(5).info.moveRows(1, false);
  EXPECT_EQ(box.place(), "5");
}

// --- Lines

TEST(WinEditBoxInfo, LinesEndBeforeTheirLineEnds) {
  const EditBoxBed box(u"ab\r\n\r\ncd\r\n", Lines);
  EXPECT_EQ(box.info.rowCount(), 4);
  EXPECT_EQ(box.info.lineOfRow(0), (RawRange{0, 2}));
  EXPECT_EQ(box.info.lineOfRow(1), (RawRange{4, 4}));
  EXPECT_EQ(box.info.lineOfRow(2), (RawRange{6, 8}));
  EXPECT_EQ(box.info.lineOfRow(3), (RawRange{10, 10}));
  EXPECT_EQ(box.info.lineOfRow(99), (RawRange{10, 10}));
  EXPECT_EQ(box.info.lineBehind({10, 10}), (RawRange{-1, -1}));
}

TEST(WinEditBoxInfo, EveryPositionBelongsToALine) {
  const EditBoxBed box(u"ab\r\n\r\ncd", Lines);
  const int32_t rows[] = {0, 0, 0, 0, 1, 1, 2, 2, 2};
  for (int32_t position = 0; position <= 8; ++position) {
    EXPECT_EQ(box.info.rowOf(position), rows[position]) << position;
    EXPECT_EQ(box.info.lineOf(position), box.info.lineOfRow(rows[position])) << position;
  }
}

TEST(WinEditBoxInfo, ASingleLineBoxHasOneLineWhateverItHolds) {
  const EditBoxBed box(u"ab\r\ncd");
  EXPECT_EQ(box.info.rowCount(), 1);
  EXPECT_EQ(box.info.lineOf(5), (RawRange{0, 6}));
  EXPECT_EQ(box.info.rowOf(6), 0);
}

// --- Words

TEST(WinEditBoxInfo, AWordIsARunOfOneClass) {
  const EditBoxBed box(u"foo_1 (bar)  \u00E4\u00F6");
  EXPECT_EQ(wordAt(box, 0), u"foo_1");
  EXPECT_EQ(wordAt(box, 3), u"foo_1");
  EXPECT_EQ(wordAt(box, 6), u"(");
  EXPECT_EQ(wordAt(box, 8), u"bar");
  EXPECT_EQ(wordAt(box, 10), u")");
  EXPECT_EQ(wordAt(box, 12), u"  ");
  EXPECT_EQ(wordAt(box, 14), u"\u00E4\u00F6");
}

TEST(WinEditBoxInfo, BehindAWordThePositionStillBelongsToIt) {
  const EditBoxBed box(u"foo bar");
  EXPECT_EQ(wordAt(box, 3), u"foo");
  EXPECT_EQ(wordAt(box, 7), u"bar");
}

TEST(WinEditBoxInfo, JapaneseScriptsAreClassesOfTheirOwn) {
  const EditBoxBed box(u"\u6F22\u5B57\u3072\u3089\u30AB\u30CAabc\u3000\u3001");
  EXPECT_EQ(wordAt(box, 0), u"\u6F22\u5B57");
  EXPECT_EQ(wordAt(box, 2), u"\u3072\u3089");
  EXPECT_EQ(wordAt(box, 5), u"\u30AB\u30CA");
  EXPECT_EQ(wordAt(box, 7), u"abc");
  EXPECT_EQ(wordAt(box, 10), u"\u3001");
}

TEST(WinEditBoxInfo, AWordStaysInItsLine) {
  const EditBoxBed box(u"ab\r\ncd\r\n\r\n", Lines);
  EXPECT_EQ(wordAt(box, 2), u"ab");
  EXPECT_EQ(wordAt(box, 4), u"cd");
  EXPECT_EQ(wordAt(box, 8), u"");
  EXPECT_EQ(wordAt(EditBoxBed(u""), 0), u"");
}

// --- Places

TEST(WinEditBoxInfo, PointsAndPositionsAnswerEachOther) {
  EditBoxBed box(u"abc\r\ndefg", Lines);
  box.info.scrollX = 2;
  box.info.scrollY = 3;
  EXPECT_EQ(box.info.pointOf(7), (WinPoint{22, 16}));
  EXPECT_EQ(box.info.pointOf(4), (WinPoint{32, 3})); // in the middle of the line end
  EXPECT_EQ(box.info.positionAt({22, 16}), 7);
  EXPECT_EQ(box.info.positionAt({26, 15}), 2); // the gap belongs to the line above it
  EXPECT_EQ(box.info.positionAt({500, 3}), 3);
  EXPECT_EQ(box.info.positionAt({-500, -500}), 0);
  EXPECT_EQ(box.info.positionAt({500, 500}), 9);
}

TEST(WinEditBoxInfo, ASingleLineBoxHasNoRowsForThePointer) {
  EditBoxBed box(u"abcdef");
  EXPECT_EQ(box.info.positionAt({31, 500}), 3);
}

TEST(WinEditBoxInfo, TheCaretIsScrolledIntoView) {
  EditBoxBed box(u"abcdefghij");
  const WinRect view{2, 2, 52, 20};
  box.info.scrollX = box.info.scrollY = 2;
  EXPECT_TRUE(box.info.scrollToCaret(view, 1));
  EXPECT_EQ(box.info.scrollX, 52 - 1 - 100);
  EXPECT_FALSE(box.info.scrollToCaret(view, 1));
  box.at(0);
  EXPECT_TRUE(box.info.scrollToCaret(view, 1));
  EXPECT_EQ(box.info.scrollX, 2);
  box.at(4);
  EXPECT_FALSE(box.info.scrollToCaret(view, 1));
}

TEST(WinEditBoxInfo, RowsAreScrolledIntoView) {
  EditBoxBed box(u"a\r\nb\r\nc\r\nd", Lines);
  const WinRect view{0, 0, 50, 26};
  EXPECT_TRUE(box.info.scrollToCaret(view, 1));
  EXPECT_EQ(box.info.scrollY, 26 - 12 - 3 * 13);
  box.at(0);
  EXPECT_TRUE(box.info.scrollToCaret(view, 1));
  EXPECT_EQ(box.info.scrollY, 0);
}

TEST(WinEditBoxInfo, NearTheLeftEdgeADragScrollsByTwo) {
  EditBoxBed box(u"abcdefghij");
  const WinRect client{0, 0, 60, 20};
  box.info.scrollX = -3;
  EXPECT_FALSE(box.info.scrollAtEdge(8, client, 2));
  EXPECT_TRUE(box.info.scrollAtEdge(7, client, 2));
  EXPECT_EQ(box.info.scrollX, -1);
  EXPECT_TRUE(box.info.scrollAtEdge(-40, client, 2));
  EXPECT_TRUE(box.info.scrollAtEdge(0, client, 2));
  EXPECT_EQ(box.info.scrollX, 2);
  EXPECT_FALSE(box.info.scrollAtEdge(0, client, 2));
}

TEST(WinEditBoxInfo, NearTheRightEdgeItScrollsUnlessTheCaretIsAtTheEnd) {
  EditBoxBed box(u"abcdefghij");
  const WinRect client{0, 0, 60, 20};
  box.info.scrollX = 2;
  box.at(5);
  EXPECT_FALSE(box.info.scrollAtEdge(51, client, 2));
  EXPECT_TRUE(box.info.scrollAtEdge(52, client, 2));
  EXPECT_EQ(box.info.scrollX, 0);
  EXPECT_TRUE(box.info.scrollAtEdge(99, client, 2));
  EXPECT_EQ(box.info.scrollX, -2);
  box.at(10);
  EXPECT_FALSE(box.info.scrollAtEdge(59, client, 2));
}

// --- The input method

TEST(WinEditBoxInfo, ARunningTextReplacesTheOneBeforeAndStaysSelected) {
  EditBoxBed box(u"abcd");
  box.selecting(1, 3).info.beginComposition();
  EXPECT_TRUE(box.info.composing);
  EXPECT_EQ(box.text(), u"ad");
  box.info.putComposition(wide(u"k"));
  box.info.putComposition(wide(u"\u304B\u3093"));
  EXPECT_EQ(box.text(), u"a\u304B\u3093d");
  EXPECT_EQ(box.place(), "1-3");
  box.info.putResult(wide(u"\u6F22"));
  EXPECT_EQ(box.text(), u"a\u6F22d");
  EXPECT_EQ(box.place(), "2");
  EXPECT_EQ(box.info.lastComposed, wide(u"\u6F22"));
  box.info.endComposition();
  EXPECT_FALSE(box.info.composing);
  EXPECT_EQ(box.text(), u"a\u6F22d");
}

TEST(WinEditBoxInfo, ARunningTextThatIsNotConfirmedIsDropped) {
  EditBoxBed box(u"abcd");
  box.at(2).info.beginComposition();
  box.info.putComposition(wide(u"xyz"));
  box.info.endComposition();
  EXPECT_EQ(box.text(), u"abcd");
  EXPECT_EQ(box.place(), "2");
}

TEST(WinEditBoxInfo, ANewRunningTextStandsBehindTheResultBeforeIt) {
  EditBoxBed box(u"");
  box.info.beginComposition();
  box.info.putComposition(wide(u"ab"));
  box.info.putResult(wide(u"AB"));
  box.info.putComposition(wide(u"c"));
  EXPECT_EQ(box.text(), u"ABc");
  EXPECT_EQ(box.selected(), u"c");
  box.info.putComposition(wide(u""));
  EXPECT_EQ(box.text(), u"AB");
  EXPECT_EQ(box.place(), "2");
}

TEST(WinEditBoxInfo, OnlyTheLastComposedTextBeforeTheCaretIsOfferedAgain) {
  EditBoxBed box(u"x");
  EXPECT_TRUE(box.info.reconversion().isEmpty());
  box.info.beginComposition();
  box.info.putResult(wide(u"\u6F22\u5B57"));
  box.info.endComposition();
  EXPECT_EQ(box.info.reconversion(), (RawRange{1, 3}));
  box.at(2);
  EXPECT_TRUE(box.info.reconversion().isEmpty());
  box.at(1);
  EXPECT_TRUE(box.info.reconversion().isEmpty());
  box.at(3).info.insert(wide(u"y"));
  EXPECT_TRUE(box.info.reconversion().isEmpty());
}
