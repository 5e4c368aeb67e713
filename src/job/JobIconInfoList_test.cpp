#include "job/JobIconInfoList.h"

#include "TestFolder.h"
#include "TestText.h"

#include <gtest/gtest.h>
#include <string>

using namespace JobLayer;
using RawLayer::RawParameterList;
using RawLayer::RawProfile;
using RawLayer::RawProfileEnumeration;
using std::string;

namespace {

JobIconInfoUnit& add(JobIconInfoList& list, const string& file, int32_t iconIndex,
                     int32_t imageId = 5, int32_t state = JobIconInfoUnit::Ready) {
  auto* unit = new JobIconInfoUnit;
  unit->file = raw(file);
  unit->iconIndex = iconIndex;
  unit->imageId = imageId;
  unit->state = state;
  list.append(unit);
  return *unit;
}

string saved(JobIconInfoList& list, const string& before = "") {
  const TestFolder folder;
  const RawProfile profile(folder.write("i.ini", before));
  EXPECT_TRUE(RawProfileEnumeration(profile).save(list, JobIconInfoList::sectionName()));
  return folder.read("i.ini");
}

void load(JobIconInfoList& list, const string& bytes) {
  const TestFolder folder;
  const RawProfile profile(folder.write("i.ini", bytes));
  ASSERT_TRUE(RawProfileEnumeration(profile).enumerate(list));
}

} // namespace

TEST(JobIconInfoList, FindsTheFirstWithIndexAndFileInAnyCase) {
  JobIconInfoList list;
  add(list, "a.exe", 0);
  add(list, "b.exe", 1);
  add(list, "b.exe", 0);
  add(list, "B.EXE", 1);
  EXPECT_EQ(list.find(raw("A.Exe"), 0), 0);
  EXPECT_EQ(list.find(raw("B.exe"), 1), 1);
  EXPECT_EQ(list.find(raw("b.exe"), 0), 2);
  EXPECT_EQ(list.find(raw("b.exe"), 2), -1);
  EXPECT_EQ(list.find(raw("b.ex"), 0), -1);
  EXPECT_EQ(list.find(raw("b.exe2"), 0), -1);
}

TEST(JobIconInfoList, TheSameNameInAnotherEncodingIsTheSame) {
  JobIconInfoList list;
  add(list, "C:\\b.exe", -3);
  EXPECT_EQ(list.find(RawString::fromWide(u"c:\\B.EXE"), -3), 0);
  EXPECT_EQ(list.find(RawString::fromWide(u"c:\\B.EXE"), 3), -1);
}

TEST(JobIconInfoList, AnEntryIsKnownByItsPositionAsSoonAsItIsAppended) {
  JobIconInfoList list;
  EXPECT_EQ(list.at(0), nullptr);
  for (int32_t i = 0; i < 200; ++i) {
    const JobIconInfoUnit& unit = add(list, "file" + std::to_string(i) + ".exe", i % 3);
    if (i % 7 == 0) {
      EXPECT_EQ(list.at(i), &unit);
    }
  }
  for (int32_t i = 0; i < 200; ++i) {
    EXPECT_EQ(list.at(i), JobIconInfoList::element(list.nodeAt(i)));
    EXPECT_EQ(list.find(raw("FILE" + std::to_string(i) + ".exe"), i % 3), i);
  }
  for (const int32_t outside : {-1, 200, INT32_MAX, INT32_MIN})
    EXPECT_EQ(list.at(outside), nullptr);
}

TEST(JobIconInfoList, NothingOfWhatHasGoneIsFound) {
  JobIconInfoList list;
  add(list, "a.exe", 0);
  const JobIconInfoUnit& second = add(list, "b.exe", 0);
  EXPECT_EQ(list.find(raw("b.exe"), 0), 1);
  list.erase(list.first());
  EXPECT_EQ(list.find(raw("a.exe"), 0), -1);
  EXPECT_EQ(list.find(raw("b.exe"), 0), 0);
  EXPECT_EQ(list.at(0), &second);
  list.renew();
  EXPECT_EQ(list.find(raw("b.exe"), 0), -1);
  EXPECT_EQ(list.at(0), nullptr);
  add(list, "c.exe", 0);
  EXPECT_EQ(list.find(raw("c.exe"), 0), 0);
}

TEST(JobIconInfoList, EvictedEntriesCountInPositions) {
  JobIconInfoList list;
  add(list, "a.exe", 0, 5, JobIconInfoUnit::Evicted);
  add(list, "b.exe", 0);
  EXPECT_EQ(list.find(raw("b.exe"), 0), 1);
}

TEST(JobIconInfoList, ASectionForEachEntryInTheOrderOfTheList) {
  JobIconInfoList list;
  list.firstFreeId = 1;
  add(list, "C:\\b=c.exe", -3, 2).unused = 7;
  add(list, "a.ico", 0, 9, JobIconInfoUnit::Loaded);
  EXPECT_EQ(saved(list),
            "[Item]\r\nImageId=2\r\nFile=C:\\b=c.exe\r\nIconIndex=-3\r\nUnused=7\r\n\r\n"
            "[Item]\r\nImageId=9\r\nFile=a.ico\r\nIconIndex=0\r\nUnused=0\r\n\r\n");
}

TEST(JobIconInfoList, OnlyEntriesWithAnImageOfTheirOwnAndAFileAreSaved) {
  JobIconInfoList list;
  list.firstFreeId = 1;
  add(list, "requested", 0, 2, JobIconInfoUnit::Requested);
  add(list, "evicted", 0, 3, JobIconInfoUnit::Evicted);
  add(list, "mark", 0, 4, JobIconInfoUnit::FirstMark);
  add(list, "mark", 0, 4, JobIconInfoUnit::SecondMark);
  add(list, "failed", 0, 0);
  add(list, "loading", 0, 1);
  add(list, "none", 0, -1);
  add(list, "", 0, 5); // made at once, not by the thread
  EXPECT_EQ(saved(list), "");
}

TEST(JobIconInfoList, SectionsOfOtherNamesKeepTheirKeys) {
  JobIconInfoList list;
  add(list, "a.ico", 0, 9);
  EXPECT_EQ(
      saved(list, "[Identify]\r\nProfile=P\r\n\r\n[Item]\r\nFile=old\r\n\r\n[Z]\r\nz=1\r\n\r\n"),
      "[Identify]\r\nProfile=P\r\n\r\n"
      "[Item]\r\nImageId=9\r\nFile=a.ico\r\nIconIndex=0\r\nUnused=0\r\n\r\n"
      "[Z]\r\nz=1\r\n\r\n");
}

TEST(JobIconInfoList, ReadEntriesAreOneRunOlderAndToBeRefreshed) {
  JobIconInfoList list;
  load(list, "[Identify]\nImageId=9\n[Item]\nImageId=12\nFile=C:\\x=y.exe\nIconIndex=-4\nUnused=5\n"
             "[Other]\nFile=no\n[item]\n[Item]\nFile=z\nUnused=rubbish\n");
  ASSERT_EQ(list.count(), 3);
  const JobIconInfoUnit& first = *JobIconInfoList::element(list.nodeAt(0));
  EXPECT_EQ(first.state, 3);
  EXPECT_EQ(first.imageId, 12);
  EXPECT_EQ(first.file, raw("C:\\x=y.exe"));
  EXPECT_EQ(first.iconIndex, -4);
  EXPECT_EQ(first.unused, 6);
  const JobIconInfoUnit& second = *JobIconInfoList::element(list.nodeAt(1));
  EXPECT_EQ(second.imageId, 0);
  EXPECT_TRUE(second.file.isEmpty());
  EXPECT_EQ(second.iconIndex, 0);
  EXPECT_EQ(second.unused, 1);
  EXPECT_EQ(JobIconInfoList::element(list.nodeAt(2))->unused, 1);
}

TEST(JobIconInfoList, TheOldestEntryDoesNotBecomeTheYoungest) {
  JobIconInfoList list;
  load(list, "[Item]\nUnused=2147483647\n");
  EXPECT_EQ(JobIconInfoList::element(list.first())->unused, INT32_MAX);
}

TEST(JobIconInfoList, NamesOfAnyLanguageComeBack) {
  JobIconInfoList list;
  add(list, "C:\\\xE6\x97\xA5\xE6\x9C\xAC\\\xC3\xA9t\xC3\xA9.exe", 1);
  JobIconInfoList again;
  load(again, saved(list));
  EXPECT_EQ(again.find(raw("C:\\\xE6\x97\xA5\xE6\x9C\xAC\\\xC3\xA9t\xC3\xA9.exe"), 1), 0);
}
