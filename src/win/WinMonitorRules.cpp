#include "win/WinMonitorRules.h"

namespace WinLayer {

namespace {

constexpr int32_t SideOverlap = 7; // of the anchor by a window at its left or right

} // namespace

const WinMonitorUnit& WinMonitorRules::MonitorAt(const WinRect& rect) {
  static const WinMonitorUnit none;
  const WinPoint centre{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
  const RawLayer::RawLockScope scope(lock_);
  for (const WinMonitorUnit& unit : elements())
    if (unit.monitor.holds(centre)) return unit;
  return none;
}

WinSide WinMonitorRules::ChooseSide(const WinRect& rect, bool horizontal) {
  EnumerateMonitors();
  const WinRect& monitor = MonitorAt(rect).monitor;
  if (horizontal)
    return rect.bottom - monitor.top < monitor.bottom - rect.top ? WinSide::Below : WinSide::Above;
  return rect.right - monitor.left < monitor.right - rect.left ? WinSide::Right : WinSide::Left;
}

WinRect WinMonitorRules::PlaceBeside(const WinRect& anchor, const WinRect& window,
                                     bool horizontal) {
  switch (ChooseSide(anchor, horizontal)) {
  case WinSide::Left:
    return window.movedTo(anchor.left + SideOverlap - window.width(), anchor.top);
  case WinSide::Right:
    return window.movedTo(anchor.right - SideOverlap, anchor.top);
  case WinSide::Above:
    return window.movedTo(anchor.left, anchor.top - window.height());
  case WinSide::Below:
    break;
  }
  return window.movedTo(anchor.left, anchor.bottom);
}

} // namespace WinLayer
