#include "job/JobDataSaver.h"

#include "job/JobConfigFile.h"

#include "JobTestBed.h"
#include "JobTrees.h"

#include <filesystem>
#include <gtest/gtest.h>

#ifndef _WIN32
#include "host/HostFaults.h"
#endif

using namespace JobLayer;
using RawLayer::RawLineFile;

namespace {

class JobDataSaverTest : public testing::Test {
 protected:
  JobTestBed bed;
  TestFolder folder;
  LauncherData data;

  bool saveButtons() {
    return JobDataSaver::save(folder.file("c.ini"), data.buttons, JobButtonList::sectionPrefix());
  }
  bool saveSelectors() {
    return JobDataSaver::save(folder.file("c.ini"), data.selectors,
                              JobSelectorList::sectionPrefix());
  }
  void load(const std::string& bytes) {
    JobConfigFile::load(folder.write("c.ini", bytes), data.selectors, data.buttons, data.actions);
  }
  // The file after the buttons of it were saved, and saved a second time.
  std::string resaved(const std::string& bytes) {
    load(bytes);
    EXPECT_TRUE(saveButtons());
    const std::string first = folder.read("c.ini");
    EXPECT_TRUE(saveButtons());
    EXPECT_EQ(folder.read("c.ini"), first);
    EXPECT_FALSE(folder.has("c.ini.tmp"));
    return first;
  }
  // The same for a file without buttons, with one button added.
  std::string withButton(const std::string& bytes) {
    data.buttons.clear();
    data.buttons.add("b"_text);
    folder.write("c.ini", bytes);
    EXPECT_TRUE(saveButtons());
    const std::string first = folder.read("c.ini");
    EXPECT_TRUE(saveButtons());
    EXPECT_EQ(folder.read("c.ini"), first);
    return first;
  }
};

std::string le(const std::string& ascii) {
  std::string bytes;
  for (const char unit : ascii) bytes += std::string{unit, '\0'};
  return bytes;
}
std::string be(const std::string& ascii) {
  std::string bytes;
  for (const char unit : ascii) bytes += std::string{'\0', unit};
  return bytes;
}

} // namespace

TEST_F(JobDataSaverTest, AllSectionsMoveToThePlaceOfTheFirst) {
  EXPECT_EQ(resaved("; top\r\n[Button:a]\r\nx=1\r\n[Common]\r\ny=2\r\n[Button:b]\r\nz=3\r\n"
                    "[Action:c]\r\nw=4\r\n"),
            "; top\r\n[Button:a]\r\nx=1\r\n\r\n[Button:b]\r\nz=3\r\n\r\n[Common]\r\ny=2\r\n"
            "[Action:c]\r\nw=4\r\n");
}

TEST_F(JobDataSaverTest, EntriesAreWrittenInTheOrderOfTheList) {
  load("[Button:a]\r\n[Button:b]\r\n");
  data.buttons.prepend(data.buttons.unlink(data.buttons.last()));
  data.buttons.add("-"_text);
  ASSERT_TRUE(saveButtons());
  EXPECT_EQ(folder.read("c.ini"), "[Button:b]\r\n\r\n[Button:a]\r\n\r\n[Button:-]\r\n\r\n");
}

TEST_F(JobDataSaverTest, TheTemplateIsWrittenFirst) {
  EXPECT_EQ(resaved("[Button:a]\n[Button:*]\nx=$(APPEND)\n"),
            "[Button:*]\r\nx=$(APPEND)\r\n\r\n[Button:a]\r\n\r\n");
}

TEST_F(JobDataSaverTest, OneKindIsRewrittenAndTheOtherStays) {
  const std::string bytes = "[Selector:s]\n x = 1\n// note\n[Button:b]\n y = 1\n// note\n";
  load(bytes);
  ASSERT_TRUE(saveSelectors());
  EXPECT_EQ(folder.read("c.ini"), "[Selector:s]\r\nx= 1\r\n\r\n[Button:b]\n y = 1\n// note\n");
  ASSERT_TRUE(saveButtons());
  EXPECT_EQ(folder.read("c.ini"), "[Selector:s]\r\nx= 1\r\n\r\n[Button:b]\r\ny= 1\r\n\r\n");
}

TEST_F(JobDataSaverTest, CommentsOfRewrittenSectionsAreLostAndAllOthersStay) {
  EXPECT_EQ(resaved("// one\n[Button:a]\n// two\nx=1\n\n// three\n[Action:b]\n// four\n"),
            "// one\n[Button:a]\r\nx=1\r\n\r\n[Action:b]\n// four\n");
}

TEST_F(JobDataSaverTest, ForeignLinesKeepTheirBlanksAndLineEnds) {
  EXPECT_EQ(withButton("a \r\n\tb\n\n\rc\r\n\r\n  [ x ] \n}\n"),
            "a \r\n\tb\n\n\rc\r\n\r\n  [ x ] \n}\n[Button:b]\r\n\r\n");
}

TEST_F(JobDataSaverTest, SectionsAreAppendedWhereThereAreNone) {
  EXPECT_EQ(withButton("[Common]\r\nProgram=x\r\n"), "[Common]\r\nProgram=x\r\n[Button:b]\r\n\r\n");
  EXPECT_EQ(withButton(""), "[Button:b]\r\n\r\n");
}

TEST_F(JobDataSaverTest, AnAppendedHeaderStandsOnItsOwnLine) {
  EXPECT_EQ(withButton("[Common]\nProgram=x"), "[Common]\nProgram=x\r\n[Button:b]\r\n\r\n");
}

TEST_F(JobDataSaverTest, WithNothingToWriteTheFileStaysAsItWas) {
  for (const std::string bytes :
       {"[Common]\nx=1", "[Common]\r\nx=1\r\n", "", "\n", "\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"}) {
    folder.write("c.ini", bytes);
    ASSERT_TRUE(saveButtons());
    EXPECT_EQ(folder.read("c.ini"), bytes);
  }
}

TEST_F(JobDataSaverTest, TheLastLineMayLackItsEndBehindRewrittenSections) {
  EXPECT_EQ(resaved("[Button:a]\n[Action:b]\nx=1"), "[Button:a]\r\n\r\n[Action:b]\nx=1");
}

TEST_F(JobDataSaverTest, DeletingTheLastEntryTakesItsSectionAway) {
  load("// top\n[Button:a]\nx=1\n[Action:b]\n");
  data.buttons.clear();
  ASSERT_TRUE(saveButtons());
  EXPECT_EQ(folder.read("c.ini"), "// top\n[Action:b]\n");
}

TEST_F(JobDataSaverTest, AHeaderBehindBlanksIsRewrittenWithoutThem) {
  EXPECT_EQ(resaved(" \t[Button:a] \n x=1\n"), "[Button:a]\r\nx=1\r\n\r\n");
}

TEST_F(JobDataSaverTest, HeadersOfTheKindCompareWithExactCase) {
  EXPECT_EQ(resaved("[button:x]\ny=1\n[Button:a]\n[BUTTON:z]\n[Button]\n"),
            "[button:x]\ny=1\n[Button:a]\r\n\r\n[BUTTON:z]\n[Button]\n");
}

TEST_F(JobDataSaverTest, AHeaderThatIsNotClosedIsReplacedLikeTheOthers) {
  EXPECT_EQ(resaved("[Button:a\nx=1\n[Button:b]\n[Action:c\ny=2\n"),
            "[Button:b]\r\n\r\n[Action:c\ny=2\n");
}

TEST_F(JobDataSaverTest, TheExampleKeepsItsOtherSections) {
  const std::string head =
      "[Common]\r\nProgram=Tarvellon\r\n\r\n[Initialize]\r\nDefine {\r\n  Home="
      "$(Path:User)\r\n}\r\n\r\n";
  const std::string selector = "[Selector:Tools]\r\nTitle=Tools\r\nDefine {\r\n  Selector=Tools\r\n"
                               "}\r\n\r\n";
  const std::string buttons = "[Button:Notepad]\r\nTitle=Editor\r\nShell {\r\n  Command="
                              "notepad.exe\r\n}\r\n\r\n[Button:-]\r\n\r\n";
  const std::string comment = "// This comment is lost when the buttons are saved.\r\n";
  const std::string tail = "[Action:Backup]\r\nShell {\r\n  Command=$(Home)\\backup.cmd\r\n}\r\n";
  load(head + selector + buttons + comment + tail);
  ASSERT_TRUE(saveSelectors());
  EXPECT_EQ(folder.read("c.ini"), head + selector + buttons + comment + tail);
  ASSERT_TRUE(saveButtons());
  EXPECT_EQ(folder.read("c.ini"), head + selector + buttons + tail);
}

TEST_F(JobDataSaverTest, AMissingFileIsMadeInTheDefaultEncoding) {
  data.buttons.add(raw("\xE3\x81\x82"));
  ASSERT_TRUE(saveButtons());
  EXPECT_EQ(folder.read("c.ini"), "[Button:\xE3\x81\x82]\r\n\r\n");
}

TEST_F(JobDataSaverTest, TheFileOfTheFactsIsSaved) {
  JobFacts::instance().configFile = folder.file("c.ini");
  data.buttons.add("a"_text);
  EXPECT_TRUE(JobDataSaver::save(data.buttons, "Button:"_text));
  EXPECT_EQ(folder.read("c.ini"), "[Button:a]\r\n\r\n");
  JobFacts::instance().configFile = RawString();
}

TEST_F(JobDataSaverTest, AStaleTemporaryFileIsNoHindrance) {
  folder.write("c.ini.tmp", "left over from a crash, and longer than what is written now");
  EXPECT_EQ(resaved("[Button:a]\n"), "[Button:a]\r\n\r\n");
}

TEST_F(JobDataSaverTest, EncodingAndMarkAreKept) {
  const std::string text = "// x\n[Button:a]\nt=1\n[Action:b]\r\n";
  const std::string saved = "// x\n[Button:a]\r\nt=1\r\n\r\n[Action:b]\r\n";
  EXPECT_EQ(resaved("\xEF\xBB\xBF" + text), "\xEF\xBB\xBF" + saved);
  data.buttons.clear();
  EXPECT_EQ(resaved("\xFF\xFE" + le(text)), "\xFF\xFE" + le(saved));
  data.buttons.clear();
  EXPECT_EQ(resaved("\xFE\xFF" + be(text)), "\xFE\xFF" + be(saved));
}

TEST_F(JobDataSaverTest, Utf16WithoutAMarkStaysWithoutOne) {
  const std::string text = "// x\r\n[Button:a]\r\nt=1\r\n[Action:b]\r\n";
  const std::string saved = "// x\r\n[Button:a]\r\nt=1\r\n\r\n[Action:b]\r\n";
  EXPECT_EQ(resaved(le(text)), le(saved));
  data.buttons.clear();
  EXPECT_EQ(resaved(be(text)), be(saved));
}

TEST_F(JobDataSaverTest, AnAppendedHeaderStandsOnItsOwnLineInUtf16) {
  EXPECT_EQ(withButton("\xFF\xFE" + le("x")), "\xFF\xFE" + le("x\r\n[Button:b]\r\n\r\n"));
}

TEST_F(JobDataSaverTest, NewEntriesAreConvertedToTheEncodingOfTheFile) {
  load("// \x83\x5C\r\n[Button:\x95\x5C]\r\nt=\x8E\xA6\r\n");
  data.buttons.add(raw("\xE3\x82\xBD"));
  ASSERT_TRUE(saveButtons());
  EXPECT_EQ(folder.read("c.ini"),
            "// \x83\x5C\r\n[Button:\x95\x5C]\r\nt=\x8E\xA6\r\n\r\n[Button:\x83\x5C]\r\n\r\n");
}

TEST_F(JobDataSaverTest, WhatTheEncodingCannotHoldBecomesAQuestionMark) {
  load("// \x83\x5C\r\n");
  data.buttons.add(raw("a\xC3\xBF\xE2\x82\xAC"));
  ASSERT_TRUE(saveButtons());
  const std::string saved = folder.read("c.ini");
  EXPECT_EQ(saved.substr(0, 6), "// \x83\x5C\r");
  EXPECT_EQ(saved.substr(7, 9), "[Button:a");
  EXPECT_NE(saved.find("?"), std::string::npos);
}

TEST_F(JobDataSaverTest, BytesThatAreNoCharactersStayInForeignLines) {
  // Read as Shift-JIS, as UTF-8, and as binary data.
  for (const std::string line :
       {"// \x83\x5C \xFD \x80 \xA0\xFF\n", "// \xF5\xC0\x80 \xC3( \xED\xA0\x80\n",
        "// \x7F \xFF \xFE \xC3\n", "// caf\xE9\r\n\xA9\r\n"}) {
    data.buttons.clear();
    EXPECT_EQ(resaved(line + "[Button:a]\n[Common]\n" + line),
              line + "[Button:a]\r\n\r\n[Common]\n" + line)
        << line;
  }
}

TEST_F(JobDataSaverTest, ZeroUnitsInForeignLinesStay) {
  const std::string line("// \x7F\0x\0\n", 8);
  EXPECT_EQ(resaved(line + "[Button:a]\n"), line + "[Button:a]\r\n\r\n");
}

TEST_F(JobDataSaverTest, UnpairedSurrogatesInForeignLinesStay) {
  const std::string bad("\xFF\xFE/\0/\0\x01\xD8x\0\x01\xDC\r\0\n\0", 16);
  EXPECT_EQ(resaved(bad + le("[Button:a]\n")), bad + le("[Button:a]\r\n\r\n"));
}

TEST_F(JobDataSaverTest, EntriesOfABinaryFileKeepTheirBytes) {
  EXPECT_EQ(resaved("// \x7F\n[Button:\xE9\xFF]\nt=\xC3\n"),
            "// \x7F\n[Button:\xE9\xFF]\r\nt=\xC3\r\n\r\n");
}

TEST_F(JobDataSaverTest, AFileThatCannotBeReadToItsEndIsLeftAlone) {
  const std::string endless = "[Button:a]\n// " + std::string(20000, 'x') + "\n[Button:b]\n";
  const std::string cut = "// \x83\x5C\r\n[Button:a]\r\n// \x83";
  const std::string odd = "\xFF\xFE" + le("[Button:a]\r\n") + "x";
  // A line that fits the buffer as it stands, and not as UTF-8.
  std::string grows = "// \x83\x5C" + std::string(2000, 'x') + "\r\n// ";
  for (int i = 0; i < 3500; ++i) grows += "\x83\x5C";
  grows += "\r\n[Button:b]\r\n";
  for (const std::string& bytes : {endless, cut, odd, grows}) {
    load(bytes);
    EXPECT_FALSE(saveButtons()) << bytes.substr(0, 20);
    EXPECT_TRUE(folder.read("c.ini") == bytes) << bytes.substr(0, 20);
  }
}

TEST_F(JobDataSaverTest, AFileWhoseHeadersDependOnBrokenCharactersIsLeftAlone) {
  // The lead byte in front of the line end swallows it, so that the header behind is none to the
  // reader, and its lines belong to the section before. As bytes it is a header.
  const std::string bytes = "// \xB1\n[Action:a]\n// \x83\n[Button:b]\nx=1\n";
  load(bytes);
  EXPECT_EQ(data.buttons.count(), 0);
  EXPECT_EQ(treeText(data.actions.find("a"_text)->params), "(x=1)");
  EXPECT_FALSE(saveButtons());
  EXPECT_EQ(folder.read("c.ini"), bytes);
}

TEST_F(JobDataSaverTest, BrokenCharactersAtTheEndOfACommentDoNoHarm) {
  const std::string bytes = "// \xB1\n[Action:a]\n// \x83\n// caf\xE9\r\n[Selector:b]\n";
  load(bytes);
  data.buttons.add("b"_text);
  EXPECT_TRUE(saveButtons());
  EXPECT_EQ(folder.read("c.ini"), bytes + "[Button:b]\r\n\r\n");
}

TEST_F(JobDataSaverTest, AFolderOfThatNameOrAMissingFolderGivesFalse) {
  data.buttons.add("a"_text);
  EXPECT_FALSE(JobDataSaver::save(folder.path(), data.buttons, "Button:"_text));
  EXPECT_FALSE(JobDataSaver::save(folder.file("none/c.ini"), data.buttons, "Button:"_text));
}

TEST_F(JobDataSaverTest, ALockedFileIsLeftAlone) {
  data.buttons.add("b"_text);
  folder.write("c.ini", "[Button:a]\n");
  for (const uint32_t share : {RawLayer::RawShareNone, RawLayer::RawShareReadWrite}) {
    const RawLayer::RawFileOwner held = RawLayer::openFile(
        folder.file("c.ini"), RawLayer::RawAccessRead, share, RawLayer::RawOpenExisting);
    ASSERT_TRUE(held.isValid());
    EXPECT_FALSE(saveButtons());
  }
  EXPECT_EQ(folder.read("c.ini"), "[Button:a]\n");
  EXPECT_TRUE(saveButtons());
}

TEST_F(JobDataSaverTest, AReadOnlyFileIsLeftAlone) {
  namespace fs = std::filesystem;
  data.buttons.add("b"_text);
  const std::string path = bytesOf(folder.write("c.ini", "[Button:a]\n"));
  std::error_code error;
  fs::permissions(path, fs::perms::owner_write, fs::perm_options::remove, error);
  ASSERT_FALSE(error);
  EXPECT_FALSE(saveButtons());
  EXPECT_EQ(folder.read("c.ini"), "[Button:a]\n");
  fs::permissions(path, fs::perms::owner_write, fs::perm_options::add, error);
  EXPECT_TRUE(saveButtons());
}

TEST_F(JobDataSaverTest, ATemporaryFileInUseByAnotherGivesFalse) {
  data.buttons.add("b"_text);
  folder.write("c.ini", "[Button:a]\n");
  RawLineFile other(folder.file("c.ini.tmp"));
  ASSERT_TRUE(other.openWrite());
  EXPECT_FALSE(saveButtons());
  EXPECT_EQ(folder.read("c.ini"), "[Button:a]\n");
}

#ifndef _WIN32

// Every call of the platform fails once, and from each call on all fail.
TEST_F(JobDataSaverTest, AFaultAtAnyStepLeavesTheOldFileWhole) {
  std::string old = "// \x83\x5C\r\n[Common]\r\n";
  for (int i = 0; i < 900; ++i) old += "k" + std::to_string(i) + "=\x83\x5C\r\n";
  old += "[Button:a]\r\nx=1\r\n[Action:z]\r\ny=2\r\n";
  load(old);
  for (int i = 0; i < 40; ++i) data.buttons.add(raw("new" + std::to_string(i)));
  ASSERT_TRUE(saveButtons());
  const std::string whole = folder.read("c.ini");
  for (const bool lasting : {false, true}) {
    int32_t number = 1;
    for (bool isHit = true; isHit; ++number) {
      ASSERT_LT(number, 10000);
      folder.write("c.ini", old);
      bool saved = false;
      {
        HostFaults::Scope faults;
        if (lasting)
          faults.failFrom(number);
        else
          faults.failNth(number);
        saved = saveButtons();
        isHit = faults.calls() >= number;
      }
      EXPECT_TRUE(folder.read("c.ini") == (saved ? whole : old)) << "call " << number;
      if (!isHit) EXPECT_TRUE(saved) << "call " << number;
    }
    EXPECT_GT(number, 10);
  }
}

TEST_F(JobDataSaverTest, AFaultWhileTheFileIsMadeGivesFalseOrTheWholeFile) {
  data.buttons.add("a"_text);
  int32_t number = 1;
  for (bool isHit = true; isHit; ++number) {
    ASSERT_LT(number, 1000);
    RawLayer::deleteFile(folder.file("c.ini"));
    HostFaults::Scope faults;
    faults.failNth(number);
    const bool saved = saveButtons();
    isHit = faults.calls() >= number;
    EXPECT_EQ(folder.read("c.ini"), saved ? "[Button:a]\r\n\r\n" : "") << "call " << number;
    if (!isHit) EXPECT_TRUE(saved);
  }
  EXPECT_GT(number, 5);
}

TEST_F(JobDataSaverTest, ShortReadsChangeNothing) {
  const std::string bytes = "// \x83\x5C\r\n[Button:\x95\x5C]\r\nt=\x8E\xA6\r\n[Action:b]\r\n";
  HostFaults::Scope faults;
  faults.limitReads(1);
  EXPECT_EQ(resaved(bytes), "// \x83\x5C\r\n[Button:\x95\x5C]\r\nt=\x8E\xA6\r\n\r\n[Action:b]\r\n");
}

// Entries that never came into memory would be lost with the save.
TEST_F(JobDataSaverTest, NothingIsSavedOverAFileThatWasNotLoadedWhole) {
  const std::string bytes = "[Button:a]\r\nt=1\r\n\r\n[Button:b]\r\n\r\n";
  JobFacts::instance().configFile = folder.file("c.ini");
  const auto save = [this] {
    return JobDataSaver::save(data.buttons, JobButtonList::sectionPrefix());
  };
  for (const uint32_t kind : {HostFaults::Read, HostFaults::Open}) {
    {
      HostFaults::Scope faults;
      faults.failNth(1, kind);
      load(bytes);
    }
    EXPECT_EQ(data.buttons.count(), 0);
    data.buttons.add("new"_text);
    EXPECT_FALSE(save());
    EXPECT_EQ(folder.read("c.ini"), bytes);
    data.buttons.clear();
  }
  load(bytes);
  data.buttons.add("new"_text);
  EXPECT_TRUE(save());
  EXPECT_EQ(folder.read("c.ini"), bytes + "[Button:new]\r\n\r\n");
}

TEST_F(JobDataSaverTest, AFileThatWasNotThereAtTheLoadIsMade) {
  JobFacts::instance().configFile = folder.file("none.ini");
  JobConfigFile::load(data.selectors, data.buttons, data.actions);
  data.buttons.add("new"_text);
  EXPECT_TRUE(JobDataSaver::save(data.buttons, JobButtonList::sectionPrefix()));
  EXPECT_EQ(folder.read("none.ini"), "[Button:new]\r\n\r\n");
}

#endif
