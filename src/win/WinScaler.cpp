#include "win/WinScaler.h"

#include "win/WinPixels.h"
#include "win/WinScalerTaps.h"
#include "win/WinScalerWhole.h"

#include <algorithm>
#include <cmath>

#if defined(__SSE2__) || defined(_M_X64)
#define WIN_SCALER_SSE2
#include <emmintrin.h>
#endif

namespace WinLayer {

namespace {

struct Span {
  int32_t first;
  int32_t behind;
  [[nodiscard]] int32_t clamp(int32_t index) const { return std::clamp(index, first, behind - 1); }
};

int32_t truncate(double value) {
  constexpr double Far = 1e9; // and a number behind it is still one
  return static_cast<int32_t>(std::clamp(value, -Far, Far));
}

double cubicWeight(double distance) {
  const double t = std::abs(distance);
  return t <= 1 ? 2 * t * t * t - 3 * t * t + 1 : 0;
}

// The distance is taken to the index as it is; only what is fetched is clamped.
void addCubic(WinScalerTaps& taps, int32_t target, double scale, Span source) {
  const double place = (target + 0.5) * scale - 0.5;
  const int32_t index = truncate(place);
  taps.beginTarget();
  for (const int32_t i : {index, index + 1}) taps.add(source.clamp(i), cubicWeight(place - i));
}

void addCovered(WinScalerTaps& taps, int32_t target, double scale, Span source) {
  const double start = target * scale;
  const double end = start + scale;
  taps.beginTarget();
  for (int32_t i = source.clamp(truncate(start)); i <= source.clamp(truncate(end)); ++i) {
    double weight = 1;
    if (start - i > 0) weight -= start - i;
    if (i + 1 - end > 0) weight -= i + 1 - end;
    taps.add(i, weight);
  }
}

using AddTaps = void (*)(WinScalerTaps& taps, int32_t target, double scale, Span source);

// The taps of the targets first, first + 1 and on.
WinScalerTaps tapsOf(AddTaps add, int32_t first, int32_t count, double scale, Span source) {
  WinScalerTaps taps(count, 2 * count);
  for (int32_t i = 0; i < count; ++i) add(taps, first + i, scale, source);
  return taps;
}

// The four sums of one target pixel.
#ifdef WIN_SCALER_SSE2
class Sums {
 public:
  void add(uint32_t pixel, double weight) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i bytes = _mm_cvtsi32_si128(static_cast<int>(pixel));
    const __m128i channels = _mm_unpacklo_epi16(_mm_unpacklo_epi8(bytes, zero), zero);
    const __m128d factor = _mm_set1_pd(weight);
    low_ = _mm_add_pd(low_, _mm_mul_pd(_mm_cvtepi32_pd(channels), factor));
    const __m128i upper = _mm_unpackhi_epi64(channels, channels);
    high_ = _mm_add_pd(high_, _mm_mul_pd(_mm_cvtepi32_pd(upper), factor));
  }
  [[nodiscard]] uint32_t pack(double divisor) const {
    const __m128d by = _mm_set1_pd(divisor);
    double low[2];
    double high[2];
    _mm_storeu_pd(low, _mm_div_pd(low_, by));
    _mm_storeu_pd(high, _mm_div_pd(high_, by));
    return packPixel(high[1], high[0], low[1], low[0]);
  }

 private:
  __m128d low_ = _mm_setzero_pd();  // blue, green
  __m128d high_ = _mm_setzero_pd(); // red, alpha
};
#else
class Sums {
 public:
  void add(uint32_t pixel, double weight) {
    alpha_ += winAlpha(pixel) * weight;
    red_ += winRed(pixel) * weight;
    green_ += winGreen(pixel) * weight;
    blue_ += winBlue(pixel) * weight;
  }
  [[nodiscard]] uint32_t pack(double divisor) const {
    return packPixel(alpha_ / divisor, red_ / divisor, green_ / divisor, blue_ / divisor);
  }

 private:
  double alpha_ = 0;
  double red_ = 0;
  double green_ = 0;
  double blue_ = 0;
};
#endif

// How one of the two functions weighs its source.
struct Kernel {
  const WinBitmapAlpha& source;
  AddTaps add;
  double scaleX;
  double scaleY;
  double divisor;

  // The samples from (0, 0) on, one for each pixel of the target.
  void fill(const WinBitmapAlpha& target) const {
    const WinSize size = target.size();
    const WinScalerTaps columns = tapsOf(add, 0, size.width, scaleX, {source.left, source.right});
    const WinScalerTaps rows = tapsOf(add, 0, size.height, scaleY, {source.top, source.bottom});
    if (scaleInWholeNumbers(source, columns, rows, divisor, target)) return;
    for (int32_t y = 0; y < size.height; ++y) {
      uint32_t* out = target.row(target.top + y) + target.left;
      for (int32_t x = 0; x < size.width; ++x) out[x] = pixelOf(columns.at(x), rows.at(y));
    }
  }

  [[nodiscard]] uint32_t sample(WinPoint place) const {
    if (source.isEmpty()) return 0;
    const WinScalerTaps column = tapsOf(add, place.x, 1, scaleX, {source.left, source.right});
    const WinScalerTaps row = tapsOf(add, place.y, 1, scaleY, {source.top, source.bottom});
    return pixelOf(column.at(0), row.at(0));
  }

 private:
  [[nodiscard]] uint32_t pixelOf(WinScalerTapRange columns, WinScalerTapRange rows) const {
    Sums sums;
    for (const WinScalerTap& row : rows) {
      const uint32_t* line = source.row(row.index);
      for (const WinScalerTap& column : columns)
        sums.add(line[column.index], column.weight * row.weight);
    }
    return sums.pack(divisor);
  }
};

Kernel cubic(const WinBitmapAlpha& source, double scaleX, double scaleY) {
  return {source, addCubic, scaleX, scaleY, 1};
}
Kernel covered(const WinBitmapAlpha& source, double scaleX, double scaleY) {
  return {source, addCovered, scaleX, scaleY, scaleX * scaleY};
}

} // namespace

WinBitmapAlpha WinBitmapAlpha::over(uint32_t* pixels, WinSize size) {
  return {pixels, 0, 0, size.width, size.height, size.width};
}

void WinBitmapAlpha::write(const Function& function) const {
  if (!isEmpty()) function.fill(*this);
}

void WinBitmapAlpha::Function::fill(const WinBitmapAlpha& target) const {
  const WinSize size = target.size();
  for (int32_t y = 0; y < size.height; ++y) {
    uint32_t* out = target.row(target.top + y) + target.left;
    for (int32_t x = 0; x < size.width; ++x) out[x] = sample(x, y);
  }
}

uint32_t WinBitmapAlpha::FunctionSameSize::sample(int32_t x, int32_t y) const {
  if (source_.isEmpty()) return 0;
  return source_.row(
      Span{source_.top, source_.bottom}.clamp(y))[Span{source_.left, source_.right}.clamp(x)];
}

uint32_t WinBitmapAlpha::FunctionBilinear::sample(int32_t x, int32_t y) const {
  return cubic(source_, scaleX_, scaleY_).sample({x, y});
}

void WinBitmapAlpha::FunctionBilinear::fill(const WinBitmapAlpha& target) const {
  if (source_.isEmpty()) return Function::fill(target);
  cubic(source_, scaleX_, scaleY_).fill(target);
}

uint32_t WinBitmapAlpha::FunctionAreaAverage::sample(int32_t x, int32_t y) const {
  return covered(source_, scaleX_, scaleY_).sample({x, y});
}

void WinBitmapAlpha::FunctionAreaAverage::fill(const WinBitmapAlpha& target) const {
  if (source_.isEmpty()) return Function::fill(target);
  covered(source_, scaleX_, scaleY_).fill(target);
}

WinScaling chooseScaling(WinSize source, WinSize target) {
  if (source == target) return WinScaling::SameSize;
  const bool fits = source.width <= target.width && source.height <= target.height;
  return fits ? WinScaling::Bilinear : WinScaling::AreaAverage;
}

void scaleBitmap(const WinBitmapAlpha& source, const WinBitmapAlpha& target) {
  const WinSize from = source.size();
  const WinSize to = target.size();
  if (target.isEmpty()) return;
  const double scaleX = static_cast<double>(from.width) / to.width;
  const double scaleY = static_cast<double>(from.height) / to.height;
  switch (chooseScaling(from, to)) {
  case WinScaling::SameSize:
    return target.write(WinBitmapAlpha::FunctionSameSize(source));
  case WinScaling::Bilinear:
    return target.write(WinBitmapAlpha::FunctionBilinear(source, scaleX, scaleY));
  case WinScaling::AreaAverage:
    return target.write(WinBitmapAlpha::FunctionAreaAverage(
        source, scaleX, scaleY, {target.left, target.top, target.right, target.bottom}));
  }
}

} // namespace WinLayer
