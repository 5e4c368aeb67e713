#include "raw/RawProcess.h"

#include "TestText.h"
#include "raw/RawPath.h"
#include "raw/RawSystem.h"
#include "raw/RawWindows.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include "host/HostFaults.h"
#include "host/HostProcesses.h"
#endif

using namespace RawLayer;

TEST(RawProcess, ProcessesThatAreNotThereAreEmpty) {
  EXPECT_TRUE(findProcess(raw("no such program.exe")).isEmpty());
  EXPECT_TRUE(findProcess(raw("")).isEmpty());
  EXPECT_TRUE(findWindow(raw("NoSuchClass"), raw("")).isEmpty());
  EXPECT_TRUE(findWindow(raw(""), raw("no such window")).isEmpty());
}

TEST(RawProcess, EndingAProcessThatIsNotThereIsSilent) {
  terminateProcess(0, 0);
  terminateProcess(0xFFFFFFF0, 100);
}

TEST(RawProcess, WindowsThatAreNotThereHaveNoText) {
  EXPECT_TRUE(windowText(0).isEmpty());
  EXPECT_TRUE(className(0).isEmpty());
  EXPECT_EQ(windowText(0, EncodingWide).encoding(), EncodingWide);
  EXPECT_EQ(popupWindow(0), RawPopupResult::NoWindow);
  EXPECT_EQ(popupWindow(0x7FFFFFF1), RawPopupResult::NoWindow);
}

#ifdef _WIN32

TEST(RawProcess, TheOwnProcessIsListed) {
  RawProcessInfoList list;
  listProcesses(list);
  EXPECT_GT(list.count(), 1);
  const RawProcessInfoUnit* own = nullptr;
  for (const RawProcessInfoUnit& unit : list.elements())
    if (unit.processId == currentProcessId()) own = &unit;
  ASSERT_NE(own, nullptr);
  EXPECT_EQ(own->name, nameOf(moduleName()));
  EXPECT_EQ(own->name.encoding(), EncodingUtf8);
  EXPECT_NE(own->parentId, own->processId);
}

TEST(RawProcess, TheOwnProcessIsFoundInAnyCase) {
  EXPECT_EQ(findProcess(raw("RAW_TEST*.exe")), nameOf(moduleName()));
  EXPECT_EQ(findProcess(raw("@raw_test.*")), nameOf(moduleName()));
  EXPECT_FALSE(findProcess(raw("<raw_test*")).isEmpty());
}

#else

TEST(RawProcess, TheFirstMatchInAnyCaseIsFound) {
  HostProcesses::Scope processes;
  processes.add("System", 4);
  processes.add("Notepad.exe", 10, 4);
  processes.add("notepad2.exe", 11, 4);
  EXPECT_EQ(findProcess(raw("NOTE*")), raw("Notepad.exe"));
  EXPECT_EQ(findProcess(raw("note*2.EXE")), raw("notepad2.exe"));
  EXPECT_EQ(findProcess(raw("<*.exe")), raw("System"));
  EXPECT_EQ(findProcess(raw(">Notepad.exe")), raw("Notepad.exe"));
  EXPECT_EQ(findProcess(raw(">notepad.exe")), raw(""));
}

TEST(RawProcess, ListsAreInTheSystemsOrder) {
  HostProcesses::Scope processes;
  processes.add("b", 4, 1);
  processes.add("a", 10, 4);
  RawProcessInfoList list;
  listProcesses(list);
  ASSERT_EQ(list.count(), 2);
  EXPECT_EQ(RawProcessInfoList::element(list.first())->name, raw("b"));
  EXPECT_EQ(RawProcessInfoList::element(list.first())->parentId, 1u);
  EXPECT_EQ(RawProcessInfoList::element(list.last())->processId, 10u);
}

TEST(RawProcess, AWindowMatchesByClassAndTitle) {
  HostProcesses::Scope processes;
  processes.addWindow(100, "Shell", "");
  processes.addWindow(200, "Edit", "Letter.txt");
  processes.addWindow(300, "Edit", "Bill.txt");
  EXPECT_EQ(findWindow(raw("Edit"), raw("")), raw("200"));
  EXPECT_EQ(findWindow(raw("Edit"), raw("Bill*")), raw("300"));
  EXPECT_EQ(findWindow(raw(""), raw("*.txt")), raw("200"));
  EXPECT_EQ(findWindow(raw(""), raw("")), raw("100"));
  EXPECT_EQ(findWindow(raw("Shell"), raw("Bill*")), raw(""));
  // An empty pattern accepts all; one that matches the empty text is another thing.
  EXPECT_EQ(findWindow(raw(""), raw(">")), raw("100"));
}

TEST(RawProcess, WindowsMatchInExactCase) {
  HostProcesses::Scope processes;
  processes.addWindow(200, "Edit", "Letter.txt");
  EXPECT_EQ(findWindow(raw("edit"), raw("")), raw(""));
  EXPECT_EQ(findWindow(raw(""), raw("letter*")), raw(""));
}

TEST(RawProcess, HandlesArePrintedWithoutSign) {
  HostProcesses::Scope processes;
  processes.addWindow(0xFFFFFFF0, "Edit", "x");
  EXPECT_EQ(findWindow(raw("Edit"), raw("")), raw("4294967280"));
}

TEST(RawProcess, AListThatCannotBeHadIsEmpty) {
  HostProcesses::Scope processes;
  processes.add("a", 1);
  processes.addWindow(1, "a", "a");
  HostFaults::Scope faults;
  faults.failAll(HostFaults::Walk);
  EXPECT_TRUE(findProcess(raw("*")).isEmpty());
  EXPECT_TRUE(findWindow(raw(""), raw("")).isEmpty());
}

TEST(RawProcess, AWindowIsRestoredOrRaised) {
  HostProcesses::Scope processes;
  processes.addWindow(1, "a", "a");
  HostProcesses::findHandle(1)->minimised = true;
  EXPECT_EQ(popupWindow(1), RawPopupResult::Restored);
  EXPECT_EQ(popupWindow(1), RawPopupResult::Raised);
  EXPECT_EQ(HostProcesses::findHandle(1)->raised, 1);
}

#endif
