#include "raw/RawLock.h"

#ifndef _WIN32
#include "host/HostFaults.h"
#endif

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

using namespace RawLayer;

namespace {

int64_t millisecondsOf(const auto& action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                               start)
      .count();
}

} // namespace

TEST(RawLock, GuardsACounterOfManyThreads) {
  RawLock lock;
  int counter = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i)
    threads.emplace_back([&] {
      for (int round = 0; round < 2000; ++round) {
        const RawLockScope scope(lock);
        ++counter;
      }
    });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(counter, 8000);
}

TEST(RawLock, MayBeEnteredAgainByItsOwner) {
  RawLock lock;
  std::atomic<bool> entered{false};
  std::thread other;
  {
    const RawLockScope outer(lock);
    { const RawLockScope inner(lock); }
    other = std::thread([&] {
      const RawLockScope scope(lock);
      entered = true;
    });
    rawSleep(30);
    EXPECT_FALSE(entered) << "one leave for two enters";
  }
  other.join();
  EXPECT_TRUE(entered);
}

TEST(RawEvent, IsNotSignalledAtFirst) {
  RawEvent event;
  EXPECT_EQ(event.wait(0), RawEvent::TimedOut);
}

TEST(RawEvent, StaysSignalledUntilReset) {
  RawEvent event;
  event.signal();
  EXPECT_EQ(event.wait(0), RawEvent::Signalled);
  EXPECT_EQ(event.wait(0xFFFFFFFF), RawEvent::Signalled);
  event.reset();
  EXPECT_EQ(event.wait(0), RawEvent::TimedOut);
}

TEST(RawEvent, AWaitWithoutASignalTakesItsTime) {
  RawEvent event;
  EXPECT_GE(millisecondsOf([&] { EXPECT_EQ(event.wait(40), RawEvent::TimedOut); }), 25);
}

TEST(RawEvent, WakesEveryWaiter) {
  RawEvent event;
  int written = 0;
  std::atomic<int> seen{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 3; ++i)
    threads.emplace_back([&, forever = i == 0] {
      if (event.wait(forever ? 0xFFFFFFFF : 20000) == RawEvent::Signalled) seen += written;
    });
  rawSleep(10);
  written = 7;
  event.signal();
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(seen, 21);
}

#ifndef _WIN32
TEST(RawEvent, OneThatCouldNotBeMadeWaitsTheFullTime) {
  HostFaults::Scope faults;
  faults.failAll(HostFaults::Thread);
  RawEvent event;
  event.signal();
  event.reset();
  EXPECT_GE(millisecondsOf([&] { EXPECT_EQ(event.wait(30), RawEvent::TimedOut); }), 25);
}
#endif

TEST(RawSleep, TakesAtLeastItsTime) {
  EXPECT_GE(millisecondsOf([] { rawSleep(30); }), 20);
  EXPECT_LT(millisecondsOf([] { rawSleep(0); }), 5000);
}

TEST(RawAutoFlag, IsRaisedForAsLongAsItsScope) {
  RawAutoFlag::BooleanUnit unit;
  EXPECT_FALSE(unit.isSet());
  {
    const RawAutoFlag flag(unit);
    EXPECT_TRUE(unit.isSet());
    std::thread([&] { EXPECT_TRUE(unit.isSet()); }).join();
  }
  EXPECT_FALSE(unit.isSet());
}

TEST(RawAutoFlag, IsReadWhileAnotherThreadRaisesIt) {
  RawAutoFlag::BooleanUnit unit;
  std::atomic<bool> stop{false};
  std::thread writer([&] {
    while (!stop) const RawAutoFlag flag(unit);
  });
  bool raised = false;
  for (int i = 0; i < 10000000 && !raised; ++i) raised = unit.isSet();
  stop = true;
  writer.join();
  EXPECT_TRUE(raised);
  EXPECT_FALSE(unit.isSet());
}
