#include "win/WinListBoxTarget.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace WinLayer {

namespace {

constexpr int32_t SmallestFont = 6;
constexpr int32_t WheelNotch = 120;
constexpr int32_t DefaultFontHeight = 12;

// The platform's codes of scroll bar messages.
enum ScrollCode : uint32_t {
  LineBack = 0,
  LineOn = 1,
  PageBack = 2,
  PageOn = 3,
  ThumbPosition = 4,
  ThumbTrack = 5,
  ToStart = 6,
  ToEnd = 7,
};

// One axis of the scrolled content.
struct Axis {
  int32_t offset;
  int32_t line;
  int32_t page;
  int32_t limit;
};

int32_t targetOf(const Axis& axis, uint32_t code, int32_t tracked) {
  switch (code) {
  case LineBack:
    return axis.offset - axis.line;
  case LineOn:
    return axis.offset + axis.line;
  case PageBack:
    return axis.offset - axis.page / 2;
  case PageOn:
    return axis.offset + axis.page / 2;
  case ThumbPosition:
  case ThumbTrack:
    return tracked;
  case ToStart:
    return 0;
  case ToEnd:
    return axis.limit;
  default:
    return axis.offset;
  }
}

} // namespace

// --- Rows

WinListBoxItemUnit* WinListBoxTarget::unitAt(int32_t row) {
  if (row == HeaderRow) return &header;
  if (row == FooterRow) return &footer;
  return WinListBoxItemList::element(items.nodeAt(row));
}

int32_t WinListBoxTarget::previousRow(int32_t row) const {
  const int32_t end = row == FooterRow ? items.count() : std::min(row, items.count());
  int32_t found = NoRow;
  int32_t index = 0;
  for (const WinListBoxItemUnit& item : items.elements()) {
    if (index >= end) break;
    if (item.hasExtent()) found = index;
    ++index;
  }
  return found;
}

int32_t WinListBoxTarget::nextRow(int32_t row) const {
  if (row == FooterRow) return NoRow;
  int32_t index = 0;
  for (const WinListBoxItemUnit& item : items.elements()) {
    if (index > row && item.hasExtent()) return index;
    ++index;
  }
  return NoRow;
}

void WinListBoxTarget::clearMarks() {
  for (WinListBoxItemUnit& item : items.elements()) item.mark(false);
  header.mark(false);
  footer.mark(false);
}

void WinListBoxTarget::markAll() {
  for (WinListBoxItemUnit& item : items.elements()) item.mark(true);
}

void WinListBoxTarget::markRange(int32_t from, int32_t to) {
  const auto [low, high] = std::minmax(from, to);
  int32_t index = 0;
  for (WinListBoxItemUnit& item : items.elements()) {
    if (index >= low && index <= high && !item.has(WinListBoxItemUnit::NoExtent)) item.mark(true);
    ++index;
  }
}

void WinListBoxTarget::Clear() {
  cursor = anchor = hotIndex = NoRow;
  contentWidth = contentHeight = 0;
  scrollX = scrollY = 0;
  grid = {};
  items = WinListBoxItemList();
  dirty = 1;
}

// --- Geometry

WinSize WinListBoxTarget::surfaceSize() const {
  if (zoomWidth <= 0 || windowSize.width <= 0) return windowSize;
  return {zoomWidth, windowSize.height * zoomWidth / windowSize.width};
}

bool WinListBoxTarget::fitTo(WinSize client, const WinRect& margins) {
  windowSize = client;
  const WinSize surface = surfaceSize();
  WinRect fitted{margins.left, margins.top, surface.width - margins.right,
                 surface.height - margins.bottom};
  if (hasFlag(HeaderFixed) && header.hasExtent()) fitted.top += header.rect.height();
  return std::exchange(area, fitted) != fitted;
}

WinPoint WinListBoxTarget::surfacePoint(WinPoint point) const {
  if (zoomWidth <= 0 || windowSize.width <= 0) return point;
  return {point.x * zoomWidth / windowSize.width, point.y * zoomWidth / windowSize.width};
}

int32_t WinListBoxTarget::hitTest(WinPoint clientPoint) const {
  const WinPoint point = surfacePoint(clientPoint);
  const WinRect band = headerRect();
  if (point.y >= band.top && point.y < band.bottom) return HeaderRow;
  const int32_t y = point.y - area.top + scrollY;
  const auto isHit = [y](const WinListBoxItemUnit& unit) {
    return unit.hasExtent() && unit.rect.top <= y && y < unit.rect.bottom;
  };
  int32_t index = 0;
  for (const WinListBoxItemUnit& item : items.elements()) {
    if (isHit(item)) return index;
    ++index;
  }
  return isHit(footer) ? FooterRow : NoRow;
}

WinRect WinListBoxTarget::shownRect(const WinRect& row) const {
  return row.movedBy(area.left - scrollX, area.top - scrollY);
}

WinRect WinListBoxTarget::headerRect() const {
  if (!header.hasExtent()) return {};
  const int32_t height = header.rect.height();
  const int32_t top = hasFlag(HeaderFixed) ? area.top - height : area.top - scrollY;
  return {area.left, top, area.right, top + height};
}

int32_t WinListBoxTarget::scrolledHeaderHeight() const {
  return header.hasExtent() && !hasFlag(HeaderFixed) ? header.rect.height() : 0;
}

void WinListBoxTarget::beginPlacing() {
  placedTop_ = scrolledHeaderHeight();
  placedWidth_ = 0;
}

void WinListBoxTarget::place(WinListBoxItemUnit& unit) {
  unit.rect = unit.rect.movedTo(0, placedTop_);
  if (!unit.hasExtent()) return;
  placedTop_ = unit.rect.bottom;
  placedWidth_ = std::max(placedWidth_, unit.rect.right);
}

void WinListBoxTarget::endPlacing() {
  place(footer);
  contentHeight = placedTop_;
  contentWidth = placedWidth_ > 0 ? placedWidth_ : area.width();
}

// --- Scrolling

WinPoint WinListBoxTarget::scrollLimit() const {
  return {std::max(contentWidth - area.width(), 0), std::max(contentHeight - area.height(), 0)};
}

WinPoint WinListBoxTarget::clamped(WinPoint offsets) const {
  const WinPoint limit = scrollLimit();
  return {std::clamp(offsets.x, 0, limit.x), std::clamp(offsets.y, 0, limit.y)};
}

int32_t WinListBoxTarget::offsetFor(const WinRect& row) const {
  const int32_t offset = std::max(scrollY, row.bottom - area.height());
  return std::min(offset, row.top);
}

WinListBoxBar WinListBoxTarget::verticalBar() const {
  const int32_t page = area.height();
  return {std::max(contentHeight, scrollY + page) - 1, page, scrollY};
}

WinListBoxBar WinListBoxTarget::horizontalBar() const {
  const int32_t page = area.width();
  return {std::max(contentWidth, scrollX + page) - 1, page, scrollX};
}

int32_t WinListBoxTarget::verticalTarget(uint32_t code, int32_t tracked) const {
  return targetOf({scrollY, lineStepY, area.height(), scrollLimit().y}, code, tracked);
}

int32_t WinListBoxTarget::horizontalTarget(uint32_t code, int32_t tracked) const {
  return targetOf({scrollX, lineStepX, area.width(), scrollLimit().x}, code, tracked);
}

int32_t WinListBoxTarget::wheelTarget(int32_t delta) const {
  return scrollY - lineStepY * delta / WheelNotch;
}

int32_t WinListBoxTarget::steppedFontHeight(int32_t height, int32_t direction) {
  const int32_t size = height == 0 ? DefaultFontHeight : std::abs(height);
  const int32_t step = (direction > 0) - (direction < 0);
  const int32_t stepped = size + step;
  if (step == 0 || (step < 0 && stepped < SmallestFont)) return height;
  return height < 0 ? -stepped : stepped;
}

} // namespace WinLayer
