#include "win/WinButtonDraw.h"

#include <gtest/gtest.h>
#include <vector>

using namespace WinLayer;

namespace {

constexpr uint32_t Dialog = 0x00C8D0D4; // blue in the high byte, each channel another
constexpr WinSize Size{20, 16};

constexpr uint32_t upperFill = 0xC1C8CC; // v - (v * 10 >> 8)
constexpr uint32_t lowerFill = 0xB5BCC0; // v - (v * 25 >> 8)

// A painted face, asked for colours as the platform writes them.
class Face {
 public:
  explicit Face(uint32_t drawFlags, WinSize size = Size)
      : size_(size), pixels_(static_cast<size_t>(size.width) * static_cast<size_t>(size.height)) {
    WinButtonDraw::paint(pixels_.data(), size, drawFlags, Dialog);
  }
  [[nodiscard]] uint32_t at(int32_t x, int32_t y) const {
    const uint32_t pixel = pixels_[static_cast<size_t>(y * size_.width + x)];
    return (pixel & 0xFF) << 16 | (pixel & 0xFF00) | pixel >> 16;
  }
  [[nodiscard]] uint32_t fromRight(int32_t x, int32_t y) const { return at(size_.width - x, y); }
  [[nodiscard]] uint32_t fromEnd(int32_t x, int32_t y) const {
    return at(size_.width - x, size_.height - y);
  }

 private:
  WinSize size_;
  std::vector<uint32_t> pixels_;
};

struct Look {
  uint32_t flag;
  uint32_t outerUpper, innerUpper, innerLower, outerLower, lower;
  bool hasGloss;
};

const Look looks[] = {
    {0, 0x808080, 0xE3E7E9, 0xA9B0B3, 0x000000, lowerFill, true},
    {WinButtonDraw::Disabled, 0xC0C0C0, 0xE0E0E0, 0xC0C0C0, 0xA0A0A0, upperFill, false},
    {WinButtonDraw::Pressed, 0x000000, 0x606060, 0x808080, 0x404040, lowerFill, false},
    {WinButtonDraw::Focused, 0xFF0000, 0xFFD0A0, 0xE0A060, 0xF00000, lowerFill, true},
};

} // namespace

TEST(WinButtonDraw, EachChannelIsDarkenedAndLightenedByItself) {
  EXPECT_EQ(WinButtonDraw::darkened(0x00FF8001, 10), 0xF67B01U); // 255-9, 128-5, 1-0
  EXPECT_EQ(WinButtonDraw::darkened(0, 40), 0U);
  EXPECT_EQ(WinButtonDraw::lightened(0x00FF8001), 0xFFBF80U);
  EXPECT_EQ(WinButtonDraw::lightened(0), 0x7F7F7FU);
}

TEST(WinButtonDraw, TheRecordOfEachLook) {
  for (const Look& look : looks) {
    const WinButtonFace face = WinButtonDraw::face(look.flag, Dialog);
    EXPECT_EQ(face.outerUpper, look.outerUpper);
    EXPECT_EQ(face.innerUpper, look.innerUpper);
    EXPECT_EQ(face.innerLower, look.innerLower);
    EXPECT_EQ(face.outerLower, look.outerLower);
    EXPECT_EQ(face.upperFill, upperFill);
    EXPECT_EQ(face.lowerFill, look.lower);
    EXPECT_EQ(face.hasGloss, look.hasGloss);
    EXPECT_EQ(face.upperFrame, face.upperFill);
    EXPECT_EQ(face.lowerFrame, face.lowerFill);
  }
}

TEST(WinButtonDraw, CheckedHasFramesOfItsOwnInEachLook) {
  for (const Look& look : looks) {
    const WinButtonFace face = WinButtonDraw::face(look.flag | WinButtonDraw::Checked, Dialog);
    EXPECT_EQ(face.upperFrame, 0xFF27FFU);
    EXPECT_EQ(face.lowerFrame, 0xFF00FFU);
    EXPECT_EQ(face.upperFill, upperFill);
  }
}

TEST(WinButtonDraw, DisabledGoesBeforePressedAndThatBeforeFocused) {
  using Draw = WinButtonDraw;
  EXPECT_EQ(Draw::face(Draw::Disabled | Draw::Pressed | Draw::Focused, Dialog).outerUpper,
            0xC0C0C0U);
  EXPECT_EQ(Draw::face(Draw::Pressed | Draw::Focused, Dialog).outerUpper, 0x000000U);
}

TEST(WinButtonDraw, TextIsGreyOnlyWhereItIsDisabled) {
  EXPECT_EQ(WinButtonDraw::textColour(0, 0x123456), 0x123456U);
  EXPECT_EQ(WinButtonDraw::textColour(WinButtonDraw::Focused, 0x123456), 0x123456U);
  EXPECT_EQ(WinButtonDraw::textColour(WinButtonDraw::Disabled, 0x123456), 0xA0A0A0U);
}

TEST(WinButtonDraw, TwoLinesRunRoundTwoFills) {
  for (const Look& look : looks) {
    const Face face(look.flag);
    EXPECT_EQ(face.at(10, 0), look.outerUpper);
    EXPECT_EQ(face.at(0, 8), look.outerUpper);
    EXPECT_EQ(face.at(10, 1), look.innerUpper);
    EXPECT_EQ(face.at(1, 8), look.innerUpper);
    EXPECT_EQ(face.at(10, 2), upperFill);
    EXPECT_EQ(face.at(10, 7), upperFill);
    EXPECT_EQ(face.at(10, 8), look.lower); // the lower half
    EXPECT_EQ(face.at(10, 13), look.lower);
    EXPECT_EQ(face.at(10, 14), look.innerLower);
    EXPECT_EQ(face.fromRight(2, 8), look.innerLower);
    EXPECT_EQ(face.at(10, 15), look.outerLower);
    EXPECT_EQ(face.fromRight(1, 8), look.outerLower);
  }
}

TEST(WinButtonDraw, TheOddRowBelongsToTheLowerHalf) {
  const Face face(0, {20, 17});
  EXPECT_EQ(face.at(10, 7), upperFill);
  EXPECT_EQ(face.at(10, 8), lowerFill);
}

TEST(WinButtonDraw, SquareCornersBelongToTheLines) {
  const Face face(WinButtonDraw::Pressed);
  EXPECT_EQ(face.at(0, 0), 0x000000U);
  EXPECT_EQ(face.at(1, 1), 0x606060U);
  EXPECT_EQ(face.fromRight(1, 0), 0x404040U); // the lower line has both
  EXPECT_EQ(face.at(0, 15), 0x404040U);
  EXPECT_EQ(face.fromEnd(1, 1), 0x404040U);
  EXPECT_EQ(face.fromEnd(2, 2), 0x808080U);
}

TEST(WinButtonDraw, ARoundedCornerShowsTheDialog) {
  using Draw = WinButtonDraw;
  const struct {
    uint32_t flag;
    bool right, bottom;
    uint32_t line;
  } corners[] = {{Draw::CornerTopLeft, false, false, 0x000000},
                 {Draw::CornerBottomLeft, false, true, 0x000000},
                 {Draw::CornerTopRight, true, false, 0x404040},
                 {Draw::CornerBottomRight, true, true, 0x404040}};
  for (const auto& corner : corners) {
    const Face face(corner.flag | Draw::Pressed);
    int32_t ground = 0;
    const auto at = [&](const auto& other, int32_t x, int32_t y) {
      return face.at(other.right ? Size.width - 1 - x : x, other.bottom ? Size.height - 1 - y : y);
    };
    for (const auto& other : corners)
      for (const WinPoint point : {WinPoint{0, 0}, WinPoint{1, 0}, WinPoint{0, 1}})
        if (at(other, point.x, point.y) == Dialog) {
          ++ground;
          EXPECT_EQ(other.flag, corner.flag);
        }
    EXPECT_EQ(ground, 3);
    EXPECT_EQ(at(corner, 1, 1), corner.line);
    EXPECT_NE(at(corner, 2, 0), Dialog);
    EXPECT_NE(at(corner, 0, 2), Dialog);
  }
}

TEST(WinButtonDraw, TheInnerLineIsRoundedWithTheOuter) {
  const Face face(WinButtonDraw::CornersAll | WinButtonDraw::Pressed);
  EXPECT_EQ(face.at(2, 2), 0x606060U);
  EXPECT_EQ(face.at(3, 1), 0x606060U);
  EXPECT_EQ(face.at(1, 3), 0x606060U);
  EXPECT_EQ(face.at(2, 1), upperFill);
}

TEST(WinButtonDraw, AFrameTakesTwoPixelsOfEachNamedSide) {
  using Draw = WinButtonDraw;
  const Face all(Draw::FramesAll | Draw::Checked | Draw::Pressed);
  EXPECT_EQ(all.at(10, 0), 0x808080U);
  EXPECT_EQ(all.at(10, 1), 0xFF27FFU);
  EXPECT_EQ(all.at(10, 2), 0x000000U); // the face begins
  EXPECT_EQ(all.at(1, 4), 0xFF27FFU);
  EXPECT_EQ(all.at(1, 12), 0xFF00FFU);
  EXPECT_EQ(all.at(10, 14), 0xFF00FFU);
  EXPECT_EQ(all.at(10, 15), 0x808080U);
  EXPECT_EQ(all.fromRight(3, 8), 0x404040U);

  const Face left(Draw::FrameLeft | Draw::Checked | Draw::Pressed);
  EXPECT_EQ(left.at(0, 4), 0x808080U);
  EXPECT_EQ(left.at(1, 4), 0xFF27FFU);
  EXPECT_EQ(left.at(2, 4), 0x000000U);
  EXPECT_EQ(left.at(10, 0), 0x000000U); // no frame on the other sides
  EXPECT_EQ(left.fromRight(1, 8), 0x404040U);
  EXPECT_EQ(left.at(10, 15), 0x404040U);
}

TEST(WinButtonDraw, AnUncheckedFrameHasTheColoursOfTheFace) {
  const Face face(WinButtonDraw::FramesAll);
  EXPECT_EQ(face.at(10, 0), 0x808080U);
  EXPECT_EQ(face.at(10, 1), upperFill);
  EXPECT_EQ(face.at(10, 14), lowerFill);
}

TEST(WinButtonDraw, TheHighlightIsWhiteInTheMiddleAndSoftAround) {
  const auto brightness = [](uint32_t colour) {
    return (colour & 0xFF) + (colour >> 8 & 0xFF) + (colour >> 16);
  };
  const Face with(WinButtonDraw::CornersAll);
  WinButtonFace plain = WinButtonDraw::face(0, Dialog);
  EXPECT_EQ(with.at(2, 2) & 0xF0F0F0, 0xF0F0F0U); // the small ellipse
  EXPECT_GT(brightness(with.at(2, 0)), brightness(plain.outerUpper));
  EXPECT_GT(brightness(with.at(0, 2)), brightness(plain.outerUpper));
  EXPECT_GT(brightness(with.at(3, 3)), brightness(plain.upperFill)); // within the large one
  EXPECT_LT(brightness(with.at(3, 3)), brightness(with.at(2, 2)));
  EXPECT_GT(brightness(with.at(4, 4)), brightness(plain.upperFill)); // its edge
  EXPECT_LT(brightness(with.at(4, 4)), brightness(with.at(3, 3)));
  EXPECT_EQ(with.at(5, 2), plain.upperFill); // outside
  EXPECT_EQ(with.at(2, 5), plain.upperFill);
  EXPECT_EQ(with.at(0, 0), Dialog); // never beside the face
}

TEST(WinButtonDraw, LooksWithoutHighlightHaveNone) {
  for (const uint32_t look : {WinButtonDraw::Disabled, WinButtonDraw::Pressed}) {
    const Face face(look);
    EXPECT_EQ(face.at(2, 2), upperFill);
    EXPECT_EQ(face.at(2, 0), WinButtonDraw::face(look, Dialog).outerUpper);
  }
}

TEST(WinButtonDraw, TheHighlightStandsInTheFaceWithinItsFrame) {
  const Face face(WinButtonDraw::FramesAll | WinButtonDraw::CornersAll);
  EXPECT_EQ(face.at(4, 4) & 0xF0F0F0, 0xF0F0F0U);
  EXPECT_EQ(face.at(6, 1), upperFill);
}

TEST(WinButtonDraw, SizesTooSmallStayInTheirPixels) {
  for (int32_t width = 0; width < 9; ++width)
    for (int32_t height = 0; height < 9; ++height) {
      constexpr uint32_t Untouched = 0xDEADBEEF;
      const auto count = static_cast<size_t>(width * height);
      std::vector<uint32_t> pixels(count + 1, Untouched);
      WinButtonDraw::paint(pixels.data(), {width, height},
                           WinButtonDraw::CornersAll | WinButtonDraw::FramesAll, Dialog);
      EXPECT_EQ(pixels[count], Untouched);
      for (size_t i = 0; i < count; ++i) EXPECT_NE(pixels[i], Untouched);
    }
}

TEST(WinButtonDraw, TheArrowPointsDownWithASoftEdgeAndAGreyCore) {
  constexpr WinSize Arrow{8, 5};
  std::vector<uint32_t> pixels(Arrow.width * Arrow.height);
  WinButtonDraw::paintArrow(pixels.data(), Arrow);
  const auto at = [&](int32_t x, int32_t y) {
    return pixels[static_cast<size_t>(y * Arrow.width + x)];
  };
  EXPECT_EQ(at(3, 0) >> 24, 255U); // opaque
  EXPECT_LT(at(0, 0) >> 24, 255U); // the corner is soft
  EXPECT_GT(at(0, 0) >> 24, 100U);
  EXPECT_EQ(at(0, 3) >> 24, 0U); // beside its point
  EXPECT_GT(at(3, 4) >> 24, 0U);
  EXPECT_EQ(at(3, 1) & 0xFF, 0x80U); // the core
  EXPECT_LT(at(3, 0) & 0xFF, 0x80U); // a black line above it
  for (int32_t y = 0; y < Arrow.height; ++y)
    for (int32_t x = 0; x < Arrow.width; ++x) EXPECT_EQ(at(x, y), at(Arrow.width - 1 - x, y));
}
