#include "app/GuiButtonLayout.h"

#include <algorithm>

namespace AppLayer {

namespace {

constexpr int32_t BothMargins = 2 * GuiButtonLayout::Margin;

// Above or left of the inner rectangle when the content is greater.
int32_t centred(int32_t start, int32_t room, int32_t extent) {
  return start + (room - extent) / 2;
}

} // namespace

bool GuiButtonLayout::showsIcon(const JobButtonUnit& unit) {
  return (unit.flags & JobButtonUnit::HasIcon) != 0;
}

bool GuiButtonLayout::showsTitle(const JobButtonUnit& unit) {
  return (unit.flags & JobButtonUnit::ShowTitle) != 0;
}

WinRect GuiButtonLayout::rectOf(const JobButtonUnit& unit) {
  const JobLayer::JobRectangle& area = unit.rectangle;
  return {area.left, area.top, area.right, area.bottom};
}

void GuiButtonLayout::measureUnit(JobButtonUnit& unit, const GuiTextMeasure& measure) const {
  if (!unit.isUsable()) {
    unit.width = unit.height = 0;
    return;
  }
  if (showsTitle(unit)) {
    const WinSize text = measure(unit.title);
    unit.width = showsIcon(unit) ? text.width + IconGap + iconSize : text.width;
    unit.height = text.height;
  } else if (showsIcon(unit)) {
    unit.width = unit.height = iconSize;
  }
}

void GuiButtonLayout::measureAll(const JobButtonList& buttons,
                                 const GuiTextMeasure& measure) const {
  for (JobButtonUnit& unit : buttons.elements()) measureUnit(unit, measure);
}

// What a unit takes in the direction of the layout, and what all units take across it.
WinSize GuiButtonLayout::extentOf(const JobButtonUnit& unit, int32_t columnWidth) const {
  WinSize extent = horizontal ? WinSize{unit.width + BothMargins, iconSize + BothMargins}
                              : WinSize{columnWidth, iconSize + BothMargins};
  int32_t& along = horizontal ? extent.width : extent.height;
  if ((unit.flags & JobButtonUnit::IsHidden) != 0)
    along = 0;
  else if ((unit.flags & JobButtonUnit::IsSeparator) != 0)
    along = separator;
  return extent;
}

WinSize GuiButtonLayout::arrange(const JobButtonList& buttons) const {
  int32_t widest = 0;
  for (const JobButtonUnit& unit : buttons.elements()) widest = std::max(widest, unit.width);
  WinPoint at;
  for (JobButtonUnit& unit : buttons.elements()) {
    const WinSize extent = extentOf(unit, widest + BothMargins);
    unit.rectangle = {at.x, at.y, at.x + extent.width, at.y + extent.height};
    (horizontal ? at.x : at.y) += horizontal ? extent.width : extent.height;
  }
  return horizontal ? WinSize{at.x, iconSize + BothMargins} : WinSize{widest + BothMargins, at.y};
}

WinSize GuiButtonLayout::seamlessSize(const JobButtonList& buttons) {
  WinSize size;
  for (const JobButtonUnit& unit : buttons.elements()) {
    const WinRect area = rectOf(unit);
    const bool isBelow = area.left == 0 && area.top == size.height && area.right == size.width;
    const bool isBeside = area.top == 0 && area.left == size.width && area.bottom == size.height;
    const bool isFirst = size == WinSize{} && area.left == 0 && area.top == 0;
    if (!isBelow && !isBeside && !isFirst) return {};
    size = {area.right, area.bottom};
  }
  return size;
}

int32_t GuiButtonLayout::hitTest(const JobButtonList& buttons, WinPoint point) {
  int32_t index = 0;
  for (const JobButtonUnit& unit : buttons.elements()) {
    if (rectOf(unit).holds(point)) return index;
    ++index;
  }
  return -1;
}

GuiButtonLayout::Content GuiButtonLayout::contentOf(const JobButtonUnit& unit) const {
  const WinRect inner = rectOf(unit).shrunkBy(Margin);
  const bool icon = showsIcon(unit);
  const bool title = showsTitle(unit);
  const WinSize size = title ? WinSize{unit.width, unit.height} : WinSize{iconSize, iconSize};
  const int32_t left = align == 1   ? centred(inner.left, inner.width(), size.width)
                       : align == 2 ? inner.right - size.width
                                    : inner.left;
  const int32_t top = centred(inner.top, inner.height(), size.height);
  const int32_t iconTop = centred(inner.top, inner.height(), iconSize);
  Content content;
  if (icon) content.icon = {left, iconTop, left + iconSize, iconTop + iconSize};
  if (title)
    content.text = {icon ? left + iconSize + IconGap : left, top, left + size.width,
                    top + size.height};
  return content;
}

} // namespace AppLayer
