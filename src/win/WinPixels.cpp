#include "win/WinPixels.h"

#include <algorithm>

#if defined(__SSE2__) || defined(_M_X64)
#define WIN_PIXELS_SSE2
#include <emmintrin.h>
#endif

namespace WinLayer {

namespace {

constexpr uint32_t Opaque = 0xFF000000;
constexpr uint32_t ColourBits = 0x00FFFFFF;
constexpr uint32_t Whole = 255; // of an alpha

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

void blendOnto(uint32_t& background, uint32_t pixel) {
  const uint32_t alpha = pixel >> 24;
  // Most pixels of an icon are one or the other.
  if (alpha == 0)
    background &= ColourBits;
  else if (alpha == Whole)
    background = pixel & ColourBits;
  else
    background = blendPixel(background, pixel);
}

#ifdef WIN_PIXELS_SSE2

// Two pixels with their channels in 16 bits each, by the same arithmetic.
__m128i blendTwo(__m128i background, __m128i pixels) {
  const __m128i alpha = _mm_shufflehi_epi16(_mm_shufflelo_epi16(pixels, 0xFF), 0xFF);
  const __m128i rest = _mm_sub_epi16(_mm_set1_epi16(Whole), alpha);
  const __m128i sum =
      _mm_add_epi16(_mm_mullo_epi16(background, rest), _mm_mullo_epi16(pixels, alpha));
  const __m128i carried =
      _mm_add_epi16(_mm_add_epi16(sum, _mm_set1_epi16(1)), _mm_srli_epi16(sum, 8));
  return _mm_srli_epi16(carried, 8);
}

__m128i blendFour(__m128i background, __m128i pixels) {
  const __m128i alpha = _mm_srli_epi32(pixels, 24);
  const auto isEach = [&](int32_t value) {
    return _mm_movemask_epi8(_mm_cmpeq_epi32(alpha, _mm_set1_epi32(value))) == 0xFFFF;
  };
  if (isEach(0)) return background;
  if (isEach(Whole)) return pixels;
  const __m128i zero = _mm_setzero_si128();
  return _mm_packus_epi16(
      blendTwo(_mm_unpacklo_epi8(background, zero), _mm_unpacklo_epi8(pixels, zero)),
      blendTwo(_mm_unpackhi_epi8(background, zero), _mm_unpackhi_epi8(pixels, zero)));
}

// Gives how many pixels were done, in fours.
std::size_t blendFours(uint32_t* background, const uint32_t* pixels, std::size_t count) {
  const __m128i colours = _mm_set1_epi32(ColourBits);
  std::size_t i = 0;
  for (; i + 4 <= count; i += 4) {
    auto* place = reinterpret_cast<__m128i*>(background + i);
    const __m128i blended = blendFour(
        _mm_loadu_si128(place), _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels + i)));
    _mm_storeu_si128(place, _mm_and_si128(blended, colours));
  }
  return i;
}

#else

std::size_t blendFours(uint32_t*, const uint32_t*, std::size_t) {
  return 0;
}

#endif

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
  for (std::size_t i = blendFours(background, pixels, count); i < count; ++i)
    blendOnto(background[i], pixels[i]);
}

} // namespace WinLayer
