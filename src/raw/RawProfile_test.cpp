#include "raw/RawProfile.h"

#include "TestLines.h"
#include "TestProfile.h"
#include "raw/RawEncodings.h"
#include "raw/RawFile.h"

#include <gtest/gtest.h>

#include <chrono>

using namespace RawLayer;
using std::string;
using TestLines::inCode;
using TestLines::zeros;
using TestProfile::sectionOf;
using TestProfile::Texts;

// Reading. What is written back is tested in RawProfileSave_test.cpp.

namespace {

Texts readSection(const string& bytes, const string& section) {
  const TestFolder folder;
  return sectionOf(folder.write("a.ini", bytes), section);
}

string readValue(const string& bytes, const string& section, const string& key,
                 const string& fallback = "none") {
  const TestFolder folder;
  RawProfile profile(folder.write("a.ini", bytes));
  return bytesOf(profile.readValue(raw(section), raw(key), raw(fallback)));
}

} // namespace

TEST(RawProfile, EntriesComeInFileOrder) {
  EXPECT_EQ(readSection("[s]\r\nb=2\r\na=1\r\nb=3\r\n", "s"), (Texts{"b=2", "a=1", "b=3"}));
}

TEST(RawProfile, SectionNameRunsToTheLastBracketOfTheLine) {
  EXPECT_EQ(readSection("[a]b]\nk=1\n", "a]b"), Texts{"k=1"});
  EXPECT_EQ(readSection("[a]b]\nk=1\n", "a"), Texts{});
  EXPECT_EQ(readSection("[abc\nk=1\n", "abc"), Texts{"k=1"});
  EXPECT_EQ(readSection("[abc] behind\nk=1\n", "abc"), Texts{"k=1"});
  EXPECT_EQ(readSection("[[abc]\nk=1\n", "[abc"), Texts{"k=1"});
  EXPECT_EQ(readSection("[\nk=1\n", ""), Texts{"k=1"});
}

TEST(RawProfile, SectionNameIsNotTrimmed) {
  EXPECT_EQ(readSection("[ a ]\nk=1\n", " a "), Texts{"k=1"});
  EXPECT_EQ(readSection("[ a ]\nk=1\n", "a"), Texts{});
}

TEST(RawProfile, BracketHasToBeTheFirstUnitOfItsLine) {
  EXPECT_EQ(readSection("[s]\n [x]\nk=1\n\t[y]\n", "s"), (Texts{" [x]=", "k=1", "\t[y]="}));
  EXPECT_EQ(readSection("[s]\n [x]\nk=1\n", "x"), Texts{});
}

TEST(RawProfile, SectionWithAnEmptyNameIsNotTheEnd) {
  const string file = "[a]\nk=1\n[]\nk=2\n[b]\nk=3\n";
  EXPECT_EQ(readSection(file, ""), Texts{"k=2"});
  EXPECT_EQ(readSection(file, "b"), Texts{"k=3"});
}

TEST(RawProfile, FirstEqualsSignSplitsAnItem) {
  EXPECT_EQ(readSection("[s]\nkey=\n=value\na=b=c\nbare\n=\n", "s"),
            (Texts{"key=", "=value", "a=b=c", "bare=", "="}));
  EXPECT_EQ(readValue("[s]\na=b=c\n", "s", "a"), "b=c");
  EXPECT_EQ(readValue("[s]\n=value\n", "s", ""), "value");
}

TEST(RawProfile, NeitherKeyNorValueIsTrimmed) {
  EXPECT_EQ(readSection("[s]\na = b\n\tc=\td \n", "s"), (Texts{"a = b", "\tc=\td "}));
  EXPECT_EQ(readValue("[s]\na = b\n", "s", "a "), " b");
  EXPECT_EQ(readValue("[s]\na = b\n", "s", "a"), "none");
}

TEST(RawProfile, QuotesAndBackslashesMeanNothing) {
  EXPECT_EQ(readSection("[s]\n\"a=b\"=\"c\\n\"\n", "s"), Texts{"\"a=b\"=\"c\\n\""});
}

TEST(RawProfile, CommentsAndEmptyLinesHaveNoEffect) {
  EXPECT_EQ(readSection("[s]\n//a=1\n\nb=2 // not one\n\r\n// c\n //d=4\n/e=5\n;f=6\n", "s"),
            (Texts{"b=2 // not one", " //d=4", "/e=5", ";f=6"}));
  EXPECT_EQ(readValue("[s]\n//a=1\n", "s", "//a"), "none");
}

TEST(RawProfile, LineIsCutAtZeroUnits) {
  const string file = zeros("[s]\r\na=1\0b=2\0\0//c=3\0\r\nd=4\r\n");
  EXPECT_EQ(readSection(file, "s"), (Texts{"a=1", "b=2", "//c=3", "d=4"}));
  EXPECT_EQ(readValue(file, "s", "b"), "2");
  EXPECT_EQ(readValue(file, "s", "//c"), "3");
}

TEST(RawProfile, TextInFrontOfTheFirstSectionIsPassedOver) {
  EXPECT_EQ(readSection("k=0\n//[s]\n [s]\n[s]\nk=1\n", "s"), Texts{"k=1"});
  EXPECT_EQ(readSection("k=0\n", ""), Texts{});
}

TEST(RawProfile, NamesCompareWithoutCase) {
  EXPECT_EQ(readSection("[SecTion]\nKey=1\n", "sECTION"), Texts{"Key=1"});
  EXPECT_EQ(readValue("[SecTion]\nKey=1\n", "sECTION", "kEY"), "1");
}

TEST(RawProfile, RepeatedSectionsAreReadAsOne) {
  const string file = "[A]\nk=1\n[b]\nk=2\n[a]\nk=3\nm=4\n";
  EXPECT_EQ(readSection(file, "a"), (Texts{"k=1", "k=3", "m=4"}));
  EXPECT_EQ(readValue(file, "a", "k"), "1");
  EXPECT_EQ(readValue(file, "a", "m"), "4");
}

TEST(RawProfile, AllLineEndsAreKnown) {
  EXPECT_EQ(readSection("[s]\ra=1\nb=2\r\nc=3\n\rd=4", "s"), (Texts{"a=1", "b=2", "c=3", "d=4"}));
}

TEST(RawProfile, ReadValueGivesTheFallbackForWhatIsMissing) {
  EXPECT_EQ(readValue("[s]\nk=1\n", "t", "k"), "none");
  EXPECT_EQ(readValue("[s]\nk=1\n", "s", "l"), "none");
  EXPECT_EQ(readValue("[s]\nk=\n", "s", "k"), "");
  EXPECT_EQ(readValue("", "s", "k"), "none");
}

TEST(RawProfile, LoadSectionReplacesTheRing) {
  const TestFolder folder;
  RawProfile profile(folder.write("a.ini", "[s]\nk=1\n"));
  RawParameterList list = TestProfile::listOf({{"old", "0"}});
  const RawParameterList sharer = list;
  EXPECT_TRUE(profile.loadSection(list, "s"_text));
  EXPECT_EQ(TestProfile::textsOf(list), Texts{"k=1"});
  EXPECT_EQ(TestProfile::textsOf(sharer), Texts{"old=0"});
  EXPECT_FALSE(profile.loadSection(list, "t"_text));
  EXPECT_EQ(list.count(), 0);
}

TEST(RawProfile, EncodingAndMarkAreFoundAndTextIsUtf8) {
  const string text =
      "[\xE3\x82\xBD]\r\n\xE8\xA1\xA8=\xE3\x81\x82\r\n"; // Katakana, kanji, hiragana
  const TestFolder folder;
  for (const int32_t encoding : TestLines::allEncodings)
    for (const bool marked : {false, true}) {
      if (marked && encoding == EncodingShiftJis) continue;
      const RawMark mark = marked ? markOf(encoding) : RawMark{"", 0};
      RawProfile profile(
          folder.write("a.ini", string(mark.bytes, static_cast<std::size_t>(mark.size)) +
                                    inCode(encoding, text)));
      // These three characters are valid Shift-JIS, too: without a mark they are taken for that.
      if (encoding == EncodingUtf8 && !marked) continue;
      EXPECT_EQ(sectionOf(profile, "\xE3\x82\xBD"), Texts{"\xE8\xA1\xA8=\xE3\x81\x82"});
      EXPECT_EQ(profile.encoding, encoding);
      EXPECT_EQ(profile.markEncoding, marked ? encoding : 0);
    }
}

TEST(RawProfile, MissingFileGivesNothingAndLeavesTheEncoding) {
  const TestFolder folder;
  RawProfile profile(folder.file("none.ini"));
  profile.encoding = EncodingUtf16Le;
  profile.markEncoding = EncodingUtf16Le;
  EXPECT_EQ(sectionOf(profile, "s"), Texts{});
  EXPECT_EQ(profile.encoding, EncodingUtf16Le);
  EXPECT_EQ(profile.markEncoding, EncodingUtf16Le);
  EXPECT_EQ(profile.readState, RawLineFile::CannotRead);
  EXPECT_EQ(bytesOf(profile.readValue("s"_text, "k"_text, "d"_text)), "d");
}

TEST(RawProfile, FolderAndNoNameGiveNothing) {
  const TestFolder folder;
  EXPECT_EQ(sectionOf(folder.path(), "s"), Texts{});
  EXPECT_EQ(sectionOf(RawString(), "s"), Texts{});
}

TEST(RawProfile, LockedFileGivesNothing) {
  const TestFolder folder;
  RawProfile profile(folder.write("a.ini", "[s]\nk=1\n"));
  const RawFileOwner holder = openFile(profile.path, RawAccessRead, RawShareNone, RawOpenExisting);
  ASSERT_TRUE(holder);
  EXPECT_EQ(sectionOf(profile, "s"), Texts{});
  EXPECT_EQ(profile.readState, RawLineFile::CannotRead);
}

TEST(RawProfile, EmptyFileIsReadToItsEnd) {
  const TestFolder folder;
  RawProfile profile(folder.write("a.ini", ""));
  EXPECT_EQ(sectionOf(profile, "s"), Texts{});
  EXPECT_EQ(profile.readState, RawLineFile::Closed);
  EXPECT_EQ(profile.encoding, 0);
}

TEST(RawProfile, ReadingIsDoneFromTheReadPath) {
  const TestFolder folder;
  RawProfile profile(folder.write("a.ini", "[s]\nk=1\n"));
  EXPECT_EQ(profile.readPath, profile.path);
  profile.readPath = folder.write("b.ini", "[s]\nk=2\n");
  EXPECT_EQ(sectionOf(profile, "s"), Texts{"k=2"});
  EXPECT_EQ(bytesOf(profile.readValue("s"_text, "k"_text)), "2");
}

TEST(RawProfile, LineTooLongEndsTheReading) {
  const TestFolder folder;
  const string before = "[s]\r\nk=1\r\n", behind = "\r\n[t]\r\nm=2\r\n";
  RawProfile profile(folder.write("a.ini", before + "l=" + string(9000, 'x') + behind));
  EXPECT_EQ(sectionOf(profile, "s"), Texts{"k=1"});
  EXPECT_EQ(profile.readState, RawLineFile::LineTooLong);
  EXPECT_EQ(sectionOf(profile, "t"), Texts{});
  profile.bufferSize = 20000;
  EXPECT_EQ(sectionOf(profile, "t"), Texts{"m=2"});
  EXPECT_EQ(profile.readState, RawLineFile::Closed);
}

TEST(RawProfile, SmallBuffersGiveTheSameEntries) {
  const string text =
      "x\n[one]\na=\xE3\x81\x82\xE8\xA1\xA8\n[two]\nb=\xE3\x82\xBD\xE3\x82\xBD\nc=3\n";
  const TestFolder folder;
  for (const int32_t encoding : {EncodingUtf16Be, EncodingUtf16Le, EncodingUtf8}) {
    const RawMark mark = markOf(encoding);
    RawProfile profile(folder.write(
        "a.ini", string(mark.bytes, static_cast<std::size_t>(mark.size)) + inCode(encoding, text)));
    for (profile.bufferSize = 23; profile.bufferSize < 60; ++profile.bufferSize)
      EXPECT_EQ(sectionOf(profile, "two"), (Texts{"b=\xE3\x82\xBD\xE3\x82\xBD", "c=3"}))
          << encoding << " " << profile.bufferSize;
  }
}

TEST(RawProfile, BytesOfAnotherCodePageHideNoBracket) {
  // 0xF0 makes the file UTF-8, where 0xE9 starts three bytes.
  EXPECT_EQ(readSection("// \xF0\n[caf\xE9]\nk=1\n", "caf\xE9"), Texts{"k=1"});
}

TEST(RawProfile, HugeLineEndsTheReadingQuickly) {
  const TestFolder folder;
  RawProfile profile(folder.write("a.ini", "// \xF0\r\n[s]\r\nk=1\r\n"));
  std::error_code error;
  std::filesystem::resize_file(reinterpret_cast<const char8_t*>(profile.path.text()), 1u << 30,
                               error);
  ASSERT_FALSE(error);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(sectionOf(profile, "s"), Texts{"k=1"});
  EXPECT_EQ(profile.readState, RawLineFile::LineTooLong);
  EXPECT_FALSE(profile.writeValue("s"_text, "k"_text, "2"_text));
  EXPECT_FALSE(profile.saveSection(RawParameterList(), "s"_text));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
  EXPECT_EQ(bytesOf(profile.readValue("s"_text, "k"_text)), "1");
}
