// Painting, messages of the mouse and the keyboard, tips. Whatever runs a script or shows a menu
// is the last thing that its handler does.
#include "app/GuiButtonBox.h"

#include "app/LauncherOptions.h"
#include "job/JobCommandList.h"
#include "raw/RawSystem.h"
#include "win/WinText.h"
#include "win/WindowMetrics.h"

#include <windowsx.h>

#include <cstdlib>

namespace AppLayer {

using JobLayer::JobCommandList;
using JobLayer::JobRectangle;
using WinLayer::WinButtonDraw;
using WinLayer::WinNotHandled;
using WinLayer::WinTipDialog;
using Property = GuiButtonBoxProperty;

namespace {

constexpr uint32_t HoverTime = 500; // milliseconds
constexpr int32_t TipSlack = 5;     // pixels
constexpr int32_t MeasureLimit = 0x7FFF;

WinPoint pointOf(LPARAM lParam) {
  return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

bool isFar(WinPoint a, WinPoint b) {
  return std::abs(a.x - b.x) > TipSlack || std::abs(a.y - b.y) > TipSlack;
}

} // namespace

GuiButtonBox::GuiButtonBox(JobButtonList& buttons)
    : WinEnterControl(static_cast<WinView&>(*this)),
      WinEdgePicker(static_cast<WinView&>(*this), WinLayer::EdgeMove | WinLayer::EdgeSystemMenu),
      painter_(JobLayer::JobIconControl::instance()) {
  className = "BUTTON"_text;
  classKind = SystemClass;
  style = WS_CHILD | WS_VISIBLE | BS_OWNERDRAW;
  extendedStyle = WS_EX_ACCEPTFILES;
  property_.menuHandler = this;
  property_.view = this;
  property_.buttons = &buttons;
  property_.set(Property::TipsEnabled, LauncherOptions::instance().viewTip);
  if (property_.has(Property::TipsEnabled)) hoverTime = HoverTime;
  addHook(static_cast<WinEdgePicker&>(*this));
  addHook(static_cast<WinEnterControl&>(*this));
}

GuiButtonBox::~GuiButtonBox() = default;

// --- Looking things up

GuiButtonLayout GuiButtonBox::layout() {
  const WinLayer::WindowMetrics& metrics = WinLayer::WindowMetrics::instance();
  const LauncherOptions& options = LauncherOptions::instance();
  GuiButtonLayout layout;
  layout.horizontal = options.horizontal;
  layout.iconSize = metrics.buttonIconSize;
  layout.separator = metrics.buttonSeparator;
  layout.align = options.buttonAlign;
  return layout;
}

int32_t GuiButtonBox::hitTest(WinPoint point) const {
  return GuiButtonLayout::hitTest(*property_.buttons, point);
}

JobButtonUnit* GuiButtonBox::current() const {
  return property_.buttons->at(property_.cursor);
}

// All zeros for an index outside the list.
JobRectangle GuiButtonBox::screenRect(int32_t index) const {
  const JobButtonUnit* unit = property_.buttons->at(index);
  if (!unit) return {};
  POINT origin{0, 0};
  ClientToScreen(window, &origin);
  const JobRectangle& area = unit->rectangle;
  return {area.left + origin.x, area.top + origin.y, area.right + origin.x, area.bottom + origin.y};
}

WinPoint GuiButtonBox::pointerInClient() const {
  POINT pointer{};
  GetCursorPos(&pointer);
  ScreenToClient(window, &pointer);
  return {pointer.x, pointer.y};
}

// --- Measuring and painting

void GuiButtonBox::MeasureText(WinRect& area) {
  JobButtonList& buttons = *property_.buttons;
  buttons.setup(JobLayer::JobExecutorPair::executor());
  const WinLayer::WinWindowDc dc(window);
  const WinLayer::WinSelect selected(dc.get(), fontHandle());
  const GuiButtonLayout layout = GuiButtonBox::layout();
  layout.measureAll(buttons, [&](const RawString& title) {
    const WinRect extent = WinLayer::measureText(dc.get(), title.isEmpty() ? "A"_text : title,
                                                 {0, 0, MeasureLimit, MeasureLimit}, DT_NOPREFIX);
    return WinSize{title.isEmpty() ? 0 : extent.width(), extent.height()};
  });
  const WinSize size = layout.arrange(buttons);
  area = {0, 0, size.width, size.height};
}

void GuiButtonBox::paint() {
  PAINTSTRUCT structure{};
  const HDC dc = BeginPaint(window, &structure);
  const WinRect client = clientRect();
  const GuiButtonLayout layout = GuiButtonBox::layout();
  uint32_t look = 0;
  if (property_.has(Property::PressInProgress))
    look = WinButtonDraw::Pressed;
  else if (property_.has(Property::FocusLook))
    look = WinButtonDraw::Focused;
  if (dc && painter_.draw(dc, {*property_.buttons,
                               layout,
                               fontHandle(),
                               {client.width(), client.height()},
                               property_.cursor,
                               look,
                               WinLayer::rectOf(structure.rcPaint)}))
    painter_.copyTo(dc);
  EndPaint(window, &structure);
}

// --- Messages

int32_t GuiButtonBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_PAINT:
    paint();
    return 0;
  case WM_ERASEBKGND:
    return 1;
  case WM_SETFOCUS:
  case WM_KILLFOCUS:
    focusChanged(message == WM_SETFOCUS);
    return 0;
  case WM_LBUTTONDOWN:
  case WM_LBUTTONDBLCLK: // the second of two quick presses
  case WM_RBUTTONDOWN:
  case WM_RBUTTONDBLCLK:
    pressed(pointOf(lParam), message);
    return 0;
  case WM_LBUTTONUP:
    released(pointOf(lParam), "LButton"_text);
    return 0;
  case WM_RBUTTONUP:
    released(pointOf(lParam), "RButton"_text);
    return 0;
  case WM_MOUSEMOVE:
    moved(pointOf(lParam));
    return 0;
  case WM_CAPTURECHANGED:
    if (hasCaptured_ && reinterpret_cast<HWND>(lParam) != window) endPress();
    return 0;
  case WM_KEYDOWN:
    if (keyPressed(static_cast<uint32_t>(wParam), false)) return 0;
    break;
  case WM_SYSKEYDOWN:
    if (keyPressed(static_cast<uint32_t>(wParam), true)) return 0;
    break;
  case WM_DROPFILES:
    dropped(reinterpret_cast<HDROP>(wParam));
    return 0;
  default:
    break;
  }
  return WinView::OnMessage(message, wParam, lParam);
}

void GuiButtonBox::OnDestroyed() {
  hideTip();
}

void GuiButtonBox::focusChanged(bool hasFocus) {
  property_.set(Property::FocusLook, hasFocus);
  if (!hasFocus) endPress();
  invalidate();
}

// --- The mouse

// A press takes the capture, so that a release beside the box is seen too, unless it belongs to the
// edge picker, which drags the window by the first of two quick presses on anything but a button.
void GuiButtonBox::pressed(WinPoint point, UINT message) {
  const bool isRight = message == WM_RBUTTONDOWN || message == WM_RBUTTONDBLCLK;
  const bool drags = message == WM_LBUTTONDOWN && CanMoveAt(clientRect(), point);
  const bool withAlt = RawLayer::isKeyDownNow(VK_MENU);
  property_.cursor = hitTest(point);
  property_.set(withAlt ? Property::FocusLook : Property::PressInProgress, true);
  if (!withAlt && !drags) {
    SetCapture(window);
    hasCaptured_ = true;
  }
  invalidate();
  if (property_.has(Property::FocusLook)) hideTip();
  if (withAlt && isRight && current()) property_.menuHandler->ShowButtonMenu(point);
}

// The face comes back before the script starts.
void GuiButtonBox::released(WinPoint point, const RawString& key) {
  if (!property_.has(Property::PressInProgress)) return;
  property_.cursor = hitTest(point);
  endPress();
  UpdateWindow(window);
  runCurrent(key);
}

void GuiButtonBox::moved(WinPoint point) {
  if (!property_.has(Property::PressInProgress)) return;
  const int32_t hit = hitTest(point);
  if (hit == property_.cursor) return;
  property_.cursor = hit;
  invalidate();
}

void GuiButtonBox::endPress() {
  property_.set(Property::PressInProgress, false);
  const bool captured = hasCaptured_;
  hasCaptured_ = false;
  if (captured && GetCapture() == window) ReleaseCapture();
  invalidate();
}

void GuiButtonBox::runCurrent(const RawString& key) {
  const JobButtonUnit* unit = current();
  if (!unit || !unit->isUsable()) return;
  JobCommandList::instance().RunButton(property_.cursor, key, screenRect(property_.cursor));
}

// --- The keyboard

bool GuiButtonBox::keyPressed(uint32_t virtualKey, bool withAlt) {
  const GuiButtonAction action =
      buttonActionOf(virtualKey, withAlt, LauncherOptions::instance().horizontal);
  switch (action) {
  case GuiButtonAction::None:
    return false;
  case GuiButtonAction::Run:
    runCurrent("LButton"_text);
    break;
  case GuiButtonAction::ShowMenu: {
    const JobButtonUnit* unit = current();
    const JobRectangle area = unit ? unit->rectangle : JobRectangle{};
    property_.menuHandler->ShowButtonMenu({area.right, area.top});
    break;
  }
  case GuiButtonAction::Delete:
    deleteCurrent();
    break;
  case GuiButtonAction::MoveUp:
    moveCurrent(-1);
    break;
  case GuiButtonAction::MoveDown:
    moveCurrent(1);
    break;
  default:
    if (const int32_t next = buttonCursorAfter(*property_.buttons, property_.cursor, action);
        next >= 0)
      property_.cursor = next;
    invalidate();
  }
  return true;
}

// --- Tips

void GuiButtonBox::hideTip() {
  if (property_.has(Property::TipsEnabled) && tip_) tip_->HideTip();
}

void GuiButtonBox::OnMouseLeave(WinPoint) {
  if (!property_.has(Property::FocusLook)) hideTip();
}

bool GuiButtonBox::OnMouseHover(WinPoint point) {
  if (!property_.has(Property::TipsEnabled) || property_.has(Property::FocusLook)) return false;
  const JobButtonUnit* unit = property_.buttons->at(hitTest(point));
  if (!unit || !unit->isUsable()) return false;
  tipPoint_ = point;
  if (!tip_) tip_ = std::make_unique<WinTipDialog>();
  tip_->ShowTip(unit->tip);
  track();
  return false;
}

// Asked only behind a hover that was answered with true.
bool GuiButtonBox::OnMouseMoveTracked(WinPoint point) {
  if (!isFar(point, tipPoint_)) return true;
  hideTip();
  track();
  return false;
}

// --- The edges

bool GuiButtonBox::CanMoveAt(const WinRect&, WinPoint point) {
  const JobButtonUnit* unit = property_.buttons->at(hitTest(point));
  return !unit || (unit->flags & JobButtonUnit::IsSeparator) != 0;
}

bool GuiButtonBox::CanOpenSystemMenuAt(const WinRect& area, WinPoint point) {
  return CanMoveAt(area, point);
}

} // namespace AppLayer
