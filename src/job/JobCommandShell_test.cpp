// The commands that reach the outside, over launches that are written down.
#include "job/JobCommandShell.h"

#include "JobTestBed.h"
#include "host/HostClipboard.h"
#include "host/HostProcesses.h"
#include "host/HostShell.h"

using namespace JobLayer;

using Lines = std::vector<std::string>;

TEST(JobCommandShell, PassesAllThatItIsGiven) {
  const JobTestBed bed;
  HostShell::Scope shell;
  EXPECT_TRUE(JobTestBed::run("Define {\n P=one\n}\nShell {\n Command=a.exe\n Parameter=$(P) two\n"
                              " Directory=c:\\d\n ShowStatus=Hide\n Verb=runas\n}"));
  const auto launches = shell.takeLaunches();
  ASSERT_EQ(launches.size(), 1U);
  EXPECT_EQ(launches[0].file, raw("a.exe"));
  EXPECT_EQ(launches[0].parameters, raw("one two"));
  EXPECT_EQ(launches[0].directory, raw("c:\\d"));
  EXPECT_EQ(launches[0].verb, raw("runas"));
  EXPECT_EQ(launches[0].showMode, 0);
}

TEST(JobCommandShell, ShowStatusIsExact) {
  const JobTestBed bed;
  HostShell::Scope shell;
  const std::pair<const char*, int> modes[] = {{"Normal", 1}, {"Maximize", 3}, {"Minimize", 6},
                                               {"Hide", 0},   {"hide", 1},     {"", 1},
                                               {"Other", 1}};
  for (const auto& [name, number] : modes) {
    EXPECT_TRUE(JobTestBed::run(std::string("Shell {\n Command=a\n ShowStatus=") + name + "\n}"));
    EXPECT_EQ(shell.takeLaunches().at(0).showMode, number) << name;
  }
}

TEST(JobCommandShell, AParameterAloneIsTheFile) {
  const JobTestBed bed;
  HostShell::Scope shell;
  EXPECT_TRUE(JobTestBed::run("Shell {\n Parameter=notepad.exe\n}"));
  const auto launches = shell.takeLaunches();
  ASSERT_EQ(launches.size(), 1U);
  EXPECT_EQ(launches[0].file, raw("notepad.exe"));
  EXPECT_TRUE(launches[0].parameters.isEmpty());
}

TEST(JobCommandShell, NeverWaitsAndAlwaysTellsZero) {
  for (const char* wait : {"WaitForDone", "WaitForIdle", "waitfordone", ""}) {
    const JobTestBed bed;
    HostShell::Scope shell;
    shell.answer().exitCode = 3;
    JobTestBed::setVariable("ExitCode", "9");
    EXPECT_TRUE(
        JobTestBed::run(std::string("Shell {\n Command=a\n Timeout=-1\n Wait=") + wait + "\n}"));
    EXPECT_TRUE(shell.takeWaits().empty());
    EXPECT_EQ(JobTestBed::variable("ExitCode"), "0");
    EXPECT_EQ(shell.openProcesses(), 0);
  }
}

TEST(JobCommandShell, AFailedLaunchStopsTheRunInSilence) {
  const JobTestBed bed;
  HostShell::Scope shell;
  shell.answer().started = false;
  EXPECT_FALSE(JobTestBed::run("Shell {\n Command=missing.exe\n}\nDefine {\n x=1\n}"));
  EXPECT_TRUE(bed.dialogs.reports.empty());
  EXPECT_FALSE(JobTestBed::hasVariable("x"));
  EXPECT_EQ(JobTestBed::variable("ExitCode"), "0");
}

TEST(JobCommandShell, NeitherCommandNorParameterIsReportedTheOtherWayRound) {
  for (const char* block :
       {"Shell", "Shell {\n Command=\n Parameter=$(None)\n}", "Shell {\n Command {\n }\n}"}) {
    const JobTestBed bed;
    HostShell::Scope shell;
    EXPECT_FALSE(JobTestBed::run(block));
    EXPECT_EQ(bed.dialogs.reports, Lines{"Required parameter is missing !\r\n"
                                         "  [command] Command\r\n  [value] Shell"});
    EXPECT_TRUE(shell.takeLaunches().empty());
  }
}

TEST(JobCommandShell, KeysAreExpandedInTheirOrder) {
  const JobTestBed bed;
  HostShell::Scope shell;
  EXPECT_TRUE(JobTestBed::run("Shell {\n Timeout=$(g)1\n Wait=$(f)\n Verb=$(e)\n"
                              " ShowStatus=$(d)\n Directory=$(c)\n Parameter=$(b)x\n"
                              " Command=$(a)x\n}"));
  Lines titles;
  for (const std::string& line : bed.diary())
    if (line.rfind("@Command#1>Variable", 0) == 0) titles.push_back(line.substr(line.find("$(")));
  EXPECT_EQ(titles, (Lines{"$(a)", "$(b)", "$(c)", "$(d)", "$(e)", "$(f)", "$(g)"}));
}

TEST(JobCommandShell, OnlyTheLastOutcomeIsLookedAt) {
  const JobTestBed bed;
  HostShell::Scope shell;
  // Two failed expansions show two dialogs, and the command goes on with what it got.
  EXPECT_TRUE(JobTestBed::run("Shell {\n Command=a$(\n Directory=$(open\n}"));
  EXPECT_EQ(bed.dialogs.reports.size(), 2U);
  EXPECT_EQ(shell.takeLaunches().size(), 1U);
  EXPECT_FALSE(JobTestBed::run("Shell {\n Command=a\n Timeout=$(\n}"));
  EXPECT_TRUE(shell.takeLaunches().empty());
}

// --- OpenFile

TEST(JobCommandOpenFile, OpensByTheAssociation) {
  const JobTestBed bed;
  HostShell::Scope shell;
  EXPECT_TRUE(JobTestBed::run("OpenFile {\n Parameter=c:\\$(x)a.txt\n}"));
  const auto launches = shell.takeLaunches();
  ASSERT_EQ(launches.size(), 1U);
  EXPECT_EQ(launches[0].file, raw("c:\\a.txt"));
  EXPECT_TRUE(launches[0].verb.isEmpty());
  EXPECT_TRUE(launches[0].parameters.isEmpty());
  EXPECT_TRUE(launches[0].directory.isEmpty());
  EXPECT_EQ(launches[0].showMode, 1);
  EXPECT_EQ(shell.openProcesses(), 0);
}

TEST(JobCommandOpenFile, AnEmptyPathIsReportedTheOtherWayRound) {
  for (const char* block : {"OpenFile", "OpenFile {\n Parameter=$(None)\n}"}) {
    const JobTestBed bed;
    EXPECT_FALSE(JobTestBed::run(block));
    EXPECT_EQ(bed.dialogs.reports, Lines{"Required parameter is missing !\r\n"
                                         "  [command] Parameter\r\n  [value] OpenFile"});
  }
}

TEST(JobCommandOpenFile, FailuresAreSilent) {
  const JobTestBed bed;
  HostShell::Scope shell;
  shell.answer().started = false;
  EXPECT_FALSE(JobTestBed::run("OpenFile {\n Parameter=x\n}"));
  EXPECT_TRUE(bed.dialogs.reports.empty());
  EXPECT_FALSE(JobTestBed::run("OpenFile {\n Parameter=$(\n}"));
  EXPECT_EQ(bed.dialogs.reports.size(), 1U);
}

// --- OpenFolder

TEST(JobCommandOpenFolder, WalksUpToTheNearestFolder) {
  const JobTestBed bed;
  HostShell::Scope shell;
  const TestFolder folder;
  folder.makeFolder("in");
  folder.write("in/file.txt", "x");
  const std::string in = bytesOf(folder.file("in"));
  for (const std::string& path :
       {in, in + "\\file.txt", in + "\\gone\\deeper", in + "/gone/and/gone"}) {
    EXPECT_TRUE(JobTestBed::run("OpenFolder {\n Parameter=" + path + "\n}"));
    EXPECT_EQ(shell.takeLaunches().at(0).file, raw(in)) << path;
  }
}

TEST(JobCommandOpenFolder, ReportsTheOriginalTextWhereNoPartIsAFolder) {
  const JobTestBed bed;
  HostShell::Scope shell;
  EXPECT_FALSE(JobTestBed::run("OpenFolder {\n Parameter=no\\such\\thing\n}"));
  EXPECT_EQ(bed.dialogs.reports, Lines{"Unexpected parameter !\r\n  [command] OpenFolder\r\n"
                                       "  [parameter] Parameter\r\n  [value] no\\such\\thing"});
  EXPECT_TRUE(shell.takeLaunches().empty());
}

TEST(JobCommandOpenFolder, AnEmptyPathIsReportedInTheProperPlaces) {
  for (const char* block : {"OpenFolder", "OpenFolder {\n Parameter=$(None)\n}"}) {
    const JobTestBed bed;
    EXPECT_FALSE(JobTestBed::run(block));
    EXPECT_EQ(bed.dialogs.reports, Lines{"Required parameter is missing !\r\n"
                                         "  [command] OpenFolder\r\n  [parameter] Parameter"});
  }
}

TEST(JobCommandOpenFolder, AFailedLaunchIsSilent) {
  const JobTestBed bed;
  HostShell::Scope shell;
  shell.answer().started = false;
  const TestFolder folder;
  EXPECT_FALSE(JobTestBed::run("OpenFolder {\n Parameter=" + bytesOf(folder.path()) +
                               "\n}\nDefine {\n x=1\n}"));
  EXPECT_TRUE(bed.dialogs.reports.empty());
  EXPECT_FALSE(JobTestBed::hasVariable("x"));
  EXPECT_EQ(shell.openProcesses(), 0);
}

// --- ToClipboard

TEST(JobCommandToClipboard, ChoosesTheFormatByTheText) {
  const JobTestBed bed;
  const HostClipboard::Scope clipboard;
  EXPECT_TRUE(JobTestBed::run("ToClipboard {\n Parameter=plain\n}"));
  EXPECT_EQ(clipboard.format(), 1U);
  EXPECT_EQ(clipboard.bytes(), std::string("plain\0", 6));
  EXPECT_TRUE(JobTestBed::run("ToClipboard {\n Parameter=\xE6\x97\xA5\n}"));
  EXPECT_EQ(clipboard.format(), 13U);
  EXPECT_EQ(clipboard.bytes(), std::string("\xE5\x65\0\0", 4));
}

TEST(JobCommandToClipboard, AClipboardThatIsHeldFailsInSilence) {
  const JobTestBed bed;
  HostClipboard::Scope clipboard;
  clipboard.hold(true);
  EXPECT_FALSE(JobTestBed::run("ToClipboard {\n Parameter=x\n}"));
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST(JobCommandToClipboard, AnEmptyTextIsReported) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("ToClipboard {\n Parameter=$(None)\n}"));
  EXPECT_EQ(bed.dialogs.reports, Lines{"Required parameter is empty !\r\n"
                                       "  [command] ToClipboard\r\n  [parameter] Parameter\r\n"
                                       "  [value] $(None)"});
}

// --- PopupWindow

TEST(JobCommandPopupWindow, RestoresAMinimisedWindowAndRaisesAnyOther) {
  const JobTestBed bed;
  HostProcesses::Scope processes;
  processes.addWindow(0x1234, "Notepad", "Untitled");
  EXPECT_TRUE(JobTestBed::run("PopupWindow {\n Parameter=$(Window:Untitled)\n}"));
  EXPECT_EQ(HostProcesses::state().windows[0].raised, 1);
  HostProcesses::state().windows[0].minimised = true;
  EXPECT_TRUE(JobTestBed::run("PopupWindow {\n Parameter=0x1234\n}"));
  EXPECT_FALSE(HostProcesses::state().windows[0].minimised);
  EXPECT_EQ(HostProcesses::state().windows[0].raised, 1);
}

TEST(JobCommandPopupWindow, NoWindowIsReportedWithItsText) {
  for (const char* text : {"0", "77", "x1", "$(Window:Nobody)"}) {
    const JobTestBed bed;
    const HostProcesses::Scope processes;
    EXPECT_FALSE(JobTestBed::run(std::string("PopupWindow {\n Parameter=") + text + "\n}"));
    ASSERT_EQ(bed.dialogs.reports.size(), 1U) << text;
    EXPECT_EQ(bed.dialogs.reports[0].rfind("Missing target window !\r\n  [command] PopupWindow\r\n"
                                           "  [parameter] Parameter",
                                           0),
              0U);
  }
}

TEST(JobCommandPopupWindow, AFaultInTheTextFailsItWithTheExpandersReport) {
  const JobTestBed bed;
  HostProcesses::Scope processes;
  processes.addWindow(0x1234, "Notepad", "Untitled");
  EXPECT_FALSE(JobTestBed::run("PopupWindow {\n Parameter=4660$(\n}"));
  ASSERT_EQ(bed.dialogs.reports.size(), 1U);
  EXPECT_EQ(bed.dialogs.reports[0].rfind("Unbalanced variable block !", 0), 0U);
  EXPECT_EQ(HostProcesses::state().windows[0].raised, 0);
}

// --- QuitLauncher, RebootLauncher

TEST(JobCommandReboot, TheCodeOfTheRestartStandsInTheHighWord) {
  struct Dialogs : JobTestDialogs {
    std::vector<uintptr_t> firsts;
    std::vector<intptr_t> seconds;
    void postToMainDialog(uint32_t message, uintptr_t first, intptr_t second) override {
      JobTestDialogs::postToMainDialog(message, first, second);
      firsts.push_back(first);
      seconds.push_back(second);
    }
  };
  const JobTestBed bed;
  Dialogs dialogs;
  JobWindowContext::instance().installDialogs(&dialogs);
  JobWindowContext::instance().dialog = reinterpret_cast<WinLayer::WinDialog*>(&dialogs);
  EXPECT_TRUE(JobTestBed::run("RebootLauncher\nQuitLauncher"));
  EXPECT_EQ(dialogs.posted, (std::vector<uint32_t>{0x0111, 0x0010}));
  EXPECT_EQ(dialogs.firsts, (std::vector<uintptr_t>{0x11000000, 0}));
  EXPECT_EQ(dialogs.seconds, (std::vector<intptr_t>{0, 0}));
}

TEST(JobCommandQuit, AsksTheMainDialogAndTheScriptGoesOn) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("QuitLauncher\nRebootLauncher"));
  EXPECT_TRUE(bed.dialogs.posted.empty()); // there is no main dialog

  int anyDialog = 0;
  JobWindowContext::instance().dialog = reinterpret_cast<WinLayer::WinDialog*>(&anyDialog);
  EXPECT_TRUE(JobTestBed::run("QuitLauncher\nDefine {\n x=1\n}\nRebootLauncher"));
  EXPECT_EQ(bed.dialogs.posted, (std::vector<uint32_t>{0x0010, 0x0111}));
  EXPECT_EQ(JobTestBed::variable("x"), "1");
}
