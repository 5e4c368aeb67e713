// WinMonitorRules: the displays of the desktop, and on which side of a rectangle a window or menu
// opens: where its display has more room. Pixels of the desktop, which may be negative.
//
// A list is a local value, filled anew each time that it is needed, and no cache. Where the
// displays come from is for the derived class to say. Any thread.
#pragma once

#include "raw/RawList.h"
#include "raw/RawLock.h"
#include "win/WinRect.h"

namespace WinLayer {

enum class WinSide : int32_t { Left = 0, Right = 1, Above = 2, Below = 3 };

class WinMonitorUnit {
 public:
  enum Flag : uint16_t { Primary = 0x0002 };
  uint16_t flags = 0;
  WinRect monitor;
  WinRect work; // without the task bar
};

class JobMonitorListAllocator : public RawLayer::RawListAllocator<WinMonitorUnit> {
 public:
  void destroy(WinMonitorUnit* element) override { delete element; }
};

class WinMonitorRules : public RawLayer::RawListR<JobMonitorListAllocator, WinMonitorUnit> {
 public:
  // Fills the list with the displays of this moment; what it held before goes.
  virtual void EnumerateMonitors() = 0;

  // The first display that holds the rectangle's centre, borders included; else a static empty one.
  [[nodiscard]] const WinMonitorUnit& MonitorAt(const WinRect& rect);
  // The side with more room; equal room means left or above. Horizontal launchers open things above
  // or below, others at their sides. Enumerates the displays. A rectangle on no display gets a
  // side, too, by an empty display.
  [[nodiscard]] WinSide ChooseSide(const WinRect& rect, bool horizontal);
  // The window rectangle beside the anchor, with its size as it is; not clipped to the display.
  // At the sides it overlaps the anchor by 7 pixels. Enumerates the displays.
  [[nodiscard]] WinRect PlaceBeside(const WinRect& anchor, const WinRect& window, bool horizontal);

 protected:
  RawLayer::RawLock lock_; // guards the list
};

} // namespace WinLayer
