#include "win/WinInfoLayout.h"

#include <gtest/gtest.h>

using namespace WinLayer;

TEST(WinInfoLayout, IconTextAndAnswersWithTheMarginAllAround) {
  const WinInfoLayout layout = WinInfoLayout::of({36, 36}, {100, 20}, {60, 24}, 4);
  EXPECT_EQ(layout.upper, (WinRect{4, 4, 140, 40}));
  EXPECT_EQ(layout.image, (WinRect{4, 4, 40, 40}));
  EXPECT_EQ(layout.text, (WinRect{40, 4, 140, 40})); // as high as the icon
  EXPECT_EQ(layout.lower, (WinRect{4, 44, 140, 68}));
  EXPECT_EQ(layout.row, (WinRect{80, 44, 140, 68})); // at the right end
  EXPECT_EQ(layout.client, (WinSize{144, 72}));
}

TEST(WinInfoLayout, WithoutAnIconTheTextStandsAtTheLeftMargin) {
  const WinInfoLayout layout = WinInfoLayout::of({0, 0}, {100, 20}, {60, 24}, 4);
  EXPECT_EQ(layout.text, (WinRect{4, 4, 104, 24}));
  EXPECT_EQ(layout.image.width(), 0);
}

TEST(WinInfoLayout, AHighTextMakesTheBlockHigh) {
  const WinInfoLayout layout = WinInfoLayout::of({36, 36}, {100, 200}, {60, 24}, 4);
  EXPECT_EQ(layout.image, (WinRect{4, 4, 40, 40}));
  EXPECT_EQ(layout.text, (WinRect{40, 4, 140, 204}));
  EXPECT_EQ(layout.lower.top, 208);
}

TEST(WinInfoLayout, AWideTextWidensTheAnswersArea) {
  const WinInfoLayout layout = WinInfoLayout::of({36, 36}, {500, 20}, {60, 24}, 4);
  EXPECT_EQ(layout.lower.width(), layout.upper.width());
  EXPECT_EQ(layout.lower.width(), 536);
  EXPECT_EQ(layout.row.width(), 60);
}

TEST(WinInfoLayout, WideAnswersWidenTheTextsArea) {
  const WinInfoLayout layout = WinInfoLayout::of({36, 36}, {50, 20}, {300, 24}, 4);
  EXPECT_EQ(layout.upper.width(), 300);
  EXPECT_EQ(layout.text, (WinRect{40, 4, 304, 40}));
  EXPECT_EQ(layout.row, (WinRect{4, 44, 304, 68}));
}

TEST(WinInfoLayout, TheMarginCanBeAnother) {
  const WinInfoLayout layout = WinInfoLayout::of({36, 36}, {100, 20}, {60, 24}, 0);
  EXPECT_EQ(layout.client, (WinSize{136, 60}));
  EXPECT_EQ(layout.lower.top, 36);
}

TEST(WinInfoLayout, AWindowStandsInTheMiddle) {
  constexpr WinRect work{0, 0, 1000, 800};
  EXPECT_EQ(placedInMiddle({100, 50}, {400, 300, 600, 400}, work), (WinRect{450, 325, 550, 375}));
  EXPECT_EQ(placedInMiddle({100, 50}, work, work), (WinRect{450, 375, 550, 425}));
}

TEST(WinInfoLayout, AWindowOffTheWorkAreaIsPushedIn) {
  constexpr WinRect work{50, 30, 1000, 800};
  EXPECT_EQ(placedInMiddle({100, 50}, {0, 0, 20, 20}, work), (WinRect{50, 30, 150, 80}));
  EXPECT_EQ(placedInMiddle({100, 50}, {990, 790, 1000, 800}, work), (WinRect{900, 750, 1000, 800}));
  // Too large: the left top wins.
  EXPECT_EQ(placedInMiddle({2000, 1000}, {0, 0, 20, 20}, work), (WinRect{50, 30, 2050, 1030}));
}
