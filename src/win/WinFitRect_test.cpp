#include "win/WinFitRect.h"

#include <gtest/gtest.h>

using namespace WinLayer;

namespace {

constexpr WinRect Start{10, 20, 60, 80};
constexpr WinRect ParentStart{100, 200, 300, 500};
// Each side of the parent moves by an amount of its own: left 1, top 20, right 300, bottom 4000.
constexpr WinRect ParentMoved{101, 220, 600, 4500};
constexpr int32_t CentreX = 150;  // (101 + 600) / 2 - (100 + 300) / 2, each truncated
constexpr int32_t CentreY = 2010; // (220 + 4500) / 2 - (200 + 500) / 2

// The rectangle at Start after its parent has moved.
WinRect followed(uint16_t anchors) {
  WinFitRect parent;
  parent.set(ParentStart);
  WinFitRect rect;
  rect.set(Start);
  rect.bind(&parent, anchors);
  parent.rect = ParentMoved;
  EXPECT_TRUE(rect.ApplyAnchors());
  return rect.rect;
}

WinRect moved(int32_t left, int32_t top, int32_t right, int32_t bottom) {
  return {Start.left + left, Start.top + top, Start.right + right, Start.bottom + bottom};
}

} // namespace

TEST(WinFitRect, EachAnchorAddsOneChangeToOneSide) {
  EXPECT_EQ(followed(0x0001), moved(1, 0, 0, 0));
  EXPECT_EQ(followed(0x0002), moved(300, 0, 0, 0));
  EXPECT_EQ(followed(0x0004), moved(CentreX, 0, 0, 0));
  EXPECT_EQ(followed(0x0010), moved(0, 0, 300, 0));
  EXPECT_EQ(followed(0x0020), moved(0, 0, 1, 0));
  EXPECT_EQ(followed(0x0040), moved(0, 0, CentreX, 0));
  EXPECT_EQ(followed(0x0100), moved(0, 20, 0, 0));
  EXPECT_EQ(followed(0x0200), moved(0, 4000, 0, 0));
  EXPECT_EQ(followed(0x0400), moved(0, CentreY, 0, 0));
  EXPECT_EQ(followed(0x1000), moved(0, 0, 0, 4000));
  EXPECT_EQ(followed(0x2000), moved(0, 0, 0, 20));
  EXPECT_EQ(followed(0x4000), moved(0, 0, 0, CentreY));
}

TEST(WinFitRect, TheOtherBitsMeanNothing) {
  EXPECT_EQ(followed(0x8888), Start);
}

TEST(WinFitRect, AnchorsOfOneSideAddUp) {
  EXPECT_EQ(followed(0x0007), moved(1 + 300 + CentreX, 0, 0, 0));
  EXPECT_EQ(followed(0x0070), moved(0, 0, 1 + 300 + CentreX, 0));
  EXPECT_EQ(followed(0x0700), moved(0, 20 + 4000 + CentreY, 0, 0));
  EXPECT_EQ(followed(0x7000), moved(0, 0, 0, 20 + 4000 + CentreY));
}

TEST(WinFitRect, StretchesWithTheParentOnAllSides) {
  EXPECT_EQ(followed(0x1111), moved(1, 20, 300, 4000));
}

TEST(WinFitRect, KeepsTheWidthAtTheRightAndStretchesInHeight) {
  EXPECT_EQ(followed(0x1112), moved(300, 20, 300, 4000));
  EXPECT_EQ(followed(0x1112).width(), Start.width());
}

TEST(WinFitRect, StaysAtTheTopLeftOrTheBottomRight) {
  EXPECT_EQ(followed(0x2121), moved(1, 20, 1, 20));
  EXPECT_EQ(followed(0x1212), moved(300, 4000, 300, 4000));
}

TEST(WinFitRect, CentresAreTruncatedBeforeTheDifference) {
  WinFitRect parent;
  WinFitRect rect;
  parent.set({0, 0, 3, 3}); // centre 1
  rect.bind(&parent, 0x4444);
  parent.rect = {0, 0, 4, 4}; // centre 2, though the difference of the sums is only 1
  rect.ApplyAnchors();
  EXPECT_EQ(rect.rect, (WinRect{1, 1, 1, 1}));
  parent.rect = {0, 0, 5, 5}; // centre 2 again
  rect.ApplyAnchors();
  EXPECT_EQ(rect.rect, (WinRect{1, 1, 1, 1}));
}

TEST(WinFitRect, NegativeCentresAreTruncatedTowardsZero) {
  WinFitRect parent;
  WinFitRect rect;
  parent.set({-3, -3, 0, 0}); // centre -1
  rect.bind(&parent, 0x4444);
  parent.rect = {-2, -2, 0, 0}; // centre -1
  rect.ApplyAnchors();
  EXPECT_EQ(rect.rect, WinRect{});
  parent.rect = {-1, -1, 0, 0}; // centre 0
  rect.ApplyAnchors();
  EXPECT_EQ(rect.rect, (WinRect{1, 1, 1, 1}));
}

TEST(WinFitRect, WithoutAParentNothingHappens) {
  WinFitRect rect;
  rect.set(Start);
  rect.anchors = 0x1111;
  EXPECT_FALSE(rect.ApplyAnchors());
  EXPECT_EQ(rect.rect, Start);
}

TEST(WinFitRect, WithoutAnchorsTheParentsRectangleIsStillRecorded) {
  WinFitRect parent;
  parent.set(ParentStart);
  WinFitRect rect;
  rect.set(Start);
  rect.bind(&parent, 0);
  parent.rect = ParentMoved;
  EXPECT_TRUE(rect.ApplyAnchors());
  EXPECT_EQ(rect.rect, Start);
  EXPECT_EQ(rect.parentRect, ParentMoved);
  // So anchors that come later start from there.
  rect.anchors = 0x1111;
  rect.ApplyAnchors();
  EXPECT_EQ(rect.rect, Start);
}

TEST(WinFitRect, AChangeIsAppliedOnce) {
  WinFitRect parent;
  parent.set(ParentStart);
  WinFitRect rect;
  rect.set(Start);
  rect.bind(&parent, 0x1111);
  parent.rect = ParentMoved;
  rect.ApplyAnchors();
  rect.ApplyAnchors();
  EXPECT_EQ(rect.rect, moved(1, 20, 300, 4000));
  parent.rect = ParentStart;
  rect.ApplyAnchors();
  EXPECT_EQ(rect.rect, Start);
}

TEST(WinFitRect, OnlyASetFromOutsideIsRemembered) {
  WinFitRect parent;
  parent.set(ParentStart);
  WinFitRect rect;
  rect.set(Start);
  rect.bind(&parent, 0x1111);
  parent.rect = ParentMoved;
  rect.ApplyAnchors();
  EXPECT_EQ(rect.saved, Start);
  rect.set({1, 2, 3, 4});
  EXPECT_EQ(rect.saved, (WinRect{1, 2, 3, 4}));
}

TEST(WinFitRect, BindingTakesTheParentAsItIs) {
  WinFitRect parent;
  parent.set(ParentMoved);
  WinFitRect rect;
  rect.set(Start);
  rect.bind(&parent, 0x1111);
  rect.ApplyAnchors();
  EXPECT_EQ(rect.rect, Start);
}

TEST(WinFitRect, AChainOfParentsFollowsStepByStep) {
  WinFitRect client;
  client.set({0, 0, 100, 100});
  WinFitRect area;
  area.set({10, 10, 90, 90});
  area.bind(&client, 0x1111);
  WinFitRect view;
  view.set({70, 20, 90, 80});
  view.bind(&area, 0x1112);
  client.rect = {0, 0, 150, 120};
  area.ApplyAnchors();
  view.ApplyAnchors();
  EXPECT_EQ(view.rect, (WinRect{120, 20, 140, 100}));
}
