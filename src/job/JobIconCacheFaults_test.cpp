// The cache on disk while a save is stopped at every call of the platform.
#include "IconCacheBed.h"
#include "host/HostFaults.h"

#include <gtest/gtest.h>
#include <string>

using namespace IconCacheBed;
using std::string;

namespace {

const char* const OldContent = "2 a.exe 0 1, 3 b.exe 0 1, ";
const char* const NewContent = "2 c.exe 0 1, 3 b.exe 0 2, ";

// Another cache than the one on disk: the same cells hold other images.
void change(CacheRun& run) {
  ASSERT_TRUE(run.load());
  run.changeColours();
  run.imageOf(1);
  run.list.erase(run.list.first());
  run.pool.freeCell(2);
  run.list.erase(run.list.first());
  run.add("c.exe", 0);
  run.add("b.exe", 0, 1, 3);
}

// What the next run finds.
string contentOf(const TestFolder& folder, uint32_t oldColour) {
  CacheRun run(folder);
  if (!run.load()) return "none";
  // An image of one cache never comes with the list of the other.
  const bool isOld = run.colourOf(2) == oldColour;
  EXPECT_EQ(run.content(), isOld ? OldContent : NewContent);
  return run.content();
}

// Saves with the faults that `arm` sets for the number, until none is met any more.
template <class Arm>
void saveWithFaults(const Arm& arm, bool everStops) {
  int32_t number = 1;
  for (bool met = true; met; ++number) {
    ASSERT_LT(number, 500);
    const TestFolder folder;
    CacheRun first(folder);
    const uint32_t oldColour = first.colourOf(first.add("a.exe", 0));
    first.add("b.exe", 0);
    ASSERT_TRUE(first.save());
    CacheRun run(folder);
    change(run);
    bool saved = false;
    {
      HostFaults::Scope faults;
      arm(faults, number);
      saved = run.save();
      met = faults.calls() >= number;
    }
    const string content = contentOf(folder, oldColour);
    if (saved)
      EXPECT_EQ(content, NewContent) << number;
    else if (!everStops && content == OldContent)
      EXPECT_EQ(dataFiles(folder).size(), 1u) << number;
    EXPECT_TRUE(met || saved) << number;
  }
  EXPECT_GT(number, 20);
}

} // namespace

TEST(JobIconCacheFaults, OneFailingCallLeavesAWholeCacheOrNone) {
  saveWithFaults([](HostFaults::Scope& faults, int32_t number) { faults.failNth(number); }, false);
}

TEST(JobIconCacheFaults, ASaveStoppedAnywhereLeavesAWholeCacheOrNone) {
  saveWithFaults([](HostFaults::Scope& faults, int32_t number) { faults.failFrom(number); }, true);
}

TEST(JobIconCacheFaults, AFullDiskLeavesTheOldCacheWithoutASecondDataFile) {
  const TestFolder folder;
  CacheRun first(folder);
  first.add("a.exe", 0);
  ASSERT_TRUE(first.save());
  {
    HostFaults::Scope faults;
    faults.failAll(HostFaults::Write);
    EXPECT_FALSE(first.save());
  }
  EXPECT_EQ(dataFiles(folder).size(), 1u);
  CacheRun next(folder);
  EXPECT_TRUE(next.load());
  EXPECT_EQ(next.content(), "2 a.exe 0 1, ");
}

TEST(JobIconCacheFaults, AFailedProfileTakesTheDataFileWithIt) {
  const TestFolder folder;
  CacheRun run(folder);
  run.add("a.exe", 0);
  ASSERT_TRUE(run.save());
  {
    HostFaults::Scope faults;
    faults.failAll(HostFaults::Replace);
    EXPECT_FALSE(run.save());
  }
  EXPECT_TRUE(dataFiles(folder).empty());
  EXPECT_FALSE(folder.has("IconCache.ini"));
}

TEST(JobIconCacheFaults, ReadsThatGiveLittleGiveTheWholeCache) {
  const TestFolder folder;
  CacheRun run(folder);
  for (int i = 0; i < 40; ++i) run.add("a.exe", i);
  ASSERT_TRUE(run.save());
  HostFaults::Scope faults;
  faults.limitReads(7);
  CacheRun next(folder);
  EXPECT_TRUE(next.load());
  EXPECT_EQ(next.list.count(), 40);
  for (int32_t cell = 0; cell < 42; ++cell) EXPECT_EQ(next.colourOf(cell), run.colourOf(cell));
}
