#include "win/WinScaler.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

using namespace WinLayer;

namespace {

using Pixels = std::vector<uint32_t>;

struct Image {
  WinSize size;
  Pixels pixels;
  Image(WinSize imageSize, Pixels imagePixels) : size(imageSize), pixels(std::move(imagePixels)) {}
  explicit Image(WinSize imageSize, uint32_t fill = 0)
      : size(imageSize), pixels(static_cast<std::size_t>(imageSize.width) *
                                    static_cast<std::size_t>(imageSize.height),
                                fill) {}
  WinBitmapAlpha bitmap() { return WinBitmapAlpha::over(pixels.data(), size); }
  [[nodiscard]] uint32_t at(int x, int y) const {
    return pixels[static_cast<std::size_t>(y * size.width + x)];
  }
};

Pixels scaled(Image source, WinSize size) {
  Image target(size, 0xDEADBEEF);
  scaleBitmap(source.bitmap(), target.bitmap());
  return target.pixels;
}

class Random {
 public:
  explicit Random(uint32_t seed) : state_(seed * 2654435761u + 1) {}
  uint32_t next() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 7;
    state_ ^= state_ << 17;
    return static_cast<uint32_t>(state_ >> 16);
  }
  int upTo(int most) { return 1 + static_cast<int>(next() % static_cast<uint32_t>(most)); }

 private:
  uint64_t state_;
};

// --- The plain reference: one pixel at a time, straight from the definition.

uint32_t byteOf(double value) {
  if (value >= 255) return 255;
  return value > 0 ? static_cast<uint32_t>(value) : 0;
}

struct Plain {
  const Image& source;
  double scaleX;
  double scaleY;
  double sums[4] = {0, 0, 0, 0};

  void add(int x, int y, double weight) {
    const int i = std::clamp(x, 0, source.size.width - 1);
    const int j = std::clamp(y, 0, source.size.height - 1);
    for (int channel = 0; channel < 4; ++channel)
      sums[channel] += (source.at(i, j) >> (8 * channel) & 0xFF) * weight;
  }
  [[nodiscard]] uint32_t packed(double divisor) const {
    uint32_t pixel = 0;
    for (int channel = 0; channel < 4; ++channel)
      pixel |= byteOf(sums[channel] / divisor) << (8 * channel);
    return pixel;
  }
  static double cubic(double t) {
    t = std::fabs(t);
    return t <= 1 ? 2 * t * t * t - 3 * t * t + 1 : 0;
  }
  uint32_t cubicAt(int x, int y) {
    const double fx = (x + 0.5) * scaleX - 0.5;
    const double fy = (y + 0.5) * scaleY - 0.5;
    const int ix = static_cast<int>(fx);
    const int iy = static_cast<int>(fy);
    for (int j = iy; j <= iy + 1; ++j)
      for (int i = ix; i <= ix + 1; ++i) {
        const double weight = cubic(fx - i) * cubic(fy - j);
        if (weight != 0) add(i, j, weight);
      }
    return packed(1);
  }
  static double covered(int i, double start, double end) {
    double weight = 1;
    weight -= std::max(start - i, 0.0);
    weight -= std::max(i + 1 - end, 0.0);
    return weight;
  }
  uint32_t areaAt(int x, int y) {
    const double x0 = x * scaleX;
    const double y0 = y * scaleY;
    const double x1 = x0 + scaleX;
    const double y1 = y0 + scaleY;
    const int right = std::min(static_cast<int>(x1), source.size.width - 1);
    const int bottom = std::min(static_cast<int>(y1), source.size.height - 1);
    for (int j = std::min(static_cast<int>(y0), bottom); j <= bottom; ++j)
      for (int i = std::min(static_cast<int>(x0), right); i <= right; ++i)
        add(i, j, covered(i, x0, x1) * covered(j, y0, y1));
    return packed(scaleX * scaleY);
  }
};

Pixels plainlyScaled(const Image& source, WinSize size) {
  const double scaleX = static_cast<double>(source.size.width) / size.width;
  const double scaleY = static_cast<double>(source.size.height) / size.height;
  const bool fits = source.size.width <= size.width && source.size.height <= size.height;
  Pixels pixels;
  for (int y = 0; y < size.height; ++y)
    for (int x = 0; x < size.width; ++x) {
      Plain plain{source, scaleX, scaleY};
      if (source.size == size)
        pixels.push_back(source.at(x, y));
      else
        pixels.push_back(fits ? plain.cubicAt(x, y) : plain.areaAt(x, y));
    }
  return pixels;
}

Image randomImage(Random& random, WinSize size) {
  Image image(size);
  for (uint32_t& pixel : image.pixels) {
    pixel = random.next();
    // Ends of the range show truncation and clamping.
    if (random.next() % 4 == 0) pixel = random.next() % 2 == 0 ? 0xFFFFFFFF : 0;
  }
  return image;
}

} // namespace

TEST(WinScaler, TheScalingIsChosenByBothSizes) {
  EXPECT_EQ(chooseScaling({32, 32}, {32, 32}), WinScaling::SameSize);
  EXPECT_EQ(chooseScaling({16, 16}, {32, 32}), WinScaling::Bilinear);
  EXPECT_EQ(chooseScaling({32, 16}, {32, 32}), WinScaling::Bilinear);
  EXPECT_EQ(chooseScaling({48, 48}, {32, 32}), WinScaling::AreaAverage);
  EXPECT_EQ(chooseScaling({24, 64}, {32, 32}), WinScaling::AreaAverage);
  EXPECT_EQ(chooseScaling({64, 24}, {32, 32}), WinScaling::AreaAverage);
}

TEST(WinScaler, EqualSizesAreCopiedWithNoChange) {
  Random random(7);
  const Image image = randomImage(random, {32, 32});
  EXPECT_EQ(scaled(image, {32, 32}), image.pixels);
}

TEST(WinScaler, AThousandImagesAreScaledAsThePlainReferenceDoes) {
  for (uint32_t seed = 0; seed < 1000; ++seed) {
    Random random(seed);
    const WinSize from{random.upTo(70), random.upTo(70)};
    const WinSize to{random.upTo(48), random.upTo(48)};
    const Image image = randomImage(random, from);
    ASSERT_EQ(scaled(image, to), plainlyScaled(image, to))
        << seed << ": " << from.width << "x" << from.height << " to " << to.width << "x"
        << to.height;
  }
}

TEST(WinScaler, TheUsualSizesAreScaledAsThePlainReferenceDoes) {
  Random random(99);
  for (const int from : {16, 20, 24, 32, 40, 48, 64, 96, 128, 256})
    for (const int to : {16, 24, 32, 48, 64}) {
      const Image image = randomImage(random, {from, from});
      ASSERT_EQ(scaled(image, {to, to}), plainlyScaled(image, {to, to})) << from << " to " << to;
    }
}

TEST(WinScaler, AWriteGivesWhatEachSampleGives) {
  Random random(3);
  Image small = randomImage(random, {5, 7});
  Image large = randomImage(random, {31, 45});
  const WinBitmapAlpha::FunctionBilinear up(small.bitmap(), 5.0 / 12, 7.0 / 9);
  const WinBitmapAlpha::FunctionAreaAverage down(large.bitmap(), 31.0 / 12, 45.0 / 9,
                                                 {0, 0, 12, 9});
  const WinBitmapAlpha::FunctionSameSize same(large.bitmap());
  for (const WinBitmapAlpha::Function* function :
       {static_cast<const WinBitmapAlpha::Function*>(&up),
        static_cast<const WinBitmapAlpha::Function*>(&down),
        static_cast<const WinBitmapAlpha::Function*>(&same)}) {
    Image written({12, 9});
    written.bitmap().write(*function);
    for (int y = 0; y < 9; ++y)
      for (int x = 0; x < 12; ++x) ASSERT_EQ(function->sample(x, y), written.at(x, y));
  }
}

// Sizes like these are scaled in whole numbers, single samples in doubles.
TEST(WinScaler, APartOfAnImageIsScaledAsItsSamplesSay) {
  Random random(17);
  Image whole = randomImage(random, {40, 40});
  for (const int width : {1, 5, 16, 24, 33})
    for (const WinSize to : {WinSize{32, 32}, {48, 6}, {3, 64}}) {
      WinBitmapAlpha part = whole.bitmap();
      part.left = 3;
      part.top = 2;
      part.right = part.left + width;
      part.bottom = part.top + 24;
      const WinBitmapAlpha::FunctionBilinear up(part, static_cast<double>(width) / to.width,
                                                24.0 / to.height);
      const WinBitmapAlpha::FunctionAreaAverage down(part, static_cast<double>(width) / to.width,
                                                     24.0 / to.height, {0, 0, to.width, to.height});
      for (const WinBitmapAlpha::Function* function :
           {static_cast<const WinBitmapAlpha::Function*>(&up),
            static_cast<const WinBitmapAlpha::Function*>(&down)}) {
        Image written(to);
        written.bitmap().write(*function);
        for (int y = 0; y < to.height; ++y)
          for (int x = 0; x < to.width; ++x)
            ASSERT_EQ(function->sample(x, y), written.at(x, y)) << width << ": " << x << ", " << y;
      }
    }
}

// Doubling puts each target pixel a quarter beside a source pixel: the weights are 27/32 and 5/32.
TEST(WinScaler, EnlargingWeighsByTheCubicAndLosesAtTheEdges) {
  const Pixels row = scaled(Image({2, 1}, {0xFF000000, 0xFF0000FF}), {4, 1});
  // Vertically the pixel is the source's own. The first column has its left neighbour at a
  // quarter in front of the image: one weight of 27/32 alone, for nothing is behind the edge.
  EXPECT_EQ(row[0], static_cast<uint32_t>(255 * 27 / 32) << 24);
  EXPECT_EQ(row[1], 0xFF000000u | 255 * 5 / 32);
  EXPECT_EQ(row[2], 0xFF000000u | 255 * 27 / 32);
  // The last one has both at the same pixel, the second of them clamped: nothing is lost.
  EXPECT_EQ(row[3], 0xFF0000FFu);
}

TEST(WinScaler, EnlargingDoesNotMultiplyByAlpha) {
  // A red pixel that cannot be seen still colours its neighbour.
  const Pixels row = scaled(Image({2, 1}, {0x00FF0000, 0xFF000000}), {4, 1});
  EXPECT_EQ(row[1], 0x27D70000u);
}

TEST(WinScaler, ShrinkingDividesTheCoveredPixels) {
  // 3 to 2: the middle pixel belongs to both by half.
  const Pixels row = scaled(Image({3, 1}, {0xFF0000FF, 0xFF000000, 0xFF00FF00}), {2, 1});
  EXPECT_EQ(row, (Pixels{0xFF0000AA, 0xFF00AA00}));
  EXPECT_EQ(scaled(Image({2, 2}, {0x04030201, 0x08070605, 0x0C0B0A09, 0x100F0E0D}), {1, 1}),
            (Pixels{0x0A090807}));
}

TEST(WinScaler, ShrinkingInOneDirectionMayStretchInTheOther) {
  // 1 by 4 to 2 by 2: each column has half of the one pixel, divided by half.
  EXPECT_EQ(scaled(Image({1, 4}, {0x10, 0x20, 0x40, 0x60}), {2, 2}),
            (Pixels{0x18, 0x18, 0x50, 0x50}));
}

TEST(WinScaler, SamplesOutsideAreClampedToTheSource) {
  Image image({2, 2}, {1, 2, 3, 4});
  const WinBitmapAlpha::FunctionSameSize same(image.bitmap());
  EXPECT_EQ(same.sample(-5, -5), 1u);
  EXPECT_EQ(same.sample(9, -1), 2u);
  EXPECT_EQ(same.sample(-1, 9), 3u);
  EXPECT_EQ(same.sample(2, 2), 4u);
}

TEST(WinScaler, AWriteTouchesItsRectangleAlone) {
  Image source({2, 2}, {1, 2, 3, 4});
  Image target({5, 4}, 9);
  WinBitmapAlpha part = target.bitmap();
  part.left = 1;
  part.top = 1;
  part.right = 3;
  part.bottom = 3;
  scaleBitmap(source.bitmap(), part);
  EXPECT_EQ(target.pixels, (Pixels{9, 9, 9, 9, 9, 9, 1, 2, 9, 9, 9, 3, 4, 9, 9, 9, 9, 9, 9, 9}));
}

TEST(WinScaler, AnEmptySourceGivesNothingAndAnEmptyTargetTakesNothing) {
  EXPECT_EQ(scaled(Image({0, 0}), {2, 1}), (Pixels{0, 0}));
  EXPECT_EQ(scaled(Image({0, 40}), {2, 1}), (Pixels{0, 0}));
  EXPECT_EQ(scaled(Image({2, 2}), {0, 5}), Pixels{});
}
