#include "job/JobVariableSystem.h"

#include "JobExpansion.h"
#include "raw/RawClipboard.h"
#include "raw/RawProcess.h"
#include "raw/RawSystem.h"

#ifndef _WIN32
#include "host/HostProcesses.h"
#endif

using namespace JobLayer;

namespace {

// A folder whose path a script knows as $(F).
class JobVariableFiles : public testing::Test {
 protected:
  JobVariableFiles() {
    folder.write("one.txt", "1");
    folder.write("two.txt", "2");
    folder.write("three.dat", "3");
    folder.makeFolder("sub");
    folder.makeFolder("sub2");
    folder.makeFolder("text.txt");
    folder.write("sub/Inner.TXT", "4");
    JobTestBed::setVariable("F", bytesOf(folder.path()));
  }
  [[nodiscard]] std::string path(const std::string& name) const {
    return bytesOf(folder.path()) + "\\" + name;
  }
  JobExpansion bed;
  TestFolder folder;
};

} // namespace

TEST_F(JobVariableFiles, IsFileKnowsFilesOnly) {
  EXPECT_EQ(bed("$(IsFile:$(F)\\one.txt)"), "True");
  EXPECT_EQ(bed("$(IsFile:$(F)/one.txt)"), "True");
  EXPECT_EQ(bed("$(IsFile:$(F)\\none.txt)"), "False");
  EXPECT_EQ(bed("$(IsFile:$(F)\\sub)"), "False");
  EXPECT_EQ(bed("$(IsFile:)"), "False");
}

TEST_F(JobVariableFiles, IsFolderKnowsFoldersOnly) {
  EXPECT_EQ(bed("$(IsFolder:$(F)\\sub)"), "True");
  EXPECT_EQ(bed("$(IsFolder:$(F)\\one.txt)"), "False");
  EXPECT_EQ(bed("$(IsFolder:$(F)\\none)"), "False");
  EXPECT_EQ(bed("$(IsFolder:)"), "False");
}

TEST_F(JobVariableFiles, PatternsAreResolvedPartByPart) {
  EXPECT_EQ(bed("$(IsFile:$(F)\\o*.txt)"), "True");
  EXPECT_EQ(bed("$(IsFile:$(F)\\O?E.txt)"), "True") << "in any case";
  EXPECT_EQ(bed("$(IsFile:$(F)\\s*b\\inner.*)"), "True");
  EXPECT_EQ(bed("$(IsFile:$(F)\\@tw[a-z]+%.txt)"), "True");
  EXPECT_EQ(bed("$(IsFile:$(F)\\x*.txt)"), "False");
  EXPECT_EQ(bed("$(IsFolder:$(F)\\s?b)"), "True");
  EXPECT_EQ(bed("$(IsFolder:$(F)\\s?b\\*)"), "False") << "the first match is a file";
}

TEST_F(JobVariableFiles, FileGivesTheResolvedPath) {
  EXPECT_EQ(bed("$(File:$(F)\\one.txt)"), path("one.txt"));
  EXPECT_EQ(bed("$(File:$(F)\\thr*)"), path("three.dat"));
  EXPECT_EQ(bed("$(File:$(F)\\s?b\\*)"), path("sub\\Inner.TXT"));
}

TEST_F(JobVariableFiles, FolderGivesTheResolvedPath) {
  EXPECT_EQ(bed("$(Folder:$(F)\\sub)"), path("sub"));
  EXPECT_EQ(bed("$(Folder:$(F)\\*2)"), path("sub2"));
  EXPECT_EQ(bed("$(Folder:$(F))"), bytesOf(folder.path()));
}

TEST_F(JobVariableFiles, WhatIsNotThereIsMissing) {
  bed.setVariable("Missing", "none");
  EXPECT_EQ(bed("$(File:$(F)\\none.txt)"), "none");
  EXPECT_EQ(bed("$(File:$(F)\\sub)"), "none");
  EXPECT_EQ(bed("$(File:$(F)\\n*.txt)"), "none");
  EXPECT_EQ(bed("$(Folder:$(F)\\one.txt)"), "none");
  EXPECT_EQ(bed("$(Folder:$(F)\\n*)"), "none");
  EXPECT_EQ(bed("$(File:*.txt)"), "none") << "without a folder part a pattern stays as it is";
}

TEST_F(JobVariableFiles, CountsGoByKindAndName) {
  EXPECT_EQ(bed("$(FileCount:$(F)\\*)"), "3");
  EXPECT_EQ(bed("$(FileCount:$(F)\\*.TXT)"), "2") << "in any case; the folder of that name is none";
  EXPECT_EQ(bed("$(FileCount:$(F)\\one.txt)"), "1");
  EXPECT_EQ(bed("$(FileCount:$(F)\\none)"), "0");
  EXPECT_EQ(bed("$(FileCount:$(F)\\<*.txt)"), "1");
  EXPECT_EQ(bed("$(FileCount:$(F)\\s?b\\*)"), "1") << "the folder part is resolved";
  EXPECT_EQ(bed("$(FileCount:$(F)\\none\\*)"), "0");
  EXPECT_EQ(bed("$(FolderCount:$(F)\\*)"), "3");
  EXPECT_EQ(bed("$(FolderCount:$(F)\\sub*)"), "2");
  EXPECT_EQ(bed("$(FolderCount:$(F)\\*.dat)"), "0");
}

TEST(JobVariableSystem, IsMissingComparesWithTheValueOfMissing) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(IsMissing:$(File:x))"), "True");
  EXPECT_EQ(bed("$(IsMissing:)"), "True");
  EXPECT_EQ(bed("$(IsMissing:none)"), "False");
  bed.setVariable("Missing", "none");
  EXPECT_EQ(bed("$(IsMissing:$(File:x))"), "True");
  EXPECT_EQ(bed("$(IsMissing:)"), "False");
  EXPECT_EQ(bed("$(IsMissing:None)"), "False");
}

TEST(JobVariableSystem, MissingIsAskedForAsACallOfItsOwn) {
  JobExpansion bed;
  bed.setVariable("Missing", "none");
  bed("$(File:x)");
  EXPECT_EQ(bed.diary(),
            (Texts{"#Begin:Variable#1", "@Executor>Variable#1|$ $(File:x)", "#Begin:Variable#2",
                   "@Variable#1>Variable#2|$ $(Missing)", "@Variable#2>Variable#1|$ Success (none)",
                   "#End:Variable#2", "@Variable#1>Executor|$ Success (none)", "#End:Variable#1"}));
}

TEST(JobVariableSystem, PathKnowsSevenWords) {
  JobExpansion bed;
  JobFacts& facts = JobFacts::instance();
  const RawString before = facts.configFile;
  facts.configFile = "c:\\folder\\file.ini"_text;
  EXPECT_EQ(bed("$(Path:ConfigFile)"), "c:\\folder\\file.ini");
  facts.configFile = before;
  EXPECT_EQ(bed("$(Path:Desktop)"), bytesOf(RawLayer::specialFolder(0)));
  EXPECT_EQ(bed("$(Path:User)"), bytesOf(RawLayer::specialFolder(0x1A)));
  EXPECT_EQ(bed("$(Path:Temp)"), bytesOf(RawLayer::tempFolder()));
  EXPECT_EQ(bed("$(Path:HostName)"), bytesOf(RawLayer::computerName()));
  EXPECT_EQ(bed("$(Path:UserName)"), bytesOf(RawLayer::userName()));
  EXPECT_EQ(bed("$(Path:Launcher)"), bytesOf(RawLayer::moduleName()));
  for (const char* word : {"Desktop", "User", "Temp", "HostName", "UserName", "Launcher"})
    EXPECT_NE(bed(std::string("$(Path:") + word + ")"), "") << word;
  EXPECT_NE(bed("$(Path:Launcher)").find("job_test"), std::string::npos);
  EXPECT_TRUE(bed.takeReports().empty());
}

TEST(JobVariableSystem, AnotherWordOfPathIsReported) {
  JobExpansion bed;
  EXPECT_EQ(bed.results("$(Path:temp)"), (Texts{"Unknown ()"}));
  EXPECT_EQ(bed.takeReports(), (Texts{"Invalid variable argument !\r\n"
                                      "  [variable] Path\r\n"
                                      "  [value] temp"}));
  EXPECT_EQ(bed("[$(Path:Bad)]"), "[]");
  EXPECT_EQ(bed.state, VariableSuccess);
  bed.takeReports();
  EXPECT_EQ(bed.results("$(Path)"), (Texts{"Invalid ()"}));
  EXPECT_EQ(bed.takeReports().size(), 1U);
}

TEST(JobVariableSystem, TooFewArgumentsAreReported) {
  JobExpansion bed;
  for (const char* name : {"IsMissing", "Path", "IsFile", "IsFolder", "IsProcess", "IsWindow",
                           "File", "FileCount", "Folder", "FolderCount", "Process", "Window"}) {
    const std::string call = std::string("$(") + name + ")";
    EXPECT_EQ(bed.results(call), (Texts{"Invalid ()"})) << "Missing is not asked for by " << call;
    EXPECT_EQ(bed.takeReports(), (Texts{"Too few variable arguments !\r\n  [variable] " +
                                        std::string(name) + "\r\n  [value] " + call}));
  }
}

TEST(JobVariableSystem, ClipboardGivesItsText) {
  JobExpansion bed;
  const RawString text = raw("clip \xC3\xA4\xE3\x81\x82");
  ASSERT_TRUE(RawLayer::setClipboard(text, text.all()));
  EXPECT_EQ(bed("<$(Clipboard)>"), "<clip \xC3\xA4\xE3\x81\x82>");
  JobVariableExpander expander(JobExecutorPair::executor());
  EXPECT_EQ(expander.expand("$(Clipboard)"_text).text.encoding(), RawLayer::EncodingUtf8);
  EXPECT_EQ(bed("$(Clipboard:ignored)"), "clip \xC3\xA4\xE3\x81\x82");
}

TEST(JobVariableSystem, TheTextOfTheClipboardIsScannedToo) {
  JobExpansion bed;
  const RawString text = "a$(Not:)b"_text;
  ASSERT_TRUE(RawLayer::setClipboard(text, text.all()));
  EXPECT_EQ(bed("$(Clipboard)"), "aTrueb");
  EXPECT_EQ(bed("$(Length:$(Clipboard))"), "6");
}

TEST(JobVariableSystem, ClipboardStopsAtItsLimit) {
  JobExpansion bed;
  for (const int extra : {-1, 0, 1, 1000}) {
    const RawString text = raw(std::string(static_cast<std::size_t>(65535 + extra), 'x'));
    ASSERT_TRUE(RawLayer::setClipboard(text, text.all()));
    EXPECT_EQ(bed("$(Length:$(Clipboard))"), std::to_string(std::min(65535 + extra, 65535)));
  }
}

#ifndef _WIN32
// Against lists that the test sets; real processes and windows have tests of their own.

TEST(JobVariableSystem, ProcessesAreFoundByName) {
  JobExpansion bed;
  HostProcesses::Scope processes;
  processes.add("first.exe", 1);
  processes.add("Notepad.exe", 2);
  processes.add("notes.exe", 3);
  EXPECT_EQ(bed("$(IsProcess:notepad.exe)"), "True");
  EXPECT_EQ(bed("$(IsProcess:notepad)"), "False");
  EXPECT_EQ(bed("$(IsProcess:)"), "False");
  EXPECT_EQ(bed("$(Process:NOT*)"), "Notepad.exe") << "the first match, as the system names it";
  EXPECT_EQ(bed("$(Process:<*.exe)"), "");
  bed.setVariable("Missing", "none");
  EXPECT_EQ(bed("$(Process:other.exe)"), "none");
}

TEST(JobVariableSystem, WindowsAreFoundByTextAndClass) {
  JobExpansion bed;
  HostProcesses::Scope processes;
  processes.addWindow(11, "Shell", "");
  processes.addWindow(22, "Edit", "Untitled");
  processes.addWindow(33, "Browser", "Untitled");
  EXPECT_EQ(bed("$(Window:Untitled)"), "22");
  EXPECT_EQ(bed("$(Window:untitled)"), "") << "in exact case";
  EXPECT_EQ(bed("$(Window:Untitled:Browser)"), "33");
  EXPECT_EQ(bed("$(Window:Untitled:browser)"), "");
  EXPECT_EQ(bed("$(Window::Bro*)"), "33");
  EXPECT_EQ(bed("$(Window:)"), "11") << "an empty pattern accepts all";
  EXPECT_EQ(bed("$(Window::)"), "11");
  EXPECT_EQ(bed("$(IsWindow:Un*:Edit)"), "True");
  EXPECT_EQ(bed("$(IsWindow:Un*:Shell)"), "False");
  EXPECT_EQ(bed("$(IsWindow:)"), "True");
  bed.setVariable("Missing", "none");
  EXPECT_EQ(bed("$(Window:nothing)"), "none");
}

TEST(JobVariableSystem, WithoutAnyWindowNoneIsFound) {
  JobExpansion bed;
  HostProcesses::Scope processes;
  EXPECT_EQ(bed("$(IsWindow:)"), "False");
  EXPECT_EQ(bed("$(Window:)"), "");
  EXPECT_EQ(bed("$(IsProcess:*)"), "False");
  EXPECT_EQ(bed("$(Process:*)"), "");
}

#endif
