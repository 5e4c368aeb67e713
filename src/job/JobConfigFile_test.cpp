#include "job/JobConfigFile.h"

#include "JobTestBed.h"
#include "JobTrees.h"

#include <filesystem>
#include <gtest/gtest.h>

using namespace JobLayer;

namespace {

class JobConfigFileTest : public testing::Test {
 protected:
  JobTestBed bed;
  TestFolder folder;
  LauncherData data;

  void load(const std::string& bytes) {
    JobConfigFile::load(folder.write("c.ini", bytes), data.selectors, data.buttons, data.actions);
  }
  // All entries: "S:Tools(Title=x);B*:..." with B* and S* for the templates.
  std::string all() {
    std::string text;
    const auto show = [&text](const std::string& kind, const auto& unit) {
      text += kind + ":" + bytesOf(unit.name) + treeText(unit.params) + ";";
    };
    if (!data.selectors.templateUnit.name.isEmpty()) show("S*", data.selectors.templateUnit);
    for (const auto& unit : data.selectors.elements()) show("S", unit);
    if (!data.buttons.templateUnit.name.isEmpty()) show("B*", data.buttons.templateUnit);
    for (const auto& unit : data.buttons.elements()) show("B", unit);
    for (const auto& unit : data.actions.elements()) show("A", unit);
    return text;
  }
  std::string loaded(const std::string& bytes) {
    load(bytes);
    return all();
  }
  // The details of the report on an unbalanced section.
  static std::string report(const std::string& header) {
    return "Unbalanced section blocks !\r\n  [command] Section " + header;
  }
};

std::string utf16(const std::u16string& text, bool bigEndian) {
  std::string bytes;
  for (const char16_t unit : text) {
    const char low = static_cast<char>(unit & 0xFF);
    const char high = static_cast<char>(unit >> 8);
    bytes += bigEndian ? high : low;
    bytes += bigEndian ? low : high;
  }
  return bytes;
}

const char* const example = "[Common]\r\n"
                            "Program=Tarvellon\r\n"
                            "\r\n"
                            "[Option]\r\n"
                            "ViewSelector=True\r\n"
                            "MaxLogFiles=50\r\n"
                            "\r\n"
                            "[Initialize]\r\n"
                            "Define {\r\n"
                            "  Home=$(Path:User)\r\n"
                            "}\r\n"
                            "\r\n"
                            "[Selector:Tools]\r\n"
                            "Title=Tools\r\n"
                            "Define {\r\n"
                            "  Selector=Tools\r\n"
                            "}\r\n"
                            "\r\n"
                            "[Button:Notepad]\r\n"
                            "Title=Editor\r\n"
                            "IconFile=notepad.exe\r\n"
                            "IconIndex=0\r\n"
                            "TipText=Start the editor\r\n"
                            "DropRun=True\r\n"
                            "Shell {\r\n"
                            "  Command=notepad.exe\r\n"
                            "}\r\n"
                            "\r\n"
                            "[Button:-]\r\n"
                            "\r\n"
                            "// This comment is lost when the buttons are saved.\r\n"
                            "[Action:Backup]\r\n"
                            "Shell {\r\n"
                            "  Command=$(Home)\\backup.cmd\r\n"
                            "}\r\n";

} // namespace

TEST_F(JobConfigFileTest, TheExampleGivesItsEntries) {
  EXPECT_EQ(loaded(example),
            "S:Tools(Title=Tools)(Define{(Selector=Tools)});"
            "B:Notepad(Title=Editor)(IconFile=notepad.exe)(IconIndex=0)(TipText=Start the editor)"
            "(DropRun=True)(Shell{(Command=notepad.exe)});"
            "B:-;"
            "A:#Initialize(Define{(Home=$(Path:User))});"
            "A:Backup(Shell{(Command=$(Home)\\backup.cmd)});");
  EXPECT_TRUE(data.buttons.at(1)->flags & JobButtonUnit::IsSeparator);
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST_F(JobConfigFileTest, AFileWithoutSectionsLoadsAsEmpty) {
  EXPECT_EQ(loaded("Title=x\nShell {\nCommand=y\n}\n}\n"), "");
  EXPECT_EQ(loaded(""), "");
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST_F(JobConfigFileTest, AMissingFileLeavesTheListsEmptyWithoutAWord) {
  JobConfigFile::load(folder.file("missing.ini"), data.selectors, data.buttons, data.actions);
  JobConfigFile::load(folder.path(), data.selectors, data.buttons, data.actions);
  EXPECT_EQ(all(), "");
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST_F(JobConfigFileTest, TheInitialVariablesAreDefinedWithAndWithoutAFile) {
  for (const bool there : {false, true}) {
    JobTestBed::setVariable("ExitCode", "7");
    JobTestBed::setVariable("Missing", "x");
    const RawString path = there ? folder.write("c.ini", "[Button:a]\n") : folder.file("missing");
    JobConfigFile::load(path, data.selectors, data.buttons, data.actions);
    EXPECT_EQ(JobTestBed::variable("ExitCode"), "0");
    EXPECT_TRUE(JobTestBed::hasVariable("Missing"));
    EXPECT_EQ(JobTestBed::variable("Missing"), "");
  }
}

TEST_F(JobConfigFileTest, TheFileOfTheFactsIsRead) {
  JobFacts::instance().configFile = folder.write("c.ini", "[Action:a]\n");
  JobConfigFile::load(data.selectors, data.buttons, data.actions);
  EXPECT_EQ(all(), "A:a;");
  JobFacts::instance().configFile = RawString();
}

TEST_F(JobConfigFileTest, LinesAheadOfTheFirstHeaderReachNoList) {
  EXPECT_EQ(loaded("}\nTitle=x\n[Button:a]\nTitle=y\n"), "B:a(Title=y);");
}

TEST_F(JobConfigFileTest, CommentsAndEmptyLinesAreDropped) {
  EXPECT_EQ(loaded("[Button:a]\n// x=1\n/ x=2\n/\n  \t// x=3\n\n \t \nb=// kept\n"),
            "B:a(b=// kept);");
}

TEST_F(JobConfigFileTest, HeadersMayStandBehindBlanks) {
  EXPECT_EQ(loaded(" \t[Button:a]\t \nx=1\n"), "B:a(x=1);");
}

TEST_F(JobConfigFileTest, NamesAreNotTrimmedAndMayHoldBrackets) {
  EXPECT_EQ(loaded("[Button: a ]\n[Button:b]c]\n[Selector:]\n[Action:[x]]\n"),
            "S:;B: a ;B:b]c;A:[x];");
}

TEST_F(JobConfigFileTest, AHeaderThatIsNotClosedDropsTheLinesUnderIt) {
  EXPECT_EQ(loaded("[Button:a]\nx=1\n[Button:b\ny=2\n}\n[\nz=3\n[Button:c] // no\nw=4\n"
                   "[Button:d]\nv=5\n"),
            "B:a(x=1);B:d(v=5);");
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST_F(JobConfigFileTest, KindsHaveExactCase) {
  EXPECT_EQ(loaded("[button:x]\na=1\n[BUTTON:x]\n[selector:x]\n[action:x]\n[initialize]\n"
                   "[Buttons:x]\n[ Button:x]\n[]\n[Button]\n"),
            "");
}

TEST_F(JobConfigFileTest, WhateverFollowsInitializeIsNotLookedAt) {
  EXPECT_EQ(loaded("[Initialize]\na=1\n[InitializeX:y]\nb=2\n"),
            "A:#Initialize(a=1);A:#Initialize(b=2);");
  EXPECT_EQ(treeText(data.actions.find("#Initialize"_text)->params), "(a=1)");
}

TEST_F(JobConfigFileTest, OtherSectionsAreSkipped) {
  EXPECT_EQ(loaded("[Common]\nProgram=Tarvellon\n}\n{\n[Button:a]\n[Option]\nx=1\n"), "B:a;");
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST_F(JobConfigFileTest, EntriesWithEqualNamesAreAllKept) {
  EXPECT_EQ(loaded("[Button:a]\nx=1\n[Button:a]\nx=2\n[Button:-]\n[Button:-]\n"),
            "B:a(x=1);B:a(x=2);B:-;B:-;");
}

TEST_F(JobConfigFileTest, StarIsTheTemplateAndNoEntry) {
  EXPECT_EQ(loaded("[Button:*]\nx=$(APPEND)\n[Selector:*]\ny=1\n[Action:*]\n"),
            "S*:*(y=1);B*:*(x=$(APPEND));A:*;");
  EXPECT_EQ(data.buttons.count(), 0);
}

TEST_F(JobConfigFileTest, ASecondTemplateReplacesTheFirstCompletely) {
  data.buttons.templateUnit.title = "old"_text;
  EXPECT_EQ(loaded("[Button:*]\nx=1\n[Button:a]\n[Button:*]\ny=2\n"), "B*:*(y=2);B:a;");
  EXPECT_TRUE(data.buttons.templateUnit.title.isEmpty());
}

TEST_F(JobConfigFileTest, ValuesAreTrimmedAtTheEndOfTheLineOnly) {
  EXPECT_EQ(loaded("[Button:a]\n  Title=x  \nb = y\t\nc=   \nd=\n=e\n"),
            "B:a(Title=x)(b= y)(c=)(d=)(=e);");
}

TEST_F(JobConfigFileTest, ASurplusBraceIsReportedAndTheButtonExists) {
  EXPECT_EQ(loaded("[Button:a]\n}\nx=1\n[Button:b]\n"), "B:a;B:b;");
  EXPECT_EQ(bed.dialogs.reports, std::vector<std::string>{report("Button:a")});
}

TEST_F(JobConfigFileTest, AnOpenBlockIsReportedAndTheNextSectionIsReadAsUsual) {
  EXPECT_EQ(loaded("[Selector:s]\nx=1\nIf {\ny=2\n[Initialize of it]\nz=3\nIf {\n"),
            "S:s(x=1);A:#Initialize(z=3);");
  EXPECT_EQ(bed.dialogs.reports,
            (std::vector<std::string>{report("Selector:s"), report("Initialize of it")}));
}

TEST_F(JobConfigFileTest, ABracketInsideABlockCutsTheSectionInTwo) {
  EXPECT_EQ(loaded("[Button:a]\nIf {\n  [Button:b]\n  x=1\n}\n"), "B:a;B:b(x=1);");
  EXPECT_EQ(bed.dialogs.reports,
            (std::vector<std::string>{report("Button:a"), report("Button:b")}));
}

TEST_F(JobConfigFileTest, AnUnbalancedTemplateKeepsWhatWasParsed) {
  EXPECT_EQ(loaded("[Button:*]\nx=1\n}\n"), "B*:*(x=1);");
  EXPECT_EQ(bed.dialogs.reports, std::vector<std::string>{report("Button:*")});
}

TEST_F(JobConfigFileTest, AReportStandsInTheLogFirst) {
  load("[Button:a b]\n}\n");
  ASSERT_EQ(bed.diary().size(), 1u);
  EXPECT_EQ(bed.diary()[0], "#Error|$ UnbalancedSectionBlocks [command] Section Button:a b");
}

TEST_F(JobConfigFileTest, AllLineEndsServeAndTheLastLineNeedsNone) {
  EXPECT_EQ(loaded("[Button:a]\rx=1\n\r\ny=2\r\rz=3"), "B:a(x=1)(y=2)(z=3);");
}

TEST_F(JobConfigFileTest, EveryEncodingGivesTheSameTree) {
  const std::u16string wide = u"[Button:\u30E1\u30E2]\r\nTitle=\u8868\u793A\u30BD\r\n";
  const std::string expected = "B:\xE3\x83\xA1\xE3\x83\xA2(Title=\xE8\xA1\xA8\xE7\xA4\xBA"
                               "\xE3\x82\xBD);";
  const std::string utf8 = "[Button:\xE3\x83\xA1\xE3\x83\xA2]\r\nTitle=\xE8\xA1\xA8\xE7\xA4\xBA"
                           "\xE3\x82\xBD\r\n";
  // Two of these characters have "\" as their second byte.
  const std::string shiftJis = "[Button:\x83\x81\x83\x82]\r\nTitle=\x95\x5C\x8E\xA6\x83\x5C\r\n";
  for (const std::string& bytes :
       {"\xEF\xBB\xBF" + utf8, shiftJis, "\xFF\xFE" + utf16(wide, false),
        "\xFE\xFF" + utf16(wide, true), utf16(wide, false), utf16(wide, true)}) {
    LauncherData fresh;
    JobConfigFile::load(folder.write("c.ini", bytes), fresh.selectors, fresh.buttons,
                        fresh.actions);
    ASSERT_EQ(fresh.buttons.count(), 1) << bytes;
    data.buttons.clear();
    data.buttons.add(fresh.buttons.at(0)->name)->params = fresh.buttons.at(0)->params;
    EXPECT_EQ(all(), expected) << bytes;
    EXPECT_EQ(fresh.buttons.at(0)->name.encoding(), RawLayer::EncodingUtf8);
  }
}

TEST_F(JobConfigFileTest, LinesAndSectionsMayCrossTheReadersBlocks) {
  std::string bytes;
  std::string expected;
  for (int i = 0; i < 3000; ++i) {
    const std::string number = std::to_string(i);
    bytes += "[Button:b" + number + "]\r\nTitle=" + std::string(i % 91u, 'x') + "\r\nIf {\r\n" +
             "  n=" + number + "\r\n}\r\n";
    expected +=
        "B:b" + number + "(Title=" + std::string(i % 91u, 'x') + ")(If{(n=" + number + ")});";
  }
  EXPECT_EQ(loaded(bytes), expected);
}

TEST_F(JobConfigFileTest, AFileThatCannotBeReadToItsEndGivesWhatStoodBefore) {
  // A line longer than the reader's buffer.
  EXPECT_EQ(loaded("[Button:a]\nx=1\n[Button:b]\ny=" + std::string(20000, 'y') + "\n[Button:c]\n"),
            "B:a(x=1);B:b;");
}

TEST_F(JobConfigFileTest, AFileOfAGigabyteEndsItsReadingEarly) {
  const RawString path = folder.write("c.ini", "[Button:a]\nx=1\n");
  std::error_code error;
  std::filesystem::resize_file(bytesOf(path), std::uintmax_t{1} << 30, error);
  ASSERT_FALSE(error);
  JobConfigFile::load(path, data.selectors, data.buttons, data.actions);
  // The zero bytes make it text of 16 bits, in one line without an end.
  EXPECT_EQ(all(), "");
  EXPECT_FALSE(JobDataSaver::save(path, data.buttons, JobButtonList::sectionPrefix()));
  EXPECT_EQ(std::filesystem::file_size(bytesOf(path), error), std::uintmax_t{1} << 30);
}

TEST_F(JobConfigFileTest, AFileThatIsLockedLoadsAsEmpty) {
  const RawString path = folder.write("c.ini", "[Button:a]\n");
  const RawLayer::RawFileOwner held = RawLayer::openFile(
      path, RawLayer::RawAccessRead, RawLayer::RawShareNone, RawLayer::RawOpenExisting);
  ASSERT_TRUE(held.isValid());
  JobConfigFile::load(path, data.selectors, data.buttons, data.actions);
  EXPECT_EQ(all(), "");
}

TEST_F(JobConfigFileTest, BytesThatAreNoTextAreReadAsTheyAre) {
  std::string noise = "[Button:a\x7F]\nx=\x01\xFF\xFE\n";
  noise += std::string("y=\0z\n", 5);
  load(noise);
  ASSERT_EQ(data.buttons.count(), 1);
  EXPECT_EQ(bytesOf(data.buttons.at(0)->name), "a\x7F");
  EXPECT_EQ(bytesOf(data.buttons.at(0)->params.text("y"_text)), std::string("\0z", 2));
}

TEST_F(JobConfigFileTest, DeepNestingIsReportedAndDoesNotCrash) {
  std::string bytes = "[Button:a]\nx=1\n";
  for (int i = 0; i < 200000; ++i) bytes += "a{\n";
  for (int i = 0; i < 200000; ++i) bytes += "}\n";
  EXPECT_EQ(loaded(bytes + "[Button:b]\n"), "B:a(x=1);B:b;");
  EXPECT_EQ(bed.dialogs.reports, std::vector<std::string>{report("Button:a")});
}

TEST_F(JobConfigFileTest, SetUpIsNotPartOfLoading) {
  load("[Button:a]\nTitle=x\n");
  EXPECT_TRUE(data.buttons.at(0)->title.isEmpty());
}
