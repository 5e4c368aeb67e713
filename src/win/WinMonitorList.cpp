#include "win/WinMonitorList.h"

#include "win/WinGdi.h"

namespace WinLayer {

namespace {

// A display that is gone by the time it is asked about is left out.
BOOL CALLBACK addMonitor(HMONITOR monitor, HDC, RECT*, LPARAM list) {
  MONITORINFOEXA record{};
  record.cbSize = sizeof record;
  if (!GetMonitorInfoA(monitor, &record)) return TRUE;
  auto* unit = new WinMonitorUnit;
  if (record.dwFlags & MONITORINFOF_PRIMARY) unit->flags |= WinMonitorUnit::Primary;
  unit->monitor = rectOf(record.rcMonitor);
  unit->work = rectOf(record.rcWork);
  reinterpret_cast<WinMonitorList*>(list)->append(unit);
  return TRUE;
}

} // namespace

void WinMonitorList::EnumerateMonitors() {
  const RawLayer::RawLockScope scope(lock_);
  clear();
  EnumDisplayMonitors(nullptr, nullptr, addMonitor, reinterpret_cast<LPARAM>(this));
}

} // namespace WinLayer
