#include "app/GuiMenuRules.h"

#include <gtest/gtest.h>

using AppLayer::GuiMenuRules;
using WinLayer::WinRect;
using WinLayer::WinSide;
using WinLayer::WinSize;

namespace {

constexpr WinRect Pressed{100, 200, 180, 220};

void expectPlacement(WinSide side, int32_t x, int32_t y, uint32_t flags) {
  const GuiMenuRules::Placement placement = GuiMenuRules::placement(side, Pressed);
  EXPECT_EQ(placement.x, x);
  EXPECT_EQ(placement.y, y);
  EXPECT_EQ(placement.flags, flags);
}

} // namespace

TEST(GuiMenuRules, AMenuAtTheLeftEndsAtTheLeftEdge) {
  expectPlacement(WinSide::Left, 100, 200, 0x010A);
}

TEST(GuiMenuRules, AMenuAtTheRightStartsAtTheRightEdge) {
  expectPlacement(WinSide::Right, 180, 200, 0x0102);
}

TEST(GuiMenuRules, AMenuAboveEndsAtTheTopEdge) {
  expectPlacement(WinSide::Above, 100, 200, 0x0122);
}

TEST(GuiMenuRules, AMenuBelowStartsAtTheBottomEdge) {
  expectPlacement(WinSide::Below, 100, 220, 0x0102);
}

TEST(GuiMenuRules, AnEntryIsAsHighAsTheHigherOfTitleAndIcon) {
  EXPECT_EQ(GuiMenuRules::entrySize({50, 13}, 16, false), (WinSize{74, 20}));
  EXPECT_EQ(GuiMenuRules::entrySize({50, 21}, 16, false), (WinSize{74, 25}));
}

TEST(GuiMenuRules, ASeparatorHasHalfTheHeight) {
  EXPECT_EQ(GuiMenuRules::entrySize({0, 13}, 16, true), (WinSize{24, 10}));
  EXPECT_EQ(GuiMenuRules::entrySize({0, 17}, 16, true), (WinSize{24, 10}));
}

TEST(GuiMenuRules, TheIconStandsAtTheLeftInTheMiddle) {
  const WinRect inner = GuiMenuRules::innerRect({0, 40, 100, 65});
  EXPECT_EQ(inner, (WinRect{2, 42, 98, 63}));
  EXPECT_EQ(GuiMenuRules::iconRect(inner, 16), (WinRect{2, 44, 18, 60}));
}

TEST(GuiMenuRules, TheTitleStartsFourPixelsBehindTheIcon) {
  EXPECT_EQ(GuiMenuRules::titleRect({2, 42, 98, 63}, 16), (WinRect{22, 42, 98, 63}));
}

TEST(GuiMenuRules, ColoursGoHalfWayToWhite) {
  EXPECT_EQ(GuiMenuRules::normalColour(0x000000), 0x7F7F7FU);
  EXPECT_EQ(GuiMenuRules::normalColour(0xFFFFFF), 0xFFFFFFU);
  EXPECT_EQ(GuiMenuRules::normalColour(0x00C8D0D4), 0x00E3E7E9U); // blue C8, green D0, red D4
}

TEST(GuiMenuRules, ASelectedEntryIsLightBlue) {
  EXPECT_EQ(GuiMenuRules::SelectedColour & 0xFF, 0xC0U); // red
  EXPECT_EQ((GuiMenuRules::SelectedColour >> 8) & 0xFF, 0xD0U);
  EXPECT_EQ(GuiMenuRules::SelectedColour >> 16, 0xFFU);
}
