// The platform's class below is a button, which would press itself at a space or a click: keys and
// presses that belong to the text are answered here and never reach it.
#include "win/WinEditBox.h"

#include "raw/RawGui.h"
#include "win/WinEditBoxMenu.h"

namespace WinLayer {

using RawLayer::EncodingUtf8;

namespace {

constexpr int32_t InnerMargin = 2; // the frame, and a pixel between it and the text

WinPoint pointOf(LPARAM lParam) {
  return {static_cast<int16_t>(LOWORD(lParam)), static_cast<int16_t>(HIWORD(lParam))};
}

bool isDown(int key) {
  return GetKeyState(key) < 0;
}

} // namespace

WinEditBox::WinEditBox() : WinEditBoxRooms(*this), WinEditBoxBasic(draw_) {
  margins = {InnerMargin, InnerMargin, InnerMargin, InnerMargin};
}

// --- The text

void WinEditBox::SetTitle(const RawString& text) {
  info.setText(text);
  ScrollToCaret();
}

void WinEditBox::ClearTitle() {
  SetTitle(RawString::emptyStatic());
}

void WinEditBox::AppendTitle(const RawString& text) {
  RawString longer = info.text;
  longer.append(text.shareAs(RawLayer::EncodingWide));
  SetTitle(longer);
}

void WinEditBox::onTextChanged() {
  WinPlaneBox::SetTitle(info.text);
  contentChanged();
  tellParent(WinEditChanged);
}

void WinEditBox::setSelection(int32_t anchor, int32_t caret) {
  info.select(anchor, caret);
  afterInput();
}

void WinEditBox::setReadOnly(bool value) {
  info.setFlag(WinEditBoxInfo::ReadOnly, value);
  input_.follow();
  invalidate();
}

void WinEditBox::tellParent(uint32_t code) {
  if (window) PostMessageW(GetParent(window), WM_COMMAND, MAKEWPARAM(identifier, code), 0);
}

// --- Measuring and scrolling

void WinEditBox::MeasureText(WinRect& area) {
  draw_.measureFont();
  const WinSize size = draw_.contentSize();
  area = {0, 0, size.width, size.height};
}

void WinEditBox::OnCreated() {
  WinPlaneBox::OnCreated();
  // A box whose dialog is created again has a window without the context of the one before.
  info.setFlag(WinEditBoxInfo::ContextAttached, false);
  takeOffsets();
}

void WinEditBox::MeasureContent(HDC) {
  draw_.measureFont();
  const WinSize size = draw_.contentSize();
  contentWidth = size.width;
  contentHeight = size.height;
  lineStepY = info.rowHeight();
}

void WinEditBox::AfterMeasure() {
  takeOffsets();
}

void WinEditBox::takeOffsets() {
  info.scrollX = viewRect.left - scrollX;
  info.scrollY = viewRect.top - scrollY;
}

void WinEditBox::ScrollToCaret() {
  if (!window) return;
  measureIfNeeded();
  takeOffsets();
  if (info.scrollToCaret(viewRect, WinEditBoxDraw::CaretWidth))
    scrollTo(viewRect.left - info.scrollX, viewRect.top - info.scrollY);
  takeOffsets();
}

WinRect WinEditBox::caretPlace() {
  measureIfNeeded();
  takeOffsets();
  return draw_.caretRect();
}

void WinEditBox::afterInput() {
  ScrollToCaret();
  isCaretShown_ = hasFlag(HasFocus);
  invalidate();
}

// --- Painting

void WinEditBox::PaintFrame(HDC dc, const WinRect& client) {
  fillRect(dc, client, background);
  if (info.has(WinEditBoxInfo::InputMethodOpen))
    frameRect(dc, client, OpenFrame);
  else if (info.has(WinEditBoxInfo::Marked))
    frameRect(dc, client, MarkedFrame);
  else if (hasFlag(HasFocus))
    frameRect(dc, client, FocusFrame);
}

void WinEditBox::DrawContent(HDC dc, WinPoint) {
  takeOffsets();
  PaintFrame(dc, clientRect());
  draw_.paintText(dc, viewRect);
  if (isCaretShown_) draw_.invertCaret(dc, viewRect);
}

void WinEditBox::blinkCaret() {
  if (info.has(WinEditBoxInfo::SteadyCaret)) return;
  isCaretShown_ = !isCaretShown_;
  const WinWindowDc dc(window);
  draw_.invertCaret(dc.get(), viewRect);
}

// --- Messages

int32_t WinEditBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const int32_t answer = input_.OnMessage(message, wParam, lParam);
  if (answer != WinNotHandled) return answer;
  switch (message) {
  case WM_SETFOCUS:
    WinPlaneBox::OnMessage(message, wParam, lParam);
    OnFocusIn();
    return 0;
  case WM_KILLFOCUS:
    OnFocusOut();
    WinPlaneBox::OnMessage(message, wParam, lParam); // tells the owner: the last thing to do
    return 0;
  case WM_KEYDOWN:
    return onKeyDown(wParam);
  case WM_KEYUP:
    return wParam == VK_SPACE ? 0 : WinNotHandled;
  case WM_CHAR:
    typeCharacter(static_cast<uint32_t>(wParam));
    afterInput();
    return 0;
  case WM_TIMER:
    if (wParam == CaretTimer) blinkCaret();
    return 0;
  case WM_CONTEXTMENU:
    onContextKey();
    return 0;
  case WM_DROPFILES:
    onDrop(reinterpret_cast<HDROP>(wParam));
    return 0;
  case WM_CAPTURECHANGED:
    info.setFlag(WinEditBoxInfo::Dragging, false);
    return 0;
  case WM_SETCURSOR:
    if (LOWORD(lParam) != HTCLIENT) return WinNotHandled;
    SetCursor(LoadCursorW(nullptr, IDC_IBEAM));
    return 1;
  default:
    return message >= WM_MOUSEFIRST && message <= WM_MBUTTONDBLCLK
               ? onMouse(message, lParam)
               : WinPlaneBox::OnMessage(message, wParam, lParam);
  }
}

void WinEditBox::OnFocusIn() {
  SetTimer(window, CaretTimer, CaretPeriod, nullptr);
  input_.onFocus();
  afterInput();
}

void WinEditBox::OnFocusOut() {
  KillTimer(window, CaretTimer);
  input_.onFocusLost();
  isCaretShown_ = false;
  invalidate();
}

// With Alt the platform makes other characters of letters with Ctrl.
int32_t WinEditBox::onKeyDown(WPARAM key) {
  const bool control = isDown(VK_CONTROL) && !isDown(VK_MENU);
  if (pressKey(static_cast<uint32_t>(key), isDown(VK_SHIFT), control)) {
    afterInput();
    return 0;
  }
  if (key == VK_SPACE) return 0;
  return WinPlaneBox::OnMessage(WM_KEYDOWN, key, 0);
}

int32_t WinEditBox::onMouse(UINT message, LPARAM lParam) {
  const WinPoint point = pointOf(lParam);
  switch (message) {
  case WM_LBUTTONDOWN:
    onPress(point);
    return 0;
  case WM_LBUTTONDBLCLK: {
    const RawLayer::RawRange word = info.wordAt(info.positionAt(point));
    setSelection(word.start, word.end);
    return 0;
  }
  case WM_MOUSEMOVE:
    if (info.has(WinEditBoxInfo::Dragging)) onDrag(point);
    return 0;
  case WM_LBUTTONUP:
    endDrag();
    return 0;
  case WM_RBUTTONDOWN:
  case WM_RBUTTONDBLCLK: // a second press soon after the first
    OnContextMenu(point);
    return 0;
  default: // the other presses and releases mean nothing here
    return 0;
  }
}

void WinEditBox::onPress(WinPoint point) {
  measureIfNeeded();
  takeOffsets();
  const int32_t position = info.positionAt(point);
  info.wantedColumn = -1;
  setSelection(position, position);
  info.setFlag(WinEditBoxInfo::Dragging, true);
  SetCapture(window);
}

void WinEditBox::onDrag(WinPoint point) {
  takeOffsets();
  info.moveTo(info.positionAt(point), true);
  if (info.scrollAtEdge(point.x, clientRect(), viewRect.left))
    scrollTo(viewRect.left - info.scrollX, scrollY);
  takeOffsets();
  isCaretShown_ = hasFlag(HasFocus);
  invalidate();
}

void WinEditBox::endDrag() {
  info.setFlag(WinEditBoxInfo::Dragging, false);
  if (GetCapture() == window) ReleaseCapture();
}

void WinEditBox::onDrop(HDROP drop) {
  RawLayer::RawStringList paths;
  const uint32_t count = RawLayer::dropFileCount(drop);
  for (uint32_t i = 0; i < count; ++i) paths.add(RawLayer::dropFile(drop, i, EncodingUtf8));
  DragFinish(drop);
  dropPaths(paths);
  afterInput();
}

// --- The menu

void WinEditBox::onContextKey() {
  const WinRect caret = caretPlace();
  OnContextMenu({caret.left, caret.bottom});
}

void WinEditBox::OnContextMenu(WinPoint point) {
  const HWND box = window; // outlives this view's memory as a mere number
  const WinMenuHandle menu = buildEditBoxMenu(info, input_.hasContext());
  POINT place{point.x, point.y};
  ClientToScreen(box, &place);
  const auto chosen = static_cast<WPARAM>(TrackPopupMenuEx(
      static_cast<HMENU>(menu.menu()), TPM_LEFTALIGN | TPM_TOPALIGN | TPM_RETURNCMD, place.x,
      place.y, box, nullptr));
  if (chosen != 0) SendMessageW(box, WinMessageMenuResult, chosen, 0);
}

int32_t WinEditBox::OnMenuCommand(uint32_t entry, LPARAM) {
  switch (entry) {
  case EditEntryCancel:
    tellParent(WinEditEscape);
    break;
  case EditEntryUndo:
    undo();
    break;
  case EditEntryCopy:
    copy();
    break;
  case EditEntryPaste:
    paste();
    break;
  case EditEntryDelete:
    erase();
    break;
  case EditEntrySelect:
    selectAll();
    break;
  case EditEntryInsertTab:
    insertTab();
    break;
  case EditEntryInputMethod:
    input_.openOnSelection();
    break;
  case EditEntryRegister:
    input_.registerSelection();
    break;
  default:
    return -1;
  }
  afterInput();
  return 0;
}

} // namespace WinLayer
