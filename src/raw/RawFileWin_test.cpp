#include "TestFolder.h"
#include "TestText.h"
#include "raw/RawFile.h"

#include <gtest/gtest.h>

#include <windows.h>

using namespace RawLayer;

namespace {

void setAttributes(const RawString& path, DWORD attributes) {
  ASSERT_TRUE(SetFileAttributesA(path.text(), attributes));
}

} // namespace

TEST(RawFileWin, ReplacementTakesTheAttributesOfTheFile) {
  const TestFolder folder;
  for (const DWORD attributes : {FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM}) {
    const RawString path = folder.write("a.txt", "old");
    setAttributes(path, attributes);
    const DWORD before = fileAttributes(path);
    EXPECT_NE(before & attributes, 0u);
    EXPECT_TRUE(replaceFile(path, folder.write("a.tmp", "new")));
    EXPECT_EQ(fileAttributes(path), before);
    EXPECT_EQ(folder.read("a.txt"), "new");
    setAttributes(path, FILE_ATTRIBUTE_NORMAL);
  }
}

TEST(RawFileWin, ReadOnlyFileIsNotReplaced) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "old");
  const RawString other = folder.write("a.tmp", "new");
  setAttributes(path, FILE_ATTRIBUTE_READONLY);
  EXPECT_FALSE(replaceFile(path, other));
  EXPECT_EQ(folder.read("a.txt"), "old");
  EXPECT_TRUE(deleteFile(other)); // it did not become read-only itself
  setAttributes(path, FILE_ATTRIBUTE_NORMAL);
}
