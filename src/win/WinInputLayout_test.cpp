#include "win/WinInputLayout.h"

#include <gtest/gtest.h>

using namespace WinLayer;

namespace {

constexpr WinSize NoHint{};

// Two rows; labels 40 and 60 wide, edits below the least width, hints 20 wide.
WinInputLayout twoRows() {
  WinInputLayout layout;
  layout.margin = 4;
  layout.rows.push_back({{40, 18}, {30, 22}, {20, 20}});
  layout.rows.push_back({{60, 30}, {50, 22}, {20, 20}});
  layout.finish = {50, 24};
  layout.cancel = {56, 26};
  return layout;
}

} // namespace

TEST(WinInputLayout, RowsStandBelowEachOtherFromTheTop) {
  WinInputLayout layout = twoRows();
  layout.compute();
  // Total: margin 4, label 60, edit 100, hint 20.
  EXPECT_EQ(layout.fields, (WinSize{184, 56}));
  EXPECT_EQ(layout.rows[0].labelRect, (WinRect{0, 0, 60, 22}));
  EXPECT_EQ(layout.rows[0].editRect, (WinRect{64, 0, 164, 22}));
  EXPECT_EQ(layout.rows[0].hintRect, (WinRect{164, 0, 184, 22}));
  EXPECT_EQ(layout.rows[1].labelRect, (WinRect{0, 26, 60, 56}));
  EXPECT_EQ(layout.rows[1].editRect, (WinRect{64, 26, 164, 56}));
  EXPECT_EQ(layout.rows[1].hintRect, (WinRect{164, 26, 184, 56}));
}

TEST(WinInputLayout, AnEditBoxIsAtLeastAHundredWide) {
  WinInputLayout layout = twoRows();
  layout.rows[1].edit.width = 140;
  layout.compute();
  EXPECT_EQ(layout.rows[0].editRect.width(), 140);
  EXPECT_EQ(layout.fields.width, 224);
}

TEST(WinInputLayout, APromptStandsOnTopOverTheTotalWidth) {
  WinInputLayout layout = twoRows();
  layout.prompt = {100, 17};
  layout.compute();
  EXPECT_EQ(layout.promptRect, (WinRect{0, 0, 184, 17}));
  EXPECT_EQ(layout.rows[0].labelRect.top, 21);
  EXPECT_EQ(layout.fields.height, 77);
}

TEST(WinInputLayout, AVeryLongPromptWidensTheEditBoxesNotTheLabels) {
  WinInputLayout layout = twoRows();
  layout.prompt = {400, 17};
  layout.compute();
  EXPECT_EQ(layout.fields.width, 400);
  EXPECT_EQ(layout.rows[0].labelRect.width(), 60);
  EXPECT_EQ(layout.rows[0].editRect, (WinRect{64, 21, 380, 43}));
  EXPECT_EQ(layout.rows[0].hintRect, (WinRect{380, 21, 400, 43}));
}

TEST(WinInputLayout, TheFirstHintButtonWithAWidthCounts) {
  WinInputLayout layout = twoRows();
  layout.rows[0].hint = NoHint;
  layout.rows.push_back({{10, 18}, {30, 22}, {90, 20}});
  layout.compute();
  EXPECT_EQ(layout.fields.width, 184);
}

TEST(WinInputLayout, ARowWithoutAHintButtonKeepsItsEditBoxInPlace) {
  WinInputLayout layout = twoRows();
  layout.rows[0].hint = NoHint;
  layout.compute();
  EXPECT_EQ(layout.rows[0].editRect, (WinRect{64, 0, 164, 22}));
}

TEST(WinInputLayout, WithoutAnyHintButtonTheEditBoxesReachTheRight) {
  WinInputLayout layout = twoRows();
  layout.rows[0].hint = layout.rows[1].hint = NoHint;
  layout.compute();
  EXPECT_EQ(layout.fields.width, 164);
  EXPECT_EQ(layout.rows[1].editRect.right, 164);
}

TEST(WinInputLayout, ButtonsStandSideBySideAsHighAsTheHigher) {
  WinInputLayout layout = twoRows();
  layout.compute();
  EXPECT_EQ(layout.buttons, (WinSize{106, 26}));
  EXPECT_EQ(layout.finishRect, (WinRect{0, 0, 50, 26}));
  EXPECT_EQ(layout.cancelRect, (WinRect{50, 0, 106, 26}));
}

TEST(WinInputLayout, BothAreasGetTheWidthOfTheWiderAndAMarginAround) {
  WinInputLayout layout = twoRows();
  layout.compute();
  EXPECT_EQ(layout.fieldsArea, (WinRect{4, 4, 188, 60}));
  EXPECT_EQ(layout.buttonsArea, (WinRect{4, 64, 188, 90}));
  EXPECT_EQ(layout.client, (WinSize{192, 94}));

  WinInputLayout wide = twoRows();
  wide.finish.width = 300;
  wide.compute();
  EXPECT_EQ(wide.fields.width, 184);
  EXPECT_EQ(wide.fieldsArea, (WinRect{4, 4, 360, 60}));
  EXPECT_EQ(wide.buttonsArea, (WinRect{4, 64, 360, 90}));
}

TEST(WinInputLayout, WithoutRowsThereAreOnlyPromptAndButtons) {
  WinInputLayout layout;
  layout.margin = 4;
  layout.prompt = {60, 17};
  layout.finish = {50, 24};
  layout.cancel = {56, 24};
  layout.compute();
  EXPECT_EQ(layout.fields, (WinSize{104, 17}));
  EXPECT_EQ(layout.promptRect, (WinRect{0, 0, 104, 17}));
  EXPECT_EQ(layout.client, (WinSize{114, 53}));
}
