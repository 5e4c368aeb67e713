#include "win/WinMonitorRules.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

using namespace WinLayer;

namespace {

constexpr WinRect Main{0, 0, 1920, 1080};

// A desktop of the test's own making.
class Desktop : public WinMonitorRules {
 public:
  Desktop(std::initializer_list<WinRect> monitors) : monitors_(monitors) {}
  int enumerations = 0;
  void EnumerateMonitors() override {
    ++enumerations;
    clear();
    for (const WinRect& rect : monitors_) {
      auto* unit = new WinMonitorUnit;
      if (rect == Main) unit->flags = WinMonitorUnit::Primary;
      unit->monitor = unit->work = rect;
      append(unit);
    }
  }

 private:
  std::vector<WinRect> monitors_;
};

constexpr WinRect around(int32_t x, int32_t y) {
  return {x - 10, y - 10, x + 10, y + 10};
}

} // namespace

TEST(WinMonitorRules, MonitorAtFindsTheOneThatHoldsTheCentre) {
  Desktop desktop{{-1280, 0, 0, 1024}, Main};
  desktop.EnumerateMonitors();
  EXPECT_EQ(desktop.MonitorAt(around(-600, 500)).monitor, (WinRect{-1280, 0, 0, 1024}));
  EXPECT_EQ(desktop.MonitorAt(around(600, 500)).monitor, Main);
  EXPECT_EQ(desktop.MonitorAt(around(600, 500)).flags, WinMonitorUnit::Primary);
}

TEST(WinMonitorRules, AllFourBordersBelongToAMonitor) {
  Desktop desktop{{100, 200, 300, 400}};
  desktop.EnumerateMonitors();
  const WinRect inside{100, 200, 300, 400};
  EXPECT_EQ(desktop.MonitorAt(around(100, 300)).monitor, inside);
  EXPECT_EQ(desktop.MonitorAt(around(300, 300)).monitor, inside);
  EXPECT_EQ(desktop.MonitorAt(around(200, 200)).monitor, inside);
  EXPECT_EQ(desktop.MonitorAt(around(200, 400)).monitor, inside);
  EXPECT_EQ(desktop.MonitorAt(around(99, 300)).monitor, WinRect{});
  EXPECT_EQ(desktop.MonitorAt(around(301, 300)).monitor, WinRect{});
  EXPECT_EQ(desktop.MonitorAt(around(200, 199)).monitor, WinRect{});
  EXPECT_EQ(desktop.MonitorAt(around(200, 401)).monitor, WinRect{});
}

TEST(WinMonitorRules, OnACommonBorderTheFirstInTheListWins) {
  Desktop oneWay{{0, 0, 100, 100}, {100, 0, 200, 100}};
  oneWay.EnumerateMonitors();
  EXPECT_EQ(oneWay.MonitorAt(around(100, 50)).monitor, (WinRect{0, 0, 100, 100}));
  Desktop otherWay{{100, 0, 200, 100}, {0, 0, 100, 100}};
  otherWay.EnumerateMonitors();
  EXPECT_EQ(otherWay.MonitorAt(around(100, 50)).monitor, (WinRect{100, 0, 200, 100}));
}

TEST(WinMonitorRules, ARectangleThatSpansTwoMonitorsIsJudgedByItsCentre) {
  Desktop desktop{{-1000, 0, 0, 1000}, {0, 0, 1000, 1000}};
  desktop.EnumerateMonitors();
  EXPECT_EQ(desktop.MonitorAt({-100, 0, 20, 100}).monitor, (WinRect{-1000, 0, 0, 1000}));
  EXPECT_EQ(desktop.MonitorAt({-20, 0, 100, 100}).monitor, (WinRect{0, 0, 1000, 1000}));
  EXPECT_EQ(desktop.ChooseSide({-100, 0, 20, 100}, false), WinSide::Left);
  EXPECT_EQ(desktop.ChooseSide({-20, 0, 100, 100}, false), WinSide::Right);
}

TEST(WinMonitorRules, WhatIsOnNoMonitorGetsAnEmptyRecord) {
  Desktop desktop{Main};
  desktop.EnumerateMonitors();
  const WinMonitorUnit& none = desktop.MonitorAt(around(5000, 5000));
  EXPECT_EQ(none.monitor, WinRect{});
  EXPECT_EQ(none.work, WinRect{});
  EXPECT_EQ(none.flags, 0);
  EXPECT_EQ(&none, &desktop.MonitorAt(around(-5000, 5000)));
}

TEST(WinMonitorRules, WithoutAMonitorThereIsStillASide) {
  Desktop desktop{Main};
  EXPECT_EQ(desktop.ChooseSide(around(5000, 5000), false), WinSide::Left); // 5010 to -4990
  EXPECT_EQ(desktop.ChooseSide(around(-5000, -5000), false), WinSide::Right);
  EXPECT_EQ(desktop.ChooseSide(around(5000, 5000), true), WinSide::Above);
  EXPECT_EQ(desktop.ChooseSide(around(-5000, -5000), true), WinSide::Below);
  Desktop dark{};
  EXPECT_EQ(dark.ChooseSide(around(100, 100), false), WinSide::Left);
}

TEST(WinMonitorRules, ALauncherAtTheLeftOpensToTheRightAndTheOtherWayRound) {
  Desktop desktop{Main};
  EXPECT_EQ(desktop.ChooseSide(around(100, 500), false), WinSide::Right);
  EXPECT_EQ(desktop.ChooseSide(around(1800, 500), false), WinSide::Left);
}

TEST(WinMonitorRules, AHorizontalLauncherAtTheTopOpensDownAndTheOtherWayRound) {
  Desktop desktop{Main};
  EXPECT_EQ(desktop.ChooseSide(around(100, 100), true), WinSide::Below);
  EXPECT_EQ(desktop.ChooseSide(around(100, 1000), true), WinSide::Above);
}

TEST(WinMonitorRules, TheExactCentreMeansLeftOrAbove) {
  Desktop desktop{Main};
  EXPECT_EQ(desktop.ChooseSide(around(960, 540), false), WinSide::Left);
  EXPECT_EQ(desktop.ChooseSide(around(959, 540), false), WinSide::Right);
  EXPECT_EQ(desktop.ChooseSide(around(960, 540), true), WinSide::Above);
  EXPECT_EQ(desktop.ChooseSide(around(960, 539), true), WinSide::Below);
}

TEST(WinMonitorRules, RoomIsMeasuredToTheFarEdgesOfTheRectangle) {
  // Both distances hold the width of the rectangle, so they compare the room at either side.
  Desktop desktop{{0, 0, 100, 100}};
  EXPECT_EQ(desktop.ChooseSide({20, 0, 79, 10}, false), WinSide::Right); // 79 < 80
  EXPECT_EQ(desktop.ChooseSide({20, 0, 80, 10}, false), WinSide::Left);  // 80 = 80
}

TEST(WinMonitorRules, NegativeCoordinatesAreRealOnes) {
  Desktop desktop{Main, {-1280, -200, 0, 824}};
  EXPECT_EQ(desktop.ChooseSide(around(-1200, 0), false), WinSide::Right);
  EXPECT_EQ(desktop.ChooseSide(around(-100, 0), false), WinSide::Left);
  EXPECT_EQ(desktop.ChooseSide(around(-640, 0), false), WinSide::Left); // the exact centre
  EXPECT_EQ(desktop.ChooseSide(around(-1200, -100), true), WinSide::Below);
  EXPECT_EQ(desktop.ChooseSide(around(-1200, 700), true), WinSide::Above);
  EXPECT_EQ(desktop.ChooseSide(around(-1200, 312), true), WinSide::Above); // the exact centre
}

TEST(WinMonitorRules, TheDisplaysAreAskedForEachTime) {
  Desktop desktop{Main};
  EXPECT_EQ(desktop.ChooseSide(around(100, 100), false), WinSide::Right);
  EXPECT_EQ(desktop.ChooseSide(around(100, 100), false), WinSide::Right);
  EXPECT_EQ(desktop.enumerations, 2);
  EXPECT_EQ(desktop.count(), 1);
}

TEST(WinMonitorRules, AWindowAtTheSideOverlapsTheAnchorBySeven) {
  Desktop desktop{Main};
  const WinRect window{3, 5, 203, 105}; // 200 by 100, wherever it stood
  const WinRect leftAnchor{100, 400, 140, 420};
  EXPECT_EQ(desktop.PlaceBeside(leftAnchor, window, false), (WinRect{133, 400, 333, 500}));
  const WinRect rightAnchor{1800, 400, 1840, 420};
  EXPECT_EQ(desktop.PlaceBeside(rightAnchor, window, false), (WinRect{1607, 400, 1807, 500}));
}

TEST(WinMonitorRules, AWindowAboveOrBelowTouchesTheAnchor) {
  Desktop desktop{Main};
  const WinRect window{3, 5, 203, 105};
  EXPECT_EQ(desktop.PlaceBeside({100, 100, 140, 120}, window, true), (WinRect{100, 120, 300, 220}));
  EXPECT_EQ(desktop.PlaceBeside({100, 900, 140, 920}, window, true), (WinRect{100, 800, 300, 900}));
}

TEST(WinMonitorRules, ThePlaceIsNotClippedToTheMonitor) {
  Desktop desktop{{0, 0, 100, 100}};
  EXPECT_EQ(desktop.PlaceBeside({90, 90, 99, 99}, {0, 0, 500, 500}, false),
            (WinRect{-403, 90, 97, 590}));
  EXPECT_EQ(desktop.PlaceBeside({90, 90, 99, 99}, {0, 0, 500, 500}, true),
            (WinRect{90, -410, 590, 90}));
}
