// The sample's tour again and again in one process: what the process holds after the first hundred
// rounds it holds after the last. On Windows, where programs would really start and folders really
// open, the commands that reach outside are left out, and programs are started some times apart.

#include "TestFolder.h"
#include "TourBed.h"
#include "soak/SoakFigures.h"

#ifndef _WIN32
#include "host/HostClipboard.h"
#include "host/HostShell.h"
#include "host/HostSystem.h"
#endif

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>

using namespace JobLayer;
using RawLayer::RawString;

namespace {

#if defined(TARVELLON_SANITIZED)
constexpr int32_t Rounds = 500;
#else
constexpr int32_t Rounds = 10000;
#endif
constexpr int32_t WarmUp = 100;
constexpr int32_t Batch = 100; // rounds between two looks
// A byte kept by each round would be more. Numbers that get longer and the like are less.
constexpr int64_t AllocatedSlack = std::min(Rounds / 3, 3000);
constexpr uint32_t Settling = 50;                  // milliseconds that a thread may need to be gone
constexpr int64_t ResidentSlack = 4 * 1024 * 1024; // what the heap keeps back differs

void print(const char* when, int32_t rounds, const SoakFigures& figures) {
  std::printf("%-8s %6d rounds: %lld bytes in use, %lld resident, %lld handles, %lld for drawing\n",
              when, rounds, static_cast<long long>(figures.allocated),
              static_cast<long long>(figures.resident), static_cast<long long>(figures.handles),
              static_cast<long long>(figures.gui));
}

void expectFlat(const SoakFigures& first, const SoakFigures& last) {
  EXPECT_LE(last.allocated, first.allocated + AllocatedSlack);
  EXPECT_LE(last.resident, first.resident + ResidentSlack);
  EXPECT_LE(last.handles, first.handles);
  EXPECT_LE(last.gui, first.gui);
  EXPECT_GT(first.allocated, 0);
  EXPECT_GT(first.handles, 0);
}

#ifdef _WIN32

class Outside {
 public:
  explicit Outside(const TestFolder&) {}
  void forget() {}
};

bool reachesOutside(const JobParamUnit& unit) {
  for (const char* word : {"Shell", "OpenFile", "OpenFolder", "ToClipboard"})
    if (unit.key.equals(raw(word))) return true;
  return false;
}

JobParamList inside(const JobParamList& list) {
  JobParamList kept;
  for (const JobParamUnit& unit : list.elements()) {
    if (reachesOutside(unit)) continue;
    if (unit.type() == JobParamUnit::TypeCommand)
      kept.addBlock(unit.key, inside(static_cast<const JobParamCommand&>(unit).params));
    else
      kept.addText(unit.key, static_cast<const JobParamText&>(unit).value);
  }
  return kept;
}

void stayInside() {
  for (JobActionUnit& action : TourBed::data().actions.elements())
    action.params = inside(action.params);
}

#else

// What the stand-ins write down is theirs, not the engine's.
class Outside {
 public:
  explicit Outside(const TestFolder& folder) {
    system_.facts().tempFolder = folder.file("Temp");
    system_.facts().userFolder = folder.file("User");
    system_.facts().desktop = folder.file("Desktop");
  }
  void forget() {
    launches_ += shell_.takeLaunches().size();
    HostShell::state().launches.shrink_to_fit();
    shell_.takeWaits();
  }
  ~Outside() {
    EXPECT_EQ(launches_, 2U * Rounds); // a program and a folder each
    EXPECT_EQ(shell_.openProcesses(), 0);
  }
  Outside(const Outside&) = delete;
  Outside& operator=(const Outside&) = delete;

 private:
  HostSystem::Scope system_;
  HostShell::Scope shell_;
  HostClipboard::Scope clipboard_;
  std::size_t launches_ = 0;
};

void stayInside() {}

#endif

// Runs `count` rounds with the log on; then it is in its file, and its thread has ended.
template <class Round>
SoakFigures soak(TourBed& bed, Outside& outside, int32_t count, Round round) {
  bed.startLog();
  for (int32_t i = 0; i < count; ++i)
    if (!round()) {
      ADD_FAILURE() << "round " << i;
      break;
    }
  TourBed::stopLog();
  outside.forget();
  RawLayer::rawSleep(Settling);
  return soakFigures();
}

} // namespace

TEST(Soak, TourLeavesNothingBehind) {
  const TestFolder folder;
  for (const char* name : {"Temp", "User", "Desktop"}) folder.makeFolder(name);
  Outside outside(folder);
  TourBed bed(RawString::fromChars(TARVELLON_SAMPLE), folder.file("Log"));
  bed.start();
  ASSERT_GT(TourBed::data().buttons.count(), 20);
  stayInside();
  const auto batch = [&](int32_t count) {
    return soak(bed, outside, count, [] { return TourBed::runAction("Tour"); });
  };
  batch(WarmUp / 2);
  const SoakFigures first = batch(WarmUp / 2);
  print("first", WarmUp, first);
  SoakFigures last;
  for (int32_t done = WarmUp; done < Rounds;) {
    last = batch(std::min(Batch, Rounds - done));
    done += Batch;
    if (done % (Rounds / 5) == 0) print("", done, last);
  }
  expectFlat(first, last);
  EXPECT_EQ(bed.dialogs.reports, 0);
}

#ifdef _WIN32

TEST(Soak, StartedProgramsLeaveNothingBehind) {
  constexpr int32_t Programs = 50;
  const TestFolder folder;
  folder.write("Sample.ini", "[Action:Start]\r\nShell {\r\nCommand=cmd\r\nParameter=/c exit\r\n"
                             "ShowStatus=Hide\r\n}\r\n");
  Outside outside(folder);
  TourBed bed(folder.file("Sample.ini"), folder.file("Log"));
  bed.start();
  const auto round = [] { return TourBed::runAction("Start"); };
  soak(bed, outside, 5, round);
  const SoakFigures first = soak(bed, outside, 5, round);
  print("first", 10, first);
  const SoakFigures last = soak(bed, outside, Programs, round);
  print("last", 10 + Programs, last);
  expectFlat(first, last);
  EXPECT_EQ(bed.dialogs.reports, 0);
}

#endif
