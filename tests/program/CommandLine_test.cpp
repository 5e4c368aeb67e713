// The command line of the real program: switches, exit codes, dialogs, log.
#include "program/ProgramRun.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace {

const char* const ActionOk = "[Action:Ok]\r\nIf {\r\nCondition=True\r\n}\r\n";
const char* const ActionFails = "[Action:Fails]\r\nAbortExecution\r\n";

TEST(CommandLine, HelpShowsTheUsageAndStartsNothing) {
  ProgramRun program;
  program.writeProfile("");
  EXPECT_EQ(program.run("-h"), 0u);
  ASSERT_EQ(program.dialogs().size(), 1u);
  EXPECT_EQ(program.dialogs()[0].caption, "Tarvellon");
  EXPECT_EQ(program.dialogs()[0].text, "Arguments = [-p Profile] [-c ConfigFile] [-a Action] "
                                       "[-l|-r Button] [-d Button FullPath]");
  EXPECT_TRUE(program.logFiles().empty());
}

TEST(CommandLine, AnActionThatSucceedsEndsWithZero) {
  ProgramRun program;
  program.writeProfile(ActionOk);
  EXPECT_EQ(program.run("-a Ok"), 0u);
  EXPECT_TRUE(program.dialogs().empty());
  EXPECT_TRUE(program.logHas("|$ (Comline-Action)Ok\r\n"));
}

TEST(CommandLine, AnActionThatFailsEndsWithOne) {
  ProgramRun program;
  program.writeProfile(ActionFails);
  EXPECT_EQ(program.run("-a Fails"), 1u);
  EXPECT_TRUE(program.dialogs().empty());
}

TEST(CommandLine, AnUnknownNameFailsInSilence) {
  ProgramRun program;
  program.writeProfile(ActionOk);
  EXPECT_EQ(program.run("-a Nobody"), 1u);
  EXPECT_TRUE(program.dialogs().empty());
  EXPECT_FALSE(program.logHas("Nobody"));
  EXPECT_FALSE(program.logHas("NoSuchDefinedName"));
}

TEST(CommandLine, ASwitchWithoutNameIsStillAOneShotRun) {
  ProgramRun program;
  program.writeProfile(ActionOk);
  EXPECT_EQ(program.run("-a"), 1u);
}

TEST(CommandLine, NamesCompareWithExactCaseAndMayHoldBlanks) {
  ProgramRun program;
  program.writeProfile("[Action:My Action]\r\n");
  EXPECT_EQ(program.run("-a \"My Action\""), 0u);
  EXPECT_EQ(program.run("-a \"my action\""), 1u);
}

TEST(CommandLine, TheLastOneShotSwitchWins) {
  ProgramRun program;
  program.writeProfile(std::string(ActionOk) + ActionFails);
  EXPECT_EQ(program.run("-a Fails -a Ok"), 0u);
  EXPECT_EQ(program.run("-a Ok -a Fails"), 1u);
}

TEST(CommandLine, UnknownSwitchesAreStoredAndIgnored) {
  ProgramRun program;
  program.writeProfile(ActionOk);
  EXPECT_EQ(program.run("-x y -P other.ini -c nothing.ini -a Ok"), 0u);
  EXPECT_TRUE(program.dialogs().empty());
}

TEST(CommandLine, TheSwitchForAConfigurationChangesNothing) {
  ProgramRun program;
  program.writeProfile(ActionOk);
  program.writeFile("other.ini", ActionFails);
  EXPECT_EQ(program.run("-c other.ini -a Ok"), 0u);
  EXPECT_EQ(program.run("-c other.ini -a Fails"), 1u);
  EXPECT_TRUE(program.dialogs().empty());
  EXPECT_FALSE(program.logHas("Fails"));
}

TEST(CommandLine, ACapitalHIsNoHelp) {
  ProgramRun program;
  program.writeProfile(ActionOk);
  EXPECT_EQ(program.run("-H x -a Ok"), 0u);
  EXPECT_TRUE(program.dialogs().empty());
}

TEST(CommandLine, ButtonsRunWithTheirKeyAndDropsWithTheirPaths) {
  ProgramRun program;
  program.writeProfile("[Button:Keys]\r\n"
                       "If {\r\nCondition=$(Equal:$(KeyState):LButton)\r\nLeft\r\n}\r\n"
                       "If {\r\nCondition=$(Equal:$(KeyState):RButton)\r\nRight\r\n}\r\n"
                       "If {\r\nCondition=$(Drop)\r\nAbortExecution\r\n}\r\n");
  EXPECT_EQ(program.run("-l Keys"), 1u);
  ASSERT_EQ(program.dialogs().size(), 1u);
  EXPECT_EQ(program.dialogs()[0].text, "No such command !\r\n  [command] Left");
  EXPECT_EQ(program.run("-r Keys"), 1u);
  ASSERT_EQ(program.dialogs().size(), 1u);
  EXPECT_EQ(program.dialogs()[0].text, "No such command !\r\n  [command] Right");
  EXPECT_EQ(program.run("-d Keys \"c:\\a b\" c:\\d"), 1u);
  EXPECT_TRUE(program.dialogs().empty());
  EXPECT_TRUE(program.logHas("|$ (Comline-Drop)Keys\r\n"));
}

TEST(CommandLine, DropVariablesHoldTheFirstPathAndTheQuotedList) {
  ProgramRun program;
  program.writeProfile("[Button:D]\r\n"
                       "If {\r\nCondition=$(Drop)|$(DropList)\r\n}\r\n");
  EXPECT_EQ(program.run("-d D \"c:\\a b\" c:\\d"), 0u);
  EXPECT_TRUE(program.logHas("$(Drop)"));
  EXPECT_TRUE(program.logHas("|$ Success (c:\\a b)\r\n"));
  EXPECT_TRUE(program.logHas("|$ Success (\"c:\\a b\" \"c:\\d\")\r\n"));
}

TEST(CommandLine, AFirstBareArgumentThatEndsInIniIsTheConfiguration) {
  ProgramRun program;
  program.writeProfile("[Initialize]\r\nInTheProfile\r\n");
  program.writeFile("other.INI", "[Initialize]\r\nIf {\r\nCondition=True\r\n}\r\n");
  // Without a one-shot switch the named file is loaded; the profile's own script never runs.
  const std::string file = "\"" + program.path("other.INI") + "\"";
  EXPECT_EQ(program.run("-a Ok " + file), 1u);
  EXPECT_EQ(program.dialogs().size(), 1u);
}

TEST(CommandLine, AnotherProfileIsReadFromItsPlace) {
  ProgramRun program;
  program.writeProfile("");
  program.writeFile("mine.ini", "[Common]\r\nProgram=Tarvellon\r\n[Action:Mine]\r\n");
  EXPECT_EQ(program.run("-p mine.ini -a Mine"), 0u);
  EXPECT_EQ(program.run("-a Mine"), 1u);
}

TEST(CommandLine, AProfileSwitchWithoutValueLeavesTheDefault) {
  ProgramRun program;
  program.writeProfile(ActionOk);
  EXPECT_EQ(program.run("-p -a Ok"), 0u);
}

TEST(CommandLine, AForeignFileIsRefusedAndLeftAlone) {
  ProgramRun program;
  program.writeFile("Tarvellon.ini", "[Other]\r\nProgram=x\r\n");
  EXPECT_EQ(program.run("-a Ok"), 0u);
  ASSERT_EQ(program.dialogs().size(), 1u);
  EXPECT_EQ(program.dialogs()[0].caption, "Tarvellon");
  EXPECT_EQ(program.dialogs()[0].text, "Bad format profile !!");
  EXPECT_TRUE(program.logFiles().empty());
  EXPECT_EQ(program.readFile("Tarvellon.ini"), "[Other]\r\nProgram=x\r\n");
}

TEST(CommandLine, AFirstStartMakesTheProfile) {
  ProgramRun program;
  EXPECT_EQ(program.run("-a Ok"), 1u);
  EXPECT_EQ(program.readFile("Tarvellon.ini"), "[Common]\r\nProgram=Tarvellon\r\n\r\n");
}

TEST(CommandLine, AFolderAsProfileMeansDefaultsEverywhere) {
  ProgramRun program;
  program.folder().makeFolder("sub");
  EXPECT_EQ(program.run("-p sub -a Ok"), 1u);
  EXPECT_TRUE(program.dialogs().empty());
}

TEST(CommandLine, TheStartScriptRunsBeforeEveryOneShotRunAndItsFailureStopsNothing) {
  ProgramRun program;
  program.writeProfile(std::string("[Initialize]\r\nAbortExecution\r\n") + ActionOk);
  EXPECT_EQ(program.run("-a Ok"), 0u);
  EXPECT_TRUE(program.logHas("|$ Initialize\r\n"));
}

TEST(CommandLine, TheWholeRunStandsInTheLogAsATree) {
  ProgramRun program;
  program.writeProfile(ActionOk);
  ASSERT_EQ(program.run("-a Ok"), 0u);
  const auto lines = program.logLines();
  const std::vector<std::string> expected = {
      "// Tarvellon Version 1.37.2024.0907",
      lines.size() > 1 ? lines[1] : "",
      "",
      "#Begin:Executor",
      "@System>Executor|$ Initialize",
      "@Executor>System|$ Success",
      "#End:Executor",
      "#Begin:Executor",
      "@System>Executor|$ SetupButtons",
      "@Executor>System|$ Success",
      "#End:Executor",
      "#Begin:Executor",
      "@User>Executor|$ (Comline-Action)Ok",
      "#Begin:Command#1",
      "@Executor>Command#1|[If][Condition=True]",
      "@Command#1>Executor|$ Success",
      "#End:Command#1",
      "@Executor>User|$ Success",
      "#End:Executor",
  };
  EXPECT_EQ(lines, expected);
  ASSERT_GT(lines.size(), 1u);
  EXPECT_EQ(lines[1].rfind("// <TimeZone>UTC", 0), 0u) << lines[1];
}

TEST(CommandLine, ABrokenSectionShowsOneDialogAndTheRestLoads) {
  ProgramRun program;
  program.writeProfile(std::string("[Button:Broken]\r\nTitle=x\r\nShell {\r\nCommand=y\r\n") +
                       ActionOk);
  EXPECT_EQ(program.run("-a Ok"), 0u);
  ASSERT_EQ(program.dialogs().size(), 1u);
  EXPECT_EQ(program.dialogs()[0].caption, "Tarvellon");
  EXPECT_EQ(program.dialogs()[0].text,
            "Unbalanced section blocks !\r\n  [command] Section Button:Broken");
  EXPECT_TRUE(program.logHas("|$ UnbalancedSectionBlocks [command] Section Button:Broken\r\n"));
}

TEST(CommandLine, APredecessorNamedOnTheLineIsEnded) {
  ProgramRun program;
  program.writeProfile(ActionOk);
  std::wstring line = L"notepad.exe";
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  ASSERT_TRUE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                             &startup, &process));
  EXPECT_EQ(program.run("-@ " + std::to_string(process.dwProcessId) + " -a Ok"), 0u);
  EXPECT_EQ(WaitForSingleObject(process.hProcess, 0), WAIT_OBJECT_0);
  EXPECT_EQ(program.run("-@ 4294967295 -a Ok"), 0u);
  TerminateProcess(process.hProcess, 1);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

TEST(CommandLine, OnlyTheNewestLogsAreKept) {
  ProgramRun program;
  program.writeProfile(std::string("[Option]\r\nMaxLogFiles=3\r\n") + ActionOk);
  for (int i = 0; i < 5; ++i) EXPECT_EQ(program.run("-a Ok"), 0u);
  EXPECT_EQ(program.logFiles().size(), 3u);
}

TEST(CommandLine, ACacheFolderThatCannotBeMadeIsToldOnceAndTheRunGoesOn) {
  ProgramRun program;
  program.writeFile("blocker", "a file");
  program.writeProfile(std::string("[Option]\r\nIconCacheFolder=blocker\r\n") + ActionOk);
  EXPECT_EQ(program.run("-a Ok"), 0u);
  ASSERT_EQ(program.dialogs().size(), 1u);
  EXPECT_EQ(program.dialogs()[0].text.rfind("Cannot access temp directory (", 0), 0u)
      << program.dialogs()[0].text;
  EXPECT_NE(program.dialogs()[0].text.find("blocker\\CACHE_"), std::string::npos);
}

TEST(CommandLine, AConfigurationThatIsMissingMeansEmptyLists) {
  ProgramRun program;
  program.writeFile("Tarvellon.ini",
                    "[Common]\r\nProgram=Tarvellon\r\nConfigFile=none.ini\r\n[Action:Ok]\r\n");
  EXPECT_EQ(program.run("-a Ok"), 1u);
  EXPECT_TRUE(program.dialogs().empty());
  EXPECT_FALSE(program.hasFile("none.ini"));
}

} // namespace
