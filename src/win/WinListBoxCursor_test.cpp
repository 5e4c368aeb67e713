#include "win/WinListBoxCursor.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

using namespace WinLayer;
using Item = WinListBoxItemUnit;

namespace {

constexpr uint32_t Enter = 0x0D;
constexpr uint32_t Space = 0x20;
constexpr uint32_t PageUp = 0x21;
constexpr uint32_t PageDown = 0x22;
constexpr uint32_t End = 0x23;
constexpr uint32_t Home = 0x24;
constexpr uint32_t Left = 0x25;
constexpr uint32_t Up = 0x26;
constexpr uint32_t Right = 0x27;
constexpr uint32_t Down = 0x28;
constexpr uint32_t F3 = 0x72;

// A list with a diary in place of a window: an area of 100 by 50, rows of the given heights.
class TestList : public WinListBoxCursor {
 public:
  std::string diary;
  std::vector<int32_t> heights;
  bool isSideways = false;
  int measured = 0;
  int repainted = 0;

  void fill(const std::vector<int32_t>& rowHeights) {
    heights = rowHeights;
    Clear();
    for (size_t i = 0; i < heights.size(); ++i) items.append(items.Create());
  }
  void UpdateScroll() override {
    fitTo({102, 52}, {1, 1, 1, 1});
    if (!dirty) return;
    dirty = 0;
    ++measured;
    beginPlacing();
    size_t i = 0;
    for (Item& item : items.elements()) {
      item.rect = {0, 0, 150, heights[i++]};
      place(item);
    }
    endPlacing();
    lineStepX = lineStepY = 10;
  }
  void Notify(uint32_t code) override {
    char text[16];
    std::snprintf(text, sizeof text, "%x ", code);
    diary += text;
  }
  void Repaint() override { ++repainted; }
  void UpdateBars() override {}
  [[nodiscard]] bool CanScrollSideways() const override { return isSideways; }
  void SearchStart() override { diary += "start "; }
  void SearchForward() override { diary += "forward "; }
  void SearchBackward() override { diary += "backward "; }

  std::string marks() {
    std::string text;
    for (const Item& item : items.elements()) text += item.isMarked() ? 'x' : '.';
    return text;
  }
  std::string takeDiary() { return std::exchange(diary, {}); }
  bool key(uint32_t code) { return pressKey(code, false, false); }
  bool control(uint32_t code) { return pressKey(code, true, false); }
  bool shift(uint32_t code) { return pressKey(code, false, true); }
};

class WinListBoxCursorTest : public testing::Test {
 protected:
  TestList list;
  void SetUp() override { list.fill({20, 20, 20, 20, 20}); }
  void allowSeveral() { list.setFlag(WinListBoxTarget::MultipleSelection, true); }
};

} // namespace

// --- Set, toggle, range

TEST_F(WinListBoxCursorTest, SettingMarksThatRowAlone) {
  list.markAll();
  list.footer.mark(true);
  list.SetCursorRow(1);
  EXPECT_EQ(list.marks(), ".x...");
  EXPECT_FALSE(list.footer.isMarked());
  EXPECT_EQ(list.cursor, 1);
  EXPECT_EQ(list.anchor, 1);
  EXPECT_EQ(list.diary, "1008 ");
  EXPECT_GT(list.repainted, 0);
}

TEST_F(WinListBoxCursorTest, SettingNoRowClearsAndTells) {
  list.SetCursorRow(1);
  list.SetCursorRow(-1);
  EXPECT_EQ(list.marks(), ".....");
  EXPECT_EQ(list.cursor, -1);
  EXPECT_EQ(list.diary, "1008 1008 ");
}

TEST_F(WinListBoxCursorTest, SettingOutsideTheListStillTells) {
  list.SetCursorRow(1);
  list.SetCursorRow(7);
  EXPECT_EQ(list.marks(), ".....");
  EXPECT_EQ(list.diary, "1008 1008 ");
}

TEST_F(WinListBoxCursorTest, SettingHeaderOrFooterMarksIt) {
  list.footer.rect = {0, 0, 10, 15};
  list.SetCursorRow(-3);
  EXPECT_TRUE(list.footer.isMarked());
  EXPECT_EQ(list.scrollY, 65); // the end
  EXPECT_EQ(list.takeDiary(), "100a 1008 ");
  list.SetCursorRow(-2);
  EXPECT_TRUE(list.header.isMarked());
  EXPECT_FALSE(list.footer.isMarked());
  EXPECT_EQ(list.scrollY, 65);
  EXPECT_EQ(list.takeDiary(), "1008 ");
}

TEST_F(WinListBoxCursorTest, SettingARowScrollsItIntoView) {
  list.SetCursorRow(4);
  EXPECT_EQ(list.scrollY, 50);
  EXPECT_EQ(list.takeDiary(), "100a 1008 ");
  list.SetCursorRow(3);
  EXPECT_EQ(list.scrollY, 50);
  EXPECT_EQ(list.takeDiary(), "1008 ");
  list.SetCursorRow(1);
  EXPECT_EQ(list.scrollY, 20);
}

TEST_F(WinListBoxCursorTest, TogglingTurnsOneMarkOver) {
  list.SetCursorRow(1);
  list.Toggle(3);
  EXPECT_EQ(list.marks(), ".x.x.");
  EXPECT_EQ(list.cursor, 3);
  EXPECT_EQ(list.anchor, 1);
  list.Toggle(3);
  EXPECT_EQ(list.marks(), ".x...");
  list.takeDiary();
  list.Toggle(-1);
  list.Toggle(5);
  EXPECT_EQ(list.cursor, 3);
  EXPECT_EQ(list.diary, "");
}

TEST_F(WinListBoxCursorTest, ARangeGoesFromTheAnchor) {
  list.SetCursorRow(3);
  list.Range(1);
  EXPECT_EQ(list.marks(), ".xxx.");
  EXPECT_EQ(list.cursor, 1);
  EXPECT_EQ(list.anchor, 3);
  list.Range(4);
  EXPECT_EQ(list.marks(), "...xx");
  list.takeDiary();
  list.Range(9);
  EXPECT_EQ(list.marks(), "...xx");
  EXPECT_EQ(list.diary, "");
}

TEST_F(WinListBoxCursorTest, ARangeSkipsRowsThatAreNotShown) {
  list.items.element(list.items.nodeAt(2))->set(Item::NoExtent, true);
  list.SetCursorRow(1);
  list.Range(3);
  EXPECT_EQ(list.marks(), ".x.x.");
}

TEST_F(WinListBoxCursorTest, ARangeToTheFooterTakesTheRowsToTheEnd) {
  list.footer.rect = {0, 0, 10, 15};
  list.SetCursorRow(3);
  list.Range(-3);
  EXPECT_EQ(list.marks(), "...xx");
  EXPECT_TRUE(list.footer.isMarked());
}

// --- The mouse

TEST_F(WinListBoxCursorTest, WithoutMultipleSelectionModifiersDoNotCount) {
  list.press(1, true, false);
  list.press(3, false, true);
  EXPECT_EQ(list.marks(), "...x.");
}

TEST_F(WinListBoxCursorTest, WithItControlTogglesAndShiftMarksTheRange) {
  allowSeveral();
  list.press(1, false, false);
  list.press(3, true, false);
  EXPECT_EQ(list.marks(), ".x.x.");
  list.press(4, false, true);
  EXPECT_EQ(list.marks(), ".xxxx");
  list.press(2, true, true);
  EXPECT_EQ(list.marks(), ".x.xx");
  EXPECT_EQ(list.diary, "1008 100a 1008 100a 1008 100a 1008 ");
}

TEST_F(WinListBoxCursorTest, APressBesideTheRowsUnmarksAll) {
  list.press(1, false, false);
  list.press(-1, false, false);
  EXPECT_EQ(list.marks(), ".....");
}

// --- Keys

TEST_F(WinListBoxCursorTest, UpAndDownGoFromRowToRow) {
  list.key(Down);
  EXPECT_EQ(list.cursor, 0);
  list.key(Down);
  EXPECT_EQ(list.cursor, 1);
  list.key(Up);
  EXPECT_EQ(list.cursor, 0);
  EXPECT_EQ(list.marks(), "x....");
  EXPECT_EQ(list.takeDiary(), "1008 1008 1008 ");
  list.key(Up);
  EXPECT_EQ(list.cursor, 0);
  EXPECT_EQ(list.diary, "");
}

TEST_F(WinListBoxCursorTest, UpWithoutACursorDoesNothing) {
  EXPECT_TRUE(list.key(Up));
  EXPECT_EQ(list.cursor, -1);
  EXPECT_EQ(list.diary, "");
}

TEST_F(WinListBoxCursorTest, RowsWithoutHeightCannotBeReached) {
  list.fill({0, 20, 0, 20, 0});
  list.key(Home);
  EXPECT_EQ(list.cursor, 1);
  list.key(Down);
  EXPECT_EQ(list.cursor, 3);
  list.key(Down);
  EXPECT_EQ(list.cursor, 3);
  list.key(Up);
  EXPECT_EQ(list.cursor, 1);
  list.key(End);
  EXPECT_EQ(list.cursor, 3);
}

TEST_F(WinListBoxCursorTest, EndGoesToTheFooterIfThereIsOne) {
  list.key(End);
  EXPECT_EQ(list.cursor, 4);
  list.footer.rect = {0, 0, 10, 15};
  list.dirty = 1;
  list.key(End);
  EXPECT_EQ(list.cursor, -3);
  list.key(Down);
  EXPECT_EQ(list.cursor, -3);
  list.key(Up);
  EXPECT_EQ(list.cursor, 4);
}

TEST_F(WinListBoxCursorTest, WithoutMultipleSelectionControlArrowsJump) {
  list.control(Down);
  EXPECT_EQ(list.cursor, 4);
  list.control(Up);
  EXPECT_EQ(list.cursor, 0);
}

TEST_F(WinListBoxCursorTest, WithItControlMovesAndLeavesTheMarks) {
  allowSeveral();
  list.SetCursorRow(1);
  list.takeDiary();
  list.control(Down);
  EXPECT_EQ(list.cursor, 2);
  EXPECT_EQ(list.marks(), ".x...");
  EXPECT_EQ(list.takeDiary(), "100a 1008 ");
  list.control(Home);
  EXPECT_EQ(list.cursor, 0);
  EXPECT_EQ(list.scrollY, 0);
  EXPECT_EQ(list.marks(), ".x...");
}

TEST_F(WinListBoxCursorTest, WithItShiftMarksTheRangeToTheAnchor) {
  allowSeveral();
  list.SetCursorRow(1);
  list.shift(Down);
  list.shift(Down);
  EXPECT_EQ(list.marks(), ".xxx.");
  list.shift(Up);
  EXPECT_EQ(list.marks(), ".xx..");
  list.shift(End);
  EXPECT_EQ(list.marks(), ".xxxx");
  list.shift(Home);
  EXPECT_EQ(list.marks(), "xx...");
  list.key(Down);
  EXPECT_EQ(list.marks(), ".x...");
}

TEST_F(WinListBoxCursorTest, SpaceTogglesTheCursorsMarkWithMultipleSelectionOnly) {
  list.SetCursorRow(1);
  EXPECT_FALSE(list.key(Space));
  allowSeveral();
  EXPECT_TRUE(list.key(Space));
  EXPECT_EQ(list.marks(), ".....");
  EXPECT_TRUE(list.key(Space));
  EXPECT_EQ(list.marks(), ".x...");
  EXPECT_EQ(list.diary, "1008 1008 1008 ");
}

TEST_F(WinListBoxCursorTest, ControlAMarksAllWithMultipleSelectionOnly) {
  EXPECT_FALSE(list.control('A'));
  allowSeveral();
  EXPECT_FALSE(list.key('A'));
  EXPECT_TRUE(list.control('A'));
  EXPECT_EQ(list.marks(), "xxxxx");
  EXPECT_EQ(list.cursor, -1);
  EXPECT_EQ(list.diary, "1008 ");
}

TEST_F(WinListBoxCursorTest, EnterTellsEvenWithoutACursor) {
  EXPECT_TRUE(list.key(Enter));
  EXPECT_EQ(list.diary, "1002 ");
}

TEST_F(WinListBoxCursorTest, AnEmptyListStaysStill) {
  list.fill({});
  allowSeveral();
  for (const uint32_t key : {Up, Down, Space, Home, End}) list.key(key);
  EXPECT_EQ(list.cursor, -1);
  EXPECT_EQ(list.diary, "");
}

TEST_F(WinListBoxCursorTest, PageKeysScrollHalfTheAreaAndLeaveTheCursor) {
  list.SetCursorRow(0);
  list.takeDiary();
  list.key(PageDown);
  EXPECT_EQ(list.scrollY, 25);
  list.key(PageDown);
  list.key(PageDown);
  EXPECT_EQ(list.scrollY, 50);
  list.key(PageUp);
  EXPECT_EQ(list.scrollY, 25);
  EXPECT_EQ(list.cursor, 0);
  EXPECT_EQ(list.diary, "100a 100a 100a ");
}

TEST_F(WinListBoxCursorTest, LeftAndRightScrollWhereThereIsABarForIt) {
  EXPECT_FALSE(list.key(Right));
  list.isSideways = true;
  EXPECT_TRUE(list.key(Right));
  EXPECT_EQ(list.scrollX, 10);
  list.control(Right);
  EXPECT_EQ(list.scrollX, 50);
  list.key(Left);
  EXPECT_EQ(list.scrollX, 40);
  list.control(Left);
  EXPECT_EQ(list.scrollX, 0);
  list.key(Left);
  EXPECT_EQ(list.scrollX, 0);
  EXPECT_EQ(list.cursor, -1);
}

TEST_F(WinListBoxCursorTest, SearchKeysReachTheSearches) {
  list.control('F');
  list.key(F3);
  list.control('D');
  list.shift(F3);
  list.control('S');
  EXPECT_EQ(list.diary, "start forward forward backward backward ");
  EXPECT_FALSE(list.key('F'));
  EXPECT_FALSE(list.key('D'));
  EXPECT_FALSE(list.key('S'));
}

// --- Scrolling

TEST_F(WinListBoxCursorTest, TheWheelScrollsThreeTimesAsFarWithShift) {
  list.turnWheel(-120, false);
  EXPECT_EQ(list.scrollY, 10);
  list.turnWheel(-120, true);
  EXPECT_EQ(list.scrollY, 40);
  list.turnWheel(-1200, false);
  EXPECT_EQ(list.scrollY, 50);
  list.turnWheel(32000, true);
  EXPECT_EQ(list.scrollY, 0);
  EXPECT_EQ(list.diary, "100a 100a 100a 100a ");
}

TEST_F(WinListBoxCursorTest, OffsetsThatDoNotChangeTellNothing) {
  list.UpdateScroll();
  list.scrollTo({0, -10});
  EXPECT_EQ(list.diary, "");
  list.scrollTo({0, 1000});
  list.scrollTo({0, 1000});
  EXPECT_EQ(list.diary, "100a ");
}

TEST_F(WinListBoxCursorTest, RowsAreMeasuredWhenPositionsAreNeededFirst) {
  EXPECT_EQ(list.measured, 0);
  list.SetCursorRow(1);
  list.key(Down);
  list.turnWheel(-120, false);
  EXPECT_EQ(list.measured, 1);
  list.dirty = 1;
  list.Toggle(1);
  EXPECT_EQ(list.measured, 2);
}

TEST_F(WinListBoxCursorTest, WhoeverIsToldMayClearTheList) {
  struct Clearing : TestList {
    void Notify(uint32_t) override { Clear(); }
  } clearing;
  clearing.setFlag(WinListBoxTarget::MultipleSelection, true);
  for (const uint32_t key : {End, Down, Up, Home, Space, static_cast<uint32_t>('A')}) {
    clearing.fill({20, 20, 20, 20, 20});
    clearing.cursor = 3;
    clearing.control(key);
    EXPECT_EQ(clearing.items.count(), 0) << key;
    clearing.fill({20, 20, 20, 20, 20});
    clearing.cursor = 3;
    clearing.shift(key);
    clearing.key(key);
  }
}
