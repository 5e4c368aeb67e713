#include "raw/RawFolder.h"

#include "TestFolder.h"
#include "TestText.h"
#include "raw/RawPath.h"

#include <gtest/gtest.h>

#include <chrono>
#include <map>

#ifndef _WIN32
#include "host/HostFaults.h"
#endif

using namespace RawLayer;

namespace {

std::map<std::string, RawFindFileData> entriesOf(const RawString& folder) {
  std::map<std::string, RawFindFileData> entries;
  RawFolderWalker walker(folder);
  while (walker.next()) entries[bytesOf(walker.name)] = walker;
  return entries;
}

RawFindFileData entry(const char* path, uint64_t writeTime = 0, uint64_t size = 0) {
  RawFindFileData data;
  data.attributes = 0x80;
  data.fullPath = raw(path);
  data.name = nameOf(data.fullPath);
  data.writeTime = writeTime;
  data.size = size;
  return data;
}

std::string sorted(RawFolderFileListSort::Mode mode, bool descending = false) {
  RawFolderFileList list;
  list.add(entry("c:\\b", 3, 0x100000000));
  list.add(entry("c:\\A", 0xFFFFFFFFFFFFFFFF, 2));
  list.add(entry("c:\\c", 1, 1));
  RawFolderFileListSort sort(list);
  sort.mode = mode;
  sort.sortAll(descending);
  std::string names;
  for (const RawFindFileData& data : list.elements()) names += bytesOf(data.name);
  return names;
}

} // namespace

TEST(RawFolder, AnEmptyFolderHasNoEntry) {
  const TestFolder folder;
  RawFolderWalker walker(folder.path());
  EXPECT_TRUE(walker.isFinished());
  EXPECT_FALSE(walker.next());
  EXPECT_TRUE(walker.isFinished());
  EXPECT_FALSE(walker.isEntry());
}

TEST(RawFolder, AMissingFolderHasNoEntry) {
  const TestFolder folder;
  RawFolderWalker walker(folder.file("missing"));
  EXPECT_FALSE(walker.next());
  EXPECT_TRUE(walker.isFinished());
  EXPECT_FALSE(walker.next());
}

TEST(RawFolder, AFileHasNoEntry) {
  const TestFolder folder;
  EXPECT_FALSE(RawFolderWalker(folder.write("file", "x")).next());
}

TEST(RawFolder, FilesAndFoldersAreEntries) {
  const TestFolder folder;
  folder.write("a.txt", "12345");
  folder.write("noextension", "");
  folder.makeFolder("sub");
  const auto entries = entriesOf(folder.path());
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries.at("a.txt").size, 5u);
  EXPECT_FALSE(entries.at("a.txt").isFolder());
  EXPECT_TRUE(entries.at("a.txt").isEntry());
  EXPECT_EQ(entries.at("noextension").size, 0u);
  EXPECT_TRUE(entries.at("sub").isFolder());
}

TEST(RawFolder, TheFullPathIsFolderAndName) {
  const TestFolder folder;
  folder.write("a.txt", "");
  const RawString expected = joinPath(folder.path(), raw("a.txt"));
  EXPECT_EQ(entriesOf(folder.path()).at("a.txt").fullPath, expected);
  // A trailing separator is dropped first.
  EXPECT_EQ(entriesOf(RawString::concat(folder.path(), raw("\\"))).at("a.txt").fullPath, expected);
}

TEST(RawFolder, TimesCountFrom1601) {
  const TestFolder folder;
  folder.write("a.txt", "x");
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const double seconds = std::chrono::duration<double>(now).count() + 11644473600.0;
  const RawFindFileData data = entriesOf(folder.path()).at("a.txt");
  for (const uint64_t time : {data.writeTime, data.createTime, data.accessTime})
    EXPECT_NEAR(static_cast<double>(time) / 10000000.0, seconds, 600.0);
}

TEST(RawFolder, NamesAreUtf8) {
  const TestFolder folder;
  makeFolders(joinPath(folder.path(), raw("\xE3\x82\xBD\xC3\xA9")));
  RawFolderWalker walker(folder.path().shareAs(EncodingWide));
  ASSERT_TRUE(walker.next());
  EXPECT_EQ(walker.name, raw("\xE3\x82\xBD\xC3\xA9"));
  EXPECT_EQ(walker.name.encoding(), EncodingUtf8);
  EXPECT_EQ(walker.fullPath, joinPath(folder.path(), walker.name));
  EXPECT_EQ(walker.fullPath.encoding(), EncodingUtf8);
}

TEST(RawFolder, AShiftJisFolderIsWalkedToo) {
  const TestFolder folder;
  folder.write("a.txt", "12345");
  RawFolderWalker walker(folder.path().shareAs(EncodingShiftJis));
  ASSERT_TRUE(walker.next());
  EXPECT_EQ(walker.name, raw("a.txt"));
  EXPECT_EQ(walker.name.encoding(), EncodingUtf8);
  EXPECT_EQ(walker.size, 5u);
  EXPECT_EQ(walker.fullPath, joinPath(folder.path(), raw("a.txt")));
  EXPECT_FALSE(walker.next());
}

TEST(RawFolder, AWalkEndsForGood) {
  const TestFolder folder;
  folder.write("a", "");
  folder.write("b", "");
  RawFolderWalker walker(folder.path());
  EXPECT_TRUE(walker.next());
  EXPECT_FALSE(walker.isFinished());
  EXPECT_TRUE(walker.next());
  EXPECT_FALSE(walker.next());
  EXPECT_TRUE(walker.isFinished());
  EXPECT_FALSE(walker.isEntry());
  EXPECT_TRUE(walker.name.isEmpty());
  folder.write("c", "");
  EXPECT_FALSE(walker.next());
}

TEST(RawFolder, AShortcutEndsInLnk) {
  const auto named = [](const char* name) {
    RawFindFileData data;
    data.name = raw(name);
    return data;
  };
  EXPECT_TRUE(isShortcut(named("a.lnk")));
  EXPECT_TRUE(isShortcut(named("A.LNK")));
  EXPECT_TRUE(isShortcut(named(".lnk")));
  EXPECT_FALSE(isShortcut(named("lnk")));
  EXPECT_FALSE(isShortcut(named("a.lnkx")));
  EXPECT_FALSE(isShortcut(named("a.txt")));
  EXPECT_FALSE(isShortcut(named("")));
}

TEST(RawFolder, ListsSortByPathTimeAndSize) {
  EXPECT_EQ(sorted(RawFolderFileListSort::ByPath), "Abc");
  EXPECT_EQ(sorted(RawFolderFileListSort::ByPath, true), "cbA");
  EXPECT_EQ(sorted(RawFolderFileListSort::ByWriteTime), "cbA");
  EXPECT_EQ(sorted(RawFolderFileListSort::BySize), "cAb");
}

TEST(RawFolder, ComparingGivesOneStep) {
  RawFolderFileList list;
  RawFolderFileListSort sort(list);
  const RawFindFileData small = entry("a", 1, 1);
  const RawFindFileData large = entry("b", 0xFFFFFFFFFFFFFFFF, 0xFFFFFFFFFFFFFFFF);
  for (const auto mode : {RawFolderFileListSort::ByPath, RawFolderFileListSort::ByWriteTime,
                          RawFolderFileListSort::BySize}) {
    sort.mode = mode;
    EXPECT_EQ(sort.compare(&small, &large), -1);
    EXPECT_EQ(sort.compare(&large, &small), 1);
    EXPECT_EQ(sort.compare(&small, &small), 0);
  }
}

TEST(RawFolder, AListKeepsCopies) {
  const TestFolder folder;
  folder.write("a", "");
  folder.write("b", "");
  RawFolderFileList list;
  RawFolderWalker walker(folder.path());
  while (walker.next()) list.add(walker);
  ASSERT_EQ(list.count(), 2);
  EXPECT_EQ(RawFolderFileList::element(list.first())->name, raw("a"));
  EXPECT_EQ(RawFolderFileList::element(list.last())->name, raw("b"));
}

#ifndef _WIN32

TEST(RawFolder, PathsMayBeLongerThan260Units) {
  const TestFolder folder;
  const RawString name = raw(std::string(200, 'n'));
  const RawString inner = joinPath(joinPath(folder.path(), name), name);
  ASSERT_TRUE(makeFolders(joinPath(inner, raw("last"))));
  RawFolderWalker walker(inner);
  ASSERT_TRUE(walker.next());
  EXPECT_GT(walker.fullPath.length(), 400);
  EXPECT_EQ(walker.fullPath, joinPath(inner, raw("last")));
}

TEST(RawFolder, AWalkThatFailsIsAtItsEnd) {
  const TestFolder folder;
  folder.write("a", "");
  folder.write("b", "");
  HostFaults::Scope faults;
  faults.failNth(1, HostFaults::Walk);
  EXPECT_TRUE(entriesOf(folder.path()).empty());
  // The calls give ".", "..", "a" and "b".
  faults.failNth(4, HostFaults::Walk);
  EXPECT_EQ(entriesOf(folder.path()).size(), 1u);
  faults.failNth(2, HostFaults::Walk);
  EXPECT_TRUE(entriesOf(folder.path()).empty());
}

#endif
