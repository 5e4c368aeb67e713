#include "win/WinEdgeButtons.h"

#include <gtest/gtest.h>

using namespace WinLayer;

namespace {

constexpr WinRect Client{0, 0, 200, 100};
constexpr uint16_t AllButtons = EdgeCloseButton | EdgeMaximizeButton | EdgeMinimizeButton;

WinEdgeButtons laidOut(uint16_t flags, bool isMaximised = false) {
  WinEdgeButtons result;
  result.buttonWidth = 20;
  result.buttonHeight = 12;
  result.layOut(Client, flags, isMaximised);
  return result;
}

} // namespace

TEST(WinEdgeButtons, FlagsHaveTheirValues) {
  EXPECT_EQ(EdgeMove, 0x0001);
  EXPECT_EQ(EdgeResize, 0x0002);
  EXPECT_EQ(EdgeSystemMenu, 0x0004);
  EXPECT_EQ(EdgePaint, 0x0008);
  EXPECT_EQ(EdgeCloseButton, 0x0010);
  EXPECT_EQ(EdgeMaximizeButton, 0x0020);
  EXPECT_EQ(EdgeMinimizeButton, 0x0040);
  EXPECT_EQ(EdgePointerOnEdge, 0x0100);
  EXPECT_EQ(EdgePointerOnButton, 0x0200);
  EXPECT_EQ(EdgeDragging, 0x0400);
  EXPECT_EQ(EdgeTracksLeave, 0x0800);
  EXPECT_EQ(EdgeKnowsLimits, 0x1000);
}

TEST(WinEdgeButtons, EachHasItsColoursAndItsCommand) {
  const WinEdgeButtons buttons;
  const WinEdgeButton& close = buttons.buttons[WinEdgeButtons::Close];
  EXPECT_EQ(close.mask, 0x10);
  EXPECT_EQ(close.glyphColour, 0x404040u);
  EXPECT_EQ(close.hoverGlyphColour, 0xFFFFFFu);
  EXPECT_EQ(close.hoverBackground, 0x0000FFu);
  EXPECT_EQ(close.command, 0xF060u);
  const WinEdgeButton& maximize = buttons.buttons[WinEdgeButtons::Maximize];
  EXPECT_EQ(maximize.mask, 0x20);
  EXPECT_EQ(maximize.command, 0xF030u);
  const WinEdgeButton& minimize = buttons.buttons[WinEdgeButtons::Minimize];
  EXPECT_EQ(minimize.mask, 0x40);
  EXPECT_EQ(minimize.command, 0xF020u);
  for (const WinEdgeButton* each : {&maximize, &minimize}) {
    EXPECT_EQ(each->glyphColour, 0x404040u);
    EXPECT_EQ(each->hoverGlyphColour, 0x000000u);
    EXPECT_EQ(each->hoverBackground, 0xC0C0C0u);
  }
}

TEST(WinEdgeButtons, LieAtTheTopFromTheRightEdgeOn) {
  const WinEdgeButtons all = laidOut(AllButtons);
  EXPECT_EQ(all.buttons[WinEdgeButtons::Close].rect, (WinRect{180, 0, 200, 12}));
  EXPECT_EQ(all.buttons[WinEdgeButtons::Maximize].rect, (WinRect{160, 0, 180, 12}));
  EXPECT_EQ(all.buttons[WinEdgeButtons::Minimize].rect, (WinRect{140, 0, 160, 12}));
}

TEST(WinEdgeButtons, OneThatDoesNotExistTakesNoPlaceAndCannotBeHit) {
  const WinEdgeButtons some = laidOut(EdgeCloseButton | EdgeMinimizeButton);
  const WinEdgeButton& missing = some.buttons[WinEdgeButtons::Maximize];
  EXPECT_EQ(missing.rect.height(), 0);
  EXPECT_FALSE(missing.isHit({missing.rect.left, 0}));
  EXPECT_EQ(some.buttons[WinEdgeButtons::Minimize].rect, (WinRect{160, 0, 180, 12}));
  for (const WinEdgeButton& each : laidOut(EdgeMove | EdgeResize).buttons)
    EXPECT_EQ(each.rect.height(), 0);
}

TEST(WinEdgeButtons, NeighboursShareNoPixel) {
  const WinEdgeButtons all = laidOut(AllButtons);
  EXPECT_TRUE(all.buttons[WinEdgeButtons::Close].isHit({180, 0}));
  EXPECT_FALSE(all.buttons[WinEdgeButtons::Maximize].isHit({180, 0}));
  EXPECT_TRUE(all.buttons[WinEdgeButtons::Maximize].isHit({179, 11}));
  EXPECT_FALSE(all.buttons[WinEdgeButtons::Close].isHit({190, 12}));
}

TEST(WinEdgeButtons, AMaximisedWindowIsRestoredByTheSameButton) {
  EXPECT_EQ(laidOut(AllButtons, true).buttons[WinEdgeButtons::Maximize].command, 0xF120u);
  WinEdgeButtons again = laidOut(AllButtons, true);
  again.layOut(Client, AllButtons, false);
  EXPECT_EQ(again.buttons[WinEdgeButtons::Maximize].command, 0xF030u);
}

TEST(WinEdgeButtons, GlyphSizeIsHalfTheHeightOrHalfTheWidthOfANarrowButton) {
  WinEdgeButtons wide = laidOut(AllButtons);
  wide.chooseGlyphSize();
  EXPECT_EQ(wide.glyphWidth, 7);
  EXPECT_EQ(wide.glyphHeight, 7);

  WinEdgeButtons narrow;
  narrow.buttonWidth = 13;
  narrow.buttonHeight = 40; // 21 is more than the width
  narrow.chooseGlyphSize();
  EXPECT_EQ(narrow.glyphWidth, 7);

  WinEdgeButtons even; // as wide as the side from its height
  even.buttonWidth = 21;
  even.buttonHeight = 40;
  even.chooseGlyphSize();
  EXPECT_EQ(even.glyphHeight, 11);
}

TEST(WinEdgeButtons, AGlyphSizeThatWasSetStays) {
  WinEdgeButtons set = laidOut(AllButtons);
  set.glyphWidth = 9;
  set.glyphHeight = 9;
  set.chooseGlyphSize();
  EXPECT_EQ(set.glyphWidth, 9);
  EXPECT_EQ(set.glyphHeight, 9);
}

TEST(WinEdgeButtons, GlyphStandsInTheMiddleOfItsButton) {
  WinEdgeButtons set = laidOut(AllButtons);
  set.glyphWidth = 9;
  set.glyphHeight = 9;
  EXPECT_EQ(set.glyphRect(set.buttons[WinEdgeButtons::Close]), (WinRect{185, 1, 194, 10}));
}

TEST(WinEdgeButtons, APressLightensTheGroundHalfWayToWhite) {
  EXPECT_EQ(lightenedColour(0x0000FF), 0x7F7FFFu);
  EXPECT_EQ(lightenedColour(0xC0C0C0), 0xDFDFDFu);
  EXPECT_EQ(lightenedColour(0x000000), 0x7F7F7Fu);
  EXPECT_EQ(lightenedColour(0xFFFFFF), 0xFFFFFFu);
  EXPECT_EQ(lightenedColour(0x102030), 0x878F97u);

  WinEdgeButton button;
  button.hoverBackground = 0x0000FF;
  EXPECT_EQ(button.groundColour(), 0x0000FFu);
  button.pressed = 1;
  EXPECT_EQ(button.groundColour(), 0x7F7FFFu);
}

TEST(WinEdgeButtons, CrossIsTwoPixelsWideInASquareAFifthSmaller) {
  const auto lines = closeGlyph({10, 20, 20, 30});
  EXPECT_EQ(lines[0], (WinEdgeLine{{12, 22}, {17, 27}}));
  EXPECT_EQ(lines[1], (WinEdgeLine{{13, 22}, {18, 27}}));
  EXPECT_EQ(lines[2], (WinEdgeLine{{17, 22}, {12, 27}}));
  EXPECT_EQ(lines[3], (WinEdgeLine{{16, 22}, {11, 27}}));
}

TEST(WinEdgeButtons, CrossInAWideBoxIsNarrowedAboutItsMiddle) {
  const auto lines = closeGlyph({0, 0, 30, 10}); // 2 to 28, then 6 wide from 12 on
  EXPECT_EQ(lines[0].from, (WinPoint{12, 2}));
  EXPECT_EQ(lines[1].to, (WinPoint{18, 7}));
}

TEST(WinEdgeButtons, MaximizeIsAFrameInsideItsBoxExceptAtTheBottom) {
  EXPECT_EQ(maximizeGlyph({10, 20, 19, 29}), (WinRect{11, 21, 18, 29}));
}

TEST(WinEdgeButtons, RestoreIsTwoFramesOneOverTheOther) {
  EXPECT_EQ(restoreGlyphBack({10, 20, 19, 29}), (WinRect{13, 21, 18, 26}));
  EXPECT_EQ(restoreGlyphFront({10, 20, 19, 29}), (WinRect{11, 23, 16, 29}));
}

TEST(WinEdgeButtons, MinimizeIsABarInTheLowerThird) {
  EXPECT_EQ(minimizeGlyph({10, 20, 19, 29}), (WinRect{11, 26, 18, 29}));
  EXPECT_EQ(minimizeGlyph({0, 0, 14, 12}), (WinRect{2, 8, 12, 12}));
}
