// While the window is moved it stays under the pointer, so the point in its client where the drag
// took hold stays what the next step is measured from.
#include "win/WinEdgePicker.h"

#include "win/WinDialog.h"

namespace WinLayer {

namespace {

// Where a maximised window of the system's lies: its frame is beyond the screen.
constexpr int32_t MaximisedPlace = -8;
constexpr UINT Disabled = MF_BYCOMMAND | MF_DISABLED | MF_GRAYED;
constexpr WPARAM SizeNormal = 0;
constexpr WPARAM SizeMaximised = 2;

WinPoint pointOf(LPARAM lParam) {
  return {static_cast<int16_t>(LOWORD(lParam)), static_cast<int16_t>(HIWORD(lParam))};
}

WinRect rectOfWindow(HWND window) {
  RECT area{};
  GetWindowRect(window, &area);
  return rectOf(area);
}

void move(HWND window, const WinRect& rect) {
  MoveWindow(window, rect.left, rect.top, rect.width(), rect.height(), TRUE);
}

POINT onScreen(HWND window, WinPoint point) {
  POINT result{point.x, point.y};
  ClientToScreen(window, &result);
  return result;
}

// The children paint themselves; painted over meanwhile they would flicker.
void excludeChildren(HDC dc, HWND window) {
  for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    if (!IsWindowVisible(child)) continue;
    RECT area{};
    GetWindowRect(child, &area);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&area), 2);
    ExcludeClipRect(dc, area.left, area.top, area.right, area.bottom);
  }
}

void drawLines(HDC dc, const std::array<WinEdgeLine, 4>& lines, COLORREF colour) {
  const WinPenOwner pen(CreatePen(PS_SOLID, 1, colour));
  const WinSelect selected(dc, pen.get());
  for (const WinEdgeLine& each : lines) {
    MoveToEx(dc, each.from.x, each.from.y, nullptr);
    LineTo(dc, each.to.x, each.to.y);
  }
}

} // namespace

// --- WinEdgeResize

void WinEdgeResize::loadCursors() {
  const std::array<LPCWSTR, 5> names = {IDC_SIZEWE, IDC_SIZENS, IDC_SIZENWSE, IDC_SIZENESW,
                                        IDC_ARROW};
  for (size_t i = 0; i < names.size(); ++i) cursors_[i] = LoadCursorW(nullptr, names[i]);
}

void WinEdgeResize::setCursor() const {
  SetCursor(cursors_[static_cast<size_t>(shapeOf(edges_))]);
}

void WinEdgeResize::startDrag(HWND window, WinPoint point) {
  const WinRect area = rectOfWindow(window);
  dragPoint_ = point;
  dragSize_ = {area.width(), area.height()};
}

void WinEdgeResize::moveWith(HWND window, WinPoint point) const {
  move(window, rectOfWindow(window).movedBy(point.x - dragPoint_.x, point.y - dragPoint_.y));
}

void WinEdgeResize::resizeWith(HWND window, WinPoint point) const {
  const WinSizeLimits limits{{limits_.ptMinTrackSize.x, limits_.ptMinTrackSize.y},
                             {limits_.ptMaxTrackSize.x, limits_.ptMaxTrackSize.y}};
  move(window, resizedBy(rectOfWindow(window), edges_,
                         {point.x - dragPoint_.x, point.y - dragPoint_.y}, dragSize_, limits));
}

void WinEdgeResize::askLimits(HWND window) {
  limits_ = {};
  limits_.ptMaxSize = {GetSystemMetrics(SM_CXMAXIMIZED), GetSystemMetrics(SM_CYMAXIMIZED)};
  limits_.ptMaxPosition = {MaximisedPlace, MaximisedPlace};
  limits_.ptMinTrackSize = {GetSystemMetrics(SM_CXMINTRACK), GetSystemMetrics(SM_CYMINTRACK)};
  limits_.ptMaxTrackSize = {GetSystemMetrics(SM_CXMAXTRACK), GetSystemMetrics(SM_CYMAXTRACK)};
  SendMessageW(window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits_));
}

// --- WinEdgePicker

WinEdgePicker::WinEdgePicker(WinView& view, uint16_t flags) : edgeFlags(flags), edgeView_(view) {
  edgeButtons.buttonWidth = GetSystemMetrics(SM_CXSMSIZE);
  edgeButtons.buttonHeight = GetSystemMetrics(SM_CYSMSIZE);
  if (flags & EdgeResize) loadCursors();
}

int32_t WinEdgePicker::OnHookMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_SIZE:
    takeSize(wParam, {LOWORD(lParam), HIWORD(lParam)});
    return WinNotHandled;
  case WM_PAINT:
    return hasEdgeFlag(EdgePaint) ? handlePaint() : WinNotHandled;
  case WM_SETCURSOR:
    return handleCursor(reinterpret_cast<HWND>(wParam), LOWORD(lParam));
  case WM_MOUSEMOVE:
    return handleMove(pointOf(lParam));
  case WM_LBUTTONDOWN:
    return handleLeftPress(pointOf(lParam));
  case WM_LBUTTONUP:
    return handleLeftRelease(pointOf(lParam));
  case WM_RBUTTONDOWN:
    return handleRightPress(pointOf(lParam));
  case WM_MOUSELEAVE:
    handleLeave();
    return WinNotHandled;
  case WM_CAPTURECHANGED:
    if (reinterpret_cast<HWND>(lParam) != edgeView_.window) handleCaptureLost();
    return WinNotHandled;
  default:
    return WinNotHandled;
  }
}

void WinEdgePicker::setEdgeFlag(WinEdgeFlag flag, bool on) {
  edgeFlags = static_cast<uint16_t>(on ? edgeFlags | flag : edgeFlags & ~flag);
}

HWND WinEdgePicker::dialogWindow() const {
  return edgeView_.owner ? edgeView_.owner->window : edgeView_.window;
}

bool WinEdgePicker::hasStyle(DWORD style) const {
  return (static_cast<DWORD>(GetWindowLongW(dialogWindow(), GWL_STYLE)) & style) != 0;
}

void WinEdgePicker::takeSize(WPARAM kind, WinSize size) {
  client_ = {0, 0, size.width, size.height};
  if (kind == SizeNormal || kind == SizeMaximised)
    edgeButtons.layOut(client_, edgeFlags, kind == SizeMaximised);
}

// A child has its first size before its hooks see messages.
void WinEdgePicker::refreshClient() {
  if (client_ != WinRect{}) return;
  const WinRect area = edgeView_.clientRect();
  takeSize(SizeNormal, {area.width(), area.height()});
}

// --- Painting

int32_t WinEdgePicker::handlePaint() {
  refreshClient();
  PAINTSTRUCT paint;
  const HDC target = BeginPaint(edgeView_.window, &paint);
  if (!target) return WinNotHandled;
  excludeChildren(target, edgeView_.window);
  if (const HDC dc = edgeSurface_.begin(target, {client_.width(), client_.height()})) {
    PaintEdge(dc, client_);
    edgeSurface_.end({0, 0});
  }
  EndPaint(edgeView_.window, &paint);
  return 0;
}

void WinEdgePicker::PaintEdge(HDC dc, const WinRect& rect) {
  fillRect(dc, rect, WinViewStyle::dialogColour());
  edgeButtons.chooseGlyphSize();
  for (const WinEdgeButton& each : edgeButtons.buttons)
    if (edgeFlags & each.mask) drawButton(dc, each);
  frameRect(dc, client_, FrameColour);
}

void WinEdgePicker::drawButton(HDC dc, const WinEdgeButton& button) {
  if (button.hover) fillRect(dc, button.rect, button.groundColour());
  drawGlyph(dc, button, button.hover ? button.hoverGlyphColour : button.glyphColour);
  frameRect(dc, button.rect, WinEdgeButtons::FrameColour);
}

void WinEdgePicker::drawGlyph(HDC dc, const WinEdgeButton& button, COLORREF colour) {
  const WinRect glyph = edgeButtons.glyphRect(button);
  switch (button.command) {
  case SC_CLOSE:
    drawLines(dc, closeGlyph(glyph), colour);
    break;
  case SC_MAXIMIZE:
    frameRect(dc, maximizeGlyph(glyph), colour);
    break;
  case SC_RESTORE:
    frameRect(dc, restoreGlyphBack(glyph), colour);
    fillRect(dc, restoreGlyphFront(glyph), WinViewStyle::dialogColour());
    frameRect(dc, restoreGlyphFront(glyph), colour);
    break;
  default:
    fillRect(dc, minimizeGlyph(glyph), colour);
    break;
  }
}

void WinEdgePicker::invalidateButton(const WinEdgeButton& button) const {
  const RECT area = platformRect(button.rect);
  InvalidateRect(edgeView_.window, &area, FALSE);
}

// --- Pointer and drags

// What comes from a child asks its parent first; there is no edge to take hold of under a child.
int32_t WinEdgePicker::handleCursor(HWND over, uint32_t hit) {
  if (hit != HTCLIENT || !hasEdgeFlag(EdgeResize)) return WinNotHandled;
  refreshClient();
  const bool isOver = over == edgeView_.window;
  POINT pointer{};
  GetCursorPos(&pointer);
  ScreenToClient(edgeView_.window, &pointer);
  const WinPoint point{pointer.x, pointer.y};
  const uint32_t found = isOver ? edgesAt(client_, point) : EdgeNone;
  setEdgeFlag(EdgePointerOnEdge, found != EdgeNone);
  edges_ = found != EdgeNone && CanResizeAt(client_, point, found) ? found : uint32_t{EdgeNone};
  if (!isOver) return WinNotHandled;
  setCursor();
  return TRUE;
}

int32_t WinEdgePicker::handleMove(WinPoint point) {
  if (hasEdgeFlag(EdgeDragging)) {
    dragStep(point);
    return 0;
  }
  refreshClient();
  if (!hasEdgeFlag(EdgeTracksLeave)) {
    TRACKMOUSEEVENT record{};
    record.cbSize = sizeof record;
    record.dwFlags = TME_LEAVE;
    record.hwndTrack = edgeView_.window;
    setEdgeFlag(EdgeTracksLeave, TrackMouseEvent(&record) != FALSE);
  }
  updateHover(point);
  return WinNotHandled;
}

void WinEdgePicker::updateHover(WinPoint point) {
  const bool mayHover = !hasEdgeFlag(EdgePointerOnEdge) && !hasEdgeFlag(EdgeDragging);
  for (WinEdgeButton& each : edgeButtons.buttons) {
    const uint8_t hover = mayHover && each.isHit(point) ? 1 : 0;
    if (hover == each.hover) continue;
    each.hover = hover;
    invalidateButton(each);
  }
  setEdgeFlag(EdgePointerOnButton, edgeButtons.isAnyHovered());
}

int32_t WinEdgePicker::handleLeftPress(WinPoint point) {
  refreshClient();
  bool isTaken = false;
  for (WinEdgeButton& each : edgeButtons.buttons) {
    if (!each.hover || each.pressed) continue;
    each.pressed = 1;
    invalidateButton(each);
    SetCapture(edgeView_.window);
    isTaken = true;
  }
  if (hasEdgeFlag(EdgeDragging)) return 0;
  const bool mayMove =
      hasEdgeFlag(EdgeMove) && !edgeButtons.isAnyHovered() && CanMoveAt(client_, point);
  if (edges_ != EdgeNone || mayMove) {
    setEdgeFlag(EdgeDragging, true);
    SetCapture(edgeView_.window);
    startDrag(dialogWindow(), point);
    isTaken = true;
  }
  return isTaken ? 0 : WinNotHandled;
}

int32_t WinEdgePicker::handleLeftRelease(WinPoint point) {
  bool isTaken = false;
  for (WinEdgeButton& each : edgeButtons.buttons) {
    if (!each.pressed) continue;
    each.pressed = 0;
    ReleaseCapture();
    invalidateButton(each);
    if (each.hover) postCommand(each.command, point);
    isTaken = true;
  }
  if (hasEdgeFlag(EdgeDragging)) {
    setEdgeFlag(EdgeDragging, false);
    ReleaseCapture();
    dragStep(point);
    isTaken = true;
  }
  return isTaken ? 0 : WinNotHandled;
}

void WinEdgePicker::dragStep(WinPoint point) {
  const HWND dialog = dialogWindow();
  if (edges_ == EdgeNone) return moveWith(dialog, point);
  if (!hasEdgeFlag(EdgeKnowsLimits)) {
    askLimits(dialog);
    setEdgeFlag(EdgeKnowsLimits, true);
  }
  resizeWith(dialog, point);
}

void WinEdgePicker::handleLeave() {
  setEdgeFlag(EdgeTracksLeave, false);
  for (WinEdgeButton& each : edgeButtons.buttons) {
    if (!each.hover) continue;
    each.hover = 0;
    invalidateButton(each);
  }
  setEdgeFlag(EdgePointerOnButton, false);
}

// Another window took it: there will be no release.
void WinEdgePicker::handleCaptureLost() {
  setEdgeFlag(EdgeDragging, false);
  for (WinEdgeButton& each : edgeButtons.buttons) {
    if (!each.pressed) continue;
    each.pressed = 0;
    invalidateButton(each);
  }
}

// --- The system's commands

void WinEdgePicker::postCommand(uint32_t command, WinPoint point) const {
  const POINT place = onScreen(edgeView_.window, point);
  PostMessageW(dialogWindow(), WM_SYSCOMMAND, command, MAKELPARAM(place.x, place.y));
}

// The platform greys by the window's style alone, so what the hook offers instead is enabled here.
void WinEdgePicker::prepareEntries(HMENU menu) const {
  const auto prepare = [this, menu](UINT command, DWORD ownStyle, WinEdgeFlag offer) {
    if (hasStyle(ownStyle)) return true;
    const bool isOffered = hasEdgeFlag(offer);
    EnableMenuItem(menu, command, isOffered ? UINT{MF_BYCOMMAND} : Disabled);
    return isOffered;
  };
  const bool minimises = prepare(SC_MINIMIZE, WS_MINIMIZEBOX, EdgeMinimizeButton);
  const bool maximises = prepare(SC_MAXIMIZE, WS_MAXIMIZEBOX, EdgeMaximizeButton);
  if (!minimises && !maximises) EnableMenuItem(menu, SC_RESTORE, Disabled);
  prepare(SC_SIZE, WS_THICKFRAME, WinEdgeFlag::EdgeResize);
}

// The menu runs a loop of its own: the view and this hook may be gone behind it.
int32_t WinEdgePicker::handleRightPress(WinPoint point) {
  refreshClient();
  if (!hasEdgeFlag(EdgeSystemMenu) || hasEdgeFlag(EdgePointerOnEdge)) return WinNotHandled;
  if (!CanOpenSystemMenuAt(client_, point)) return WinNotHandled;
  const HWND dialog = dialogWindow();
  const HMENU menu = GetSystemMenu(dialog, FALSE);
  if (!menu) return WinNotHandled;
  prepareEntries(menu);
  const POINT place = onScreen(edgeView_.window, point);
  const auto command = static_cast<WPARAM>(
      TrackPopupMenuEx(menu, TPM_RIGHTBUTTON | TPM_RETURNCMD, place.x, place.y, dialog, nullptr));
  PostMessageW(dialog, WM_SYSCOMMAND, command, MAKELPARAM(place.x, place.y));
  return 0;
}

} // namespace WinLayer
