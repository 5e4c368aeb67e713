#include "raw/RawPath.h"

#include "TestFolder.h"
#include "TestText.h"
#include "raw/RawFile.h"
#include "raw/RawSystem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

using namespace RawLayer;

namespace {

RawString shiftJis(const char* bytes, int32_t size) {
  return RawString::fromBytes(EncodingShiftJis, bytes, size);
}
// The user's folder of a product that nobody else has; gone at the end.
class ProductFolder {
 public:
  ProductFolder() : product(raw("TarvellonPathTest")), path(joinPath(userFolder(), product)) {}
  ~ProductFolder() {
    std::string name = bytesOf(path);
    std::replace(name.begin(), name.end(), '\\', '/');
    std::error_code error;
    std::filesystem::remove_all(name, error);
  }
  ProductFolder(const ProductFolder&) = delete;
  ProductFolder& operator=(const ProductFolder&) = delete;

  RawString product;
  RawString path;
};

std::string stem(const char* path) {
  const RawString text = raw(path);
  return bytesOf(RawString::fromRange(EncodingUtf8, text, stemRange(text, text.all())));
}
std::string extension(const char* path) {
  const RawString text = raw(path);
  return bytesOf(RawString::fromRange(EncodingUtf8, text, extensionRange(text)));
}
std::string absolute(const char* base, const char* relative) {
  return bytesOf(absolutePath(raw(base), raw(relative)));
}
std::string join(const char* folder, const char* name) {
  return bytesOf(joinPath(raw(folder), raw(name)));
}

} // namespace

TEST(RawPath, FolderIsEverythingInFrontOfTheLastSeparator) {
  EXPECT_EQ(folderRange(raw("a")), (RawRange{0, 0}));
  EXPECT_EQ(folderRange(raw("a\\b")), (RawRange{0, 1}));
  EXPECT_EQ(folderRange(raw("a/b")), (RawRange{0, 1}));
  EXPECT_EQ(folderRange(raw("a\\b/c\\")), (RawRange{0, 5}));
  EXPECT_EQ(folderRange(raw("\\a")), (RawRange{0, 0}));
  EXPECT_EQ(folderRange(raw("")), (RawRange{0, 0}));
  EXPECT_EQ(folderOf(raw("c:\\dir\\name.txt")), raw("c:\\dir"));
}

TEST(RawPath, NameIsEverythingBehindTheLastSeparator) {
  EXPECT_EQ(nameRange(raw("name")), (RawRange{0, 4}));
  EXPECT_EQ(nameRange(raw("a\\b/cd")), (RawRange{4, 6}));
  EXPECT_EQ(nameRange(raw("a\\")), (RawRange{2, 2}));
  EXPECT_EQ(nameRange(raw("")), (RawRange{0, 0}));
  EXPECT_EQ(nameOf(raw("c:/dir/name.txt")), raw("name.txt"));
}

TEST(RawPath, StemEndsAtTheDotWhenItIsTheLastMark) {
  EXPECT_EQ(stem("name.txt"), "name");
  EXPECT_EQ(stem("a.b.c"), "a.b");
  EXPECT_EQ(stem("name"), "name");
  EXPECT_EQ(stem(".profile"), "");
  EXPECT_EQ(stem("name."), "name");
  EXPECT_EQ(stem("a.b\\c"), "a.b\\c");
  EXPECT_EQ(stem("a.b/c"), "a.b/c");
}

TEST(RawPath, StemOfARangeLooksAtNothingOutsideIt) {
  const RawString path = raw("c:\\x.d\\name.txt");
  EXPECT_EQ(stemRange(path, nameRange(path)), (RawRange{7, 11}));
  EXPECT_EQ(stemRange(path, {3, 6}), (RawRange{3, 4}));
  EXPECT_EQ(stemRange(path, {7, 100}), (RawRange{7, 11}));
  EXPECT_EQ(stemRange(path, {-5, 6}), (RawRange{0, 4}));
}

TEST(RawPath, ExtensionStandsBehindTheLastDotOfTheName) {
  EXPECT_EQ(extension("name.txt"), "txt");
  EXPECT_EQ(extension("a.b.c"), "c");
  EXPECT_EQ(extension("c:\\a.b\\c"), "");
  EXPECT_EQ(extension("name"), "");
  EXPECT_EQ(extension("name."), "");
  EXPECT_EQ(extensionRange(raw("c:\\a.b\\c")), (RawRange{8, 8}));
  EXPECT_EQ(extensionRange(raw("")), (RawRange{0, 0}));
}

TEST(RawPath, ATrailByteOfShiftJisIsNoSeparator) {
  // 0x83 0x5C is one character, and so is 0x83 0x83.
  const RawString inside = shiftJis("ab\x83\x5C"
                                    "cd",
                                    6);
  EXPECT_FALSE(isSeparatorAt(inside, 3));
  EXPECT_EQ(folderRange(inside), (RawRange{0, 0}));
  EXPECT_EQ(nameRange(inside), (RawRange{0, 6}));
  EXPECT_EQ(joinPath(inside, shiftJis("x", 1)), shiftJis("ab\x83\x5C"
                                                         "cd\\x",
                                                         8));
  // A separator behind the character counts, as does one behind two lead-range bytes.
  EXPECT_TRUE(isSeparatorAt(shiftJis("\x83\x5C\x5C", 3), 2));
  EXPECT_TRUE(isSeparatorAt(shiftJis("\x83\x83\x5C", 3), 2));
  EXPECT_FALSE(isSeparatorAt(shiftJis("\x83\x83\x83\x5C", 4), 3));
  EXPECT_EQ(folderRange(shiftJis("\x83\x5C\x5Cx", 4)), (RawRange{0, 2}));
}

TEST(RawPath, ATrailingShiftJisCharacterIsNoTrailingSeparator) {
  const RawString folder = shiftJis("c:\\\x83\x5C", 5);
  EXPECT_EQ(withoutTrailingSeparator(folder), folder);
  EXPECT_EQ(joinPath(folder, shiftJis("x", 1)), shiftJis("c:\\\x83\x5C\\x", 7));
}

TEST(RawPath, OnlyShiftJisHasTrailBytes) {
  const RawString same = RawString::fromBytes(EncodingAnsi, "\x83\x5C", 2);
  EXPECT_TRUE(isSeparatorAt(same, 1));
  const RawString utf8 = raw("\xE3\x82\xBD\\x");
  EXPECT_TRUE(isSeparatorAt(utf8, 3));
  EXPECT_EQ(folderRange(utf8), (RawRange{0, 3}));
  EXPECT_EQ(folderRange(RawString::fromWide(u"\u30BD\\x")), (RawRange{0, 1}));
}

TEST(RawPath, SeparatorsAreAskedForByPosition) {
  EXPECT_TRUE(isSeparatorAt(raw("a/b"), 1));
  EXPECT_FALSE(isSeparatorAt(raw("a/b"), 0));
  EXPECT_FALSE(isSeparatorAt(raw("a/b"), -1));
  EXPECT_FALSE(isSeparatorAt(raw("a/b"), 3));
}

TEST(RawPath, JoiningAddsASeparatorWhereOneIsMissing) {
  EXPECT_EQ(join("", "x"), "x");
  EXPECT_EQ(join("c:\\", "x"), "c:\\x");
  EXPECT_EQ(join("c:/", "x"), "c:/x");
  EXPECT_EQ(join("c:\\dir", "x"), "c:\\dir\\x");
  EXPECT_EQ(join("c:\\dir", ""), "c:\\dir\\");
  EXPECT_EQ(joinPath(RawString::fromWide(u"c:\\dir"), RawString::fromWide(u"\u30BD")),
            RawString::fromWide(u"c:\\dir\\\u30BD"));
}

TEST(RawPath, OneTrailingSeparatorIsDropped) {
  EXPECT_EQ(withoutTrailingSeparator(raw("a\\")), raw("a"));
  EXPECT_EQ(withoutTrailingSeparator(raw("a//")), raw("a/"));
  EXPECT_EQ(withoutTrailingSeparator(raw("a")), raw("a"));
  EXPECT_EQ(withoutTrailingSeparator(raw("")), raw(""));
}

TEST(RawPath, AnAbsolutePathStartsWithADriveOrTwoBackslashes) {
  EXPECT_TRUE(isAbsolutePath(raw("c:\\x")));
  EXPECT_TRUE(isAbsolutePath(raw("Z:x")));
  EXPECT_TRUE(isAbsolutePath(raw("\\\\server\\share")));
  EXPECT_FALSE(isAbsolutePath(raw("\\x")));
  EXPECT_FALSE(isAbsolutePath(raw("//x")));
  EXPECT_FALSE(isAbsolutePath(raw("1:\\x")));
  EXPECT_FALSE(isAbsolutePath(raw("c")));
  EXPECT_FALSE(isAbsolutePath(raw("")));
}

TEST(RawPath, EmptyAndAbsolutePathsStayAsTheyStand) {
  EXPECT_EQ(absolute("c:\\base", ""), "");
  EXPECT_EQ(absolute("c:\\base", "d:\\x"), "d:\\x");
  EXPECT_EQ(absolute("c:\\base", "d:x"), "d:x");
  EXPECT_EQ(absolute("c:\\base", "\\\\server\\x"), "\\\\server\\x");
}

TEST(RawPath, ARelativePathGoesBehindTheBase) {
  EXPECT_EQ(absolute("c:\\base", "x"), "c:\\base\\x");
  EXPECT_EQ(absolute("c:\\base\\", "x\\y"), "c:\\base\\x\\y");
  EXPECT_EQ(absolute("c:\\base\\\\", "x"), "c:\\base\\\\x");
  EXPECT_EQ(absolute("", "x"), "x");
  EXPECT_EQ(absolute("c:\\base", "\\x"), "c:\\base\\\\x");
}

TEST(RawPath, DotPrefixesAreWorkedOutAtTheFrontOnly) {
  EXPECT_EQ(absolute("c:\\a\\b", ".\\x"), "c:\\a\\b\\x");
  EXPECT_EQ(absolute("c:\\a\\b", "./x"), "c:\\a\\b\\x");
  EXPECT_EQ(absolute("c:\\a\\b", "..\\x"), "c:\\a\\x");
  EXPECT_EQ(absolute("c:\\a\\b", "../x"), "c:\\a\\x");
  EXPECT_EQ(absolute("c:\\a\\b", ".\\../.\\x"), "c:\\a\\x");
  EXPECT_EQ(absolute("c:\\a\\b\\", "../../x"), "c:\\x");
  EXPECT_EQ(absolute("c:\\a", "x\\..\\y"), "c:\\a\\x\\..\\y");
  EXPECT_EQ(absolute("c:\\a", ".."), "c:\\a\\..");
  EXPECT_EQ(absolute("c:\\a", "."), "c:\\a\\.");
  EXPECT_EQ(absolute("c:\\a", "...\\x"), "c:\\a\\...\\x");
  EXPECT_EQ(absolute("c:\\a", ".x\\y"), "c:\\a\\.x\\y");
}

TEST(RawPath, CuttingMoreThanTheBaseHasLeavesTheRestAlone) {
  EXPECT_EQ(absolute("c:", "..\\x"), "x");
  EXPECT_EQ(absolute("c:\\a", "..\\..\\..\\x"), "x");
  EXPECT_EQ(absolute("c:\\a", "..\\..\\"), "");
}

TEST(RawPath, ThePlaceholderIsTheUsersFolderOfTheProduct) {
  const ProductFolder folder;
  EXPECT_EQ(resolveUserPath(folder.product, raw("$(User)\\a.ini"), raw("c:\\base")),
            absolutePath(raw("c:\\base"), joinPath(folder.path, raw("a.ini"))));
  EXPECT_TRUE(isFolder(folder.path));
}

TEST(RawPath, ThePlaceholderCountsWhereverItFirstOccurs) {
  const ProductFolder folder;
  EXPECT_EQ(resolveUserPath(folder.product, raw("c:\\$(User)\\$(User)"), raw("d:\\base")),
            RawString::concat(raw("c:\\"), folder.path, raw("\\$(User)")));
  EXPECT_EQ(resolveUserPath(folder.product, raw("$(user)"), raw("d:\\base")),
            raw("d:\\base\\$(user)"));
}

TEST(RawPath, WithoutThePlaceholderThePathIsOnlyMadeAbsolute) {
  EXPECT_EQ(resolveUserPath(raw("P"), raw("..\\x"), raw("c:\\a\\b")), raw("c:\\a\\x"));
  EXPECT_EQ(resolveUserPath(raw("P"), raw("d:\\x"), raw("c:\\a\\b")), raw("d:\\x"));
  EXPECT_EQ(resolveUserPath(raw("P"), raw(""), raw("c:\\a")), raw(""));
  EXPECT_EQ(resolveUserPath(raw("P"), raw("x.ini")), joinPath(programFolder(), raw("x.ini")));
}

TEST(RawPath, AResolvedPathKeepsItsEncoding) {
  const ProductFolder folder;
  const RawString path = RawString::fromWide(u"\u30BD.ini");
  EXPECT_EQ(resolveUserPath(raw("P"), path), joinPath(programFolder().shareAs(EncodingWide), path));
  EXPECT_EQ(resolveUserPath(folder.product, RawString::fromWide(u"c:\\$(User)\\\u30BD")),
            RawString::concat(RawString::fromWide(u"c:\\"), folder.path.shareAs(EncodingWide),
                              RawString::fromWide(u"\\\u30BD")));
}

TEST(RawPath, TheProgramFolderHoldsTheExecutable) {
  EXPECT_FALSE(programFolder().isEmpty());
  EXPECT_EQ(programFolder(), folderOf(moduleName()));
}

TEST(RawPath, FoldersAreMadeWithAllTheirParents) {
  const TestFolder folder;
  EXPECT_TRUE(makeFolders(folder.file("a/b/c")));
  EXPECT_TRUE(isFolder(folder.file("a/b/c")));
  EXPECT_TRUE(makeFolders(folder.file("a/b/c")));
  EXPECT_TRUE(makeFolders(joinPath(folder.path(), raw("d\\e\\"))));
  EXPECT_TRUE(folder.has("d/e"));
  EXPECT_TRUE(makeFolders(joinPath(folder.path(), raw("f\\\\g"))));
  EXPECT_TRUE(folder.has("f/g"));
}

TEST(RawPath, FoldersWithForeignNamesAreMade) {
  const TestFolder folder;
  EXPECT_TRUE(makeFolders(joinPath(folder.path(), raw("\xE3\x82\xBD\\\xC3\xA9"))));
  EXPECT_TRUE(isFolder(joinPath(folder.path(), raw("\xE3\x82\xBD\\\xC3\xA9"))));
}

TEST(RawPath, NoFolderIsMadeOverAFile) {
  const TestFolder folder;
  folder.write("file", "x");
  EXPECT_FALSE(makeFolders(folder.file("file")));
  EXPECT_FALSE(makeFolders(folder.file("file/below/it")));
  EXPECT_EQ(folder.read("file"), "x");
  EXPECT_FALSE(makeFolders(raw("")));
}

TEST(RawPath, AnEndlessPathIsRefused) {
  std::string path = "x";
  for (int i = 0; i < 100000; ++i) path += "\\x";
  EXPECT_FALSE(makeFolders(raw(path)));
  EXPECT_FALSE(exists(raw("x")));
}
