#include "TestLines.h"
#include "TestProfile.h"
#include "raw/RawEncodings.h"
#include "raw/RawFile.h"
#include "raw/RawProfile.h"

#include <gtest/gtest.h>

using namespace RawLayer;
using std::string;
using TestLines::inCode;
using TestProfile::listOf;
using TestProfile::Texts;

namespace {

// Each section as "name: key=value key=value".
class SectionCollector : public RawProfileEnumeration::Enumerator {
 public:
  Texts sections;
  void onSection(const RawString& name, const RawParameterList& parameters) override {
    string section = bytesOf(name) + ":";
    for (const string& entry : TestProfile::textsOf(parameters)) section += " " + entry;
    sections.push_back(section);
  }
};

// Writes one section "Item" for each value.
class ItemSaver : public RawProfileEnumeration::Saver {
 public:
  explicit ItemSaver(Texts values) : values_(std::move(values)) {}
  int32_t calls = 0;
  bool succeeds = true;
  string prefixSeen;

  bool saveSections(RawLineFile& writer, const RawString& prefix) override {
    ++calls;
    prefixSeen = bytesOf(prefix);
    for (const string& value : values_)
      RawProfile::writeSection(writer, "Item"_text, listOf({{"v", value}}));
    return succeeds;
  }

 private:
  Texts values_;
};

Texts sectionsOf(const string& bytes) {
  const TestFolder folder;
  RawProfile profile(folder.write("a.ini", bytes));
  SectionCollector collector;
  EXPECT_TRUE(RawProfileEnumeration(profile).enumerate(collector));
  return collector.sections;
}

// The file after `save`; "refused" when that says false.
string saved(const string& bytes, const Texts& values, const string& prefix = "Item") {
  const TestFolder folder;
  RawProfile profile(folder.write("a.ini", bytes));
  ItemSaver saver(values);
  const bool replaced = RawProfileEnumeration(profile).save(saver, raw(prefix));
  EXPECT_EQ(saver.calls, replaced ? 1 : saver.calls);
  EXPECT_FALSE(folder.has("a.ini.tmp"));
  return replaced ? folder.read("a.ini") : "refused";
}

} // namespace

TEST(RawProfileEnumeration, ShowsAllSectionsInFileOrder) {
  EXPECT_EQ(sectionsOf("front=0\n[a]\nk=1\n// c\nl=2\n[]\nm=3\n[b\n[a]\nn=4"),
            (Texts{"a: k=1 l=2", ": m=3", "b:", "a: n=4"}));
  EXPECT_EQ(sectionsOf("front=0\n"), Texts{});
  EXPECT_EQ(sectionsOf(""), Texts{});
}

TEST(RawProfileEnumeration, WalksSectionBySection) {
  const TestFolder folder;
  RawProfile profile(folder.write("a.ini", "front\n[a]\nk=1\n[]\nm=3\n[b]\n"));
  RawProfileEnumeration walk(profile);
  EXPECT_FALSE(walk.hasSection());
  ASSERT_TRUE(walk.open());
  RawParameterList parameters = listOf({{"old", "0"}});
  EXPECT_EQ(bytesOf(walk.currentSection), "a");
  EXPECT_EQ(bytesOf(walk.nextSection(parameters)), "a");
  EXPECT_EQ(TestProfile::textsOf(parameters), Texts{"k=1"});
  EXPECT_EQ(bytesOf(walk.currentSection), "");
  EXPECT_TRUE(walk.hasSection());
  EXPECT_EQ(bytesOf(walk.nextSection(parameters)), "");
  EXPECT_EQ(TestProfile::textsOf(parameters), Texts{"m=3"});
  EXPECT_EQ(bytesOf(walk.nextSection(parameters)), "b");
  EXPECT_EQ(parameters.count(), 0);
  EXPECT_FALSE(walk.hasSection());
  EXPECT_EQ(bytesOf(walk.nextSection(parameters)), "");
  EXPECT_EQ(walk.close(), RawLineFile::Closed);
  EXPECT_TRUE(walk.open());
  EXPECT_EQ(bytesOf(walk.currentSection), "a");
}

TEST(RawProfileEnumeration, TakesWhatTheProfileKnowsAndFindsItAnew) {
  const TestFolder folder;
  const RawMark mark = markOf(EncodingUtf8);
  RawProfile profile(folder.write("a.ini", string(mark.bytes, 3) + "[a]\n"));
  profile.encoding = EncodingShiftJis;
  RawProfileEnumeration walk(profile);
  EXPECT_EQ(walk.path, profile.path);
  EXPECT_EQ(walk.bufferSize, profile.bufferSize);
  EXPECT_EQ(walk.encoding, EncodingShiftJis);
  EXPECT_TRUE(walk.open());
  EXPECT_EQ(walk.encoding, EncodingUtf8);
  EXPECT_EQ(walk.markEncoding, EncodingUtf8);
}

TEST(RawProfileEnumeration, MissingFileAndFaultsAreTold) {
  const TestFolder folder;
  RawProfile missing(folder.file("none.ini"));
  SectionCollector collector;
  EXPECT_FALSE(RawProfileEnumeration(missing).open());
  EXPECT_FALSE(RawProfileEnumeration(missing).enumerate(collector));
  RawProfile faulty(folder.write("a.ini", "[a]\nk=1\n" + string(9000, 'x')));
  EXPECT_FALSE(RawProfileEnumeration(faulty).enumerate(collector));
  EXPECT_EQ(collector.sections, Texts{"a: k=1"});
}

TEST(RawProfileEnumeration, OwnedSectionsGoToThePlaceOfTheFirst) {
  EXPECT_EQ(saved("[a]\r\nk=1\r\n[Item]\r\nv=old\r\n[b]\r\nl=2\r\n[ITEMS]\r\n[c]\r\n", {"1", "2"}),
            "[a]\r\nk=1\r\n\r\n[Item]\r\nv=1\r\n\r\n[Item]\r\nv=2\r\n\r\n[b]\r\nl=2\r\n\r\n"
            "[c]\r\n\r\n");
}

TEST(RawProfileEnumeration, WithoutOwnedSectionsTheyGoToTheEnd) {
  EXPECT_EQ(saved("[a]\r\nk=1\r\n[It]\r\n", {"1"}),
            "[a]\r\nk=1\r\n\r\n[It]\r\n\r\n[Item]\r\nv=1\r\n\r\n");
  EXPECT_EQ(saved("", {"1"}), "[Item]\r\nv=1\r\n\r\n");
}

TEST(RawProfileEnumeration, NoMoreOwnedSectionsLeavesNone) {
  EXPECT_EQ(saved("[a]\r\n[Item]\r\nv=1\r\n[Item]\r\nv=2\r\n", {}), "[a]\r\n\r\n");
}

TEST(RawProfileEnumeration, RewriteLosesCommentsWhereSaveSectionKeepsThem) {
  const string file = "// front\r\n[a]\r\n// comment\r\nk=1\r\nbare\r\n\r\n\r\n[Item]\r\n";
  EXPECT_EQ(saved(file, {}), "// front\r\n[a]\r\nk=1\r\nbare=\r\n\r\n");
  const TestFolder folder;
  RawProfile profile(folder.write("a.ini", file));
  EXPECT_TRUE(profile.saveSection(RawParameterList(), "Item"_text));
  EXPECT_EQ(folder.read("a.ini"), file + "\r\n");
}

TEST(RawProfileEnumeration, SectionWithAnEmptyNameIsKept) {
  EXPECT_EQ(saved("[]\r\nk=1\r\n[Item]\r\n[]\r\nm=2\r\n[z]\r\n", {"1"}),
            "[]\r\nk=1\r\n\r\n[Item]\r\nv=1\r\n\r\n[]\r\nm=2\r\n\r\n[z]\r\n\r\n");
}

TEST(RawProfileEnumeration, EmptyPrefixOwnsEverySection) {
  EXPECT_EQ(saved("front\r\n[a]\r\nk=1\r\n[]\r\n[b]\r\n", {"1"}, ""),
            "front\r\n[Item]\r\nv=1\r\n\r\n");
}

TEST(RawProfileEnumeration, EncodingAndMarkAreKept) {
  const string text = "[\xE3\x82\xBD\xE8\xA1\xA8]\r\n\xE3\x81\x82=\xE3\x80\x81\r\n\r\n";
  for (const int32_t encoding : TestLines::allEncodings) {
    const RawMark mark = markOf(encoding);
    const string start(mark.bytes, static_cast<std::size_t>(mark.size)); // none for Shift-JIS
    EXPECT_EQ(saved(start + inCode(encoding, text), {"\xE3\x82\xBD"}),
              start + inCode(encoding, text + "[Item]\r\nv=\xE3\x82\xBD\r\n\r\n"))
        << encoding;
  }
}

TEST(RawProfileEnumeration, BinaryFileKeepsItsBytes) {
  EXPECT_EQ(saved("[\xFF]\r\nk=\x7F\xE9\xC0\r\n\r\n", {}), "[\xFF]\r\nk=\x7F\xE9\xC0\r\n\r\n");
}

TEST(RawProfileEnumeration, FalseOfTheSaverAborts) {
  const TestFolder folder;
  for (const string& file : {string("[a]\r\n[Item]\r\n[b]\r\n"), string("[a]\r\n")}) {
    RawProfile profile(folder.write("a.ini", file));
    ItemSaver saver({"1"});
    saver.succeeds = false;
    EXPECT_FALSE(RawProfileEnumeration(profile).save(saver, "Item"_text));
    EXPECT_EQ(saver.calls, 1);
    EXPECT_EQ(saver.prefixSeen, "Item");
    EXPECT_EQ(folder.read("a.ini"), file);
    EXPECT_FALSE(folder.has("a.ini.tmp"));
  }
}

TEST(RawProfileEnumeration, RewriteLeavesTheFileAlone) {
  const TestFolder folder;
  RawProfile profile(folder.write("a.ini", "[a]\r\nk=1\r\n"));
  ItemSaver saver({"1"});
  EXPECT_TRUE(RawProfileEnumeration(profile).rewrite(saver, "Item"_text, folder.file("b.ini")));
  EXPECT_EQ(folder.read("a.ini"), "[a]\r\nk=1\r\n");
  EXPECT_EQ(folder.read("b.ini"), "[a]\r\nk=1\r\n\r\n[Item]\r\nv=1\r\n\r\n");
}

TEST(RawProfileEnumeration, WhatCannotBeReadOrReplacedIsRefused) {
  for (const string& file :
       {"[a]\r\n" + string(9000, 'x') + "\r\n", string("[a]\r\nk=\x82\xA0\r\n\x82")})
    EXPECT_EQ(saved(file, {"1"}), "refused");
  const TestFolder folder;
  RawProfile profile(folder.file("a.ini"));
  ItemSaver saver({"1"});
  EXPECT_FALSE(RawProfileEnumeration(profile).save(saver, "Item"_text)); // missing
  EXPECT_FALSE(folder.has("a.ini"));
  folder.write("a.ini", "[a]\r\n");
  const RawFileOwner holder =
      openFile(profile.path, RawAccessRead, RawShareReadWrite, RawOpenExisting);
  ASSERT_TRUE(holder);
  EXPECT_FALSE(RawProfileEnumeration(profile).save(saver, "Item"_text)); // read by somebody
  EXPECT_EQ(folder.read("a.ini"), "[a]\r\n");
  EXPECT_FALSE(folder.has("a.ini.tmp"));
}
