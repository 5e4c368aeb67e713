// List boxes: measuring and painting, to the pixel.
#include "window/ListBoxTest.h"

using namespace WindowTest;

namespace {

class ListBoxDraw : public ListBoxFixture {};

} // namespace

// --- Measuring

TEST_F(ListBoxDraw, RowsAreMeasuredOnceUntilDirty) {
  show();
  EXPECT_EQ(list.measured, 5);
  paint();
  press(5, 5);
  key(VK_DOWN);
  EXPECT_EQ(list.measured, 5);
  list.dirty = 1;
  paint();
  EXPECT_EQ(list.measured, 10);
  EXPECT_TRUE(list.items.element(list.items.first())->has(TestList::Item::Measured));
}

TEST_F(ListBoxDraw, AnotherWidthMeasuresRowsThatDependOnIt) {
  show();
  list.measured = 0;
  list.rect.right += 10;
  list.moveWindow(true);
  EXPECT_EQ(list.measured, 0);
  list.canRemeasure = true;
  list.rect.right += 10;
  list.moveWindow(true);
  EXPECT_EQ(list.measured, 5);
}

TEST_F(ListBoxDraw, ARelayoutKeepsThePositionAsFarAsItCan) {
  show();
  list.scrollTo({0, 30});
  list.Relayout();
  EXPECT_EQ(list.scrollY, 30);
  EXPECT_EQ(list.dirty, 0);
  EXPECT_EQ(list.measured, 10);
  list.items.erase(list.items.last());
  list.items.erase(list.items.last());
  list.RelayoutAndInvalidate();
  EXPECT_EQ(list.scrollY, 10);
}

// --- Painting

TEST_F(ListBoxDraw, TheHooksComeInTheirOrder) {
  list.header.rect = {0, 0, 10, 5};
  list.footer.rect = {0, 0, 10, 5};
  show({20, 0, 20, 20, 20});
  list.setFlag(TestList::HeaderPerGridRow, true);
  list.hooks.clear();
  paint();
  EXPECT_EQ(list.hooks,
            "background remember rows row0 frame0 empty1 row2 frame2 row3 frame3 hidden4 hidden-3 "
            "header footer margins background background background background grid finish focus ");
}

TEST_F(ListBoxDraw, TheFooterIsDrawnAsARowTooWhenItIsInSight) {
  list.footer.rect = {0, 0, 10, 5};
  show({20});
  list.hooks.clear();
  paint();
  EXPECT_NE(list.hooks.find("row0 frame0 row-3 frame-3 footer"), std::string::npos) << list.hooks;
}

TEST_F(ListBoxDraw, RowsInSightAreNotedAsSeen) {
  show({20, 0, 20, 20, 20});
  paint();
  std::string seen;
  for (const auto& item : list.items.elements())
    seen += item.has(TestList::Item::SeenAtPaint) ? 'x' : '.';
  EXPECT_EQ(seen, "x.xx.");
  list.scrollTo({0, 30});
  paint();
  seen.clear();
  for (const auto& item : list.items.elements())
    seen += item.has(TestList::Item::SeenAtPaint) ? 'x' : '.';
  EXPECT_EQ(seen, "..xxx");
  EXPECT_EQ(list.remembered, (WinRect{1, 1, 101, 51}));
}

TEST_F(ListBoxDraw, RowsStandInTheAreaAndNeverOnTheMargins) {
  show();
  list.scrollTo({0, 10});
  SetFocus(dialog.window);
  settle();
  paint();
  EXPECT_EQ(at(1, 1), RowColours[0]);
  EXPECT_EQ(at(1, 10), RowColours[0]);
  EXPECT_EQ(at(1, 11), RowColours[1]);
  EXPECT_EQ(at(60, 11), RowColours[1]);
  EXPECT_EQ(at(61, 11), GetSysColor(COLOR_WINDOW));
  EXPECT_EQ(at(5, 50), RowColours[2]);
  for (const WinPoint& point : {WinPoint{5, 0}, WinPoint{0, 15}, WinPoint{5, 51}})
    EXPECT_EQ(at(point.x, point.y), GetSysColor(COLOR_WINDOW)) << point.x << "," << point.y;
}

TEST_F(ListBoxDraw, FramesShowTheCursorAndTheHotRow) {
  show({20, 20});
  list.hotIndex = 0;
  list.SetCursorRow(1);
  paint();
  EXPECT_EQ(at(1, 1), HotColour);
  EXPECT_EQ(at(2, 2), RowColours[0]);
  EXPECT_EQ(at(1, 21), CursorColour);
  EXPECT_EQ(at(100, 40), CursorColour); // over the whole area
  EXPECT_EQ(at(2, 22), RowColours[1]);
  list.SetCursorRow(0); // the cursor counts more
  paint();
  EXPECT_EQ(at(1, 1), CursorColour);
  list.setFlag(TestList::DisplayOnly, true);
  paint();
  EXPECT_EQ(at(1, 1), RowColours[0]);
}

TEST_F(ListBoxDraw, TheFocusShowsAsALineAlongTheTop) {
  show();
  paint();
  EXPECT_EQ(at(0, 0), CursorColour);
  EXPECT_EQ(at(101, 0), CursorColour);
  EXPECT_NE(at(0, 1), CursorColour);
  SetFocus(dialog.window);
  settle();
  EXPECT_EQ(at(0, 0), GetSysColor(COLOR_WINDOW));
}

TEST_F(ListBoxDraw, ADisabledListHasTheDialogsColour) {
  list.background = RGB(10, 20, 30);
  show({20});
  EXPECT_EQ(at(50, 45), RGB(10, 20, 30));
  EnableWindow(list.window, FALSE);
  settle();
  paint();
  EXPECT_EQ(at(50, 45), GetSysColor(COLOR_3DFACE));
}

TEST_F(ListBoxDraw, GridLinesStandWhereTheGridIs) {
  show({20});
  list.setFlag(TestList::HeaderPerGridRow, true);
  list.grid = {30, 10, 2};
  list.header.rect = {};
  paint();
  EXPECT_EQ(at(50, 30), GetSysColor(COLOR_3DFACE));
  EXPECT_EQ(at(50, 40), GetSysColor(COLOR_3DFACE));
  EXPECT_EQ(at(50, 35), GetSysColor(COLOR_WINDOW));
}

TEST_F(ListBoxDraw, AZoomShowsMoreOrLessOfTheContent) {
  show({20, 20, 20, 20, 20});
  list.zoomWidth = 204; // half the size
  paint();
  EXPECT_EQ(list.area, (WinRect{1, 1, 203, 103}));
  EXPECT_EQ(at(10, 5), RowColours[0]);
  EXPECT_EQ(at(10, 15), RowColours[1]);
  press(10, 45);
  EXPECT_EQ(list.cursor, 4);
}

TEST_F(ListBoxDraw, PaintingLeavesNoDrawingObjects) {
  show();
  paint();
  const uint32_t before = drawingObjects();
  for (int i = 0; i < 200; ++i) {
    list.SetCursorRow(i % 5);
    paint();
  }
  EXPECT_LE(drawingObjects(), before);
}
