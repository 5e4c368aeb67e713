#include "TestFolder.h"
#include "TestText.h"
#include "raw/RawFolder.h"
#include "raw/RawPath.h"

#include <gtest/gtest.h>

#include <windows.h>

using namespace RawLayer;

namespace {

void removeFolder(const RawString& path) {
  EXPECT_TRUE(RemoveDirectoryW(reinterpret_cast<const wchar_t*>(path.wide())));
}

} // namespace

TEST(RawFolderWin, PathsMayBeLongerThan260Units) {
  const TestFolder folder;
  // The form of a path that has no such limit; the wide calls alone know it.
  const RawString root = RawString::concat(RawString::fromWide(u"\\\\?\\"), folder.path());
  const RawString name = raw(std::string(200, 'n'));
  const RawString outer = joinPath(root, name);
  const RawString inner = joinPath(outer, name);
  const RawString last = joinPath(inner, raw("last"));
  ASSERT_TRUE(makeFolders(last));
  {
    RawFolderWalker walker(inner);
    ASSERT_TRUE(walker.next());
    EXPECT_GT(walker.fullPath.length(), 400);
    EXPECT_EQ(walker.fullPath, last);
  }
  removeFolder(last);
  removeFolder(inner);
  removeFolder(outer);
}

TEST(RawFolderWin, AttributesAndTimesAreThePlatforms) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "12345").shareAs(EncodingWide);
  const auto* name = reinterpret_cast<const wchar_t*>(path.wide());
  ASSERT_TRUE(SetFileAttributesW(name, FILE_ATTRIBUTE_READONLY));
  WIN32_FILE_ATTRIBUTE_DATA data;
  ASSERT_TRUE(GetFileAttributesExW(name, GetFileExInfoStandard, &data));
  RawFolderWalker walker(folder.path());
  ASSERT_TRUE(walker.next());
  EXPECT_EQ(walker.attributes, data.dwFileAttributes);
  const auto joined = [](const FILETIME& time) {
    return (static_cast<uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
  };
  EXPECT_EQ(walker.writeTime, joined(data.ftLastWriteTime));
  EXPECT_EQ(walker.createTime, joined(data.ftCreationTime));
  SetFileAttributesW(name, FILE_ATTRIBUTE_NORMAL);
}
