// WinMonitorList: the displays as the platform has them now. See WinMonitorRules for what to ask.
//
//   WinMonitorList monitors;
//   const WinRect place = monitors.PlaceBeside(anchor, window, isHorizontal);
#pragma once

#include "win/WinMonitorRules.h"

namespace WinLayer {

class WinMonitorList : public WinMonitorRules {
 public:
  void EnumerateMonitors() override;
};

} // namespace WinLayer
