#include "TestFolder.h"
#include "TestText.h"
#include "raw/RawFile.h"
#include "raw/RawPath.h"
#include "raw/RawProcess.h"
#include "raw/RawShell.h"

#include <gtest/gtest.h>

using namespace RawLayer;

namespace {

constexpr uint8_t Hidden = 0;
constexpr uint32_t Patience = 20000;

// Runs a line of the command interpreter and gives its exit code.
uint32_t run(const RawString& line, const RawString& directory = RawString::emptyStatic()) {
  RawShell shell(raw("cmd.exe"));
  shell.directory = directory;
  shell.showMode = Hidden;
  EXPECT_TRUE(shell.execute(RawString::concat(raw("/c "), line), RawString::emptyStatic()));
  EXPECT_TRUE(shell.process.isValid());
  EXPECT_NE(shell.processId, 0u);
  shell.waitForEnd(Patience);
  return shell.exitCode();
}

} // namespace

TEST(RawShellWin, AProgramRunsWithItsParameters) {
  EXPECT_EQ(run(raw("exit 3")), 3u);
  EXPECT_EQ(run(raw("exit 0")), 0u);
}

TEST(RawShellWin, AMissingProgramIsNotStarted) {
  RawShell shell(raw("no such program.exe"));
  EXPECT_FALSE(shell.execute(raw(""), raw("")));
  EXPECT_FALSE(shell.process.isValid());
  EXPECT_EQ(shell.processId, 0u);
  EXPECT_EQ(shell.exitCode(), 0u);
}

TEST(RawShellWin, WithNothingToRunNothingStarts) {
  RawShell shell(raw(""));
  EXPECT_FALSE(shell.execute(raw(""), raw("")));
}

TEST(RawShellWin, WithoutAFileTheParametersAreTheFile) {
  RawShell shell(raw(""));
  shell.showMode = Hidden;
  ASSERT_TRUE(shell.execute(raw("winver.exe"), raw("")));
  EXPECT_NE(shell.processId, 0u);
  terminateProcess(shell.processId, Patience);
}

TEST(RawShellWin, AVerbIsPassed) {
  RawShell shell(raw("cmd.exe"));
  shell.showMode = Hidden;
  EXPECT_TRUE(shell.execute(raw("/c exit 5"), raw("open")));
  shell.waitForEnd(Patience);
  EXPECT_EQ(shell.exitCode(), 5u);
}

TEST(RawShellWin, TheDirectoryIsTheProgramsOwn) {
  const TestFolder folder;
  EXPECT_EQ(run(raw("echo x>here.txt"), folder.path()), 0u);
  EXPECT_TRUE(folder.has("here.txt"));
}

TEST(RawShellWin, ForeignLettersReachTheProgram) {
  const TestFolder folder;
  const RawString inner = joinPath(folder.path(), raw("\xE3\x82\xBD \xC3\xA9"));
  ASSERT_TRUE(makeFolders(inner));
  // In the directory alone, and in the parameters alone.
  run(raw("mkdir one"), inner);
  EXPECT_TRUE(isFolder(joinPath(inner, raw("one"))));
  run(RawString::concat(raw("mkdir \""), inner, raw("\\two\"")));
  EXPECT_TRUE(isFolder(joinPath(inner, raw("two"))));
  // All of it in 16-bit text.
  RawShell shell(RawString::fromWide(u"cmd.exe"));
  shell.showMode = Hidden;
  EXPECT_TRUE(shell.execute(
      RawString::concat(raw("/c mkdir \""), inner, raw("\\three\"")).shareAs(EncodingWide),
      RawString(EncodingWide)));
  shell.waitForEnd(Patience);
  EXPECT_TRUE(isFolder(joinPath(inner, raw("three"))));
}

TEST(RawShellWin, VariablesOfTheEnvironmentAreReplaced) {
  RawShell shell(raw("%ComSpec%"));
  shell.showMode = Hidden;
  ASSERT_TRUE(shell.execute(raw("/c exit 6"), raw("")));
  shell.waitForEnd(Patience);
  EXPECT_EQ(shell.exitCode(), 6u);
}

TEST(RawShellWin, AWaitEndsAtItsTime) {
  RawShell shell(raw("winver.exe"));
  shell.showMode = Hidden;
  ASSERT_TRUE(shell.execute(raw(""), raw("")));
  shell.waitForEnd(20);
  EXPECT_EQ(shell.exitCode(), 259u); // still running
  terminateProcess(shell.processId, Patience);
  shell.waitForEnd(Patience);
  EXPECT_EQ(shell.exitCode(), 0u);
}

TEST(RawShellWin, ARunningProgramIsFoundByItsName) {
  RawShell shell(raw("winver.exe"));
  shell.showMode = Hidden;
  ASSERT_TRUE(shell.execute(raw(""), raw("")));
  EXPECT_TRUE(findProcess(raw("WINVER*")).equalsNoCase(raw("winver.exe")));
  bool isListed = false;
  RawProcessInfoList list;
  listProcesses(list);
  for (const RawProcessInfoUnit& unit : list.elements())
    if (unit.processId == shell.processId) isListed = unit.name.equalsNoCase(raw("winver.exe"));
  EXPECT_TRUE(isListed);
  terminateProcess(shell.processId, Patience);
  shell.waitForEnd(Patience);
  EXPECT_NE(shell.exitCode(), 259u);
}
