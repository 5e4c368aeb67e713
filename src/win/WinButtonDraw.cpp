// A face is painted as rows of pixels: with corners of radius 3 a row is a span, and the outline is
// the ends of the spans with the first and the last of them. That is what the platform's own arcs
// of this radius give, without its drawing objects.
#include "win/WinButtonDraw.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace WinLayer {

namespace {

constexpr uint32_t FrameLine = 0x808080;
constexpr uint32_t DisabledText = 0xA0A0A0;
constexpr uint32_t CheckedUpperFrame = 0xFF27FF;
constexpr uint32_t CheckedLowerFrame = 0xFF00FF;
constexpr uint32_t UpperFillParts = 10;
constexpr uint32_t LowerFillParts = 25;
constexpr uint32_t LowerLineParts = 40;
constexpr int32_t GlossSize = 5;
constexpr int32_t GlossInset = 2;

template <class Change>
uint32_t eachChannel(uint32_t colour, Change change) {
  return change(colour & 0xFF) | change(colour >> 8 & 0xFF) << 8 |
         change(colour >> 16 & 0xFF) << 16;
}

// From blue in the high byte to a pixel with red there.
constexpr uint32_t pixelOf(uint32_t colour) {
  return (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
}

// How far a row stays away from the side, counted from its corner.
constexpr std::array<int32_t, WinButtonDraw::CornerRadius> CornerInsets{2, 1, 0};

// The part of a face that is being painted: a rectangle with rounded corners.
class Shape {
 public:
  Shape(uint32_t* pixels, WinSize size, uint32_t corners)
      : pixels_(pixels), stride_(size.width), rect_{0, 0, size.width, size.height},
        corners_(corners) {}

  [[nodiscard]] bool isEmpty() const { return rect_.width() <= 0 || rect_.height() <= 0; }
  [[nodiscard]] const WinRect& rect() const { return rect_; }
  void shrink(int32_t left, int32_t top, int32_t right, int32_t bottom) {
    rect_ = {rect_.left + left, rect_.top + top, rect_.right - right, rect_.bottom - bottom};
  }

  [[nodiscard]] int32_t rowLeft(int32_t y) const {
    return rect_.left + inset(y, WinButtonDraw::CornerTopLeft, WinButtonDraw::CornerBottomLeft);
  }
  [[nodiscard]] int32_t rowRight(int32_t y) const {
    return rect_.right - inset(y, WinButtonDraw::CornerTopRight, WinButtonDraw::CornerBottomRight);
  }
  [[nodiscard]] uint32_t* at(int32_t x, int32_t y) const { return pixels_ + y * stride_ + x; }

  void fill(uint32_t upper, uint32_t lower) const {
    const int32_t middle = rect_.top + rect_.height() / 2;
    for (int32_t y = rect_.top; y < rect_.bottom; ++y) fillRow(y, y < middle ? upper : lower);
  }

  // Where two sides meet squarely the lower colour has the corner.
  void outline(uint32_t upper, uint32_t lower) const {
    if (isEmpty()) return;
    fillRow(rect_.top, upper);
    for (int32_t y = rect_.top; y < rect_.bottom; ++y)
      if (rowLeft(y) < rowRight(y)) *at(rowLeft(y), y) = pixelOf(upper);
    for (int32_t y = rect_.top; y < rect_.bottom; ++y)
      if (rowLeft(y) < rowRight(y)) *at(rowRight(y) - 1, y) = pixelOf(lower);
    fillRow(rect_.bottom - 1, lower);
  }

 private:
  void fillRow(int32_t y, uint32_t colour) const {
    if (rowLeft(y) < rowRight(y)) std::fill(at(rowLeft(y), y), at(rowRight(y), y), pixelOf(colour));
  }
  [[nodiscard]] int32_t inset(int32_t y, uint32_t topCorner, uint32_t bottomCorner) const {
    const auto of = [this](uint32_t corner, int32_t row) {
      return (corners_ & corner) && row < WinButtonDraw::CornerRadius
                 ? CornerInsets[static_cast<size_t>(row)]
                 : 0;
    };
    return std::max(of(topCorner, y - rect_.top), of(bottomCorner, rect_.bottom - 1 - y));
  }

  uint32_t* pixels_;
  int32_t stride_;
  WinRect rect_;
  uint32_t corners_;
};

// How much of each pixel of the highlight's corner a disc covers, in sixteenths: each pixel is
// looked at in four by four places, so that the edge comes out soft.
using Coverage = std::array<int32_t, GlossSize * GlossSize>;

constexpr Coverage coverageOfDisc(int32_t inset) {
  constexpr int32_t Places = 4;
  constexpr int32_t Centre = GlossSize * Places; // in half places
  const int32_t radius = Centre - 2 * inset * Places;
  Coverage coverage{};
  for (int32_t y = 0; y < GlossSize * Places; ++y)
    for (int32_t x = 0; x < GlossSize * Places; ++x) {
      const int32_t dx = 2 * x + 1 - Centre;
      const int32_t dy = 2 * y + 1 - Centre;
      if (dx * dx + dy * dy <= radius * radius)
        ++coverage[static_cast<size_t>(y / Places * GlossSize + x / Places)];
    }
  return coverage;
}

uint32_t whitened(uint32_t pixel, int32_t parts, int32_t of) {
  return eachChannel(pixel, [parts, of](uint32_t value) {
    return value + (255 - value) * static_cast<uint32_t>(parts) / static_cast<uint32_t>(of);
  });
}

// The large disc lets half of the face through, the small one within nothing: each is seen.
void paintGloss(const Shape& shape) {
  static constexpr Coverage large = coverageOfDisc(0);
  static constexpr Coverage small = coverageOfDisc(GlossInset);
  constexpr int32_t Whole = 16;
  const WinRect& rect = shape.rect();
  for (int32_t y = rect.top; y < std::min(rect.top + GlossSize, rect.bottom); ++y)
    for (int32_t x = shape.rowLeft(y); x < std::min(rect.left + GlossSize, shape.rowRight(y));
         ++x) {
      const auto place = static_cast<size_t>((y - rect.top) * GlossSize + x - rect.left);
      uint32_t& pixel = *shape.at(x, y);
      pixel = whitened(whitened(pixel, large[place], 2 * Whole), small[place], Whole);
    }
}

// Whether the middle of a place lies in the triangle that fills a rectangle and points down.
bool isInArrow(const WinRect& rect, int32_t x, int32_t y) {
  if (x < rect.left || x >= rect.right || y < rect.top || y >= rect.bottom) return false;
  const int32_t aside = 2 * x + 1 - rect.left - rect.right;
  const int32_t below = 2 * (rect.bottom - y) - 1;
  return std::abs(aside) * 2 * rect.height() <= rect.width() * below;
}

} // namespace

uint32_t WinButtonDraw::darkened(uint32_t colour, uint32_t parts) {
  return eachChannel(colour, [parts](uint32_t value) { return value - (value * parts >> 8); });
}

uint32_t WinButtonDraw::lightened(uint32_t colour) {
  return eachChannel(colour, [](uint32_t value) { return value + ((255 - value) >> 1); });
}

WinButtonFace WinButtonDraw::face(uint32_t drawFlags, uint32_t dialogColour) {
  const uint32_t upperFill = darkened(dialogColour, UpperFillParts);
  const uint32_t lowerFill = darkened(dialogColour, LowerFillParts);
  WinButtonFace face;
  if (drawFlags & Disabled)
    face = {0xC0C0C0, 0xE0E0E0, 0xC0C0C0, 0xA0A0A0, upperFill, upperFill, 0, 0, false};
  else if (drawFlags & Pressed)
    face = {0x000000, 0x606060, 0x808080, 0x404040, upperFill, lowerFill, 0, 0, false};
  else if (drawFlags & Focused)
    face = {0xFF0000, 0xFFD0A0, 0xE0A060, 0xF00000, upperFill, lowerFill, 0, 0, true};
  else
    face = {0x808080,
            lightened(dialogColour),
            darkened(dialogColour, LowerLineParts),
            0x000000,
            upperFill,
            lowerFill,
            0,
            0,
            true};
  const bool isChecked = (drawFlags & Checked) != 0;
  face.upperFrame = isChecked ? CheckedUpperFrame : face.upperFill;
  face.lowerFrame = isChecked ? CheckedLowerFrame : face.lowerFill;
  return face;
}

uint32_t WinButtonDraw::textColour(uint32_t drawFlags, uint32_t windowText) {
  return drawFlags & Disabled ? DisabledText : windowText;
}

void WinButtonDraw::paint(uint32_t* pixels, WinSize size, uint32_t drawFlags,
                          uint32_t dialogColour) {
  if (size.width <= 0 || size.height <= 0) return;
  std::fill_n(pixels, static_cast<size_t>(size.width) * static_cast<size_t>(size.height),
              pixelOf(dialogColour));
  const WinButtonFace colours = face(drawFlags, dialogColour);
  Shape shape(pixels, size, drawFlags & CornersAll);
  if (drawFlags & FramesAll) {
    shape.fill(colours.upperFrame, colours.lowerFrame);
    shape.outline(FrameLine, FrameLine);
    const auto by = [drawFlags](uint32_t side) { return drawFlags & side ? FrameWidth : 0; };
    shape.shrink(by(FrameLeft), by(FrameTop), by(FrameRight), by(FrameBottom));
    if (shape.isEmpty()) return;
  }
  shape.fill(colours.upperFill, colours.lowerFill);
  Shape inner = shape;
  inner.shrink(1, 1, 1, 1);
  inner.outline(colours.innerUpper, colours.innerLower);
  shape.outline(colours.outerUpper, colours.outerLower);
  if (colours.hasGloss) paintGloss(shape);
}

void WinButtonDraw::paintArrow(uint32_t* pixels, WinSize size) {
  constexpr int32_t Places = 5; // in each direction of a pixel
  constexpr int32_t CoreInset = 3;
  constexpr uint32_t Core = 0x80;
  const WinRect whole{0, 0, size.width * Places, size.height * Places};
  const WinRect core = whole.shrunkBy(CoreInset);
  for (int32_t y = 0; y < size.height; ++y)
    for (int32_t x = 0; x < size.width; ++x) {
      uint32_t covered = 0;
      uint32_t inCore = 0;
      for (int32_t place = 0; place < Places * Places; ++place) {
        const int32_t placeX = x * Places + place % Places;
        const int32_t placeY = y * Places + place / Places;
        if (isInArrow(whole, placeX, placeY)) ++covered;
        if (isInArrow(core, placeX, placeY)) ++inCore;
      }
      const uint32_t grey = Core * inCore / (Places * Places);
      *pixels++ = 255 * covered / (Places * Places) << 24 | grey << 16 | grey << 8 | grey;
    }
}

} // namespace WinLayer
