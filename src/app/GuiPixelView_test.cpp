#include "app/GuiPixelView.h"

#include <gtest/gtest.h>

#include <vector>

using namespace AppLayer;

namespace {

// A view of 4 by 3 pixels within rows of 5, whose last column is not its own.
class GuiPixelViewTest : public testing::Test {
 protected:
  std::vector<uint32_t> pixels = std::vector<uint32_t>(15, 0);
  GuiPixelView view{pixels.data(), {4, 3}, 5};
};

using Pixels = std::vector<uint32_t>;

} // namespace

TEST_F(GuiPixelViewTest, AFillStaysInsideTheView) {
  view.fill({2, 1, 100, 100}, 7);
  EXPECT_EQ(pixels, (Pixels{0, 0, 0, 0, 0, //
                            0, 0, 7, 7, 0, //
                            0, 0, 7, 7, 0}));
  view.fill({-5, -5, 1, 1}, 8);
  EXPECT_EQ(pixels[0], 8U);
  EXPECT_EQ(pixels[1], 0U);
  EXPECT_EQ(pixels[5], 0U);
}

TEST_F(GuiPixelViewTest, NothingIsFilledOutsideOrInsideOut) {
  for (const WinRect& area : {WinRect{4, 0, 9, 3}, WinRect{0, 3, 4, 9}, WinRect{-9, 0, 0, 3},
                              WinRect{0, -9, 4, 0}, WinRect{3, 0, 1, 3}, WinRect{0, 2, 4, 1}})
    view.fill(area, 7);
  EXPECT_EQ(pixels, Pixels(15, 0));
}

TEST_F(GuiPixelViewTest, APictureIsCutAtEachSide) {
  const Pixels picture{1, 2, 3, 4, 5, 6};
  view.copy({-1, -1}, picture.data(), {3, 2});
  view.copy({3, 2}, picture.data(), {3, 2});
  EXPECT_EQ(pixels, (Pixels{5, 6, 0, 0, 0, //
                            0, 0, 0, 0, 0, //
                            0, 0, 0, 1, 0}));
}

TEST_F(GuiPixelViewTest, AnOpaquePictureReplacesAndAClearOneLeaves) {
  view.fill({0, 0, 4, 3}, 0x00808080);
  const Pixels picture{0xFF102030, 0x00FFFFFF};
  view.blend({3, 0}, picture.data(), {2, 1});
  view.blend({1, 1}, picture.data(), {2, 1});
  EXPECT_EQ(pixels, (Pixels{0x808080, 0x808080, 0x808080, 0x102030, 0, //
                            0x808080, 0x102030, 0x808080, 0x808080, 0, //
                            0x808080, 0x808080, 0x808080, 0x808080, 0}));
}

TEST_F(GuiPixelViewTest, AnAreaIsReadAsAPictureWithoutGaps) {
  for (uint32_t i = 0; i < 15; ++i) pixels[i] = i;
  Pixels picture(4);
  view.read({1, 1, 3, 3}, picture.data());
  EXPECT_EQ(picture, (Pixels{6, 7, 11, 12}));
}
