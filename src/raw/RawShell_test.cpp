#include "raw/RawShell.h"

#include "TestText.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include "host/HostFaults.h"
#include "host/HostShell.h"
#endif

using namespace RawLayer;

TEST(RawShell, FourShowModesHaveNames) {
  const RawShowMode* mode = rawShowModes();
  const RawShowMode expected[] = {{"Normal", 1}, {"Maximize", 3}, {"Minimize", 6}, {"Hide", 0}};
  for (const RawShowMode& row : expected) {
    EXPECT_STREQ(mode->name, row.name);
    EXPECT_EQ(mode->number, row.number);
    ++mode;
  }
  EXPECT_STREQ(mode->name, "");
  EXPECT_EQ(mode->number, 1);
}

TEST(RawShell, ANewShellHoldsNothingButTheFile) {
  const RawShell shell(raw("x.exe"));
  EXPECT_EQ(shell.file, raw("x.exe"));
  EXPECT_TRUE(shell.arguments.isEmpty());
  EXPECT_TRUE(shell.directory.isEmpty());
  EXPECT_EQ(shell.showMode, 1);
  EXPECT_EQ(shell.processId, 0u);
  EXPECT_FALSE(shell.process.isValid());
}

TEST(RawShell, WithoutAProcessNothingWaits) {
  const RawShell shell(raw("x.exe"));
  shell.waitForEnd(0xFFFFFFFF);
  shell.waitForIdle(0xFFFFFFFF);
  EXPECT_EQ(shell.exitCode(), 0u);
}

#ifndef _WIN32

TEST(RawShell, ALaunchPassesAllThatIsSet) {
  HostShell::Scope host;
  RawShell shell(raw("x.exe"));
  shell.directory = raw("c:\\dir");
  shell.showMode = 6;
  EXPECT_TRUE(shell.execute(raw("-a b"), raw("open")));
  const auto launches = host.takeLaunches();
  ASSERT_EQ(launches.size(), 1u);
  EXPECT_EQ(launches[0].verb, raw("open"));
  EXPECT_EQ(launches[0].file, raw("x.exe"));
  EXPECT_EQ(launches[0].parameters, raw("-a b"));
  EXPECT_EQ(launches[0].directory, raw("c:\\dir"));
  EXPECT_EQ(launches[0].showMode, 6);
  EXPECT_EQ(shell.processId, 4711u);
}

TEST(RawShell, WithoutAFileTheParametersAreTheFile) {
  HostShell::Scope host;
  RawShell shell(raw(""));
  EXPECT_TRUE(shell.execute(raw("notepad.exe"), raw("")));
  const auto launches = host.takeLaunches();
  ASSERT_EQ(launches.size(), 1u);
  EXPECT_EQ(launches[0].file, raw("notepad.exe"));
  EXPECT_TRUE(launches[0].parameters.isEmpty());
}

TEST(RawShell, AFailedLaunchIsFalse) {
  HostShell::Scope host;
  host.answer().started = false;
  RawShell shell(raw("missing.exe"));
  EXPECT_FALSE(shell.execute(raw(""), raw("")));
  EXPECT_EQ(shell.processId, 0u);
  host.answer().started = true;
  HostFaults::Scope faults;
  faults.failAll(HostFaults::Process);
  EXPECT_FALSE(shell.execute(raw(""), raw("")));
}

TEST(RawShell, ALaunchWithoutAProcessIsASuccess) {
  HostShell::Scope host;
  host.answer().hasProcess = false;
  RawShell shell(raw("c:\\folder"));
  EXPECT_TRUE(shell.execute(raw(""), raw("")));
  EXPECT_FALSE(shell.process.isValid());
  EXPECT_EQ(shell.processId, 0u);
  EXPECT_EQ(shell.exitCode(), 0u);
}

TEST(RawShell, TheProcessOfBeforeIsClosedFirst) {
  HostShell::Scope host;
  {
    RawShell shell(raw("x.exe"));
    EXPECT_TRUE(shell.execute(raw(""), raw("")));
    EXPECT_TRUE(shell.execute(raw(""), raw("")));
    EXPECT_EQ(host.openProcesses(), 1);
    host.answer().started = false;
    EXPECT_FALSE(shell.execute(raw(""), raw("")));
    EXPECT_EQ(host.openProcesses(), 0);
    EXPECT_EQ(shell.processId, 0u);
    host.answer().started = true;
    EXPECT_TRUE(shell.execute(raw(""), raw("")));
    shell.closeProcess();
    EXPECT_EQ(host.openProcesses(), 0);
    EXPECT_TRUE(shell.execute(raw(""), raw("")));
  }
  EXPECT_EQ(host.openProcesses(), 0);
}

TEST(RawShell, WaitsAndExitCodesAreTheProcesss) {
  HostShell::Scope host;
  host.answer().exitCode = 3;
  RawShell shell(raw("x.exe"));
  EXPECT_TRUE(shell.execute(raw(""), raw("")));
  shell.waitForEnd(50);
  shell.waitForIdle(60);
  EXPECT_EQ(shell.exitCode(), 3u);
  const auto waits = host.takeWaits();
  ASSERT_EQ(waits.size(), 2u);
  EXPECT_FALSE(waits[0].forIdle);
  EXPECT_EQ(waits[0].milliseconds, 50u);
  EXPECT_TRUE(waits[1].forIdle);
  EXPECT_EQ(waits[1].milliseconds, 60u);
}

#endif
