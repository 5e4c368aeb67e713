#include "win/WinEdgeRules.h"

#include <gtest/gtest.h>

using namespace WinLayer;

namespace {

constexpr WinRect Client{0, 0, 200, 100};
constexpr WinRect Window{50, 60, 250, 160};
constexpr WinSize Start{200, 100};
constexpr WinSizeLimits Limits{{120, 40}, {300, 180}};

WinRect resized(uint32_t edges, WinPoint delta) {
  return resizedBy(Window, edges, delta, Start, Limits);
}

} // namespace

TEST(WinEdgeRules, EdgesReachThreePixelsInward) {
  EXPECT_EQ(edgesAt(Client, {0, 50}), EdgeLeft);
  EXPECT_EQ(edgesAt(Client, {3, 50}), EdgeLeft);
  EXPECT_EQ(edgesAt(Client, {4, 50}), EdgeNone);
  EXPECT_EQ(edgesAt(Client, {100, 0}), EdgeTop);
  EXPECT_EQ(edgesAt(Client, {100, 3}), EdgeTop);
  EXPECT_EQ(edgesAt(Client, {100, 4}), EdgeNone);
  EXPECT_EQ(edgesAt(Client, {196, 50}), EdgeNone);
  EXPECT_EQ(edgesAt(Client, {197, 50}), EdgeRight);
  EXPECT_EQ(edgesAt(Client, {200, 50}), EdgeRight);
  EXPECT_EQ(edgesAt(Client, {100, 96}), EdgeNone);
  EXPECT_EQ(edgesAt(Client, {100, 97}), EdgeBottom);
  EXPECT_EQ(edgesAt(Client, {100, 100}), EdgeBottom);
}

TEST(WinEdgeRules, PointsOutsideLieOnNoEdge) {
  EXPECT_EQ(edgesAt(Client, {-1, 50}), EdgeNone);
  EXPECT_EQ(edgesAt(Client, {201, 50}), EdgeNone);
  EXPECT_EQ(edgesAt(Client, {100, -1}), EdgeNone);
  EXPECT_EQ(edgesAt(Client, {100, 101}), EdgeNone);
}

TEST(WinEdgeRules, CornersAreTwoEdges) {
  EXPECT_EQ(edgesAt(Client, {0, 0}), 3u);
  EXPECT_EQ(edgesAt(Client, {199, 1}), 6u);
  EXPECT_EQ(edgesAt(Client, {2, 98}), 9u);
  EXPECT_EQ(edgesAt(Client, {200, 100}), 12u);
}

TEST(WinEdgeRules, ANarrowRectangleHasAllEdgesAtOnce) {
  EXPECT_EQ(edgesAt({0, 0, 4, 4}, {2, 2}), 15u);
}

TEST(WinEdgeRules, ShapesFollowTheDirectionOfTheDrag) {
  EXPECT_EQ(shapeOf(3), WinEdgeShape::NorthWest);
  EXPECT_EQ(shapeOf(12), WinEdgeShape::NorthWest);
  EXPECT_EQ(shapeOf(6), WinEdgeShape::NorthEast);
  EXPECT_EQ(shapeOf(9), WinEdgeShape::NorthEast);
  EXPECT_EQ(shapeOf(1), WinEdgeShape::WestEast);
  EXPECT_EQ(shapeOf(4), WinEdgeShape::WestEast);
  EXPECT_EQ(shapeOf(2), WinEdgeShape::NorthSouth);
  EXPECT_EQ(shapeOf(8), WinEdgeShape::NorthSouth);
  EXPECT_EQ(shapeOf(0), WinEdgeShape::Arrow);
  EXPECT_EQ(shapeOf(5), WinEdgeShape::Arrow);
}

TEST(WinEdgeRules, EachEdgeMovesItsSideAlone) {
  EXPECT_EQ(resized(EdgeLeft, {-7, 99}), (WinRect{43, 60, 250, 160}));
  EXPECT_EQ(resized(EdgeTop, {99, -7}), (WinRect{50, 53, 250, 160}));
  EXPECT_EQ(resized(EdgeRight, {7, 99}), (WinRect{50, 60, 257, 160}));
  EXPECT_EQ(resized(EdgeBottom, {99, 7}), (WinRect{50, 60, 250, 167}));
  EXPECT_EQ(resized(EdgeNone, {7, 7}), Window);
}

TEST(WinEdgeRules, CornersMoveTwoSides) {
  EXPECT_EQ(resized(EdgeLeft | EdgeTop, {5, 6}), (WinRect{55, 66, 250, 160}));
  EXPECT_EQ(resized(EdgeRight | EdgeBottom, {5, 6}), (WinRect{50, 60, 255, 166}));
  EXPECT_EQ(resized(EdgeRight | EdgeTop, {5, 6}), (WinRect{50, 66, 255, 160}));
  EXPECT_EQ(resized(EdgeLeft | EdgeBottom, {5, 6}), (WinRect{55, 60, 250, 166}));
}

TEST(WinEdgeRules, TheSideThatIsNotDraggedStaysWhenASizeMeetsItsLimit) {
  EXPECT_EQ(resized(EdgeLeft, {500, 0}), (WinRect{130, 60, 250, 160}));
  EXPECT_EQ(resized(EdgeLeft, {-500, 0}), (WinRect{-50, 60, 250, 160}));
  EXPECT_EQ(resized(EdgeTop, {0, 500}), (WinRect{50, 120, 250, 160}));
  EXPECT_EQ(resized(EdgeTop, {0, -500}), (WinRect{50, -20, 250, 160}));
  EXPECT_EQ(resized(EdgeRight, {-500, 0}), (WinRect{50, 60, 170, 160}));
  EXPECT_EQ(resized(EdgeRight, {500, 0}), (WinRect{50, 60, 350, 160}));
  EXPECT_EQ(resized(EdgeBottom, {0, -500}), (WinRect{50, 60, 250, 100}));
  EXPECT_EQ(resized(EdgeBottom, {0, 500}), (WinRect{50, 60, 250, 240}));
}

// The client goes along with a dragged left or top edge, so a delta counts from where it is now;
// under a right or bottom edge it stays, so a delta counts from the start.
TEST(WinEdgeRules, RightAndBottomCountFromTheSizeAtTheStart) {
  const WinRect grown{50, 60, 280, 170};
  EXPECT_EQ(resizedBy(grown, EdgeRight, {10, 0}, Start, Limits), (WinRect{50, 60, 260, 170}));
  EXPECT_EQ(resizedBy(grown, EdgeBottom, {0, 10}, Start, Limits), (WinRect{50, 60, 280, 170}));
  EXPECT_EQ(resizedBy(grown, EdgeLeft, {10, 0}, Start, Limits), (WinRect{60, 60, 280, 170}));
  EXPECT_EQ(resizedBy(grown, EdgeTop, {0, 10}, Start, Limits), (WinRect{50, 70, 280, 170}));
}
