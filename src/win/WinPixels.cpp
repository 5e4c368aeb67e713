#include "win/WinPixels.h"

#include <algorithm>

namespace WinLayer {

namespace {

constexpr uint32_t Opaque = 0xFF000000;
constexpr uint32_t ColourBits = 0x00FFFFFF;

uint32_t packChannel(double value) {
  if (!(value > 0)) return 0; // no number at all lands here, too
  return value >= 255 ? 255 : static_cast<uint32_t>(value);
}

// Three colours are worked on at once, each in 16 bits of a number of its own.
constexpr uint64_t OneInEach = 0x0000000100010001;
constexpr uint64_t LowBytes = 0x000000FF00FF00FF;

constexpr uint64_t spread(uint64_t pixel) {
  return (pixel & 0xFF) | (pixel & 0xFF00) << 8 | (pixel & 0xFF0000) << 16;
}
constexpr uint32_t gather(uint64_t colours) {
  return static_cast<uint32_t>((colours & 0xFF) | (colours >> 8 & 0xFF00) |
                               (colours >> 16 & 0xFF0000));
}
// v / 255 is (v + 1 + v / 256) / 256 for each v up to 255 * 255.
constexpr uint64_t divideBy255(uint64_t colours) {
  return (colours + OneInEach + (colours >> 8 & LowBytes)) >> 8 & LowBytes;
}

} // namespace

uint32_t packPixel(double alpha, double red, double green, double blue) {
  return packChannel(alpha) << 24 | packChannel(red) << 16 | packChannel(green) << 8 |
         packChannel(blue);
}

void straightenIcon(uint32_t* colours, const uint32_t* mask, std::size_t count) {
  if (std::any_of(colours, colours + count, [](uint32_t pixel) { return winAlpha(pixel) != 0; }))
    return;
  for (std::size_t i = 0; i < count; ++i)
    colours[i] = mask[i] == 0 ? colours[i] | Opaque : WinMaskedPixel;
}

uint32_t blendPixel(uint32_t background, uint32_t pixel) {
  const uint64_t alpha = pixel >> 24;
  return gather(divideBy255(spread(background) * (255 - alpha) + spread(pixel) * alpha));
}

void blendPixels(uint32_t* background, const uint32_t* pixels, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const uint32_t alpha = pixels[i] >> 24;
    // Most pixels of an icon are one or the other.
    if (alpha == 0)
      background[i] &= ColourBits;
    else if (alpha == 255)
      background[i] = pixels[i] & ColourBits;
    else
      background[i] = blendPixel(background[i], pixels[i]);
  }
}

} // namespace WinLayer
