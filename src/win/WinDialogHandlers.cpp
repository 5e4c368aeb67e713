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

void flash(HWND window) {
  FLASHWINFO record{};
  record.cbSize = sizeof record;
  record.hwnd = window;
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
    PostMessageW(blocking, WinMessageRemind, 0, 0);
    return MA_NOACTIVATEANDEAT;
  case WM_WINDOWPOSCHANGED:
    if (!(reinterpret_cast<const WINDOWPOS*>(lParam)->flags & SWP_NOZORDER)) {
      SendMessageW(blocking, WM_MOUSEACTIVATE, 0, 0);
      SetForegroundWindow(blocking);
      MessageBeep(0);
      flash(blocking);
    }
    return OnMessage(message, wParam, lParam);
  case WinMessageRemind:
    PostMessageW(blocking, WinMessageRemind, 0, 0);
    return 0;
  case WinMessageShow:
    Show(wParam, lParam);
    return 0;
  case WM_PAINT:
    // Nothing is drawn, but the platform must not ask again and again; it is drawn afterwards.
    ValidateRect(window, nullptr);
    return Swallowed;
  case WM_NCHITTEST: // what the pointer is on, else it would fall through to what lies behind
  case WM_NCDESTROY:
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
  case WM_MEASUREITEM: {
    WinView* child = wParam ? children.findIdentifier(static_cast<uint32_t>(wParam)) : this;
    const int32_t answer = child ? child->OnMessage(message, wParam, lParam) : WinNotHandled;
    return answer == WinNotHandled ? 0 : answer;
  }
  case WM_COMMAND: {
    WinView* child = children.findIdentifier(LOWORD(wParam));
    return (child ? child : this)->OnChildNotify(HIWORD(wParam));
  }
  case WM_CTLCOLOREDIT:
  case WM_CTLCOLORSTATIC: {
    WinView* child = children.findWindow(reinterpret_cast<HWND>(lParam));
    const int32_t answer = child ? child->OnMessage(message, wParam, lParam) : WinNotHandled;
    return answer == WinNotHandled ? Dispatch(message, wParam, lParam) : answer;
  }
  case WM_PARENTNOTIFY:
    if (LOWORD(wParam) == WM_DESTROY) {
      if (WinView* child = children.findIdentifier(HIWORD(wParam))) {
        child->OnDestroyed();
        children.remove(HIWORD(wParam));
      }
    }
    return Dispatch(message, wParam, lParam);
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

int32_t WinDialog::handleDestroy() {
  OnShowState(state, Destroying);
  {
    const RawLockScope scope(children.lock);
    for (WinView& child : children.elements()) child.OnDestroyed();
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
    if (!IsIconic(window) && OnMessage(WM_GETMINMAXINFO, wParam, lParam) == WinNotHandled) {
      const WinRect frame = windowRect();
      const WinRect inner = clientRect();
      RECT work{};
      SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
      const WinSize size{frame.width(), frame.height()};
      const auto grown = [](int32_t now, int32_t then, int32_t limit) {
        return std::clamp(now - then, 0, std::max(limit, 0));
      };
      WinSize shrink{grown(inner.width(), client.saved.width(), size.width),
                     grown(inner.height(), client.saved.height(), size.height)};
      WinSize growth{std::max(rectOf(work).width() - size.width, 0),
                     std::max(rectOf(work).height() - size.height, 0)};
      OnMinMaxInfo(shrink, growth);
      auto* limits = reinterpret_cast<MINMAXINFO*>(lParam);
      limits->ptMinTrackSize = {size.width - shrink.width, size.height - shrink.height};
      limits->ptMaxTrackSize = {size.width + growth.width, size.height + growth.height};
    }
  }
  return Dispatch(WM_GETMINMAXINFO, wParam, lParam);
}

void WinDialog::moveFocus(uint32_t childId, bool backwards) {
  HWND target = nullptr;
  {
    const RawLockScope scope(children.lock);
    RawListNode* start = children.first();
    while (!children.isEnd(start) && children.element(start)->identifier != childId)
      start = children.next(start);
    if (children.isEnd(start)) return;
    RawListNode* node = start;
    do {
      node = backwards ? children.previous(node) : children.next(node);
      if (children.isEnd(node)) continue; // the sentinel closes the ring: the walk wraps
      const WinView* child = children.element(node);
      if (child->window && !(child->viewFlags & NotSubclassed) && IsWindowEnabled(child->window)) {
        target = child->window;
        break;
      }
    } while (node != start);
  }
  if (target) SetFocus(target);
}

} // namespace WinLayer
