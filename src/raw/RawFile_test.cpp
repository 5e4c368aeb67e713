#include "raw/RawFile.h"

#include "TestFolder.h"
#include "TestText.h"
#include "raw/RawPlatformText.h"

#include <gtest/gtest.h>

#include <string>

#ifndef _WIN32
#include "host/HostFaults.h"
#endif

using namespace RawLayer;
using std::string;

namespace {

RawFileOwner openToRead(const RawString& path, uint32_t share = RawShareReadWrite) {
  return openFile(path, RawAccessRead, share, RawOpenExisting);
}
RawFileOwner openToWrite(const RawString& path, uint32_t disposition = RawCreateAlways) {
  return openFile(path, RawAccessWrite, RawShareRead, disposition);
}
string readAll(const RawFileOwner& file) {
  char bytes[64];
  const int32_t count = readFile(file, bytes, sizeof bytes);
  return count < 0 ? "failed" : string(bytes, static_cast<std::size_t>(count));
}

} // namespace

TEST(RawFile, WritesAndReadsBytes) {
  const TestFolder folder;
  {
    const RawFileOwner file = openToWrite(folder.file("a.txt"));
    ASSERT_TRUE(file.isValid());
    EXPECT_TRUE(writeFile(file, "one\0two", 7));
    EXPECT_TRUE(writeFile(file, "", 0));
    EXPECT_TRUE(flushFile(file));
  }
  EXPECT_EQ(folder.read("a.txt"), string("one\0two", 7));
  EXPECT_EQ(readAll(openToRead(folder.file("a.txt"))), string("one\0two", 7));
}

TEST(RawFile, ReadingAtTheEndGivesNothing) {
  const TestFolder folder;
  const RawFileOwner file = openToRead(folder.write("a.txt", "abc"));
  EXPECT_EQ(readAll(file), "abc");
  EXPECT_EQ(readAll(file), "");
}

TEST(RawFile, SeekingCountsFromWhereItStands) {
  const TestFolder folder;
  const RawFileOwner file = openToRead(folder.write("a.txt", "abcdef"));
  char bytes[4];
  ASSERT_EQ(readFile(file, bytes, 4), 4);
  EXPECT_TRUE(seekFile(file, -3));
  EXPECT_EQ(readAll(file), "bcdef");
  EXPECT_FALSE(seekFile(file, -7));
}

TEST(RawFile, MissingFilesAndFoldersDoNotOpen) {
  const TestFolder folder;
  EXPECT_FALSE(openToRead(folder.file("none")).isValid());
  EXPECT_FALSE(openToRead(folder.path()).isValid());
  EXPECT_FALSE(openToRead(RawString()).isValid());
  EXPECT_FALSE(openToWrite(folder.file("none/a.txt")).isValid());
}

TEST(RawFile, DispositionsDiffer) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "old");
  EXPECT_FALSE(openToWrite(path, RawCreateNew).isValid());
  EXPECT_FALSE(openToWrite(folder.file("b.txt"), RawOpenExisting).isValid());
  EXPECT_TRUE(openToWrite(path, RawOpenExisting).isValid());
  EXPECT_EQ(folder.read("a.txt"), "old");
  EXPECT_TRUE(openToWrite(path, RawCreateAlways).isValid());
  EXPECT_EQ(folder.read("a.txt"), "");
  EXPECT_TRUE(openToWrite(folder.file("b.txt"), RawCreateNew).isValid());
  EXPECT_TRUE(folder.has("b.txt"));
}

TEST(RawFile, ShareOfAnOpenFileBindsTheOthers) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "abc");
  {
    const RawFileOwner locked = openFile(path, RawAccessRead, RawShareNone, RawOpenExisting);
    ASSERT_TRUE(locked.isValid());
    EXPECT_FALSE(openToRead(path).isValid());
    EXPECT_FALSE(openToWrite(path).isValid());
  }
  {
    const RawFileOwner writer = openToWrite(path, RawOpenExisting);
    EXPECT_TRUE(openToRead(path).isValid());
    EXPECT_FALSE(openToRead(path, RawShareRead).isValid()); // its own share forbids the writer
    EXPECT_FALSE(openToWrite(path).isValid());
  }
  EXPECT_TRUE(openToWrite(path).isValid());
}

TEST(RawFile, FailedCallsSayWhatTheyAre) {
  const RawFileOwner none;
  char byte = 0;
  EXPECT_EQ(readFile(none, &byte, 1), -1);
  EXPECT_FALSE(writeFile(none, &byte, 1));
  EXPECT_FALSE(seekFile(none, 0));
  EXPECT_FALSE(flushFile(none));
  const TestFolder folder;
  const RawFileOwner reader = openToRead(folder.write("a.txt", "abc"));
  EXPECT_FALSE(writeFile(reader, &byte, 1));
  EXPECT_EQ(readFile(reader, &byte, -1), -1);
}

TEST(RawFile, AttributesTellFilesFromFolders) {
  const TestFolder folder;
  const RawString file = folder.write("a.txt", "");
  EXPECT_TRUE(exists(file));
  EXPECT_TRUE(isFile(file));
  EXPECT_FALSE(isFolder(file));
  EXPECT_TRUE(exists(folder.path()));
  EXPECT_FALSE(isFile(folder.path()));
  EXPECT_TRUE(isFolder(folder.path()));
  EXPECT_EQ(fileAttributes(folder.file("none")), RawNoAttributes);
  EXPECT_FALSE(exists(folder.file("none")));
  EXPECT_FALSE(isFile(folder.file("none")));
  EXPECT_FALSE(isFolder(folder.file("none")));
}

TEST(RawFile, FoldersAreMadeOneLevelAtATime) {
  const TestFolder folder;
  EXPECT_FALSE(createFolder(folder.file("a/b")));
  EXPECT_TRUE(createFolder(folder.file("a")));
  EXPECT_TRUE(createFolder(folder.file("a/b")));
  EXPECT_TRUE(isFolder(folder.file("a/b")));
  EXPECT_FALSE(createFolder(folder.file("a")));
}

TEST(RawFile, BothSeparatorsWork) {
  const TestFolder folder;
  folder.makeFolder("a");
  folder.write("a/b.txt", "abc");
  EXPECT_TRUE(isFile(RawString::concat(folder.path(), "\\a\\b.txt"_text)));
  EXPECT_TRUE(isFile(RawString::concat(folder.path(), "/a/b.txt"_text)));
}

TEST(RawFile, PathsMayHaveAnyEncoding) {
  const TestFolder folder;
  const RawString path = folder.file("\xE3\x81\x82\xC3\xA4.txt");
  EXPECT_TRUE(openToWrite(path).isValid());
  EXPECT_TRUE(isFile(path));
  EXPECT_TRUE(isFile(path.shareAs(EncodingWide)));
  EXPECT_TRUE(isFile(path.shareAs(EncodingUtf16Be)));
  EXPECT_TRUE(isFile(RawString::viewOf(EncodingUtf8, path.text(), path.length())));
  EXPECT_TRUE(deleteFile(path.shareAs(EncodingWide)));
  EXPECT_FALSE(isFile(path));
}

TEST(RawFile, ViewEndsWhereItEnds) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "abc");
  const RawString longer = RawString::concat(path, "more"_text);
  EXPECT_TRUE(isFile(RawString::viewOf(EncodingUtf8, longer.text(), path.length())));
}

TEST(RawFile, DeletedFileIsGone) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "abc");
  EXPECT_TRUE(deleteFile(path));
  EXPECT_FALSE(exists(path));
  EXPECT_FALSE(deleteFile(path));
  EXPECT_FALSE(deleteFile(folder.path()));
}

TEST(RawFile, HeldFileCanNeitherGoNorBeReplaced) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "old");
  const RawString other = folder.write("b.txt", "new");
  {
    const RawFileOwner held = openToRead(path);
    EXPECT_FALSE(deleteFile(path));
    EXPECT_FALSE(replaceFile(path, other));
    EXPECT_FALSE(moveFile(path, folder.file("c.txt")));
  }
  EXPECT_EQ(folder.read("a.txt"), "old");
  EXPECT_EQ(folder.read("b.txt"), "new");
  EXPECT_TRUE(replaceFile(path, other));
}

TEST(RawFile, MovingNeverOverwrites) {
  const TestFolder folder;
  const RawString a = folder.write("a.txt", "A");
  const RawString b = folder.write("b.txt", "B");
  EXPECT_FALSE(moveFile(a, b));
  EXPECT_EQ(folder.read("b.txt"), "B");
  EXPECT_TRUE(moveFile(a, folder.file("c.txt")));
  EXPECT_FALSE(exists(a));
  EXPECT_EQ(folder.read("c.txt"), "A");
  EXPECT_FALSE(moveFile(a, folder.file("d.txt")));
}

TEST(RawFile, ReplacingTakesThePlace) {
  const TestFolder folder;
  const RawString path = folder.write("a.ini", "old");
  EXPECT_TRUE(replaceFile(path, folder.write("a.ini.tmp", "new")));
  EXPECT_EQ(folder.read("a.ini"), "new");
  EXPECT_FALSE(folder.has("a.ini.tmp"));
}

TEST(RawFile, ReplacingMayKeepABackup) {
  const TestFolder folder;
  const RawString path = folder.write("a.ini", "old");
  folder.write("a.bak", "older");
  EXPECT_TRUE(replaceFile(path, folder.write("a.tmp", "new"), folder.file("a.bak")));
  EXPECT_EQ(folder.read("a.ini"), "new");
  EXPECT_EQ(folder.read("a.bak"), "old");
  // Mixed forms of names go through one call.
  EXPECT_TRUE(replaceFile(path.shareAs(EncodingWide), folder.write("b.tmp", "third"),
                          folder.file("\xC3\xA4.bak")));
  EXPECT_EQ(folder.read("a.ini"), "third");
  EXPECT_TRUE(isFile(folder.file("\xC3\xA4.bak")));
}

TEST(RawFile, ReplacingNeedsBothFiles) {
  const TestFolder folder;
  const RawString a = folder.write("a.txt", "A");
  EXPECT_FALSE(replaceFile(a, folder.file("none")));
  EXPECT_EQ(folder.read("a.txt"), "A");
  EXPECT_FALSE(replaceFile(folder.file("none"), a));
  EXPECT_EQ(folder.read("a.txt"), "A");
}

TEST(RawFile, PlatformTextTakesTheFormOfItsClass) {
  EXPECT_FALSE(RawPlatformText("plain"_text).isWide());
  EXPECT_EQ(string(RawPlatformText("plain"_text).narrow()), "plain");
  EXPECT_TRUE(RawPlatformText(raw("\xC3\xA4")).isWide());
  EXPECT_EQ(std::u16string(RawPlatformText(raw("\xC3\xA4")).wide()), u"\u00E4");
  EXPECT_TRUE(RawPlatformText(RawString::fromWide(u"w")).isWide());
  EXPECT_EQ(std::u16string(RawPlatformText("a"_text, RawString::PlatformConvert).wide()), u"a");
  EXPECT_EQ(string(RawPlatformText(RawString()).narrow()), "");
}

#ifndef _WIN32
// The stand-in that the other tests of faults rest on.
TEST(RawFileHost, EachKindOfCallFailsOnDemand) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "abc");
  const RawFileOwner file =
      openFile(path, RawAccessRead | RawAccessWrite, RawShareReadWrite, RawOpenExisting);
  HostFaults::Scope faults;
  char byte = 0;
  faults.failAll(HostFaults::Open);
  EXPECT_FALSE(openToRead(path).isValid());
  faults.failAll(HostFaults::Read);
  EXPECT_EQ(readFile(file, &byte, 1), -1);
  faults.failAll(HostFaults::Write);
  EXPECT_FALSE(writeFile(file, &byte, 1));
  faults.failAll(HostFaults::Seek);
  EXPECT_FALSE(seekFile(file, 0));
  faults.failAll(HostFaults::Flush);
  EXPECT_FALSE(flushFile(file));
  faults.failAll(HostFaults::Attributes);
  EXPECT_FALSE(exists(path));
  faults.failAll(HostFaults::CreateFolder);
  EXPECT_FALSE(createFolder(folder.file("new")));
  faults.failAll(HostFaults::Move | HostFaults::Replace | HostFaults::Delete);
  EXPECT_FALSE(moveFile(path, folder.file("b.txt")));
  EXPECT_FALSE(replaceFile(path, path));
  EXPECT_FALSE(deleteFile(path));
  EXPECT_EQ(faults.calls(), 3);
  EXPECT_EQ(folder.read("a.txt"), "abc");
}

TEST(RawFileHost, OneCallOfManyFails) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "abc");
  HostFaults::Scope faults;
  faults.failNth(2);
  EXPECT_TRUE(exists(path));
  EXPECT_FALSE(exists(path));
  EXPECT_TRUE(exists(path));
  EXPECT_EQ(faults.calls(), 3);
  faults.failNth(1, HostFaults::Open);
  EXPECT_TRUE(exists(path));
  EXPECT_FALSE(openToRead(path).isValid());
  EXPECT_TRUE(openToRead(path).isValid());
  faults.limitReads(2);
  EXPECT_EQ(readAll(openToRead(path)), "ab");
}

TEST(RawFileHost, FaultsEndWithTheirScope) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "abc");
  {
    HostFaults::Scope faults;
    faults.failAll(HostFaults::All);
    EXPECT_FALSE(exists(path));
  }
  EXPECT_TRUE(exists(path));
}

TEST(RawFileHost, ReadOnlyFilesStayAsTheyAre) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "abc");
  std::filesystem::permissions(bytesOf(path), std::filesystem::perms::owner_read);
  EXPECT_EQ(fileAttributes(path) & RawAttributeReadOnly, RawAttributeReadOnly);
  EXPECT_FALSE(openToWrite(path).isValid());
  EXPECT_FALSE(deleteFile(path));
  EXPECT_FALSE(replaceFile(path, folder.write("b.txt", "new")));
  EXPECT_EQ(folder.read("a.txt"), "abc");
}

TEST(RawFileHost, ReplacementTakesTheAttributes) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "abc");
  const auto perms = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
  std::filesystem::permissions(bytesOf(path), perms);
  EXPECT_TRUE(replaceFile(path, folder.write("b.txt", "new")));
  EXPECT_EQ(std::filesystem::status(bytesOf(path)).permissions(), perms);
}
#else
TEST(RawFile, ReplacementTakesTheAttributes) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "abc");
  EXPECT_EQ(fileAttributes(path) & RawAttributeReadOnly, 0u);
  EXPECT_TRUE(replaceFile(path, folder.write("b.txt", "new")));
  EXPECT_TRUE(openToWrite(path).isValid());
}
#endif
