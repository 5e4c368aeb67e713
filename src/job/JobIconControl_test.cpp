#include "job/JobIconControl.h"

#include "IconControlBed.h"

#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

using namespace JobLayer;
using namespace IconControlBed;
using std::string;
using Calls = std::vector<string>;
using Commands = std::vector<uint16_t>;

namespace {

constexpr uint32_t Red = 0xFFFF0000;
constexpr uint32_t Green = 0xFF00FF00;

string fileName(int32_t number) {
  return "file" + std::to_string(number) + ".exe";
}

} // namespace

// --- What is asked of the platform

TEST(JobIconControl, FilesThatHoldIconsAreSearchedAndAllOthersAreDocuments) {
  TestIcons icons;
  Control control(icons);
  control.delayed = false;
  for (const char* file : {"a.exe", "B.EXE", "c:\\d.x\\e.Ico", "f.dll", "g.txt", "h.lnk", "i",
                           "j.exe\\k", "l.exe/m", ".exe", "n.exe.bak", "o."})
    control.ask(file);
  EXPECT_EQ(icons.calls(),
            (Calls{"file a.exe 0", "file B.EXE 0", "file c:\\d.x\\e.Ico 0", "file f.dll 0",
                   "document g.txt", "document h.lnk", "document i", "document j.exe\\k",
                   "document l.exe/m", "file .exe 0", "document n.exe.bak", "document o."}));
}

TEST(JobIconControl, WithAnIndexEveryFileIsSearched) {
  TestIcons icons;
  Control control(icons);
  control.delayed = false;
  control.ask("a.txt", 0);
  control.ask("a.txt", 3);
  control.ask("a.txt", -101);
  control.ask("a.exe", 3);
  EXPECT_EQ(icons.calls(),
            (Calls{"document a.txt", "file a.txt 3", "file a.txt -101", "file a.exe 3"}));
}

TEST(JobIconControl, TheExtensionsAreAnOption) {
  TestIcons icons;
  Control control(icons);
  control.setOptions(false, false, raw(" cpl , ICL"), {});
  for (const char* file : {"a.exe", "a.cpl", "a.icl"}) control.ask(file);
  EXPECT_EQ(icons.calls(), (Calls{"document a.exe", "file a.cpl 0", "file a.icl 0"}));
  control.setOptions(false, false, {}, {});
  control.ask("a.cpl");
  EXPECT_EQ(icons.calls().back(), "document a.cpl");
}

// --- At once

TEST(JobIconControl, WithoutDelayARequestExtracts) {
  TestIcons icons;
  icons.set("a.exe", Red);
  Control control(icons);
  control.delayed = false;
  const int32_t handle = control.ask("a.exe");
  EXPECT_EQ(control.colourOf(handle), Red);
  const JobIconInfoUnit entry = control.entry(handle);
  EXPECT_EQ(entry.state, JobIconInfoUnit::Ready);
  EXPECT_EQ(entry.file, RawString());
  EXPECT_EQ(entry.iconIndex, 0);
  EXPECT_FALSE(control.workPending());
  EXPECT_FALSE(control.isRunning());
}

TEST(JobIconControl, WithoutDelayTheNextRequestExtractsAgain) {
  TestIcons icons;
  icons.set("a.exe", Red);
  Control control(icons);
  control.delayed = false;
  const int32_t first = control.ask("a.exe", 2);
  icons.set("a.exe", Green);
  const int32_t second = control.ask("a.exe", 2);
  EXPECT_NE(first, second);
  EXPECT_EQ(icons.calls().size(), 2u);
  EXPECT_EQ(control.colourOf(first), Red);
  EXPECT_EQ(control.colourOf(second), Green);
}

TEST(JobIconControl, WhatWasExtractedAtOnceIsNotSaved) {
  const TestFolder folder;
  TestIcons icons;
  icons.set("a.exe", Red);
  Control control(icons);
  control.setOptions(false, true, raw("exe"), folder.file("IconCache.ini"));
  control.ask("a.exe");
  ASSERT_TRUE(control.cache.save());
  Control next(icons);
  next.setOptions(true, true, raw("exe"), folder.file("IconCache.ini"));
  EXPECT_EQ(next.entryCount(), 0);
}

TEST(JobIconControl, WithoutDelayAnIconOfTheCacheIsTakenFromThere) {
  const TestFolder folder;
  TestIcons icons;
  icons.set("a.exe", Red);
  {
    Control control(icons);
    control.setOptions(true, true, raw("exe"), folder.file("IconCache.ini"));
    control.ask("a.exe");
    control.start();
    ASSERT_TRUE(control.isServed());
    control.stop();
    ASSERT_TRUE(control.cache.save());
  }
  Control next(icons);
  next.setOptions(false, true, raw("exe"), folder.file("IconCache.ini"));
  const std::size_t before = icons.calls().size();
  EXPECT_EQ(next.colourOf(next.ask("A.exe")), Red);
  EXPECT_EQ(icons.calls().size(), before);
}

// --- Later

TEST(JobIconControl, TheHandleOfARequestIsThePositionOfItsEntry) {
  TestIcons icons;
  Control control(icons);
  EXPECT_EQ(control.ask("a.exe", 0), 0);
  EXPECT_EQ(control.ask("a.exe", 1), 1);
  EXPECT_EQ(control.ask("b.exe", 0), 2);
  const JobIconInfoUnit entry = control.entry(1);
  EXPECT_EQ(entry.state, JobIconInfoUnit::Requested);
  EXPECT_EQ(entry.imageId, control.cache.loadingId());
  EXPECT_EQ(bytesOf(entry.file), "a.exe");
  EXPECT_EQ(entry.iconIndex, 1);
  EXPECT_EQ(entry.unused, 0);
  EXPECT_TRUE(control.workPending());
}

TEST(JobIconControl, TwoRequestsForOnePairAreOneEntry) {
  TestIcons icons;
  Control control(icons);
  const int32_t handle = control.ask("c:\\Tools\\a.exe", 3);
  EXPECT_EQ(control.ask("c:\\Tools\\a.exe", 3), handle);
  EXPECT_EQ(control.ask("C:\\TOOLS\\A.EXE", 3), handle);
  EXPECT_NE(control.ask("c:\\Tools\\a.exe", 4), handle);
  EXPECT_EQ(control.entryCount(), 2);
}

TEST(JobIconControl, UpToItsTurnARequestShowsTheLoadingImage) {
  TestIcons icons;
  icons.set("a.exe", Red);
  Control control(icons);
  const int32_t handle = control.ask("a.exe");
  EXPECT_EQ(control.colourOf(handle), LoadingColour);
  EXPECT_TRUE(icons.calls().empty());
  ASSERT_TRUE(control.start());
  ASSERT_TRUE(control.isServed());
  EXPECT_EQ(control.colourOf(handle), Red);
  EXPECT_EQ(control.entry(handle).state, JobIconInfoUnit::Ready);
}

TEST(JobIconControl, AFileWithoutIconShowsTheFailedImage) {
  TestIcons icons;
  Control control(icons);
  const int32_t handle = control.ask("gone.exe");
  control.start();
  ASSERT_TRUE(control.isServed());
  EXPECT_EQ(control.colourOf(handle), FailedColour);
  EXPECT_EQ(control.imageOf(handle), control.cache.failedId());
  control.delayed = false;
  EXPECT_EQ(control.colourOf(control.ask("gone.txt")), FailedColour);
}

TEST(JobIconControl, AnImageThatFailedIsTriedAgainInTheNextRun) {
  const TestFolder folder;
  TestIcons icons;
  const auto run = [&] {
    Control control(icons);
    control.setOptions(true, true, raw("exe"), folder.file("IconCache.ini"));
    const int32_t handle = control.ask("a.exe");
    control.start();
    EXPECT_TRUE(control.isServed());
    control.stop();
    EXPECT_TRUE(control.cache.save());
    return control.colourOf(handle);
  };
  EXPECT_EQ(run(), FailedColour);
  icons.set("a.exe", Green);
  EXPECT_EQ(run(), Green);
}

TEST(JobIconControl, HasMoreCellsThanItStartsWith) {
  TestIcons icons;
  Control control(icons);
  EXPECT_EQ(control.cache.pool.capacity(), JobIconControl::FirstCells);
  constexpr int32_t Count = JobIconControl::FirstCells + 60;
  for (int32_t i = 0; i < Count; ++i) {
    icons.set(fileName(i), 0xFF010000u + static_cast<uint32_t>(i));
    control.ask(fileName(i));
  }
  control.start();
  ASSERT_TRUE(control.isServed());
  for (int32_t i = 0; i < Count; ++i)
    EXPECT_EQ(control.colourOf(i), 0xFF010000u + static_cast<uint32_t>(i));
}

TEST(JobIconControl, AnEmptyNameIsNobodysEntry) {
  TestIcons icons;
  Control control(icons);
  control.start(); // appends a mark, which has no file either
  const int32_t handle = control.ask("");
  EXPECT_EQ(control.entry(handle).state == JobIconInfoUnit::FirstMark, false);
  ASSERT_TRUE(control.isServed());
  EXPECT_EQ(control.colourOf(handle), FailedColour);
}

TEST(JobIconControl, ABadHandleHasNoImageAndDrawsNothing) {
  TestIcons icons;
  icons.set("a.exe", Red);
  Control control(icons);
  control.delayed = false;
  const int32_t handle = control.ask("a.exe");
  TestCanvas canvas({4, 4}, 0x102030);
  for (const int32_t bad : {-1, handle + 1, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(control.imageOf(bad), -1);
    control.draw(bad, canvas.get(), {0, 0, 4, 4});
  }
  EXPECT_EQ(canvas.pixels(), TestPixels(16, 0x102030));
  control.draw(handle, canvas.get(), {0, 0, 4, 4});
  EXPECT_EQ(canvas.pixels(), TestPixels(16, Red & 0xFFFFFF));
}

// --- The thread

TEST(JobIconControlThread, WorksAtIdlePriorityOutsideAllLocks) {
  TestIcons icons;
  icons.closeGate();
  icons.set("a.exe", Red);
  icons.set("b.exe", Green);
  Control control(icons);
  const int32_t handle = control.ask("a.exe");
  control.start();
  ASSERT_TRUE(comesTrue([&] { return icons.waiting == 1; }));
  // Each of these needs a lock.
  TestCanvas canvas({4, 4}, 0);
  const int32_t other = control.ask("b.exe");
  EXPECT_EQ(control.imageOf(handle), control.cache.loadingId());
  control.draw(handle, canvas.get(), {0, 0, 4, 4});
  EXPECT_EQ(canvas.pixels(), TestPixels(16, LoadingColour & 0xFFFFFF));
  EXPECT_EQ(icons.waiting, 1);
  icons.openGate();
  ASSERT_TRUE(control.isServed());
  EXPECT_TRUE(icons.gateOpened);
  EXPECT_EQ(control.colourOf(handle), Red);
  EXPECT_EQ(control.colourOf(other), Green);
#if defined(_WIN32)
  EXPECT_EQ(icons.priority, THREAD_PRIORITY_IDLE);
#endif
}

TEST(JobIconControlThread, ARequestBehindALongQueueDoesNotWaitForIt) {
  TestIcons icons;
  icons.closeGate();
  Control control(icons);
  for (int32_t i = 0; i < 500; ++i) control.ask(fileName(i));
  control.start();
  ASSERT_TRUE(comesTrue([&] { return icons.waiting == 1; }));
  EXPECT_EQ(control.colourOf(control.ask("late.exe")), LoadingColour);
  EXPECT_TRUE(icons.calls().empty()); // not one is done
  icons.openGate();
  ASSERT_TRUE(control.isServed());
  EXPECT_EQ(icons.calls().size(), 501u);
}

TEST(JobIconControlThread, IconsComeInTheOrderOfTheirRequests) {
  TestIcons icons;
  Control control(icons);
  for (const char* file : {"c.exe", "a.exe", "b.exe"}) control.ask(file);
  control.start();
  ASSERT_TRUE(control.isServed());
  EXPECT_EQ(icons.calls(), (Calls{"file c.exe 0", "file a.exe 0", "file b.exe 0"}));
}

TEST(JobIconControlThread, DoesNotStartWhileThereIsNothingToDo) {
  TestIcons icons;
  Control control(icons);
  control.open(icons.dialog());
  EXPECT_FALSE(control.isRunning());
  EXPECT_EQ(control.entryCount(), 0);
}

TEST(JobIconControlThread, WithWorkItStartsAndTellsTheDialogOnce) {
  TestIcons icons;
  Control control(icons);
  control.ask("a.exe");
  control.ask("b.exe");
  control.open(icons.dialog());
  EXPECT_TRUE(control.isRunning());
  ASSERT_TRUE(comesTrue([&] { return !icons.posted().empty(); }));
  EXPECT_EQ(icons.calls().size(), 2u);
  ASSERT_TRUE(control.isServed());
  control.stop();
  EXPECT_EQ(icons.posted(), Commands{JobIconControl::CommandRepaint});
  EXPECT_EQ(control.entry(2).state, JobIconInfoUnit::FirstMark);
  EXPECT_EQ(control.imageOf(2), -1);
}

TEST(JobIconControlThread, TheFirstRequestStartsItWhenThereWasNothingBefore) {
  TestIcons icons;
  icons.set("a.exe", Red);
  Control control(icons);
  control.open(icons.dialog());
  const int32_t handle = control.ask("a.exe");
  EXPECT_TRUE(control.isRunning());
  ASSERT_TRUE(comesTrue([&] { return !icons.posted().empty(); }));
  EXPECT_EQ(control.colourOf(handle), Red);
}

TEST(JobIconControlThread, ARequestWhileItSleepsIsServedAndTheDialogTold) {
  TestIcons icons;
  icons.set("a.exe", Red);
  icons.set("b.exe", Green);
  Control control(icons);
  control.ask("a.exe");
  control.open(icons.dialog());
  ASSERT_TRUE(comesTrue([&] { return icons.posted().size() == 1; }));
  ASSERT_TRUE(control.isServed());
  const int32_t handle = control.ask("b.exe");
  ASSERT_TRUE(comesTrue([&] { return icons.posted().size() == 2; }));
  EXPECT_EQ(control.colourOf(handle), Green);
  EXPECT_EQ(icons.posted(),
            (Commands{JobIconControl::CommandRepaint, JobIconControl::CommandRepaint}));
}

TEST(JobIconControlThread, NothingRunsBeforeTheDialogIsThere) {
  TestIcons icons;
  Control control(icons);
  control.ask("a.exe");
  EXPECT_FALSE(control.isRunning());
  control.repaintMenu();
  control.repaintButtons();
  EXPECT_EQ(control.entryCount(), 1);
}

TEST(JobIconControlThread, AMenuIsToldBehindItsIcons) {
  TestIcons icons;
  Control control(icons);
  control.ask("a.exe");
  control.open(icons.dialog());
  ASSERT_TRUE(comesTrue([&] { return icons.posted().size() == 1; }));
  icons.closeGate();
  const int32_t handle = control.ask("menu.exe");
  control.repaintMenu();
  EXPECT_EQ(icons.posted().size(), 1u);
  EXPECT_EQ(control.imageOf(handle), control.cache.loadingId());
  icons.openGate();
  ASSERT_TRUE(comesTrue([&] { return icons.posted().size() >= 2; }));
  EXPECT_EQ(icons.posted()[1], JobIconControl::CommandRepaintMenu);
  EXPECT_EQ(control.imageOf(handle), control.cache.failedId());
}

TEST(JobIconControlThread, ButtonsAreToldOnRequest) {
  TestIcons icons;
  Control control(icons);
  control.ask("a.exe");
  control.open(icons.dialog());
  ASSERT_TRUE(control.isServed());
  control.repaintButtons();
  ASSERT_TRUE(comesTrue([&] { return icons.posted().size() == 2; }));
  EXPECT_EQ(icons.posted()[1], JobIconControl::CommandRepaint);
}

TEST(JobIconControlThread, AStopEndsItBehindTheIconThatItIsAt) {
  TestIcons icons;
  icons.closeGate();
  Control control(icons);
  for (int32_t i = 0; i < 300; ++i) control.ask(fileName(i));
  control.open(icons.dialog());
  ASSERT_TRUE(comesTrue([&] { return icons.waiting == 1; }));
  std::thread opener([&] {
    comesTrue([&] { return control.isStopRequested(); });
    icons.openGate();
  });
  control.stop();
  opener.join();
  EXPECT_FALSE(control.isRunning());
  EXPECT_EQ(icons.calls().size(), 1u);
  EXPECT_EQ(icons.threads, 0);
  EXPECT_TRUE(control.workPending());
  EXPECT_EQ(control.colourOf(200), LoadingColour);
  EXPECT_TRUE(icons.posted().empty());
}

TEST(JobIconControlThread, NoRequestStartsItAfterAStop) {
  TestIcons icons;
  Control control(icons);
  control.open(icons.dialog());
  control.stop();
  control.ask("a.exe");
  EXPECT_FALSE(control.isRunning());
  control.stop(); // nor does a second one do harm
}

TEST(JobIconControlThread, GoesOnAfterAnotherStart) {
  TestIcons icons;
  icons.set("a.exe", Red);
  icons.set("b.exe", Green);
  Control control(icons);
  control.ask("a.exe");
  control.open(icons.dialog());
  ASSERT_TRUE(control.isServed());
  control.stop();
  const int32_t handle = control.ask("b.exe");
  control.open(icons.dialog());
  ASSERT_TRUE(control.isServed());
  EXPECT_EQ(control.colourOf(handle), Green);
  EXPECT_FALSE(control.start()); // it runs already
  EXPECT_EQ(icons.calls().size(), 2u);
}

// --- With the cache of an earlier run

namespace {

// A run that showed the files and saved.
void saveRun(const TestFolder& folder, TestIcons& icons, const std::vector<string>& files) {
  Control control(icons);
  control.setOptions(true, true, raw("exe"), folder.file("IconCache.ini"));
  for (const string& file : files) control.ask(file);
  control.start();
  ASSERT_TRUE(control.isServed());
  control.stop();
  control.cache.evict(60);
  ASSERT_TRUE(control.cache.save());
}

} // namespace

TEST(JobIconControlCache, ShowsTheOldImageUntilItIsRefreshed) {
  const TestFolder folder;
  TestIcons icons;
  icons.set("a.exe", Red);
  saveRun(folder, icons, {"a.exe"});
  icons.set("a.exe", Green);
  Control control(icons);
  control.setOptions(true, true, raw("exe"), folder.file("IconCache.ini"));
  EXPECT_TRUE(control.workPending());
  EXPECT_EQ(control.entry(0).state, JobIconInfoUnit::Loaded);
  EXPECT_EQ(control.ask("A.EXE"), 0);
  EXPECT_EQ(control.colourOf(0), Red);
  const int32_t cell = control.imageOf(0);
  control.open(icons.dialog());
  ASSERT_TRUE(control.isServed());
  EXPECT_EQ(control.colourOf(0), Green);
  EXPECT_EQ(control.imageOf(0), cell);
  EXPECT_EQ(control.entry(0).state, JobIconInfoUnit::Ready);
}

TEST(JobIconControlCache, TheImageOfAFileThatHasGoneDoesNotStay) {
  const TestFolder folder;
  TestIcons icons;
  icons.set("a.exe", Red);
  icons.set("b.exe", Green);
  saveRun(folder, icons, {"a.exe", "b.exe"});
  icons.remove("a.exe");
  Control control(icons);
  control.setOptions(true, true, raw("exe"), folder.file("IconCache.ini"));
  const int32_t cell = control.imageOf(0);
  EXPECT_TRUE(control.cache.pool.isTaken(cell));
  control.start();
  ASSERT_TRUE(control.isServed());
  EXPECT_EQ(control.colourOf(0), FailedColour);
  EXPECT_EQ(control.colourOf(1), Green);
  icons.set("c.exe", Red);
  control.delayed = false;
  EXPECT_EQ(control.imageOf(control.ask("c.exe")), cell); // the cell is free for another
}

TEST(JobIconControlCache, OfAnotherSizeItIsNoneAndTheBuiltInImagesAreThere) {
  const TestFolder folder;
  TestIcons icons;
  icons.set("a.exe", Red);
  saveRun(folder, icons, {"a.exe"});
  Control control(icons, {8, 8});
  control.setOptions(true, true, raw("exe"), folder.file("IconCache.ini"));
  EXPECT_EQ(control.entryCount(), 0);
  EXPECT_FALSE(control.workPending());
  EXPECT_EQ(control.cache.pool.capacity(), JobIconControl::FirstCells);
  const int32_t handle = control.ask("none.exe");
  EXPECT_EQ(control.colourOf(handle), LoadingColour);
  control.start();
  ASSERT_TRUE(control.isServed());
  EXPECT_EQ(control.colourOf(handle), FailedColour);
}

TEST(JobIconControlCache, ADamagedProfileDoesNotReachTheBuiltInImages) {
  const TestFolder folder;
  TestIcons icons;
  icons.set("a.exe", Red);
  icons.set("b.exe", Green);
  saveRun(folder, icons, {"a.exe"});
  // Without a number, with that of the loading image, and beyond all cells.
  folder.write("IconCache.ini",
               folder.read("IconCache.ini") +
                   "[Item]\r\nFile=b.exe\r\n[Item]\r\nImageId=1\r\nFile=c.exe\r\n"
                   "[Item]\r\nImageId=2000000000\r\nFile=b.exe\r\nIconIndex=7\r\n");
  Control control(icons);
  control.setOptions(true, true, raw("exe"), folder.file("IconCache.ini"));
  ASSERT_EQ(control.entryCount(), 4);
  control.start();
  ASSERT_TRUE(control.isServed());
  EXPECT_EQ(control.colourOf(0), Red);
  for (int32_t handle = 1; handle < 4; ++handle) EXPECT_EQ(control.colourOf(handle), FailedColour);
  EXPECT_TRUE(control.cache.pool.isTaken(0));
  EXPECT_TRUE(control.cache.pool.isTaken(1));
  EXPECT_EQ(*control.cache.pool.cellPixels(0), FailedColour);
  EXPECT_EQ(*control.cache.pool.cellPixels(1), LoadingColour);
}

TEST(JobIconControlCache, WithoutTheOptionNoFileIsTouched) {
  const TestFolder folder;
  TestIcons icons;
  icons.set("a.exe", Red);
  Control control(icons);
  control.setOptions(true, false, raw("exe"), folder.file("IconCache.ini"));
  control.ask("a.exe");
  control.start();
  ASSERT_TRUE(control.isServed());
  EXPECT_TRUE(control.cache.save());
  EXPECT_FALSE(RawLayer::exists(folder.file("IconCache.ini")));
}

// --- Several threads

TEST(JobIconControlThread, ManyThreadsAskDrawAndSaveAtOnce) {
  constexpr int32_t Files = 60;
  const TestFolder folder;
  TestIcons icons;
  for (int32_t i = 0; i < Files; ++i)
    icons.set(fileName(i), 0xFF000100u + static_cast<uint32_t>(i));
  Control control(icons);
  control.setOptions(true, true, raw("exe"), folder.file("IconCache.ini"));
  control.open(icons.dialog());

  std::vector<std::vector<int32_t>> handles(4);
  std::vector<std::thread> threads;
  for (std::size_t number = 0; number < handles.size(); ++number)
    threads.emplace_back([&, number] {
      TestCanvas canvas({4, 4}, 0);
      for (int32_t i = 0; i < Files; ++i) {
        handles[number].push_back(control.ask(fileName(i)));
        control.draw(handles[number].back(), canvas.get(), {0, 0, 4, 4});
        if (i % 20 == 10) control.repaintMenu();
      }
    });
  for (int32_t i = 0; i < 5; ++i) EXPECT_TRUE(control.cache.save());
  for (std::thread& thread : threads) thread.join();
  ASSERT_TRUE(control.isServed());
  control.stop();

  EXPECT_EQ(icons.calls().size(), static_cast<std::size_t>(Files));
  for (int32_t i = 0; i < Files; ++i)
    for (const std::vector<int32_t>& own : handles) {
      EXPECT_EQ(own[static_cast<std::size_t>(i)], handles[0][static_cast<std::size_t>(i)]);
      EXPECT_EQ(control.colourOf(own[static_cast<std::size_t>(i)]),
                0xFF000100u + static_cast<uint32_t>(i));
    }
}
