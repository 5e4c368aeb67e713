#include "raw/RawStringList.h"

#include "TestText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace RawLayer;

namespace {

using Texts = std::vector<std::string>;

Texts textsOf(const RawStringList& list) {
  Texts texts;
  for (const RawString& text : list.elements()) texts.push_back(bytesOf(text));
  return texts;
}

Texts split(const std::string& text, bool trim = false) {
  RawStringList list;
  const RawString source = raw(text);
  const int32_t added = list.split(source, source.all(), trim);
  EXPECT_EQ(added, list.count());
  return textsOf(list);
}

} // namespace

TEST(RawStringList, FindInAnEmptyListGivesTheSentinel) {
  const RawStringList list;
  EXPECT_EQ(list.find("a"_text), list.end());
}

TEST(RawStringList, FindComparesWithoutCaseAtFirst) {
  RawStringList list;
  list.add("One"_text);
  RawListNode* two = list.add("Two"_text);
  EXPECT_FALSE(list.caseSensitive);
  EXPECT_EQ(list.find("tWO"_text), two);
  EXPECT_EQ(list.find("Three"_text), list.end());
  list.caseSensitive = true;
  EXPECT_EQ(list.find("tWO"_text), list.end());
  EXPECT_EQ(list.find("Two"_text), two);
}

TEST(RawStringList, FindGivesTheFirstOfEqualTexts) {
  RawStringList list;
  RawListNode* first = list.add("a"_text);
  list.add("A"_text);
  EXPECT_EQ(list.find("A"_text), first);
}

TEST(RawStringList, AddUniqueAddsOnlyWhatIsMissing) {
  RawStringList list;
  RawListNode* node = list.addUnique("Key"_text);
  EXPECT_EQ(list.addUnique("KEY"_text), node);
  EXPECT_EQ(textsOf(list), (Texts{"Key"}));
  list.caseSensitive = true;
  EXPECT_NE(list.addUnique("KEY"_text), node);
  EXPECT_EQ(textsOf(list), (Texts{"Key", "KEY"}));
}

TEST(RawStringList, AddedTextsAreShared) {
  const RawString text = raw("shared");
  RawStringList list;
  list.add(text);
  list.addUnique(text);
  EXPECT_EQ(list.count(), 1);
  EXPECT_EQ(text.references(), 1);
}

TEST(RawStringList, SplitsAtEveryComma) {
  EXPECT_EQ(split("a,b"), (Texts{"a", "b"}));
  EXPECT_EQ(split("a"), (Texts{"a"}));
  EXPECT_EQ(split("a,b,"), (Texts{"a", "b", ""}));
  EXPECT_EQ(split(","), (Texts{"", ""}));
  EXPECT_EQ(split(",,x"), (Texts{"", "", "x"}));
  EXPECT_EQ(split(""), Texts{});
}

TEST(RawStringList, QuotesMeanNothingToSplit) {
  EXPECT_EQ(split("\"a,b\""), (Texts{"\"a", "b\""}));
}

TEST(RawStringList, SplitTrimsBlanksAndTabsWhenAsked) {
  EXPECT_EQ(split(" a\t, \tb c ,\t"), (Texts{" a\t", " \tb c ", "\t"}));
  EXPECT_EQ(split(" a\t, \tb c ,\t", true), (Texts{"a", "b c", ""}));
  EXPECT_EQ(split("\ra\n", true), (Texts{"\ra\n"}));
}

TEST(RawStringList, SplitTakesThePartAndCountsWhatItAdded) {
  RawStringList list;
  list.add("old"_text);
  EXPECT_EQ(list.split("a,b,c,d"_text, {2, 5}, false), 2);
  EXPECT_EQ(textsOf(list), (Texts{"old", "b", "c"}));
  EXPECT_EQ(list.split("a,b"_text, {3, 3}, false), 0);
  EXPECT_EQ(list.split("a,b"_text, {2, 1}, true), 0);
  EXPECT_EQ(list.split("a,b"_text, {-5, 99}, false), 2);
}

TEST(RawStringList, SplitKeepsTheEncoding) {
  const RawString wide = RawString::fromWide(u"x,\u3042");
  RawStringList list;
  EXPECT_EQ(list.split(wide, wide.all(), false), 2);
  const RawString& last = *RawStringList::element(list.last());
  EXPECT_EQ(last.encoding(), EncodingWide);
  EXPECT_EQ(last, RawString::fromWide(u"\u3042"));
}

TEST(RawStringList, SortsByExactCase) {
  RawStringList list;
  for (const char* text : {"b", "a", "B", "ab"}) list.add(RawString::fromChars(text));
  RawStringListSort(list).sortAll();
  EXPECT_EQ(textsOf(list), (Texts{"B", "a", "ab", "b"}));
  RawStringListSort(list).sortAll(true);
  EXPECT_EQ(textsOf(list), (Texts{"b", "ab", "a", "B"}));
}

TEST(RawStringList, DestroysWhatItOwnsAndANullPointer) {
  RawStringList list;
  list.destroy(nullptr);
  const RawString text = raw("counted");
  list.add(text);
  list.clear();
  EXPECT_EQ(text.references(), 0);
}
