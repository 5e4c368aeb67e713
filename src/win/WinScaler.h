// WinBitmapAlpha: a rectangle of pixels over the caller's array, and the three ways to fill it
// from another one: copied, enlarged, shrunk.
//
// The platform's own scaling loses the alpha. All channels are scaled alike, alpha included, as
// doubles and without multiplication by alpha. Results are exact: the same on every build with
// 64-bit doubles, pixel for pixel. A whole write works out the weights of each column and row once
// and keeps the order of the sums, so that it gives what `sample` gives.
//
// Coordinates are pixels counted from the array's start. Nothing owns pixels; any thread.
#pragma once

#include "win/WinRect.h"

#include <cstddef>
#include <cstdint>

namespace WinLayer {

class WinBitmapAlpha {
 public:
  uint32_t* pixels = nullptr;
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;  // without
  int32_t bottom = 0; // without
  int32_t stride = 0; // pixels from one row to the next

  class Function;
  class FunctionSameSize;
  class FunctionBilinear;
  class FunctionAreaAverage;

  // The rectangle from (0, 0) over an array without gaps.
  static WinBitmapAlpha over(uint32_t* pixels, WinSize size);

  [[nodiscard]] uint32_t* row(int32_t y) const {
    return pixels + static_cast<std::ptrdiff_t>(y) * stride;
  }
  [[nodiscard]] WinSize size() const { return {right - left, bottom - top}; }
  [[nodiscard]] bool isEmpty() const { return right <= left || bottom <= top; }
  // Stores the function's sample for each pixel, counted from the rectangle's left top.
  void write(const Function& function) const;
};

// A source of pixels for a write. A source rectangle that is empty gives pixels of 0.
class WinBitmapAlpha::Function {
 public:
  virtual ~Function() = default;
  [[nodiscard]] virtual uint32_t sample(int32_t x, int32_t y) const = 0;
  // The samples (0, 0) and on, for the whole target.
  virtual void fill(const WinBitmapAlpha& target) const;
};

// The source's pixel, each coordinate clamped to its rectangle.
class WinBitmapAlpha::FunctionSameSize : public Function {
 public:
  explicit FunctionSameSize(const WinBitmapAlpha& source) : source_(source) {}
  [[nodiscard]] uint32_t sample(int32_t x, int32_t y) const override;

 private:
  WinBitmapAlpha source_;
};

// For enlarging: four source pixels with a cubic weight, whose sum is less than 1 near the edges
// and is not made up for. Scales are source size over target size, above 0.
class WinBitmapAlpha::FunctionBilinear : public Function {
 public:
  FunctionBilinear(const WinBitmapAlpha& source, double scaleX, double scaleY)
      : source_(source), scaleX_(scaleX), scaleY_(scaleY) {}
  [[nodiscard]] uint32_t sample(int32_t x, int32_t y) const override;
  void fill(const WinBitmapAlpha& target) const override;

 private:
  WinBitmapAlpha source_;
  double scaleX_;
  double scaleY_;
};

// For shrinking in at least one direction: the mean of the source under the target pixel. Scales
// as above.
class WinBitmapAlpha::FunctionAreaAverage : public Function {
 public:
  FunctionAreaAverage(const WinBitmapAlpha& source, double scaleX, double scaleY,
                      const WinRect& target)
      : source_(source), scaleX_(scaleX), scaleY_(scaleY), target_(target) {}
  [[nodiscard]] uint32_t sample(int32_t x, int32_t y) const override;
  void fill(const WinBitmapAlpha& target) const override;
  [[nodiscard]] const WinRect& target() const { return target_; } // what it was made for

 private:
  WinBitmapAlpha source_;
  double scaleX_;
  double scaleY_;
  WinRect target_;
};

enum class WinScaling { SameSize, Bilinear, AreaAverage };
// Equal sizes are copied; what fits in both directions is enlarged; all else is shrunk.
WinScaling chooseScaling(WinSize source, WinSize target);
// Fills the target with the source by the scaling that their sizes ask for.
void scaleBitmap(const WinBitmapAlpha& source, const WinBitmapAlpha& target);

} // namespace WinLayer
