// What a dialog does with the messages of its window, and what is left of that while a modal dialog
// blocks it.
#include "win/WinDialog.h"

#include <algorithm>

namespace WinLayer {

using RawLayer::RawListNode;
using RawLayer::RawLockScope;

namespace {

constexpr int32_t Swallowed = -1;
constexpr UINT FlashCount = 5;

void showWhereItIs(HWND modal) {
  SetForegroundWindow(modal);
  MessageBeep(0);
  FLASHWINFO record{};
  record.cbSize = sizeof record;
  record.hwnd = modal;
  record.dwFlags = FLASHW_ALL;
  record.uCount = FlashCount;
  FlashWindowEx(&record);
}

} // namespace

int32_t WinDialog::blockedHandler(HWND blocking, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_SETCURSOR:
  case WM_NCLBUTTONDOWN:
  case WM_NCLBUTTONUP:
    return OnMessage(message, wParam, lParam);
  case WM_MOUSEACTIVATE:
    // The press reaches nobody; the reminder makes the top of the stack show itself.
    PostMessageW(blocking, WinMessageRemind, 0, 0);
    return MA_NOACTIVATEANDEAT;
  case WM_WINDOWPOSCHANGED:
    if (!(reinterpret_cast<const WINDOWPOS*>(lParam)->flags & SWP_NOZORDER)) {
      SendMessageW(blocking, WM_MOUSEACTIVATE, 0, 0);
      showWhereItIs(blocking);
    }
    return OnMessage(message, wParam, lParam);
  case WinMessageRemind:
    PostMessageW(blocking, WinMessageRemind, 0, 0);
    return 0;
  case WinMessageShow:
    Show(wParam, lParam);
    return 0;
  case WM_PAINT:
    // Nothing is drawn, but the platform must not ask again and again; it is drawn afterwards. The
    // children still paint themselves.
    RedrawWindow(window, nullptr, nullptr, RDW_VALIDATE | RDW_NOCHILDREN);
    return Swallowed;
  case WM_NCHITTEST: // what the pointer is on, else it would fall through to what lies behind
    return WinNotHandled;
  case WM_NCDESTROY: // its owner ended it all the same: its loop has nothing left to serve
    leaveStanding();
    window = nullptr;
    return WinNotHandled;
  default:
    return Swallowed;
  }
}

int32_t WinDialog::normalHandler(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_CREATE:
    OnCreateChildren();
    return Dispatch(message, wParam, lParam);
  case WM_DESTROY:
  case WM_ENDSESSION:
    return handleDestroy();
  case WM_MOVE:
    if (!IsIconic(window) && !IsZoomed(window)) normalRect = rect = windowRect();
    return Dispatch(message, wParam, lParam);
  case WM_SIZE:
    return handleSize(wParam, lParam);
  case WM_PAINT:
    return handlePaint(wParam, lParam);
  case WM_CLOSE:
    return CanClose() ? Dispatch(message, wParam, lParam) : 0;
  case WM_ERASEBKGND:
    return 1;
  case WM_GETMINMAXINFO:
    return handleMinMaxInfo(wParam, lParam);
  case WM_DRAWITEM:
  case WM_MEASUREITEM:
    return handleChildPaint(message, wParam, lParam);
  case WM_COMMAND: {
    WinView* child = children.findIdentifier(LOWORD(wParam));
    return (child ? child : this)->OnChildNotify(HIWORD(wParam));
  }
  case WM_CTLCOLOREDIT:
  case WM_CTLCOLORSTATIC:
    return handleChildColour(message, wParam, lParam);
  case WM_PARENTNOTIFY:
    if (LOWORD(wParam) == WM_DESTROY) handleChildGone(HIWORD(wParam));
    return Dispatch(message, wParam, lParam);
  case WM_ACTIVATE:
    if (LOWORD(wParam) == WA_INACTIVE) rememberFocus();
    return Dispatch(message, wParam, lParam);
  case WM_SETFOCUS:
    return handleFocus(wParam, lParam);
  case WinMessageRemind:
    return handleReminder(wParam, lParam);
  case WinMessageShow:
    Show(wParam, lParam);
    return 0;
  case WinMessageMoveFocus:
    moveFocus(static_cast<uint32_t>(wParam), lParam == 1);
    return 0;
  default:
    return Dispatch(message, wParam, lParam);
  }
}

// The end of the chain: no dialog blocks this one. A press on a blocked dialog activates nothing,
// so without this nobody would see why.
int32_t WinDialog::handleReminder(WPARAM wParam, LPARAM lParam) {
  const int32_t answer = Dispatch(WinMessageRemind, wParam, lParam);
  if (answer != WinNotHandled) return answer;
  showWhereItIs(window);
  return 0;
}

// The platform's own drawing ends here, whoever answers. Menus have the identifier 0.
int32_t WinDialog::handleChildPaint(UINT message, WPARAM wParam, LPARAM lParam) {
  WinView* view = wParam ? children.findIdentifier(static_cast<uint32_t>(wParam)) : this;
  const int32_t answer = view ? view->OnMessage(message, wParam, lParam) : WinNotHandled;
  return answer == WinNotHandled ? 0 : answer;
}

int32_t WinDialog::handleChildColour(UINT message, WPARAM wParam, LPARAM lParam) {
  WinView* child = children.findWindow(reinterpret_cast<HWND>(lParam));
  const int32_t answer = child ? child->OnMessage(message, wParam, lParam) : WinNotHandled;
  return answer == WinNotHandled ? Dispatch(message, wParam, lParam) : answer;
}

void WinDialog::handleChildGone(uint32_t childId) {
  WinView* child = children.findIdentifier(childId);
  if (!child) return;
  child->OnDestroyed();
  children.remove(childId);
}

int32_t WinDialog::handleDestroy() {
  OnShowState(state, Destroying);
  {
    const RawLockScope scope(children.lock);
    for (RawListNode* node = children.first(); !children.isEnd(node);) {
      RawListNode* const following = children.next(node); // it may take itself off
      children.element(node)->OnDestroyed();
      node = following;
    }
  }
  children.removeAll();
  OnDestroyed();
  leaveStanding();
  PostQuitMessage(0);
  return 0;
}

int32_t WinDialog::handleSize(WPARAM wParam, LPARAM lParam) {
  const auto kind = static_cast<int32_t>(wParam);
  rect = windowRect();
  const int32_t oldState = state;
  if (kind != Minimised && kind != Maximised) normalRect = rect;
  if (OnMessage(WM_SIZE, wParam, lParam) == WinNotHandled) {
    if (kind != oldState) {
      OnShowState(oldState, kind);
      state = kind;
    }
    if (kind == Normal || kind == Maximised) {
      client.rect = {0, 0, LOWORD(lParam), HIWORD(lParam)};
      OnResized();
      invalidate();
    }
    if (oldState == NeverShown) OnShowState(FirstShown, kind);
  }
  return Dispatch(WM_SIZE, wParam, lParam);
}

int32_t WinDialog::handlePaint(WPARAM wParam, LPARAM lParam) {
  const int32_t answer = Dispatch(WM_PAINT, wParam, lParam);
  if (answer != WinNotHandled) return answer;
  PAINTSTRUCT paint;
  if (BeginPaint(window, &paint)) {
    const RECT area = platformRect(clientRect());
    FillRect(paint.hdc, &area, GetSysColorBrush(COLOR_3DFACE));
    EndPaint(window, &paint);
  }
  return 0;
}

int32_t WinDialog::handleMinMaxInfo(WPARAM wParam, LPARAM lParam) {
  if (state != Minimised) {
    normalRect = rect;
    if (!IsIconic(window) && OnMessage(WM_GETMINMAXINFO, wParam, lParam) == WinNotHandled)
      limitSizes(*reinterpret_cast<MINMAXINFO*>(lParam));
  }
  return Dispatch(WM_GETMINMAXINFO, wParam, lParam);
}

// The window may lose what its client has won since it was set from outside, and fill the screen.
void WinDialog::limitSizes(MINMAXINFO& limits) {
  const WinRect frame = windowRect();
  const WinRect inner = clientRect();
  const WinSize size{frame.width(), frame.height()};
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  const auto won = [](int32_t now, int32_t then, int32_t limit) {
    return std::clamp(now - then, 0, std::max(limit, 0));
  };
  WinSize shrink{won(inner.width(), client.saved.width(), size.width),
                 won(inner.height(), client.saved.height(), size.height)};
  WinSize growth{std::max(rectOf(work).width() - size.width, 0),
                 std::max(rectOf(work).height() - size.height, 0)};
  OnMinMaxInfo(shrink, growth);
  limits.ptMinTrackSize = {size.width - shrink.width, size.height - shrink.height};
  limits.ptMaxTrackSize = {size.width + growth.width, size.height + growth.height};
}

void WinDialog::rememberFocus() {
  const WinView* child = children.findWindow(GetFocus());
  lastFocus_ = child ? child->identifier : 0;
}

// The platform gives the focus to the dialog itself when it becomes active again; there the
// keyboard would be dead.
int32_t WinDialog::handleFocus(WPARAM wParam, LPARAM lParam) {
  const int32_t answer = Dispatch(WM_SETFOCUS, wParam, lParam);
  if (answer != WinNotHandled) return answer;
  const WinView* child = children.findIdentifier(lastFocus_);
  if (!child || !child->window || !IsWindowEnabled(child->window)) return WinNotHandled;
  SetFocus(child->window);
  return 0;
}

// The walk passes the ring's sentinel like a child that takes no focus, and so wraps.
void WinDialog::moveFocus(uint32_t childId, bool backwards) {
  const auto step = [this, backwards](const RawListNode* node) {
    return backwards ? children.previous(node) : children.next(node);
  };
  const auto takesFocus = [](const WinView* view) {
    return view && view->window && !(view->viewFlags & NotSubclassed) &&
           IsWindowEnabled(view->window);
  };
  HWND target = nullptr;
  {
    const RawLockScope scope(children.lock);
    RawListNode* start = children.first();
    while (!children.isEnd(start) && children.element(start)->identifier != childId)
      start = children.next(start);
    if (children.isEnd(start)) return;
    RawListNode* node = step(start);
    while (node != start && !takesFocus(children.element(node))) node = step(node);
    if (node != start) target = children.element(node)->window;
  }
  if (target) SetFocus(target);
}

} // namespace WinLayer
