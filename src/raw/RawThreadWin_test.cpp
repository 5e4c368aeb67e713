#include "raw/RawThread.h"

#include "TestFolder.h"
#include "TestText.h"
#include "raw/RawPath.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

using namespace RawLayer;

namespace {

class PriorityWorker : public RawThreadUnit {
 public:
  int seen = -1;

 protected:
  void run() override { seen = GetThreadPriority(GetCurrentThread()); }
};

struct Death {
  DWORD exitCode = 0;
  std::vector<std::string> dumps; // names
  std::vector<std::string> heads; // their first four bytes
};

// Lets CrashChild die in this way, in a temporary folder of its own.
Death die(const std::string& mode) {
  const TestFolder folder;
  const RawString program = joinPath(programFolder(), "CrashChild.exe"_text);
  const std::string text =
      "\"" + bytesOf(program) + "\" " + mode + " \"" + bytesOf(folder.path()) + "\"";
  RawString command = raw(text).shareAs(EncodingWide);
  command.unshare();
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  Death death;
  if (!CreateProcessW(nullptr, reinterpret_cast<wchar_t*>(command.mutableWide()), nullptr, nullptr,
                      FALSE, 0, nullptr, nullptr, &startup, &process)) {
    ADD_FAILURE() << text << " did not start, error " << GetLastError();
    return death;
  }
  const RawThreadOwner thread(process.hThread);
  const RawThreadOwner owner(process.hProcess);
  EXPECT_EQ(WaitForSingleObject(owner.get(), 120000), WAIT_OBJECT_0) << mode << " hangs";
  GetExitCodeProcess(owner.get(), &death.exitCode);
  std::error_code error;
  const std::filesystem::path dumps(bytesOf(folder.file("Dump")));
  for (const auto& entry : std::filesystem::directory_iterator(dumps, error)) {
    const std::string name = entry.path().filename().string();
    death.dumps.push_back(name);
    char head[4] = {};
    std::ifstream(entry.path(), std::ios::binary).read(head, sizeof head);
    death.heads.emplace_back(head, sizeof head);
  }
  return death;
}

constexpr DWORD AccessViolation = 0xC0000005;
constexpr DWORD StackOverflow = 0xC00000FD;

void expectOneDump(const Death& death) {
  ASSERT_EQ(death.dumps.size(), 1u);
  std::string form = death.dumps[0];
  for (char& unit : form)
    if (unit >= '0' && unit <= '9') unit = '9';
  EXPECT_EQ(form, "Tarvellon_Dump_99999999_999999_999.dmp") << death.dumps[0];
  EXPECT_EQ(death.heads[0], "MDMP");
}

} // namespace

TEST(RawThreadWin, ThePriorityIsSetForTheNextStart) {
  PriorityWorker worker;
  for (const int priority : {THREAD_PRIORITY_IDLE, THREAD_PRIORITY_LOWEST}) {
    worker.setPriority(priority);
    ASSERT_TRUE(worker.start());
    worker.waitForEnd();
    EXPECT_EQ(worker.seen, priority);
  }
  worker.setPriority(0);
  ASSERT_TRUE(worker.start());
  worker.waitForEnd();
  EXPECT_EQ(worker.seen, THREAD_PRIORITY_NORMAL);
}

TEST(RawThreadWin, TheMainThreadsDeathLeavesADump) {
  const Death death = die("main");
  EXPECT_EQ(death.exitCode, AccessViolation);
  expectOneDump(death);
}

TEST(RawThreadWin, AWorkersDeathLeavesOneDumpAlthoughTwoFiltersSeeIt) {
  const Death death = die("worker");
  EXPECT_EQ(death.exitCode, AccessViolation);
  expectOneDump(death);
}

TEST(RawThreadWin, AWorkersFrameNeedsNoProcessFilter) {
  const Death death = die("worker-frame");
  EXPECT_EQ(death.exitCode, AccessViolation);
  expectOneDump(death);
}

TEST(RawThreadWin, AForeignThreadsDeathLeavesADump) {
  const Death death = die("foreign");
  EXPECT_EQ(death.exitCode, AccessViolation);
  expectOneDump(death);
}

TEST(RawThreadWin, WithoutAHandlerTheExceptionPassesOnToThePlatform) {
  for (const char* mode : {"worker-bare", "main-bare"}) {
    const Death death = die(mode);
    EXPECT_EQ(death.exitCode, AccessViolation) << mode;
    EXPECT_TRUE(death.dumps.empty()) << mode;
  }
}

TEST(RawThreadWin, AFaultInsideTheHandlerEndsTheProcess) {
  const Death death = die("worker-faulty");
  EXPECT_EQ(death.exitCode, AccessViolation);
  EXPECT_TRUE(death.dumps.empty());
}

TEST(RawThreadWin, AStackOverflowLeavesADump) {
  for (const char* mode : {"worker-overflow", "main-overflow"}) {
    const Death death = die(mode);
    EXPECT_EQ(death.exitCode, StackOverflow) << mode;
    expectOneDump(death);
  }
}
