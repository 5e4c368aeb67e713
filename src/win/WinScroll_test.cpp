#include "win/WinScroll.h"

#include <gtest/gtest.h>

using namespace WinLayer;

namespace {

// A content of 100 pixels behind a view of 30.
WinScrollAxis axisAt(int32_t offset) {
  return {100, 30, 10, offset};
}

} // namespace

TEST(WinScroll, OffsetsStayBetweenStartAndEndOfTheContent) {
  EXPECT_EQ(axisAt(0).limit(), 70);
  EXPECT_EQ(axisAt(0).clamped(-1), 0);
  EXPECT_EQ(axisAt(0).clamped(69), 69);
  EXPECT_EQ(axisAt(0).clamped(71), 70);
}

TEST(WinScroll, ContentSmallerThanTheViewStaysAtTheStart) {
  const WinScrollAxis small{20, 30, 10, 0};
  EXPECT_EQ(small.limit(), 0);
  for (uint32_t code = 0; code <= 8; ++code) EXPECT_EQ(small.afterStep(code, 25), 0) << code;
  for (int32_t delta : {120, -120, 1200, -1200, 1, -1}) {
    EXPECT_EQ(small.afterWheel(delta, false, false), 0) << delta;
    EXPECT_EQ(small.afterWheel(delta, true, true), 0) << delta;
  }
}

TEST(WinScroll, StepsOfTheBarAreALineHalfAViewAPlaceOrAnEnd) {
  EXPECT_EQ(axisAt(40).afterStep(0, 0), 30);
  EXPECT_EQ(axisAt(40).afterStep(1, 0), 50);
  EXPECT_EQ(axisAt(40).afterStep(2, 0), 25);
  EXPECT_EQ(axisAt(40).afterStep(3, 0), 55);
  EXPECT_EQ(axisAt(40).afterStep(4, 12), 12);
  EXPECT_EQ(axisAt(40).afterStep(5, 99), 70);
  EXPECT_EQ(axisAt(40).afterStep(6, 12), 0);
  EXPECT_EQ(axisAt(40).afterStep(7, 12), 70);
}

TEST(WinScroll, EndOfABarsScrollLeavesTheOffset) {
  EXPECT_EQ(axisAt(40).afterStep(8, 12), 40);
}

TEST(WinScroll, StepsAreClamped) {
  EXPECT_EQ(axisAt(4).afterStep(0, 0), 0);
  EXPECT_EQ(axisAt(66).afterStep(1, 0), 70);
  EXPECT_EQ(axisAt(4).afterStep(2, 0), 0);
  EXPECT_EQ(axisAt(66).afterStep(3, 0), 70);
}

TEST(WinScroll, HalfAnOddViewIsTruncated) {
  EXPECT_EQ((WinScrollAxis{100, 31, 10, 40}.afterStep(3, 0)), 55);
}

TEST(WinScroll, WheelMovesOneLineANotchTowardTheStartWhenTurnedAway) {
  EXPECT_EQ(axisAt(40).afterWheel(120, false, false), 30);
  EXPECT_EQ(axisAt(40).afterWheel(-120, false, false), 50);
  EXPECT_EQ(axisAt(40).afterWheel(-60, false, false), 45);
}

TEST(WinScroll, ControlAndShiftMakeTheWheelThreeTimesAsFastEach) {
  WinScrollAxis axis{1000, 30, 10, 500};
  EXPECT_EQ(axis.afterWheel(-120, true, false), 530);
  EXPECT_EQ(axis.afterWheel(-120, false, true), 530);
  EXPECT_EQ(axis.afterWheel(-120, true, true), 590);
  EXPECT_EQ(axis.afterWheel(120, true, true), 410);
}

TEST(WinScroll, WheelIsClamped) {
  EXPECT_EQ(axisAt(5).afterWheel(120, false, false), 0);
  EXPECT_EQ(axisAt(65).afterWheel(-120, true, true), 70);
}

TEST(WinScroll, BarHasTheContentAsItsRange) {
  EXPECT_EQ(axisAt(40).bar(), (WinScrollBar{99, 30, 40}));
}

TEST(WinScroll, BarReachesAsFarAsAnOffsetBeyondTheContent) {
  EXPECT_EQ(axisAt(90).bar(), (WinScrollBar{119, 30, 90}));
  EXPECT_EQ((WinScrollAxis{20, 30, 10, 0}.bar()), (WinScrollBar{29, 30, 0}));
}
