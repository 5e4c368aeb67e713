// Pixels of 32 bits: alpha in the top byte, then red, green, blue. A colour is kept as it is, not
// multiplied by its alpha. Pure arithmetic on the caller's arrays; any thread.
#pragma once

#include <cstddef>
#include <cstdint>

namespace WinLayer {

constexpr int32_t winAlpha(uint32_t pixel) {
  return static_cast<int32_t>(pixel >> 24);
}
constexpr int32_t winRed(uint32_t pixel) {
  return static_cast<int32_t>(pixel >> 16 & 0xFF);
}
constexpr int32_t winGreen(uint32_t pixel) {
  return static_cast<int32_t>(pixel >> 8 & 0xFF);
}
constexpr int32_t winBlue(uint32_t pixel) {
  return static_cast<int32_t>(pixel & 0xFF);
}

// Each channel is cut to an integer: what is not above 0 becomes 0, what is at or above 255
// becomes 255.
uint32_t packPixel(double alpha, double red, double green, double blue);

// What a masked pixel of an icon without alpha becomes: nothing to see, and white beneath.
inline constexpr uint32_t WinMaskedPixel = 0x00FFFFFF;

// Gives an icon's colours their alpha, in place. When any of the `count` pixels has an alpha, they
// all stay as they are; otherwise those whose mask is 0 become opaque, all others WinMaskedPixel.
void straightenIcon(uint32_t* colours, const uint32_t* mask, std::size_t count);

// `pixel` over `background`: each colour is divided by 255 without rounding. The alpha of the
// background does not count; the result has alpha 0.
uint32_t blendPixel(uint32_t background, uint32_t pixel);
// The same for a row, onto the background in place.
void blendPixels(uint32_t* background, const uint32_t* pixels, std::size_t count);

} // namespace WinLayer
