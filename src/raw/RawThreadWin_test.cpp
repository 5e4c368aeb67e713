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

constexpr DWORD AccessViolation = 0xC0000005;
constexpr DWORD PatienceMilliseconds = 300000; // a full dump takes long under Wine

// A CrashChild that dies in its way, in a temporary folder of its own.
class Child {
 public:
  explicit Child(const std::string& mode) {
    const RawString program = joinPath(programFolder(), "CrashChild.exe"_text);
    const std::string text =
        "\"" + bytesOf(program) + "\" " + mode + " \"" + bytesOf(folder_.path()) + "\"";
    RawString command = raw(text).shareAs(EncodingWide);
    command.unshare();
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, reinterpret_cast<wchar_t*>(command.mutableWide()), nullptr,
                        nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
      return;
    thread_.reset(process.hThread);
    process_.reset(process.hProcess);
  }

  // Waits for the end; 0 when the child did not start, 259 when it hangs.
  DWORD exitCode() {
    DWORD code = 0;
    WaitForSingleObject(process_.get(), PatienceMilliseconds);
    GetExitCodeProcess(process_.get(), &code);
    if (code == STILL_ACTIVE) TerminateProcess(process_.get(), 1);
    return code;
  }

  [[nodiscard]] std::vector<std::string> dumpNames() const {
    std::vector<std::string> names;
    std::error_code error;
    const std::filesystem::path dumps(bytesOf(folder_.file("Dump")));
    for (const auto& entry : std::filesystem::directory_iterator(dumps, error))
      names.push_back(entry.path().filename().string());
    return names;
  }
  [[nodiscard]] bool hasDumpFolder() const { return folder_.has("Dump"); }
  [[nodiscard]] std::string headOf(const std::string& dump) const {
    char head[4] = {};
    const std::filesystem::path path(bytesOf(folder_.file("Dump/" + dump)));
    std::ifstream(path, std::ios::binary).read(head, sizeof head);
    return {head, sizeof head};
  }
  [[nodiscard]] std::string note() const { return folder_.read("Note.txt"); }

 private:
  TestFolder folder_;
  RawThreadOwner process_;
  RawThreadOwner thread_;
};

void expectDeathWithOneDump(Child& child) {
  EXPECT_EQ(child.exitCode(), AccessViolation);
  const std::vector<std::string> names = child.dumpNames();
  ASSERT_EQ(names.size(), 1u);
  std::string form = names[0];
  for (char& unit : form)
    if (unit >= '0' && unit <= '9') unit = '9';
  EXPECT_EQ(form, "Tarvellon_Dump_99999999_999999_999.dmp") << names[0];
  EXPECT_EQ(child.headOf(names[0]), "MDMP");
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

TEST(RawThreadWin, DeathOnTheMainThreadOrOnAWorkerLeavesOneDump) {
  Child main("main"); // both at once, for the sake of time
  Child worker("worker");
  expectDeathWithOneDump(main);
  expectDeathWithOneDump(worker);
}

TEST(RawThreadWin, AWorkersFrameNeedsNoProcessFilter) {
  Child child("worker-frame");
  EXPECT_EQ(child.exitCode(), AccessViolation);
  EXPECT_EQ(child.note(), "0xC0000005");
}

TEST(RawThreadWin, TheProcessFilterSeesForeignThreads) {
  Child child("foreign");
  EXPECT_EQ(child.exitCode(), AccessViolation);
  EXPECT_EQ(child.note(), "0xC0000005");
}

TEST(RawThreadWin, WithoutAHandlerTheExceptionPassesOnToThePlatform) {
  for (const char* mode : {"worker-bare", "main-bare"}) {
    Child child(mode);
    EXPECT_EQ(child.exitCode(), AccessViolation) << mode;
    EXPECT_FALSE(child.hasDumpFolder()) << mode;
    EXPECT_EQ(child.note(), "") << mode;
  }
}

TEST(RawThreadWin, AFaultInsideTheHandlerEndsTheProcess) {
  Child child("worker-faulty");
  EXPECT_EQ(child.exitCode(), AccessViolation);
}
