#include "raw/RawThread.h"

#ifndef _WIN32
#include "host/HostFaults.h"
#endif

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>

using namespace RawLayer;

namespace {

// Runs until it is told to stop, or `rounds` times, and in any case while it is held.
class Worker : public RawThreadUnit {
 public:
  ~Worker() override {
    requestStop();
    waitForEnd();
  }

  int rounds = -1;
  std::string diary; // what happened, in order; read when the thread has ended
  std::atomic<int> runs{0};
  std::atomic<bool> held{false};

 protected:
  void run() override {
    ++runs;
    diary += isRunning() && !isDone() ? "run " : "wrong ";
    for (int i = 0; held || (i != rounds && !isStopRequested()); ++i) rawSleep(1);
  }
  void finished() override { diary += isDone() && !isRunning() ? "finished " : "not started "; }
};

bool waitUntil(const auto& condition) {
  for (int i = 0; i < 10000; ++i, rawSleep(1))
    if (condition()) return true;
  return false;
}

class RecordingHandler : public RawThreadHook::Handler {
 public:
  ~RecordingHandler() override { RawThreadHook::install(nullptr); }
  void onException(void* exceptionPointers) override {
    ++calls;
    last = exceptionPointers;
  }
  int calls = 0;
  void* last = nullptr;
};

} // namespace

TEST(RawThreadUnit, IsAtRestBeforeItsFirstStart) {
  Worker worker;
  EXPECT_FALSE(worker.isRunning());
  EXPECT_FALSE(worker.isDone());
  EXPECT_FALSE(worker.isStopRequested());
}

TEST(RawThreadUnit, WaitForEndReturnsAtOnceWhenItWasNeverStarted) {
  Worker worker;
  const auto start = std::chrono::steady_clock::now();
  worker.waitForEnd();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(90));
}

TEST(RawThreadUnit, RunsThenFinishes) {
  Worker worker;
  worker.rounds = 3;
  ASSERT_TRUE(worker.start());
  worker.waitForEnd();
  EXPECT_EQ(worker.diary, "run finished ");
  EXPECT_TRUE(worker.isDone());
  EXPECT_FALSE(worker.isRunning());
}

TEST(RawThreadUnit, StartWhileRunningHasNoEffect) {
  Worker worker;
  worker.held = true;
  ASSERT_TRUE(worker.start());
  EXPECT_FALSE(worker.start());
  EXPECT_TRUE(worker.isRunning());
  EXPECT_FALSE(worker.isDone());
  worker.requestStop();
  EXPECT_FALSE(worker.start());
  EXPECT_TRUE(worker.isStopRequested()) << "the request stays";
  worker.held = false;
  worker.waitForEnd();
  EXPECT_EQ(worker.diary, "run finished ");
}

TEST(RawThreadUnit, StopsWhenItIsAsked) {
  Worker worker;
  ASSERT_TRUE(worker.start());
  ASSERT_TRUE(waitUntil([&] { return worker.runs == 1; }));
  EXPECT_TRUE(worker.isRunning());
  worker.requestStop();
  EXPECT_TRUE(worker.isStopRequested());
  worker.waitForEnd();
  EXPECT_TRUE(worker.isStopRequested()) << "until the next start";
  EXPECT_TRUE(worker.isDone());
}

TEST(RawThreadUnit, MayBeStartedManyTimes) {
  Worker worker;
  for (int i = 1; i <= 3; ++i) {
    ASSERT_TRUE(worker.start());
    EXPECT_FALSE(worker.isDone());
    EXPECT_FALSE(worker.isStopRequested()) << "a start forgets the old request";
    worker.requestStop();
    worker.waitForEnd();
    EXPECT_TRUE(worker.isDone());
    EXPECT_EQ(worker.runs, i);
  }
}

TEST(RawThreadUnit, MayBeStartedAgainFromFinished) {
  class Repeater : public RawThreadUnit {
   public:
    std::atomic<int> left{3};

   protected:
    void run() override { --left; }
    void finished() override {
      if (left > 0) started += start() ? 1 : 0;
    }

   public:
    std::atomic<int> started{0};
  };
  Repeater repeater;
  ASSERT_TRUE(repeater.start());
  ASSERT_TRUE(waitUntil([&] { return repeater.left == 0; }));
  repeater.waitForEnd();
  EXPECT_EQ(repeater.started, 2);
  EXPECT_TRUE(repeater.isDone());
}

TEST(RawThreadUnit, ManyThreadsRunAtOnce) {
  Worker workers[6];
  for (Worker& worker : workers) ASSERT_TRUE(worker.start());
  for (Worker& worker : workers) ASSERT_TRUE(waitUntil([&] { return worker.runs == 1; }));
  for (Worker& worker : workers) EXPECT_TRUE(worker.isRunning());
  for (Worker& worker : workers) worker.requestStop();
  for (Worker& worker : workers) {
    worker.waitForEnd();
    EXPECT_EQ(worker.diary, "run finished ");
  }
}

#ifndef _WIN32
TEST(RawThreadUnit, AThreadThatCannotBeCreatedIsFinishedAtOnce) {
  Worker worker;
  worker.rounds = 0;
  {
    HostFaults::Scope faults;
    faults.failAll(HostFaults::Thread);
    EXPECT_FALSE(worker.start());
  }
  EXPECT_EQ(worker.diary, "not started ");
  EXPECT_FALSE(worker.isRunning());
  EXPECT_FALSE(worker.isDone());
  worker.waitForEnd();
  EXPECT_TRUE(worker.start()) << "nothing is left behind";
  worker.waitForEnd();
  EXPECT_EQ(worker.diary, "not started run finished ");
}
#endif

TEST(RawThreadHook, RaiseReachesTheInstalledHandler) {
  RecordingHandler handler;
  int pointers = 0;
  EXPECT_EQ(RawThreadHook::installed(), nullptr);
  RawThreadHook::raise(&pointers);
  EXPECT_EQ(handler.calls, 0) << "with none installed nothing happens";
  RawThreadHook::install(&handler);
  EXPECT_EQ(RawThreadHook::installed(), &handler);
  RawThreadHook::raise(&pointers);
  EXPECT_EQ(handler.calls, 1);
  EXPECT_EQ(handler.last, &pointers);
  RawThreadHook::install(nullptr);
  RawThreadHook::raise(&pointers);
  EXPECT_EQ(handler.calls, 1);
}

TEST(RawAbortChecker, TheDummyNeverAborts) {
  RawDummyAbortChecker dummy;
  RawAbortChecker& checker = dummy;
  EXPECT_FALSE(checker.shouldAbort());
}
