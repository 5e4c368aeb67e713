// Memory and the platform take turns as rarely as possible: faces and icons of many buttons are
// drawn first, their titles behind them in one go. A title that stands out of its own button has to
// be drawn before the next face, which then covers it.
#include "app/GuiButtonPainter.h"

#include "win/WinText.h"
#include "win/WinViewParts.h"

#include <algorithm>

namespace AppLayer {

using WinLayer::WinSelect;
using WinLayer::WinViewStyle;

namespace {

constexpr UINT TitleFormat = DT_NOPREFIX | DT_CENTER;

bool standsInside(const WinRect& inner, const WinRect& outer) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

bool overlaps(const WinRect& a, const WinRect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// A title of one line and without tabs needs none of the platform's formatting. It is not clipped
// to its measured width either: some fonts' last letters stand out of it by a pixel.
bool isPlainLine(const RawString& wide) {
  const char16_t* units = wide.wide();
  return std::none_of(units, units + wide.length(), [](char16_t unit) { return unit < u' '; });
}

} // namespace

bool GuiButtonPainter::draw(HDC target, const Frame& frame) {
  if (!buffer_.reserve(target, frame.client)) return false;
  const WinSelect font(buffer_.dc(), frame.font);
  SetBkMode(buffer_.dc(), TRANSPARENT);
  SetTextColor(buffer_.dc(), WinViewStyle::windowTextColour());
  GuiPixelBuffer::flush();
  drawGround(frame);
  int32_t index = 0;
  for (const JobButtonUnit& unit : frame.buttons.elements()) {
    if (isWanted(frame, unit)) drawUnit(frame, unit, index == frame.cursor ? frame.cursorLook : 0);
    ++index;
  }
  drawTitles();
  return true;
}

// Faces hide what is beneath them, so only the rest is filled, unless the list has changed since it
// was laid out.
void GuiButtonPainter::drawGround(const Frame& frame) {
  const GuiPixelView view = buffer_.view();
  const WinSize client = frame.client;
  const uint32_t ground = GuiPixelBuffer::pixelOf(WinViewStyle::dialogColour());
  const WinSize covered = GuiButtonLayout::seamlessSize(frame.buttons);
  view.fill({covered.width, 0, client.width, client.height}, ground);
  view.fill({0, covered.height, client.width, client.height}, ground);
  for (const JobButtonUnit& unit : frame.buttons.elements())
    if (!unit.isUsable()) view.fill(GuiButtonLayout::rectOf(unit), ground);
}

// A title can stand out of its button.
bool GuiButtonPainter::isWanted(const Frame& frame, const JobButtonUnit& unit) {
  return unit.isUsable() && (overlaps(GuiButtonLayout::rectOf(unit), frame.part) ||
                             (GuiButtonLayout::showsTitle(unit) &&
                              overlaps(frame.layout.contentOf(unit).text, frame.part)));
}

void GuiButtonPainter::drawUnit(const Frame& frame, const JobButtonUnit& unit, uint32_t look) {
  const WinRect area = GuiButtonLayout::rectOf(unit);
  const WinSize size{area.width(), area.height()};
  if (const uint32_t* face = faces_.pixels(size, look))
    buffer_.view().copy({area.left, area.top}, face, size);
  const GuiButtonLayout::Content content = frame.layout.contentOf(unit);
  const WinRect& icon = content.icon;
  if (GuiButtonLayout::showsIcon(unit))
    icons_.draw(buffer_, unit.icon, icon,
                {look, size, {icon.left - area.left, icon.top - area.top}});
  if (!GuiButtonLayout::showsTitle(unit)) return;
  titles_.push_back({&unit.title, content.text});
  if (!standsInside(content.text, area)) drawTitles();
}

// --- Titles

void GuiButtonPainter::drawTitles() {
  for (const PendingTitle& title : titles_) drawTitle(title);
  titles_.clear();
  GuiPixelBuffer::flush();
}

void GuiButtonPainter::drawTitle(const PendingTitle& title) const {
  const RawString wide = title.title->shareAs(RawLayer::EncodingWide);
  if (isPlainLine(wide)) {
    ExtTextOutW(buffer_.dc(), title.area.left, title.area.top, 0, nullptr,
                WinLayer::wideUnits(wide), static_cast<UINT>(wide.length()), nullptr);
  } else {
    WinLayer::drawText(buffer_.dc(), *title.title, title.area, TitleFormat);
  }
}

} // namespace AppLayer
