// The platform's button is only the window: it never sees the left button or the keys, which are
// for the cell and not for the whole. The mouse is captured while the button is down, so that a
// release elsewhere is noticed and chooses nothing.
#include "win/WinRadioButton.h"

#include "raw/RawNumber.h"
#include "win/WinDialog.h"
#include "win/WinText.h"

#include <algorithm>

namespace WinLayer {

using RawLayer::RawLabelUnit;

namespace {

WinPoint pointOf(LPARAM lParam) {
  return {static_cast<int16_t>(LOWORD(lParam)), static_cast<int16_t>(HIWORD(lParam))};
}

WinRect extentOf(HDC dc, const RawString& text) {
  constexpr int32_t Limit = 0x7FFF;
  return measureText(dc, text.isEmpty() ? "A"_text : text, {0, 0, Limit, Limit}, textFormat(0));
}

void drawMiddle(HDC dc, const RawString& text, const WinRect& box, uint16_t fitFlags) {
  const UINT format = textFormat(fitFlags);
  const int32_t height = measureText(dc, text, box, format).height();
  drawText(dc, text, alignedInBox(box, height, WinViewFitting::TextMiddle), format);
}

} // namespace

WinRadioButtonBody::WinRadioButtonBody() {
  className = "BUTTON"_text;
  style = WS_CHILD | WS_VISIBLE | BS_OWNERDRAW;
  margins = WinButtonDraw::Margins;
}

void WinRadioButtonBody::SetUp(const RawLayer::RawLabelList& labels, int32_t& edited) {
  cells = labels;
  value = &edited;
  current = 0;
  int32_t index = 0;
  for (const RawLabelUnit& cell : cells.elements()) {
    if (cell.value == edited) {
      current = index;
      break;
    }
    ++index;
  }
}

// --- Where the cells are

void WinRadioButtonBody::MeasureText(WinRect& area) {
  const WinWindowDc dc(window);
  const WinSelect selected(dc.get(), fontHandle());
  const int32_t around = margins.left + margins.right;
  const RawString title = GetTitle();
  const WinRect titleExtent = extentOf(dc.get(), title);
  area = {0, 0, 0, titleExtent.height()};
  firstLeft = title.isEmpty() ? 0 : titleExtent.width() + around;
  area.right = firstLeft;
  widths.clear();
  for (const RawLabelUnit& cell : cells.elements()) {
    const WinRect extent = extentOf(dc.get(), cell.label);
    const int32_t width = cell.label.isEmpty() ? 0 : extent.width();
    widths.append({width + around, extent.height()});
    area.right += width + around;
    area.bottom = std::max(area.bottom, extent.height());
  }
  // The margins are those of the cells, and not added once more around the row.
  area.right = std::max(area.right - around, 0);
}

WinRect WinRadioButtonBody::cellRect(int32_t index) const {
  int32_t left = firstLeft;
  for (int32_t i = 0; i < index; ++i) left += widths.at(i).width;
  return {left, 0, left + widths.at(index).width, clientRect().bottom};
}

int32_t WinRadioButtonBody::cellAt(int32_t x) const {
  for (int32_t i = 0; i < widths.count(); ++i) {
    const WinRect cell = cellRect(i);
    if (x >= cell.left && x < cell.right) return i;
  }
  return -1;
}

bool WinRadioButtonBody::isEnabled(int32_t index) const {
  return index >= 0 && index < cells.count() && (!enabledCells || enabledCells[index]);
}

// --- Input

int32_t WinRadioButtonBody::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_DRAWITEM:
    paint(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    return 1;
  case WM_ERASEBKGND:
    return 1;
  case WM_LBUTTONDOWN:
    onPress(pointOf(lParam));
    return 0;
  case WM_LBUTTONUP:
    onRelease(pointOf(lParam));
    return 0;
  case WM_LBUTTONDBLCLK:
    onDoubleClick(pointOf(lParam));
    return 0;
  case WM_CAPTURECHANGED:
    pressed = false;
    invalidate();
    return WinNotHandled;
  case WM_SETFOCUS:
    if (current < 0 || current >= cells.count()) current = 0;
    [[fallthrough]];
  case WM_KILLFOCUS:
    invalidate();
    return WinNotHandled;
  case WM_KEYDOWN:
    if (onKey(wParam)) return 0;
    break;
  default:
    break;
  }
  return WinView::OnMessage(message, wParam, lParam);
}

void WinRadioButtonBody::onPress(WinPoint point) {
  const int32_t cell = readOnly ? -1 : cellAt(point.x);
  if (isEnabled(cell)) {
    current = cell;
    pressed = true;
    writeValue();
    SetCapture(window);
  }
  SetFocus(window);
  invalidate();
}

void WinRadioButtonBody::onRelease(WinPoint) {
  if (!pressed) return;
  pressed = false;
  ReleaseCapture();
  invalidate();
}

void WinRadioButtonBody::onDoubleClick(WinPoint point) {
  onPress(point);
}

bool WinRadioButtonBody::onKey(WPARAM key) {
  switch (key) {
  case VK_LEFT:
  case VK_RIGHT:
    current = std::clamp(current + (key == VK_LEFT ? -1 : 1), 0, std::max(cells.count() - 1, 0));
    invalidate();
    return true;
  case VK_UP:
  case VK_DOWN:
    passFocus(key == VK_UP);
    return true;
  case VK_RETURN:
  case VK_SPACE:
    postCode(WinCodePress);
    return true;
  default:
    return false;
  }
}

int32_t WinRadioButtonBody::OnChildNotify(uint32_t code) {
  if (code == WinCodePress && !readOnly && isEnabled(current)) {
    writeValue();
    invalidate();
    choose();
  }
  return WinView::OnChildNotify(code);
}

void WinRadioButtonBody::writeValue() {
  const RawLabelUnit* cell = RawLayer::RawLabelList::element(cells.nodeAt(current));
  if (cell && value) *value = cell->value;
}

void WinRadioButtonBody::choose() {
  if (command != 0) postCode(command);
}

// --- Painting

void WinRadioButtonBody::paint(const DRAWITEMSTRUCT& item) {
  const HDC dc = item.hDC;
  const WinSelect selected(dc, fontHandle());
  const int oldMode = SetBkMode(dc, TRANSPARENT);
  const COLORREF oldColour = SetTextColor(dc, windowTextColour());
  WinRect area = rectOf(item.rcItem);
  fillRect(dc, area, dialogColour());
  if (firstLeft > 0)
    drawMiddle(dc, GetTitle(), {margins.left, 0, firstLeft, area.bottom}, TextLeft);
  int32_t index = 0;
  for (const RawLabelUnit& cell : cells.elements()) {
    const WinRect place = cellRect(index);
    const uint32_t flags = flagsOf(index, item.itemState);
    faces_.draw(dc, place, flags);
    SetTextColor(dc, WinButtonDraw::textColour(flags, windowTextColour()));
    drawMiddle(dc, cell.label,
               {place.left + margins.left, place.top, place.right - margins.right, place.bottom},
               TextCentre);
    ++index;
  }
  SetTextColor(dc, oldColour);
  SetBkMode(dc, oldMode);
}

uint32_t WinRadioButtonBody::flagsOf(int32_t index, UINT itemState) const {
  uint32_t flags = 0;
  if (index == 0) flags |= WinButtonDraw::CornerTopLeft | WinButtonDraw::CornerBottomLeft;
  if (index == cells.count() - 1)
    flags |= WinButtonDraw::CornerTopRight | WinButtonDraw::CornerBottomRight;
  if (!isEnabled(index) || (itemState & ODS_DISABLED)) flags |= WinButtonDraw::Disabled;
  if (index != current) return flags;
  if (pressed) return flags | WinButtonDraw::Pressed;
  if (itemState & ODS_FOCUS) return flags | WinButtonDraw::Focused;
  return flags | WinButtonDraw::Checked | checkedFrames;
}

// --- The answer row of a dialog

WinSelectorButton::WinSelectorButton() {
  command = Chosen;
}

int32_t WinSelectorButton::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_COPYDATA) return WinRadioButtonBody::OnMessage(message, wParam, lParam);
  if (value) *value = numberIn(lParam);
  choose();
  return 1;
}

int32_t WinSelectorButton::numberIn(LPARAM copyData) {
  const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(copyData);
  if (!data || !data->lpData) return 0;
  const auto* bytes = static_cast<const char*>(data->lpData);
  const char* end = std::find(bytes, bytes + data->cbData, '\0');
  return RawLayer::toInt(RawString::fromChars(bytes, static_cast<int32_t>(end - bytes)));
}

// The pointer may have left the row: then nothing is chosen.
void WinSelectorButton::onRelease(WinPoint point) {
  const bool isChoice = pressed && clientRect().holds(point);
  WinRadioButtonBody::onRelease(point);
  if (isChoice) choose();
}

void WinSelectorButton::onDoubleClick(WinPoint point) {
  onPress(point);
  if (pressed) choose();
}

} // namespace WinLayer
