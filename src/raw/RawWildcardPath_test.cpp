#include "raw/RawWildcardPath.h"

#include "TestFolder.h"
#include "TestText.h"
#include "raw/RawPath.h"

#include <gtest/gtest.h>

using namespace RawLayer;

namespace {

// A folder with a few entries; paths in the tests stand on it.
class RawWildcardPath : public testing::Test {
 protected:
  RawWildcardPath() {
    folder_.write("one.txt", "");
    folder_.write("two.txt", "");
    folder_.write("Three.TXT", "");
    folder_.write("four.md", "");
    folder_.makeFolder("alpha/inner.d");
    folder_.makeFolder("beta");
    folder_.write("alpha/inner.d/deep.txt", "");
    folder_.write("beta/deep.txt", "");
  }

  [[nodiscard]] RawString on(const char* path) const {
    return RawString::concat(folder_.path(), raw("\\"), raw(path));
  }
  [[nodiscard]] std::string resolved(const char* path) const {
    const RawString result = resolveWildcardPath(on(path));
    const int32_t start = folder_.path().length() + 1;
    return result.equals(raw("???"))
               ? "???"
               : bytesOf(RawString::fromRange(EncodingUtf8, result, {start, result.length()}));
  }
  [[nodiscard]] int32_t files(const char* pattern) const {
    return countEntries(on(pattern), false);
  }
  [[nodiscard]] int32_t folders(const char* pattern) const {
    return countEntries(on(pattern), true);
  }

  TestFolder folder_;
};

} // namespace

TEST_F(RawWildcardPath, APathWithoutPatternsStays) {
  EXPECT_EQ(resolved("one.txt"), "one.txt");
  EXPECT_EQ(resolved("missing\\x"), "missing\\x");
  EXPECT_EQ(resolveWildcardPath(raw("")), raw(""));
  EXPECT_EQ(resolveWildcardPath(raw("x")), raw("x"));
}

TEST_F(RawWildcardPath, APathWithoutFolderStays) {
  EXPECT_EQ(resolveWildcardPath(raw("*.txt")), raw("*.txt"));
  EXPECT_EQ(resolveWildcardPath(raw("@.+")), raw("@.+"));
  EXPECT_EQ(resolveWildcardPath(raw("\\*")), raw("\\*"));
}

TEST_F(RawWildcardPath, TheFirstMatchingEntryTakesThePlaceOfThePattern) {
  EXPECT_EQ(resolved("f*"), "four.md");
  EXPECT_EQ(resolved("?wo.txt"), "two.txt");
  EXPECT_EQ(resolved("@[no]+e%.txt"), "one.txt");
  EXPECT_EQ(resolved("@t[hw].*txt"), "Three.TXT");
}

TEST_F(RawWildcardPath, NamesMatchInAnyCase) {
  EXPECT_EQ(resolved("FO*.MD"), "four.md");
  EXPECT_EQ(resolved("thr*"), "Three.TXT");
}

TEST_F(RawWildcardPath, FoldersAreEntriesToo) {
  EXPECT_EQ(resolved("alp*"), "alpha");
}

TEST_F(RawWildcardPath, EveryPartIsResolvedFromTheLeft) {
  EXPECT_EQ(resolved("al*\\in*\\d*"), "alpha\\inner.d\\deep.txt");
  EXPECT_EQ(resolved("al*\\inner.d\\d*"), "alpha\\inner.d\\deep.txt");
  EXPECT_EQ(resolved("b?ta\\missing"), "beta\\missing");
}

TEST_F(RawWildcardPath, SeparatorsStayAsTheyStand) {
  EXPECT_EQ(resolved("al*/in*"), "alpha/inner.d");
  EXPECT_EQ(resolved("al*\\"), "alpha\\");
  EXPECT_EQ(resolved("al*/"), "alpha/");
}

TEST_F(RawWildcardPath, OnePartWithoutMatchMakesItAllQuestionMarks) {
  EXPECT_EQ(resolved("x*"), "???");
  EXPECT_EQ(resolved("x*\\deep.txt"), "???");
  EXPECT_EQ(resolved("missing\\*"), "???");
  EXPECT_EQ(resolved("one.txt\\*"), "???");
  EXPECT_EQ(resolved("*\\x*"), "???");
}

TEST_F(RawWildcardPath, OnlyTheThreeMarksMakeAPattern) {
  EXPECT_EQ(resolved("<one.txt"), "<one.txt");
  EXPECT_EQ(resolved(">one.txt"), ">one.txt");
  EXPECT_EQ(resolved("%o%n"), "%o%n");
  EXPECT_EQ(resolved("a@b"), "a@b");
  // With a mark the other signs have their meaning.
  EXPECT_EQ(resolved("alpha\\<x*"), "alpha\\inner.d");
}

TEST_F(RawWildcardPath, TheResultIsUtf8WhateverThePathIs) {
  const RawString result = resolveWildcardPath(on("f*").shareAs(EncodingWide));
  EXPECT_EQ(result.encoding(), EncodingUtf8);
  EXPECT_EQ(nameOf(result), raw("four.md"));
}

TEST_F(RawWildcardPath, EntriesOfTheWantedKindAreCounted) {
  EXPECT_EQ(files("*"), 4);
  EXPECT_EQ(folders("*"), 2);
  EXPECT_EQ(files("*.txt"), 3);
  EXPECT_EQ(folders("*.txt"), 0);
  EXPECT_EQ(files("<*.txt"), 1);
  EXPECT_EQ(files("@[ot].*%.TXT"), 3);
  EXPECT_EQ(files("*.none"), 0);
}

TEST_F(RawWildcardPath, ANameWithoutPatternCountsItself) {
  EXPECT_EQ(files("ONE.txt"), 1);
  EXPECT_EQ(files(">one.txt"), 1);
  EXPECT_EQ(files(">ONE.txt"), 0);
  EXPECT_EQ(folders("beta"), 1);
  EXPECT_EQ(files("beta"), 0);
  EXPECT_EQ(files(""), 0);
}

TEST_F(RawWildcardPath, TheFolderOfACountIsResolvedFirst) {
  EXPECT_EQ(files("b*\\*.txt"), 1);
  EXPECT_EQ(files("al*\\in*\\*"), 1);
  EXPECT_EQ(folders("al*\\*"), 1);
  EXPECT_EQ(files("x*\\*"), 0);
  EXPECT_EQ(files("missing\\*"), 0);
}

TEST_F(RawWildcardPath, ALongPathOfPatternsEnds) {
  std::string path;
  for (int i = 0; i < 50000; ++i) path += "\\x*";
  EXPECT_EQ(resolveWildcardPath(raw("q" + path)), raw("???"));
}
