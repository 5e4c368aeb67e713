#include "TestLines.h"
#include "TestProfile.h"
#include "raw/RawEncodings.h"
#include "raw/RawFile.h"
#include "raw/RawProfile.h"

#ifndef _WIN32
#include "host/HostFaults.h"
#endif

#include <gtest/gtest.h>

#include <functional>
#include <thread>

using namespace RawLayer;
using std::string;
using TestLines::inCode;
using TestLines::setReadOnly;
using TestLines::zeros;
using TestProfile::listOf;
using TestProfile::sectionOf;
using TestProfile::Texts;

// Saving: what becomes of the file.

namespace {

const char* const fileName = "a.ini";

// The file after saveSection of `list`; "refused" when that says false.
string saved(const string& bytes, const string& section, const RawParameterList& list) {
  const TestFolder folder;
  RawProfile profile(folder.write(fileName, bytes));
  const bool replaced = profile.saveSection(list, raw(section));
  EXPECT_EQ(folder.has("a.ini.tmp"), !replaced);
  return replaced ? folder.read(fileName) : "refused";
}

string markBytes(int32_t encoding) {
  const RawMark mark = markOf(encoding);
  return {mark.bytes, static_cast<std::size_t>(mark.size)};
}

void expectRefused(const TestFolder& folder, RawProfile& profile) {
  const string before = folder.read(fileName);
  EXPECT_FALSE(profile.saveSection(listOf({{"k", "2"}}), "s"_text));
  EXPECT_FALSE(profile.writeValue("s"_text, "k"_text, "2"_text));
  EXPECT_EQ(folder.read(fileName), before);
}
void expectRefused(const string& bytes) {
  const TestFolder folder;
  RawProfile profile(folder.write(fileName, bytes));
  expectRefused(folder, profile);
}

} // namespace

TEST(RawProfileSave, OtherLinesStayAsTheyStand) {
  EXPECT_EQ(saved("front\r\n\r\n[one]\r\n// comment\r\na = 1 \r\n\r\n\r\n[s]\r\n// lost\r\nk=1\r\n"
                  "[two]\r\nbare\r\n=x\r\n [y]\r\n",
                  "s", listOf({{"k", "2"}, {"m", "3"}})),
            "front\r\n\r\n[one]\r\n// comment\r\na = 1 \r\n\r\n\r\n[s]\r\nk=2\r\nm=3\r\n\r\n"
            "[two]\r\nbare\r\n=x\r\n [y]\r\n");
}

TEST(RawProfileSave, EveryLineThenEndsInCrLf) {
  EXPECT_EQ(saved("front\n[one]\ra=1\n[s]\nk=1\n[two]\nb=2", "s", listOf({{"k", "2"}})),
            "front\r\n[one]\r\na=1\r\n[s]\r\nk=2\r\n\r\n[two]\r\nb=2\r\n");
}

TEST(RawProfileSave, MissingSectionIsWrittenAtTheEnd) {
  EXPECT_EQ(saved("[one]\r\na=1", "s", listOf({{"k", "2"}})), "[one]\r\na=1\r\n[s]\r\nk=2\r\n\r\n");
  EXPECT_EQ(saved("", "s", listOf({{"k", "2"}})), "[s]\r\nk=2\r\n\r\n");
  EXPECT_EQ(saved("only front", "s", RawParameterList()), "only front\r\n[s]\r\n\r\n");
}

TEST(RawProfileSave, SecondSaveChangesNothing) {
  const RawParameterList list = listOf({{"k", "2"}, {"", "v"}, {"e", ""}});
  const string first = saved("// a\n[one]\na=1\n\n[s]\nk=1\n\n\n[two]\nb=2", "s", list);
  EXPECT_EQ(saved(first, "s", list), first);
}

TEST(RawProfileSave, SectionKeepsItsSpelling) {
  EXPECT_EQ(saved("[SecTion]\r\nk=1\r\n", "sECTION", listOf({{"k", "2"}})),
            "[SecTion]\r\nk=2\r\n\r\n");
}

TEST(RawProfileSave, SectionLinesEndAtTheBracket) {
  EXPECT_EQ(saved("[one\r\na=1\r\n[two]  behind\r\n[a]b]\r\n[\r\n", "s", RawParameterList()),
            "[one]\r\na=1\r\n[two]\r\n[a]b]\r\n[]\r\n[s]\r\n\r\n");
}

TEST(RawProfileSave, SectionWithAnEmptyNameIsKept) {
  const string file = "[a]\r\nk=1\r\n[]\r\nk=2\r\n// c\r\n[b]\r\nk=3\r\n";
  EXPECT_EQ(saved(file, "a", listOf({{"k", "9"}})),
            "[a]\r\nk=9\r\n\r\n[]\r\nk=2\r\n// c\r\n[b]\r\nk=3\r\n");
  EXPECT_EQ(saved(file, "b", listOf({{"k", "9"}})),
            "[a]\r\nk=1\r\n[]\r\nk=2\r\n// c\r\n[b]\r\nk=9\r\n\r\n");
  EXPECT_EQ(saved(file, "", listOf({{"k", "9"}})), "[a]\r\nk=1\r\n[]\r\nk=9\r\n\r\n[b]\r\nk=3\r\n");
}

TEST(RawProfileSave, EachOfRepeatedSectionsGetsTheList) {
  EXPECT_EQ(saved("[A]\r\nk=1\r\n[b]\r\nk=2\r\n[a]\r\nk=3\r\n", "a", listOf({{"k", "9"}})),
            "[A]\r\nk=9\r\n\r\n[b]\r\nk=2\r\n[a]\r\nk=9\r\n\r\n");
}

TEST(RawProfileSave, ZeroUnitsInOtherLinesStay) {
  const string file = zeros("[one]\r\na=1\0b=2\0\0c\r\n");
  EXPECT_EQ(saved(file, "s", RawParameterList()), file + "[s]\r\n\r\n");
}

TEST(RawProfileSave, NewFileIsUtf8WithoutMark) {
  const TestFolder folder;
  RawProfile profile(folder.file(fileName));
  EXPECT_TRUE(profile.saveSection(listOf({{"k", "\xE3\x81\x82"}}), "s"_text));
  EXPECT_EQ(folder.read(fileName), "[s]\r\nk=\xE3\x81\x82\r\n\r\n");
  EXPECT_FALSE(folder.has("a.ini.tmp"));
}

TEST(RawProfileSave, NewFileKeepsTheEncodingAndMarkOnceKnown) {
  const TestFolder folder;
  RawProfile profile(
      folder.write(fileName, markBytes(EncodingUtf16Be) + inCode(EncodingUtf16Be, "[s]\n")));
  sectionOf(profile, "s");
  profile.path = profile.readPath = folder.file("b.ini");
  EXPECT_TRUE(profile.writeValue("s"_text, "k"_text, "1"_text));
  EXPECT_EQ(folder.read("b.ini"),
            markBytes(EncodingUtf16Be) + inCode(EncodingUtf16Be, "[s]\r\nk=1\r\n\r\n"));
}

TEST(RawProfileSave, EncodingAndMarkAreKept) {
  const string others =
      "x\xE8\xA1\xA8\r\n[\xE3\x82\xBD\xEF\xBD\xB1]\r\n// \xE3\x81\x82\xE3\x80\x81\r\n";
  for (const int32_t encoding : TestLines::allEncodings)
    for (const bool marked : {false, true}) {
      if (encoding == EncodingShiftJis ? marked : encoding == EncodingUtf8 && !marked) continue;
      const string mark = marked ? markBytes(encoding) : string();
      EXPECT_EQ(saved(mark + inCode(encoding, others + "[s]\nk=1\n[t]\nm=\xE8\xA1\xA8"), "s",
                      listOf({{"\xE3\x81\x82", "\xE3\x82\xBD"}})),
                mark + inCode(encoding, others + "[s]\r\n\xE3\x81\x82=\xE3\x82\xBD\r\n\r\n"
                                                 "[t]\r\nm=\xE8\xA1\xA8\r\n"))
          << encoding << marked;
    }
}

TEST(RawProfileSave, WideTextsAreConverted) {
  const TestFolder folder;
  RawProfile profile(folder.write(fileName, "[s]\r\n"));
  RawParameterList list;
  list.add(RawString::fromWide(u"\x3042"))->value = RawString::fromWide(u"\x8868");
  list.add("ascii"_text)->value = RawString::fromWide(u"\x3042");
  EXPECT_TRUE(profile.saveSection(list, RawString::fromWide(u"S")));
  EXPECT_EQ(folder.read(fileName),
            "[s]\r\n\xE3\x81\x82=\xE8\xA1\xA8\r\nascii=\xE3\x81\x82\r\n\r\n");
}

TEST(RawProfileSave, OtherCodesForOneShiftJisCharacterAreKept) {
  // Three codes for one sign, and bytes of another code page that no character has.
  const string file = "[\x82\xA0]\r\na=\x81\xCA\xEE\xF9\xFA\x54\r\nb=\xE9 \xE9\x20\xA0\xFD\r\n";
  EXPECT_EQ(saved(file, "s", listOf({{"k", "\xE3\x81\x82"}})), file + "[s]\r\nk=\x82\xA0\r\n\r\n");
}

TEST(RawProfileSave, HalfCharactersOfUtf16AreKept) {
  const string alone = zeros("\x3D\xD8x\0\r\0\n\0"); // a high surrogate without its second half
  const string mark = markBytes(EncodingUtf16Le);
  EXPECT_EQ(saved(mark + inCode(EncodingUtf16Le, "[a]\r\n") + alone, "s", RawParameterList()),
            mark + inCode(EncodingUtf16Le, "[a]\r\n") + alone +
                inCode(EncodingUtf16Le, "[s]\r\n\r\n"));
}

TEST(RawProfileSave, InvalidUtf8IsKept) {
  const string file = "// \xF0 \xE9\r\n[caf\xE9]\r\na=\xC0\x80\r\n";
  EXPECT_EQ(saved(file, "s", RawParameterList()), file + "[s]\r\n\r\n");
}

TEST(RawProfileSave, BinaryFileKeepsItsBytes) {
  const string file = zeros("\x7F\xFF\xFE\x80\0\r\n[\xFF]\r\na=\xE9\xFF\r\n");
  EXPECT_EQ(saved(file, "s", listOf({{"k", "\xE3\x81\x82"}})),
            file + "[s]\r\nk=\xE3\x81\x82\r\n\r\n");
  EXPECT_EQ(saved(file, "\xFF", listOf({{"k", "2"}})),
            zeros("\x7F\xFF\xFE\x80\0\r\n[\xFF]\r\nk=2\r\n\r\n"));
}

TEST(RawProfileSave, AsciiFileTakesAnyText) {
  EXPECT_EQ(saved("[a]\r\nb=c\r\n", "s", listOf({{"k", "\xF0\x9F\x98\x80"}})),
            "[a]\r\nb=c\r\n[s]\r\nk=\xF0\x9F\x98\x80\r\n\r\n");
}

TEST(RawProfileSave, LinesAsLongAsCanBeReadAreCopied) {
  for (const int32_t encoding : {EncodingUtf16Be, EncodingUtf16Le})
    for (const std::size_t length : {4000u, 5000u, 8191u, 9000u, 12000u, 12300u}) {
      const TestFolder folder;
      const string mark = markBytes(encoding);
      const string text = "[a]\r\n" + string(length, 'x') + "\r\n";
      RawProfile profile(folder.write(fileName, mark + inCode(encoding, text)));
      const bool readable = length < 12288; // a block less one, and what the next one adds
      sectionOf(profile, "a");
      EXPECT_EQ(profile.readState == RawLineFile::Closed, readable) << length;
      EXPECT_EQ(profile.saveSection(RawParameterList(), "s"_text), readable) << length;
      EXPECT_EQ(folder.read(fileName),
                mark + inCode(encoding, readable ? text + "[s]\r\n\r\n" : text));
    }
}

TEST(RawProfileSave, SmallBuffersSaveTheSame) {
  const string text = "\xE8\xA1\xA8\r\n[one]\r\na=\xE3\x81\x82\r\n[s]\r\nk=1\r\n[two]\r\nb=2\r\n";
  const string expected =
      "\xE8\xA1\xA8\r\n[one]\r\na=\xE3\x81\x82\r\n[s]\r\nk=2\r\n\r\n[two]\r\nb=2\r\n";
  for (const int32_t encoding : {EncodingUtf16Be, EncodingUtf16Le, EncodingUtf8})
    for (int32_t size = 23; size < 50; ++size) {
      const TestFolder folder;
      RawProfile profile(folder.write(fileName, markBytes(encoding) + inCode(encoding, text)));
      profile.bufferSize = size;
      EXPECT_TRUE(profile.writeValue("s"_text, "k"_text, "2"_text));
      EXPECT_EQ(folder.read(fileName), markBytes(encoding) + inCode(encoding, expected)) << size;
    }
}

TEST(RawProfileSave, FileThatCannotBeReadToItsEndIsRefused) {
  expectRefused("[s]\r\nk=1\r\n" + string(9000, 'x') + "\r\n[t]\r\n");
  expectRefused("\x82\xA0\r\n[s]\r\nk=1\r\nm=\x82");
  expectRefused(markBytes(EncodingUtf16Le) + inCode(EncodingUtf16Le, "[s]\r\nk=1\r\n") + "x");
  // Too long as text, though not as it stands.
  expectRefused("\x82\xA0\r\n[s]\r\nk=1\r\nm=" + string(9000, '\xB1') + "\r\n[t]\r\n");
}

TEST(RawProfileSave, SectionThatOnlyTheBytesShowIsNotReplaced) {
  // In Shift-JIS, as which these bytes pass, 0xE9 takes the line end with it.
  expectRefused("\x82\xA0\n// caf\xE9\n[s]\nk=1\nm=3\n");
  expectRefused("\x82\xA0\n[s]\nk=1\n[t\xE9\n[u]\nm=3\n");
  const string file = "\x82\xA0\r\n// caf\xE9\r\n[a]\r\nb=c\xE9\r\n";
  EXPECT_EQ(saved(file, "s", RawParameterList()), file + "[s]\r\n\r\n");
}

TEST(RawProfileSave, LockedFileIsRefused) {
  const TestFolder folder;
  RawProfile profile(folder.write(fileName, "[s]\r\nk=1\r\n"));
  RawFileOwner holder = openFile(profile.path, RawAccessRead, RawShareNone, RawOpenExisting);
  ASSERT_TRUE(holder);
  EXPECT_FALSE(profile.saveSection(listOf({{"k", "2"}}), "s"_text));
  EXPECT_FALSE(profile.writeValue("s"_text, "k"_text, "2"_text));
  EXPECT_FALSE(folder.has("a.ini.tmp"));
  holder.reset();
  EXPECT_EQ(folder.read(fileName), "[s]\r\nk=1\r\n");
}

TEST(RawProfileSave, FileThatSomebodyReadsIsRefused) {
  const TestFolder folder;
  RawProfile profile(folder.write(fileName, "[s]\r\nk=1\r\n"));
  const RawFileOwner holder =
      openFile(profile.path, RawAccessRead, RawShareReadWrite, RawOpenExisting);
  ASSERT_TRUE(holder);
  expectRefused(folder, profile);
}

TEST(RawProfileSave, ReadOnlyFileIsRefused) {
  const TestFolder folder;
  RawProfile profile(folder.write(fileName, "[s]\r\nk=1\r\n"));
  setReadOnly(profile.path, true);
  expectRefused(folder, profile);
  setReadOnly(profile.path, false);
}

TEST(RawProfileSave, TakenTemporaryNameRefuses) {
  const TestFolder folder;
  RawProfile profile(folder.write(fileName, "[s]\r\nk=1\r\n"));
  {
    const RawFileOwner other =
        openFile(folder.file("a.ini.tmp"), RawAccessWrite, RawShareRead, RawCreateAlways);
    ASSERT_TRUE(other);
    expectRefused(folder, profile);
  }
  ASSERT_TRUE(deleteFile(folder.file("a.ini.tmp")));
  folder.makeFolder("a.ini.tmp");
  expectRefused(folder, profile);
}

TEST(RawProfileSave, StaleTemporaryFileIsWrittenOver) {
  const TestFolder folder;
  RawProfile profile(folder.write(fileName, "[s]\r\nk=1\r\n"));
  folder.write("a.ini.tmp", string(100000, 'x'));
  EXPECT_TRUE(profile.writeValue("s"_text, "k"_text, "2"_text));
  EXPECT_EQ(folder.read(fileName), "[s]\r\nk=2\r\n\r\n");
  EXPECT_FALSE(folder.has("a.ini.tmp"));
}

TEST(RawProfileSave, FolderMissingFolderAndNoNameAreRefused) {
  const TestFolder folder;
  folder.makeFolder("sub");
  EXPECT_FALSE(RawProfile(folder.file("sub")).writeValue("s"_text, "k"_text, "1"_text));
  EXPECT_FALSE(RawProfile(folder.file("no/a.ini")).writeValue("s"_text, "k"_text, "1"_text));
  EXPECT_FALSE(RawProfile().writeValue("s"_text, "k"_text, "1"_text));
  EXPECT_FALSE(folder.has("sub.tmp"));
  EXPECT_FALSE(std::filesystem::exists(".tmp"));
}

TEST(RawProfileSave, WriteValueSetsTheFirstUnitAndKeepsTheOthersInOrder) {
  const TestFolder folder;
  RawProfile profile(folder.write(fileName, "[s]\r\na=1\r\nK=2\r\nb=3\r\nk=4\r\n"));
  EXPECT_TRUE(profile.writeValue("S"_text, "k"_text, "9"_text));
  EXPECT_EQ(folder.read(fileName), "[s]\r\na=1\r\nK=9\r\nb=3\r\nk=4\r\n\r\n");
  EXPECT_TRUE(profile.writeValue("s"_text, "new"_text, ""_text));
  EXPECT_EQ(sectionOf(profile, "s"), (Texts{"a=1", "K=9", "b=3", "k=4", "new="}));
}

TEST(RawProfileSave, WriteValueMakesFileAndSection) {
  const TestFolder folder;
  RawProfile profile(folder.file(fileName));
  EXPECT_TRUE(profile.writeValue("s"_text, "k"_text, "1"_text));
  EXPECT_TRUE(profile.writeValue("t"_text, "m"_text, "2"_text));
  EXPECT_EQ(folder.read(fileName), "[s]\r\nk=1\r\n\r\n[t]\r\nm=2\r\n\r\n");
}

TEST(RawProfileSave, TwoSaversAtOnceLeaveOneWholeVersion) {
  const TestFolder folder;
  const RawString path = folder.write(fileName, "[s]\r\n");
  const auto version = [](char digit) {
    RawParameterList list;
    for (int32_t i = 0; i < 300; ++i)
      list.add(RawString::fromInt64(i))->value = raw(string(40, digit));
    return list;
  };
  const auto save = [&](char digit) {
    const RawParameterList list = version(digit);
    RawProfile profile(path);
    for (int32_t i = 0; i < 50; ++i) profile.saveSection(list, "s"_text);
  };
  std::thread first(save, '1');
  std::thread second(save, '2');
  first.join();
  second.join();
  const Texts left = sectionOf(path, "s");
  EXPECT_TRUE(left == TestProfile::textsOf(version('1')) ||
              left == TestProfile::textsOf(version('2')));
}

#ifndef _WIN32

namespace {

struct SaveCase {
  const char* name;
  string before; // "" for a file that is missing
  string after;
  std::function<bool(const RawString& path)> save;
};

class ItemSaver : public RawProfileEnumeration::Saver {
 public:
  bool saveSections(RawLineFile& writer, const RawString& prefix) override {
    RawProfile::writeSection(writer, prefix, listOf({{"k", "2"}}));
    return true;
  }
};

std::vector<SaveCase> saveCases() {
  const auto writeValue = [](const RawString& path) {
    return RawProfile(path).writeValue("s"_text, "k"_text, "2"_text);
  };
  const auto saveSection = [](const RawString& path) {
    return RawProfile(path).saveSection(listOf({{"k", "2"}}), "s"_text);
  };
  const auto saveFamily = [](const RawString& path) {
    RawProfile profile(path);
    ItemSaver saver;
    return RawProfileEnumeration(profile).save(saver, "s"_text);
  };
  const string old = "[a]\r\nb=c\r\n[s]\r\nk=1\r\nm=3\r\n";
  const string long_ = "// " + string(5000, 'x') + "\r\n// " + string(7000, 'y') + "\r\n";
  const string sjis = "[\x82\xA0]\r\nb=\x82\xA0\r\n";
  const string mark = markBytes(EncodingUtf16Le);
  return {
      {"value", old, "[a]\r\nb=c\r\n[s]\r\nk=2\r\nm=3\r\n\r\n", writeValue},
      {"value of a long file", long_ + old, long_ + "[a]\r\nb=c\r\n[s]\r\nk=2\r\nm=3\r\n\r\n",
       writeValue},
      {"value of a new file", "", "[s]\r\nk=2\r\n\r\n", writeValue},
      {"section", old, "[a]\r\nb=c\r\n[s]\r\nk=2\r\n\r\n", saveSection},
      {"section in Shift-JIS", sjis, sjis + "[s]\r\nk=2\r\n\r\n", saveSection},
      {"section in UTF-16", mark + inCode(EncodingUtf16Le, old),
       mark + inCode(EncodingUtf16Le, "[a]\r\nb=c\r\n[s]\r\nk=2\r\n\r\n"), saveSection},
      {"family", old, "[a]\r\nb=c\r\n\r\n[s]\r\nk=2\r\n\r\n", saveFamily},
      {"family in Shift-JIS", sjis, "[\x82\xA0]\r\nb=\x82\xA0\r\n\r\n[s]\r\nk=2\r\n\r\n",
       saveFamily},
  };
}

// Gives the number of calls that the save makes.
int32_t saveWithFaults(const SaveCase& each, const std::function<void(HostFaults::Scope&)>& arm) {
  const TestFolder folder;
  const RawString path =
      each.before.empty() ? folder.file(fileName) : folder.write(fileName, each.before);
  int32_t calls = 0;
  bool replaced = false;
  {
    HostFaults::Scope faults;
    arm(faults);
    replaced = each.save(path);
    calls = faults.calls();
  }
  EXPECT_EQ(folder.read(fileName), replaced ? each.after : each.before) << each.name;
  return calls;
}

} // namespace

TEST(RawProfileSave, AnyFaultLeavesTheOldFileOrTheNew) {
  for (const SaveCase& each : saveCases()) {
    const int32_t calls =
        saveWithFaults(each, [](HostFaults::Scope& faults) { faults.failNone(); });
    ASSERT_GT(calls, 5) << each.name;
    for (int32_t number = 1; number <= calls; ++number) {
      SCOPED_TRACE(number);
      saveWithFaults(each, [&](HostFaults::Scope& faults) { faults.failNth(number); });
      saveWithFaults(each, [&](HostFaults::Scope& faults) { faults.failFrom(number); });
    }
  }
}

TEST(RawProfileSave, ShortReadsSaveTheSame) {
  for (const SaveCase& each : saveCases())
    for (const int32_t limit : {1, 2, 3, 100}) {
      const TestFolder folder;
      const RawString path =
          each.before.empty() ? folder.file(fileName) : folder.write(fileName, each.before);
      HostFaults::Scope faults;
      faults.limitReads(limit);
      EXPECT_TRUE(each.save(path));
      EXPECT_EQ(folder.read(fileName), each.after) << each.name;
    }
}

TEST(RawProfileSave, FullDiskRefuses) {
  const TestFolder folder;
  RawProfile profile(folder.write(fileName, "[s]\r\nk=1\r\n"));
  for (const uint32_t kind : {HostFaults::Write, HostFaults::Flush}) {
    HostFaults::Scope faults;
    faults.failAll(kind);
    expectRefused(folder, profile);
    EXPECT_GT(faults.calls(), 0);
  }
}

#endif
