#include "win/WinPixels.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

using namespace WinLayer;

TEST(WinPixels, ChannelsStandInTheOrderAlphaRedGreenBlue) {
  EXPECT_EQ(packPixel(1, 2, 3, 4), 0x01020304u);
  EXPECT_EQ(winAlpha(0xF1020304), 0xF1);
  EXPECT_EQ(winRed(0xF1E20304), 0xE2);
  EXPECT_EQ(winGreen(0xF1E2D304), 0xD3);
  EXPECT_EQ(winBlue(0xF1E2D3C4), 0xC4);
}

TEST(WinPixels, PackingTruncates) {
  EXPECT_EQ(packPixel(0.999, 1.5, 254.9999, 127.000001), 0x0001FE7Fu);
}

TEST(WinPixels, PackingClampsToAByte) {
  EXPECT_EQ(packPixel(0, -0.5, -1e300, -255), 0u);
  EXPECT_EQ(packPixel(255, 255.5, 1e300, 256), 0xFFFFFFFFu);
  const double nothing = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(packPixel(nothing, nothing, 300, nothing), 0x0000FF00u);
}

TEST(WinPixels, AnIconWithAlphaAnywhereStaysAsItIs) {
  std::vector<uint32_t> colours{0x00112233, 0x01445566, 0x00000000, 0xFF778899};
  const std::vector<uint32_t> before = colours;
  const std::vector<uint32_t> mask{0xFFFFFF, 0, 0xFFFFFF, 0xFFFFFF};
  straightenIcon(colours.data(), mask.data(), colours.size());
  EXPECT_EQ(colours, before);
}

TEST(WinPixels, AnIconWithoutAlphaTakesItFromTheMask) {
  std::vector<uint32_t> colours{0x00112233, 0x00445566, 0x00000000, 0x00000000};
  const std::vector<uint32_t> mask{0, 0xFFFFFF, 0, 1};
  straightenIcon(colours.data(), mask.data(), colours.size());
  EXPECT_EQ(colours, (std::vector<uint32_t>{0xFF112233, 0x00FFFFFF, 0xFF000000, 0x00FFFFFF}));
}

TEST(WinPixels, AnIconOfNoPixelsIsLeftAlone) {
  straightenIcon(nullptr, nullptr, 0);
  blendPixels(nullptr, nullptr, 0);
}

TEST(WinPixels, AlphaNoneLeavesTheBackgroundAndFullAlphaReplacesIt) {
  EXPECT_EQ(blendPixel(0x00123456, 0x00FFFFFF), 0x00123456u);
  EXPECT_EQ(blendPixel(0x00123456, 0xFFABCDEF), 0x00ABCDEFu);
}

TEST(WinPixels, TheBlendHasNoAlphaWhateverTheBackgroundHas) {
  EXPECT_EQ(blendPixel(0xFF123456, 0x00000000), 0x00123456u);
  EXPECT_EQ(blendPixel(0x80FFFFFF, 0x80FFFFFF), 0x00FFFFFFu);
}

TEST(WinPixels, BlendingDividesWithoutRoundingForEveryPairAndAlpha) {
  for (uint32_t alpha = 0; alpha <= 255; ++alpha)
    for (uint32_t below = 0; below <= 255; ++below)
      for (uint32_t above = 0; above <= 255; ++above) {
        const uint32_t expected = (below * (255 - alpha) + above * alpha) / 255;
        // The neighbours are at their ends, so that a carry would show.
        const uint32_t blue = blendPixel(0xFFFFFF00 | below, alpha << 24 | 0xFFFF00 | above);
        const uint32_t red = blendPixel(below << 16 | 0xFFFF, alpha << 24 | above << 16 | 0xFFFF);
        if (blue != (0xFFFF00 | expected) || red != (expected << 16 | 0xFFFF))
          FAIL() << alpha << " " << below << " " << above;
      }
}

TEST(WinPixels, ARowDividesWithoutRoundingForEveryPairAndAlpha) {
  std::vector<uint32_t> row(256);
  for (uint32_t alpha = 0; alpha <= 255; ++alpha)
    for (uint32_t above = 0; above <= 255; ++above) {
      for (uint32_t below = 0; below <= 255; ++below) row[below] = below << 16 | 0xFF00FF00 | below;
      const std::vector<uint32_t> pixels(256, alpha << 24 | above << 16 | 0xFF00 | above);
      blendPixels(row.data(), pixels.data(), row.size());
      for (uint32_t below = 0; below <= 255; ++below) {
        const uint32_t expected = (below * (255 - alpha) + above * alpha) / 255;
        if (row[below] != (expected << 16 | 0xFF00 | expected))
          FAIL() << alpha << " " << below << " " << above;
      }
    }
}

TEST(WinPixels, ARowIsBlendedPixelByPixel) {
  uint32_t seed = 1;
  const auto random = [&seed] { return seed = seed * 1664525 + 1013904223; };
  std::vector<uint32_t> pixels;
  std::vector<uint32_t> row;
  std::vector<uint32_t> expected;
  for (uint32_t i = 0; i < 1003; ++i) {
    // One kind alone and many of it in a row.
    const uint32_t kind = i < 500 ? i % 3 : i / 7 % 3;
    const uint32_t alpha = kind == 0 ? 0u : kind == 1 ? 0xFFu : random() >> 24;
    pixels.push_back(alpha << 24 | random() >> 8);
    row.push_back(random());
    expected.push_back(blendPixel(row.back(), pixels.back()));
  }
  blendPixels(row.data(), pixels.data(), row.size());
  EXPECT_EQ(row, expected);
}
