#include "win/WinListBoxTarget.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace WinLayer;
using Item = WinListBoxItemUnit;

namespace {

// An area of 100 by 50 inside margins of 1, and rows of 20 unless a test says otherwise.
class WinListBoxTargetTest : public testing::Test {
 protected:
  WinListBoxTarget list;

  void SetUp() override { list.fitTo({102, 52}, {1, 1, 1, 1}); }
  void rows(const std::vector<int32_t>& heights) {
    list.items.clear();
    for (const int32_t height : heights) {
      Item* item = list.items.Create();
      item->rect = {0, 0, 60, height};
      list.items.append(item);
    }
    place();
  }
  void place() {
    list.beginPlacing();
    for (Item& item : list.items.elements()) list.place(item);
    list.endPlacing();
  }
  Item& row(int32_t index) { return *list.unitAt(index); }
  std::string marks() {
    std::string text;
    for (const Item& item : list.items.elements()) text += item.isMarked() ? 'x' : '.';
    return text;
  }
};

class CountedItem : public Item {
 public:
  explicit CountedItem(int& destroyed) : destroyed_(destroyed) {}
  void Destroy() override {
    ++destroyed_;
    Item::Destroy();
  }

 private:
  int& destroyed_;
};

} // namespace

// --- Rows

TEST(WinListBoxItem, AResetKeepsWhatTheRowIs) {
  Item header(Item::IsHeader);
  header.flags = 0xFFFF;
  header.rect = {1, 2, 3, 4};
  header.Reset();
  EXPECT_EQ(header.flags, 0x0060);
  EXPECT_EQ(header.rect, WinRect());
}

TEST(WinListBoxItem, TheFactoryGivesAZeroedRow) {
  WinListBoxItemCreater factory;
  Item* item = factory.Create();
  EXPECT_EQ(item->flags, 0);
  EXPECT_EQ(item->data, nullptr);
  EXPECT_EQ(item->rect, WinRect());
  item->Destroy();
}

TEST(WinListBoxItem, TheListDestroysItsRowsByThemselves) {
  int destroyed = 0;
  {
    WinListBoxItemList items;
    items.append(new CountedItem(destroyed));
    items.append(new CountedItem(destroyed));
  }
  EXPECT_EQ(destroyed, 2);
}

TEST_F(WinListBoxTargetTest, StartsWithNothing) {
  const WinListBoxTarget fresh;
  EXPECT_EQ(fresh.header.flags, 0x20);
  EXPECT_EQ(fresh.footer.flags, 0x40);
  EXPECT_EQ(fresh.cursor, -1);
  EXPECT_EQ(fresh.anchor, -1);
  EXPECT_EQ(fresh.hotIndex, -1);
  EXPECT_EQ(fresh.dirty, 1);
  EXPECT_EQ(fresh.zoomWidth, 0);
  EXPECT_EQ(fresh.listFlags, 0);
}

TEST_F(WinListBoxTargetTest, FlagsHaveTheirBits) {
  EXPECT_EQ(WinListBoxTarget::HasFocus, 0x01);
  EXPECT_EQ(WinListBoxTarget::MultipleSelection, 0x02);
  EXPECT_EQ(WinListBoxTarget::DisplayOnly, 0x04);
  EXPECT_EQ(WinListBoxTarget::HeaderPerGridRow, 0x10);
  EXPECT_EQ(WinListBoxTarget::HeaderFixed, 0x40);
  EXPECT_EQ(Item::Measured | Item::Marked << 4, 0x21);
  EXPECT_EQ(Item::NoExtent, 0x04);
  EXPECT_EQ(Item::SeenAtPaint, 0x100);
}

TEST_F(WinListBoxTargetTest, RowsAreFoundByIndexHeaderAndFooterToo) {
  rows({20, 20});
  EXPECT_EQ(list.unitAt(0), list.items.element(list.items.first()));
  EXPECT_EQ(list.unitAt(2), nullptr);
  EXPECT_EQ(list.unitAt(-1), nullptr);
  EXPECT_EQ(list.unitAt(-2), &list.header);
  EXPECT_EQ(list.unitAt(-3), &list.footer);
  EXPECT_EQ(list.unitAt(-4), nullptr);
}

TEST_F(WinListBoxTargetTest, TheNextAndThePreviousRowHaveExtent) {
  rows({0, 20, 0, 20, 20});
  row(3).set(Item::NoExtent, true);
  EXPECT_EQ(list.nextRow(-1), 1);
  EXPECT_EQ(list.nextRow(1), 4);
  EXPECT_EQ(list.nextRow(4), -1);
  EXPECT_EQ(list.previousRow(4), 1);
  EXPECT_EQ(list.previousRow(1), -1);
  EXPECT_EQ(list.lastRow(), 4);
}

TEST_F(WinListBoxTargetTest, TheFooterStandsBehindAllRowsTheHeaderAhead) {
  rows({20, 20});
  EXPECT_EQ(list.previousRow(-3), 1);
  EXPECT_EQ(list.nextRow(-3), -1);
  EXPECT_EQ(list.previousRow(-2), -1);
  EXPECT_EQ(list.nextRow(-2), 0);
  EXPECT_EQ(list.previousRow(-1), -1);
  EXPECT_EQ(list.previousRow(99), 1); // an index that is past the end
  EXPECT_EQ(list.nextRow(99), -1);
}

TEST_F(WinListBoxTargetTest, ARangeIsMarkedInEitherOrderWithoutHiddenRows) {
  rows({20, 20, 20, 20, 20});
  row(2).set(Item::NoExtent, true);
  list.markRange(1, 3);
  EXPECT_EQ(marks(), ".x.x.");
  list.clearMarks();
  list.markRange(4, 2);
  EXPECT_EQ(marks(), "...xx");
  list.clearMarks();
  list.markRange(-1, 1);
  EXPECT_EQ(marks(), "xx...");
  list.markAll();
  EXPECT_EQ(marks(), "xxxxx");
}

TEST_F(WinListBoxTargetTest, ClearingMarksClearsHeaderAndFooter) {
  rows({20});
  list.markAll();
  list.header.mark(true);
  list.footer.mark(true);
  list.clearMarks();
  EXPECT_EQ(marks(), ".");
  EXPECT_EQ(list.header.flags, 0x20);
  EXPECT_EQ(list.footer.flags, 0x40);
}

TEST_F(WinListBoxTargetTest, ClearLeavesAnEmptyDirtyList) {
  rows({20, 20, 20, 20});
  const WinListBoxItemList shared = list.items;
  list.cursor = list.anchor = list.hotIndex = 2;
  list.scrollY = 15;
  list.dirty = 0;
  list.Clear();
  EXPECT_EQ(list.items.count(), 0);
  EXPECT_FALSE(list.items.isSameList(shared));
  EXPECT_EQ(shared.count(), 4);
  EXPECT_EQ(list.cursor, -1);
  EXPECT_EQ(list.anchor, -1);
  EXPECT_EQ(list.hotIndex, -1);
  EXPECT_EQ(list.scrollY, 0);
  EXPECT_EQ(list.contentHeight, 0);
  EXPECT_EQ(list.dirty, 1);
}

// --- Geometry

TEST_F(WinListBoxTargetTest, TheAreaLiesInsideTheMargins) {
  EXPECT_EQ(list.area, (WinRect{1, 1, 101, 51}));
  EXPECT_FALSE(list.fitTo({102, 52}, {1, 1, 1, 1}));
  EXPECT_TRUE(list.fitTo({102, 52}, {1, 2, 3, 4}));
  EXPECT_EQ(list.area, (WinRect{1, 2, 99, 48}));
}

TEST_F(WinListBoxTargetTest, RowsFollowEachOther) {
  rows({20, 5, 30});
  EXPECT_EQ(row(0).rect, (WinRect{0, 0, 60, 20}));
  EXPECT_EQ(row(1).rect, (WinRect{0, 20, 60, 25}));
  EXPECT_EQ(row(2).rect, (WinRect{0, 25, 60, 55}));
  EXPECT_EQ(list.contentHeight, 55);
  EXPECT_EQ(list.contentWidth, 60);
}

TEST_F(WinListBoxTargetTest, RowsThatAreNotShownTakeNoRoom) {
  rows({20, 0, 20});
  row(0).set(Item::NoExtent, true);
  place();
  EXPECT_EQ(row(2).rect.top, 0);
  EXPECT_EQ(list.contentHeight, 20);
}

TEST_F(WinListBoxTargetTest, WithoutAnyWidthTheContentHasTheAreas) {
  rows({});
  EXPECT_EQ(list.contentWidth, 100);
  EXPECT_EQ(list.contentHeight, 0);
}

TEST_F(WinListBoxTargetTest, TheFooterFollowsTheRows) {
  list.footer.rect = {0, 0, 10, 8};
  rows({20, 20});
  EXPECT_EQ(list.footer.rect, (WinRect{0, 40, 10, 48}));
  EXPECT_EQ(list.contentHeight, 48);
}

TEST_F(WinListBoxTargetTest, AFixedHeaderTakesTheTopOfTheArea) {
  list.header.rect = {0, 0, 10, 12};
  list.setFlag(WinListBoxTarget::HeaderFixed, true);
  list.fitTo({102, 52}, {1, 1, 1, 1});
  rows({20});
  EXPECT_EQ(list.area, (WinRect{1, 13, 101, 51}));
  EXPECT_EQ(list.headerRect(), (WinRect{1, 1, 101, 13}));
  EXPECT_EQ(row(0).rect.top, 0);
  list.scrollY = 5;
  EXPECT_EQ(list.headerRect().top, 1);
}

TEST_F(WinListBoxTargetTest, AnyOtherHeaderScrollsWithTheRows) {
  list.header.rect = {0, 0, 10, 12};
  rows({20, 20, 20});
  EXPECT_EQ(row(0).rect.top, 12);
  list.scrollY = 5;
  EXPECT_EQ(list.headerRect(), (WinRect{1, -4, 101, 8}));
}

TEST_F(WinListBoxTargetTest, RowsAreHitFromTheirTopToAheadOfTheirBottom) {
  rows({20, 0, 10});
  EXPECT_EQ(list.hitTest({5, 1}), 0);
  EXPECT_EQ(list.hitTest({5, 20}), 0);
  EXPECT_EQ(list.hitTest({5, 21}), 2);
  EXPECT_EQ(list.hitTest({5, 30}), 2);
  EXPECT_EQ(list.hitTest({5, 31}), -1);
  EXPECT_EQ(list.hitTest({99, 1}), 0); // beside a row is on it
}

TEST_F(WinListBoxTargetTest, HitsFollowTheScrolling) {
  rows({20, 20, 20, 20});
  list.scrollY = 25;
  EXPECT_EQ(list.hitTest({5, 1}), 1);
  EXPECT_EQ(list.hitTest({5, 16}), 2);
}

TEST_F(WinListBoxTargetTest, HeaderAndFooterAreHit) {
  list.header.rect = {0, 0, 10, 12};
  list.footer.rect = {0, 0, 10, 8};
  list.setFlag(WinListBoxTarget::HeaderFixed, true);
  list.fitTo({102, 52}, {1, 1, 1, 1});
  rows({20});
  EXPECT_EQ(list.hitTest({5, 1}), -2);
  EXPECT_EQ(list.hitTest({5, 12}), -2);
  EXPECT_EQ(list.hitTest({5, 13}), 0);
  EXPECT_EQ(list.hitTest({5, 33}), -3);
  EXPECT_EQ(list.hitTest({5, 41}), -1);
}

TEST_F(WinListBoxTargetTest, TheZoomKeepsTheRatioAndScalesPoints) {
  list.zoomWidth = 204;
  list.fitTo({102, 52}, {1, 1, 1, 1});
  EXPECT_EQ(list.surfaceSize(), (WinSize{204, 104}));
  EXPECT_EQ(list.area, (WinRect{1, 1, 203, 103}));
  rows({20, 20});
  EXPECT_EQ(list.surfacePoint({10, 11}), (WinPoint{20, 22}));
  EXPECT_EQ(list.hitTest({5, 10}), 0);
  EXPECT_EQ(list.hitTest({5, 11}), 1);
}

TEST_F(WinListBoxTargetTest, AZoomOfNothingIsNothing) {
  list.zoomWidth = 50;
  list.fitTo({0, 0}, {});
  EXPECT_EQ(list.surfaceSize(), WinSize());
  EXPECT_EQ(list.surfacePoint({3, 4}), (WinPoint{3, 4}));
}

TEST_F(WinListBoxTargetTest, RowsAreShownWhereTheyAreScrolledTo) {
  list.scrollX = 4;
  list.scrollY = 7;
  EXPECT_EQ(list.shownRect({0, 20, 60, 40}), (WinRect{-3, 14, 57, 34}));
}

// --- Scrolling

TEST_F(WinListBoxTargetTest, OffsetsStayBetweenTheStartAndTheLastPosition) {
  rows({20, 20, 20, 20});
  EXPECT_EQ(list.scrollLimit(), (WinPoint{0, 30}));
  EXPECT_EQ(list.clamped({5, 31}), (WinPoint{0, 30}));
  EXPECT_EQ(list.clamped({-5, -1}), (WinPoint{0, 0}));
  rows({20});
  EXPECT_EQ(list.clamped({0, 10}), (WinPoint{0, 0}));
}

TEST_F(WinListBoxTargetTest, ARowBelowScrollsUntilItFitsOneAboveToItsTop) {
  rows({20, 20, 20, 20});
  EXPECT_EQ(list.offsetFor(row(1).rect), 0);
  EXPECT_EQ(list.offsetFor(row(2).rect), 10);
  EXPECT_EQ(list.offsetFor(row(3).rect), 30);
  list.scrollY = 30;
  EXPECT_EQ(list.offsetFor(row(2).rect), 30);
  EXPECT_EQ(list.offsetFor(row(1).rect), 20);
}

TEST_F(WinListBoxTargetTest, OfARowHigherThanTheAreaTheTopIsShown) {
  rows({10, 80});
  EXPECT_EQ(list.offsetFor(row(1).rect), 10);
}

TEST_F(WinListBoxTargetTest, TheBarsShowTheContentOrWhatIsScrolledToBehindIt) {
  rows({20, 20, 20, 20});
  EXPECT_EQ(list.verticalBar(), (WinListBoxBar{79, 50, 0}));
  EXPECT_EQ(list.horizontalBar(), (WinListBoxBar{99, 100, 0}));
  list.scrollY = 40;
  EXPECT_EQ(list.verticalBar(), (WinListBoxBar{89, 50, 40}));
}

TEST_F(WinListBoxTargetTest, BarCodesStepALineHalfAPageToThePlaceOrToAnEnd) {
  rows({20, 20, 20, 20});
  list.scrollY = 10;
  list.lineStepY = 7;
  EXPECT_EQ(list.verticalTarget(0, 0), 3);
  EXPECT_EQ(list.verticalTarget(1, 0), 17);
  EXPECT_EQ(list.verticalTarget(2, 0), -15);
  EXPECT_EQ(list.verticalTarget(3, 0), 35);
  EXPECT_EQ(list.verticalTarget(4, 12), 12);
  EXPECT_EQ(list.verticalTarget(5, 13), 13);
  EXPECT_EQ(list.verticalTarget(6, 99), 0);
  EXPECT_EQ(list.verticalTarget(7, 99), 30);
  EXPECT_EQ(list.verticalTarget(8, 99), 10);
}

TEST_F(WinListBoxTargetTest, SidewaysBarsStepTheSameWay) {
  list.contentWidth = 150;
  list.lineStepX = 7;
  list.scrollX = 20;
  EXPECT_EQ(list.horizontalTarget(0, 0), 13);
  EXPECT_EQ(list.horizontalTarget(3, 0), 70);
  EXPECT_EQ(list.horizontalTarget(7, 0), 50);
}

TEST_F(WinListBoxTargetTest, TheWheelStepsALineANotchAwayIsUp) {
  list.scrollY = 50;
  list.lineStepY = 16;
  EXPECT_EQ(list.wheelTarget(120), 34);
  EXPECT_EQ(list.wheelTarget(-120), 66);
  EXPECT_EQ(list.wheelTarget(-240), 82);
  EXPECT_EQ(list.wheelTarget(60), 42);
}

TEST_F(WinListBoxTargetTest, FontsGrowAndShrinkByOneButNeverBelowSix) {
  const auto stepped = WinListBoxTarget::steppedFontHeight;
  EXPECT_EQ(stepped(12, 120), 13);
  EXPECT_EQ(stepped(12, -120), 11);
  EXPECT_EQ(stepped(-12, 1), -13);
  EXPECT_EQ(stepped(-12, -1), -11);
  EXPECT_EQ(stepped(7, -1), 6);
  EXPECT_EQ(stepped(6, -1), 6);
  EXPECT_EQ(stepped(-6, -1), -6);
  EXPECT_EQ(stepped(4, 1), 5);
  EXPECT_EQ(stepped(12, 0), 12);
  EXPECT_EQ(stepped(0, 1), 13);
}
