// The displays of the platform.
#include "win/WinMonitorList.h"
#include "window/WindowTest.h"

using namespace WinLayer;

TEST(WinMonitorList, HoldsTheDisplaysOfThisMoment) {
  WinMonitorList monitors;
  monitors.EnumerateMonitors();
  EXPECT_EQ(monitors.count(), GetSystemMetrics(SM_CMONITORS));
  monitors.EnumerateMonitors(); // anew, not once more
  EXPECT_EQ(monitors.count(), GetSystemMetrics(SM_CMONITORS));
}

TEST(WinMonitorList, ThePrimaryOneIsMarkedAndStartsAtZero) {
  WinMonitorList monitors;
  monitors.EnumerateMonitors();
  int primaries = 0;
  for (const WinMonitorUnit& unit : monitors.elements()) {
    EXPECT_TRUE(unit.monitor.holds({unit.work.left, unit.work.top}));
    EXPECT_TRUE(unit.monitor.holds({unit.work.right, unit.work.bottom}));
    if (!(unit.flags & WinMonitorUnit::Primary)) continue;
    ++primaries;
    EXPECT_EQ(unit.flags, 0x0002);
    EXPECT_EQ(unit.monitor,
              (WinRect{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}));
    RECT work{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    EXPECT_EQ(unit.work, rectOf(work));
  }
  EXPECT_EQ(primaries, 1);
}

TEST(WinMonitorList, AWindowOpensTowardsTheMiddleOfTheScreen) {
  WinMonitorList monitors;
  const int32_t width = GetSystemMetrics(SM_CXSCREEN);
  const int32_t height = GetSystemMetrics(SM_CYSCREEN);
  EXPECT_EQ(monitors.ChooseSide({10, 10, 30, 30}, false), WinSide::Right);
  EXPECT_EQ(monitors.ChooseSide({width - 30, 10, width - 10, 30}, false), WinSide::Left);
  EXPECT_EQ(monitors.ChooseSide({10, 10, 30, 30}, true), WinSide::Below);
  EXPECT_EQ(monitors.ChooseSide({10, height - 30, 30, height - 10}, true), WinSide::Above);
  EXPECT_EQ(monitors.PlaceBeside({10, 10, 30, 30}, {0, 0, 100, 50}, false),
            (WinRect{23, 10, 123, 60}));
}
