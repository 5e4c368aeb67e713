#include "win/WinEnterControl.h"

namespace WinLayer {

namespace {

WinPoint pointOf(LPARAM lParam) {
  return {static_cast<int16_t>(LOWORD(lParam)), static_cast<int16_t>(HIWORD(lParam))};
}

void trackWindow(HWND window, DWORD what, DWORD hoverTime) {
  if (!window || !what) return;
  TRACKMOUSEEVENT record{};
  record.cbSize = sizeof record;
  record.dwFlags = what;
  record.hwndTrack = window;
  record.dwHoverTime = hoverTime;
  TrackMouseEvent(&record);
}

} // namespace

int32_t WinEnterControl::OnHookMessage(UINT message, WPARAM, LPARAM lParam) {
  switch (message) {
  case WM_MOUSEMOVE:
    if (!inside) {
      inside = 1;
      track();
      OnMouseEnter(pointOf(lParam));
      trackedMove(pointOf(lParam));
      return 0;
    }
    trackedMove(pointOf(lParam));
    return WinNotHandled;
  case WM_MOUSEHOVER:
    trackMoves = OnMouseHover(pointOf(lParam)) ? 1 : 0;
    return 0;
  case WM_MOUSELEAVE:
    inside = 0;
    // Only of rests: who asks for a leave while the pointer is away is told of one at once, and
    // would be again for ever.
    trackWindow(hookedView_.window, hoverTime ? TME_HOVER : 0, hoverTime);
    OnMouseLeave(pointOf(lParam));
    trackedMove(pointOf(lParam));
    return 0;
  default:
    return WinNotHandled;
  }
}

void WinEnterControl::track() const {
  trackWindow(hookedView_.window, TME_LEAVE | (hoverTime ? TME_HOVER : 0), hoverTime);
}

void WinEnterControl::trackedMove(WinPoint point) {
  if (trackMoves) trackMoves = OnMouseMoveTracked(point) ? 1 : 0;
}

} // namespace WinLayer
