#include "job/JobIconCache.h"

#include "IconCacheBed.h"
#include "raw/RawFile.h"
#include "raw/RawPath.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

using namespace JobLayer;
using namespace IconCacheBed;
using std::string;

TEST(JobIconCache, DataFilesAreNamedByTheMoment) {
  const RawLayer::RawMoment moment{2024, 9, 7, 12, 30, 5, 678};
  EXPECT_EQ(JobIconCache::dataFileName(moment), raw("20240907123005.dat"));
  EXPECT_EQ(JobIconCache::dataFileName(moment, 2), raw("20240907123007.dat"));
  EXPECT_EQ(JobIconCache::dataFileName({1, 1, 1, 0, 0, 0, 0}), raw("00010101000000.dat"));
}

TEST(JobIconCache, ComesBackAsItWasAndOneRunOlder) {
  const TestFolder folder;
  CacheRun first(folder);
  first.add("a.exe", 0);
  first.add("b.exe", 3);
  EXPECT_EQ(first.imageOf(1), 3);
  ASSERT_TRUE(first.save());

  CacheRun second(folder);
  ASSERT_TRUE(second.load());
  EXPECT_EQ(second.content(), "2 a.exe 0 1, 3 b.exe 3 1, ");
  EXPECT_EQ(second.failedId(), 0);
  EXPECT_EQ(second.loadingId(), 1);
  EXPECT_EQ(second.list.firstFreeId, 1);
  EXPECT_EQ(second.queuePosition, 0);
  EXPECT_TRUE(second.workPending);
  for (int32_t cell = 0; cell < 4; ++cell) EXPECT_EQ(second.colourOf(cell), first.colourOf(cell));
  EXPECT_EQ(second.list.find(raw("B.EXE"), 3), 1);
  EXPECT_EQ(second.add("c.exe", 0), 4);
}

TEST(JobIconCache, TheProfileHasItsSectionsAndKeepsItsOwner) {
  const TestFolder folder;
  folder.write("IconCache.ini", "[Identify]\r\nProfile=C:\\GUI.INI\r\n");
  CacheRun run(folder);
  run.add("a.exe", 2);
  ASSERT_TRUE(run.save());
  const std::vector<string> data = dataFiles(folder);
  ASSERT_EQ(data.size(), 1u);
  EXPECT_EQ(sectionOf(run.profile, "Identify"),
            (Texts{"Profile=C:\\GUI.INI",
                   "DataFile=" + bytesOf(RawLayer::joinPath(RawLayer::folderOf(run.profile),
                                                            raw(data[0])))}));
  EXPECT_EQ(sectionOf(run.profile, "TopInfo"),
            (Texts{"IconWidth=4", "IconHeight=4", "FailedId=0", "LoadingId=1"}));
  EXPECT_EQ(sectionOf(run.profile, "Item"),
            (Texts{"ImageId=2", "File=a.exe", "IconIndex=2", "Unused=0"}));
}

TEST(JobIconCache, ThereIsAlwaysOneDataFileAlsoWithinOneSecond) {
  const TestFolder folder;
  CacheRun run(folder);
  run.add("a.exe", 0);
  string before;
  for (int i = 0; i < 5; ++i) {
    ASSERT_TRUE(run.save());
    const std::vector<string> data = dataFiles(folder);
    ASSERT_EQ(data.size(), 1u);
    EXPECT_NE(data[0], before);
    before = data[0];
    CacheRun other(folder);
    EXPECT_TRUE(other.load());
  }
}

TEST(JobIconCache, UnusedCountsTheRunsSinceTheImageWasAskedFor) {
  const TestFolder folder;
  CacheRun first(folder);
  first.add("a.exe", 0);
  first.add("b.exe", 0);
  first.save();
  CacheRun second(folder);
  second.load();
  EXPECT_EQ(second.imageOf(0), 2);
  second.save();
  CacheRun third(folder);
  third.load();
  EXPECT_EQ(third.content(), "2 a.exe 0 1, 3 b.exe 0 2, ");
}

TEST(JobIconCache, ABadHandleHasNoImage) {
  const TestFolder folder;
  CacheRun run(folder);
  EXPECT_EQ(run.imageOf(0), -1);
  run.add("a.exe", 0);
  EXPECT_EQ(run.imageOf(0), 2);
  EXPECT_EQ(run.imageOf(1), -1);
  EXPECT_EQ(run.imageOf(-1), -1);
}

TEST(JobIconCache, EvictionFreesTheImagesThatNobodyAskedFor) {
  const TestFolder folder;
  CacheRun run(folder);
  run.add("a.exe", 0, 4);
  run.add("b.exe", 0, 5);
  run.add("c.exe", 0, 6);
  run.evict(5);
  EXPECT_EQ(run.states(), (std::vector<int32_t>{1, 4, 4}));
  EXPECT_TRUE(run.pool.isTaken(2));
  EXPECT_FALSE(run.pool.isTaken(3));
  EXPECT_FALSE(run.pool.isTaken(4));
  EXPECT_EQ(run.list.find(raw("c.exe"), 0), 2); // handles stay
  ASSERT_TRUE(run.save());
  CacheRun next(folder);
  ASSERT_TRUE(next.load());
  EXPECT_EQ(next.content(), "2 a.exe 0 5, ");
  EXPECT_EQ(next.add("d.exe", 0), 3); // the slot is used again
}

TEST(JobIconCache, ACellTakenAgainIsNotFreedForTheEntryThatHadItBefore) {
  const TestFolder folder;
  CacheRun run(folder);
  run.add("a.exe", 0, 9);
  run.evict(5);
  EXPECT_EQ(run.add("b.exe", 0), 2);
  run.evict(5);
  EXPECT_TRUE(run.pool.isTaken(2));
}

TEST(JobIconCache, BuiltInImagesAreNeitherFreedNorSaved) {
  const TestFolder folder;
  CacheRun run(folder);
  run.add("a.exe", 0, 0, run.failedId());
  run.add("b.exe", 0, 0, run.loadingId());
  ASSERT_TRUE(run.save());
  EXPECT_TRUE(sectionOf(run.profile, "Item").empty());
  run.evict(0);
  EXPECT_TRUE(run.pool.isTaken(0));
  EXPECT_TRUE(run.pool.isTaken(1));
}

TEST(JobIconCache, ACountOfNoneEvictsAllAtEveryExit) {
  const TestFolder folder;
  CacheRun run(folder);
  run.add("a.exe", 0);
  run.imageOf(0);
  run.evict(0);
  ASSERT_TRUE(run.save());
  CacheRun next(folder);
  ASSERT_TRUE(next.load());
  EXPECT_EQ(next.content(), "");
  EXPECT_EQ(next.add("b.exe", 0), 2);
}

TEST(JobIconCache, ImagesWithoutAFileDoNotFillThePoolRunByRun) {
  const TestFolder folder;
  for (int i = 0; i < 3; ++i) {
    CacheRun run(folder);
    if (!run.load()) run.addBuiltIn();
    EXPECT_EQ(run.add("", 0), 2);
    ASSERT_TRUE(run.save());
  }
}

TEST(JobIconCache, SwitchedOffItTouchesNoFile) {
  const TestFolder folder;
  CacheRun run(folder);
  run.persistent = false;
  run.add("a.exe", 0);
  EXPECT_TRUE(run.save());
  EXPECT_TRUE(dataFiles(folder).empty());
  EXPECT_FALSE(folder.has("IconCache.ini"));
  run.persistent = true;
  run.save();
  CacheRun other(folder);
  other.persistent = false;
  EXPECT_TRUE(other.load());
  EXPECT_EQ(other.content(), "");
  EXPECT_FALSE(other.workPending);
  EXPECT_EQ(other.pool.usedCells(), 2);
}

TEST(JobIconCache, AnotherIconSizeIsRefusedAndReplacedByTheNextSave) {
  const TestFolder folder;
  CacheRun large(folder, 32);
  large.add("a.exe", 0);
  ASSERT_TRUE(large.save());
  CacheRun small(folder, 24);
  EXPECT_FALSE(small.load());
  EXPECT_TRUE(small.isEmpty());
  small.addBuiltIn();
  small.add("b.exe", 0);
  ASSERT_TRUE(small.save());
  EXPECT_EQ(dataFiles(folder).size(), 1u);
  CacheRun again(folder, 24);
  EXPECT_TRUE(again.load());
  EXPECT_EQ(again.content(), "2 b.exe 0 1, ");
}

TEST(JobIconCache, AFirstRunHasNoCache) {
  const TestFolder folder;
  CacheRun run(folder);
  EXPECT_FALSE(run.load());
  EXPECT_TRUE(run.isEmpty());
  EXPECT_FALSE(folder.has("IconCache.ini"));
}

// --- Every reason to refuse

namespace {

// A good cache on disk after `damage` has worked on it.
template <class Damage>
void expectRefused(const Damage& damage) {
  const TestFolder folder;
  CacheRun first(folder);
  first.add("a.exe", 0);
  ASSERT_TRUE(first.save());
  damage(folder, first.profile, dataFiles(folder).at(0));
  CacheRun second(folder);
  second.add("z.exe", 0);
  EXPECT_FALSE(second.load());
  EXPECT_TRUE(second.isEmpty());
  EXPECT_FALSE(second.workPending);
}

void expectRefusedWith(const string& section, const string& key, const string& value) {
  expectRefused([&](const TestFolder&, const RawString& profile, const string&) {
    ASSERT_TRUE(RawLayer::RawProfile(profile).writeValue(raw(section), raw(key), raw(value)));
  });
}

void expectRefusedWithout(const string& key) {
  expectRefused([&](const TestFolder& folder, const RawString&, const string&) {
    string text = folder.read("IconCache.ini");
    const std::size_t start = text.find(key);
    ASSERT_NE(start, string::npos);
    text.erase(start, text.find('\n', start) + 1 - start);
    folder.write("IconCache.ini", text);
  });
}

} // namespace

TEST(JobIconCache, AMissingOrBadDataFileIsRefused) {
  expectRefused([](const TestFolder& folder, const RawString&, const string& data) {
    ASSERT_TRUE(RawLayer::deleteFile(folder.file(data)));
  });
  expectRefused([](const TestFolder& folder, const RawString&, const string& data) {
    folder.write(data, folder.read(data).substr(0, 60));
  });
  expectRefused([](const TestFolder& folder, const RawString&, const string& data) {
    string bytes = folder.read(data);
    bytes.replace(8, 4, string("\xE9\x03\0\0", 4)); // 1001 cells
    folder.write(data, bytes + string(1001 * 64, '\0'));
  });
  expectRefusedWith("Identify", "DataFile", "");
  expectRefusedWithout("DataFile");
}

TEST(JobIconCache, ABadProfileIsRefused) {
  for (const char* key : {"IconWidth", "IconHeight"}) expectRefusedWith("TopInfo", key, "5");
  for (const char* key : {"IconWidth", "IconHeight", "FailedId", "LoadingId"})
    expectRefusedWithout(key);
  expectRefused([](const TestFolder& folder, const RawString&, const string& data) {
    folder.write("IconCache.ini", "[Identify]\nDataFile=" + bytesOf(folder.file(data)) + "\n");
  });
}

TEST(JobIconCache, AProfileThatCannotBeReadToItsEndIsRefused) {
  expectRefused([](const TestFolder& folder, const RawString&, const string&) {
    folder.write("IconCache.ini",
                 folder.read("IconCache.ini") + "[Item]\r\nFile=" + string(20000, 'x') + "\r\n");
  });
}

TEST(JobIconCache, NumbersOfCellsThatAreNotThereDoNoHarm) {
  const TestFolder folder;
  CacheRun first(folder);
  first.add("a.exe", 0);
  ASSERT_TRUE(first.save());
  string text = folder.read("IconCache.ini");
  for (const char* id : {"-1", "-2147483648", "999999", "2147483647", "0x7FFFFFFFF"})
    text += string("[Item]\r\nFile=f\r\nImageId=") + id + "\r\n";
  folder.write("IconCache.ini", text);
  CacheRun second(folder);
  ASSERT_TRUE(second.load());
  EXPECT_EQ(second.list.count(), 6);
  TestCanvas canvas({4, 4}, 0x112233);
  for (int32_t handle = 1; handle < 6; ++handle)
    second.pool.drawCell(second.imageOf(handle), canvas.get(), {0, 0, 4, 4});
  EXPECT_EQ(canvas.pixels(), TestPixels(16, 0x112233));
  second.evict(0);
  EXPECT_TRUE(second.pool.isTaken(0));
  EXPECT_FALSE(second.pool.isTaken(2));
}

// --- Faults of a save

TEST(JobIconCache, AFolderThatIsNotThereTakesNoCache) {
  const TestFolder folder;
  CacheRun run(folder);
  run.profile = folder.file("no/IconCache.ini");
  run.add("a.exe", 0);
  EXPECT_FALSE(run.save());
  EXPECT_FALSE(folder.has("no"));
}

TEST(JobIconCache, TooManyCellsLeaveTheOldCache) {
  const TestFolder folder;
  CacheRun run(folder, 1);
  run.add("a.exe", 0);
  ASSERT_TRUE(run.save());
  for (int i = 0; i < 1000; ++i) run.add("b.exe", i);
  EXPECT_FALSE(run.save());
  EXPECT_EQ(dataFiles(folder).size(), 1u);
  CacheRun next(folder, 1);
  EXPECT_TRUE(next.load());
  EXPECT_EQ(next.content(), "2 a.exe 0 1, ");
}

TEST(JobIconCache, AProfileThatCannotBeWrittenLeavesNoDataFile) {
  const TestFolder folder;
  folder.makeFolder("IconCache.ini");
  CacheRun run(folder);
  run.add("a.exe", 0);
  EXPECT_FALSE(run.save());
  EXPECT_TRUE(dataFiles(folder).empty());
}
