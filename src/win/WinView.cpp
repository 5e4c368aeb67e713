// Child views subclass a window of a system class; their dialog's window procedure serves the rest.
// While a dialog is blocked by a modal one its children are dead to input too: they would otherwise
// still get what the pointer and the keyboard send straight to them.
#include "win/WinView.h"

#include "win/WinDialog.h"

#include <commctrl.h>
#include <shellapi.h>

namespace WinLayer {

namespace {

constexpr int32_t MeasureLimit = 0x7FFF;

bool isInput(UINT message) {
  return (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
         (message >= WM_KEYFIRST && message <= WM_KEYLAST) || message == WM_CONTEXTMENU ||
         message == WM_DROPFILES || message == WM_MOUSEHOVER;
}

} // namespace

// --- Measuring

void WinView::MeasureText(WinRect& area) {
  const WinWindowDc dc(window);
  const WinSelect selected(dc.get(), fontHandle());
  const RawString title = GetTitle();
  area = measureText(dc.get(), title.isEmpty() ? "A"_text : title,
                     {0, 0, MeasureLimit, MeasureLimit}, textFormat(fitFlags & TextWrapped));
  if (title.isEmpty()) area.right = area.left;
}

// The width of a vertical bar also stands for the height of a horizontal one.
void WinView::AdjustFrame(WinRect& area) {
  RECT frame = platformRect(area);
  AdjustWindowRectEx(&frame, style, FALSE, extendedStyle);
  area = rectOf(frame);
  if (style & WS_VSCROLL) area.right += GetSystemMetrics(SM_CXVSCROLL);
  if (style & WS_HSCROLL) area.bottom += GetSystemMetrics(SM_CXVSCROLL);
}

// --- The window

WinView::~WinView() {
  if (!window || !owner) return;
  RemoveWindowSubclass(window, SubclassProcedure, identifier);
  DestroyWindow(window);
  leaveOwner();
}

// A blocked dialog is not told of the end of its children, and must not keep a view that is gone.
void WinView::leaveOwner() {
  if (owner) owner->children.removeView(*this);
}

void WinView::Create(WinDialog& dialog) {
  owner = &dialog;
  const RawString wideClass = className.shareAs(RawLayer::EncodingWide);
  const RawString wideTitle = GetTitle().shareAs(RawLayer::EncodingWide);
  window = CreateWindowExW(extendedStyle, wideUnits(wideClass), wideUnits(wideTitle), style,
                           rect.left, rect.top, rect.width(), rect.height(), dialog.window,
                           reinterpret_cast<HMENU>(static_cast<UINT_PTR>(identifier)), instance(),
                           nullptr);
  if (!window) return;
  if (classKind == SystemClass)
    SetWindowSubclass(window, SubclassProcedure, identifier, reinterpret_cast<DWORD_PTR>(this));
  else
    viewFlags |= NotSubclassed;
  SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(fontHandle()), FALSE);
  OnCreated();
}

int32_t WinView::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
  const int32_t own = OnMessage(message, wParam, lParam);
  for (RawLayer::RawListNode* node = hooks.first(); !hooks.isEnd(node);) {
    RawLayer::RawListNode* const following = hooks.next(node);
    const int32_t answer = hooks.element(node)->OnHookMessage(message, wParam, lParam);
    if (answer != WinNotHandled) return answer;
    node = following;
  }
  return own;
}

bool WinView::isBlocked() const {
  return owner && owner->blockingWindow();
}

LRESULT CALLBACK WinView::SubclassProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR id, DWORD_PTR reference) {
  auto* view = reinterpret_cast<WinView*>(reference);
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(window, SubclassProcedure, id);
    view->window = nullptr;
    view->leaveOwner();
    return DefSubclassProc(window, message, wParam, lParam);
  }
  if (isInput(message) && view->isBlocked()) {
    if (message == WM_DROPFILES) DragFinish(reinterpret_cast<HDROP>(wParam));
    return 0;
  }
  const bool isPress = message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN;
  if (isPress && !(view->viewFlags & NotSubclassed) && GetFocus() != window) SetFocus(window);
  const int32_t result = view->Dispatch(message, wParam, lParam);
  return result == WinNotHandled ? DefSubclassProc(window, message, wParam, lParam) : result;
}

// --- The base operations

int32_t WinView::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_COMMAND:
    return OnChildNotify(HIWORD(wParam));
  case WinMessageMenuResult:
    return OnMenuCommand(static_cast<uint32_t>(wParam), lParam);
  case WM_KEYDOWN:
    if (wParam == VK_TAB) {
      passFocus(GetKeyState(VK_SHIFT) < 0);
      return 0;
    }
    if (wParam == VK_ESCAPE) {
      postCode(WinCodeEscape);
      return 0;
    }
    return WinNotHandled;
  default:
    return WinNotHandled;
  }
}

int32_t WinView::OnChildNotify(uint32_t code) {
  return owner ? owner->OnCommand(*this, code) : -1;
}

int32_t WinView::OnMenuCommand(uint32_t, LPARAM) {
  return -1;
}

bool WinView::PreTranslate(const MSG&, LRESULT&) {
  return false;
}

int32_t WinView::OnCommand(WinView&, uint32_t) {
  return 0;
}

bool WinView::OnMinMaxInfo(WinSize&, WinSize&) {
  return false;
}

void WinView::OnShowState(int32_t, int32_t) {}

// --- Hooks and small services

void WinView::addHook(WinViewHook& hook) {
  hooks.append(&hook);
}

void WinView::removeHook(WinViewHook& hook) {
  for (RawLayer::RawListNode* node = hooks.first(); !hooks.isEnd(node); node = hooks.next(node))
    if (hooks.element(node) == &hook) return hooks.erase(node);
}

void WinView::invalidate() const {
  if (window) InvalidateRect(window, nullptr, FALSE);
}

void WinView::moveWindow(bool repaint) const {
  if (window) MoveWindow(window, rect.left, rect.top, rect.width(), rect.height(), repaint);
}

WinRect WinView::clientRect() const {
  RECT area{};
  if (window) GetClientRect(window, &area);
  return rectOf(area);
}

WinRect WinView::windowRect() const {
  RECT area{};
  if (window) GetWindowRect(window, &area);
  return rectOf(area);
}

void WinView::postCode(uint32_t code) const {
  if (window) PostMessageW(window, WM_COMMAND, MAKEWPARAM(identifier, code), 0);
}

void WinView::passFocus(bool backwards) const {
  if (owner) SendMessageW(owner->window, WinMessageMoveFocus, identifier, backwards ? 1 : 0);
}

LRESULT WinView::sendCode(uint32_t code) const {
  return window ? SendMessageW(window, WM_COMMAND, MAKEWPARAM(identifier, code), 0) : 0;
}

} // namespace WinLayer
