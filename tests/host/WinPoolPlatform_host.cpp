#include "win/WinPoolPlatform.h"

#include "HostFaults.h"
#include "HostIcons.h"

#include <algorithm>

namespace WinLayer {

namespace {

// The pixel of a canvas; what lies outside is none.
uint32_t* pixelOf(HostCanvas& canvas, int32_t x, int32_t y) {
  if (x < 0 || y < 0 || x >= canvas.size.width || y >= canvas.size.height) return nullptr;
  return &canvas.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(canvas.size.width) +
                        static_cast<std::size_t>(x)];
}

// Scales by taking the nearest pixel.
class Surface : public WinPoolSurface {
 public:
  bool reserve(void* context, WinSize size) override {
    if (!context || HostFaults::fails(HostFaults::Query)) return false;
    if (size.width <= canvas_.size.width && size.height <= canvas_.size.height) return true;
    canvas_.size = size;
    canvas_.pixels.assign(
        static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height), 0);
    return size.width > 0 && size.height > 0;
  }
  uint32_t* row(int32_t y) override { return pixelOf(canvas_, 0, y); }
  bool take(void* context, const WinRect& from, WinSize size) override {
    auto& canvas = *static_cast<HostCanvas*>(context);
    for (int32_t y = 0; y < size.height; ++y)
      for (int32_t x = 0; x < size.width; ++x) {
        const uint32_t* source = pixelOf(canvas, from.left + x * from.width() / size.width,
                                         from.top + y * from.height() / size.height);
        *pixelOf(canvas_, x, y) = source ? *source : 0;
      }
    return true;
  }
  void give(void* context, const WinRect& to, WinSize size) override {
    auto& canvas = *static_cast<HostCanvas*>(context);
    for (int32_t y = 0; y < to.height(); ++y)
      for (int32_t x = 0; x < to.width(); ++x)
        if (uint32_t* target = pixelOf(canvas, to.left + x, to.top + y))
          *target = *pixelOf(canvas_, x * size.width / to.width(), y * size.height / to.height());
  }

 private:
  HostCanvas canvas_;
};

} // namespace

bool readIconPixels(void* icon, WinIconPixels& pixels) {
  if (!icon || HostFaults::fails(HostFaults::Query)) return false;
  const auto& source = *static_cast<const HostIcon*>(icon);
  if (!pixels.setSize(source.size)) return false;
  std::copy(source.colours.begin(), source.colours.end(), pixels.colours());
  std::copy(source.mask.begin(), source.mask.end(), pixels.mask());
  return true;
}

std::unique_ptr<WinPoolSurface> WinPoolSurface::make() {
  return std::make_unique<Surface>();
}

} // namespace WinLayer
