#include "raw/RawThread.h"

#include "TestFolder.h"
#include "TestText.h"
#ifndef _WIN32
#include "host/HostFaults.h"
#endif
#include "raw/RawPath.h"
#include "raw/RawSystem.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

using namespace RawLayer;

namespace {

std::string stampNow() {
  const RawMoment now = utcTime();
  char stamp[64];
  std::snprintf(stamp, sizeof stamp, "%04d%02d%02d_%02d%02d%02d_%03d", now.year, now.month, now.day,
                now.hour, now.minute, now.second, now.milliseconds);
  return stamp;
}

std::string pathIn(const std::string& folder, const std::string& name = "Tarvellon") {
  RawThreadDump dump;
  dump.folder = raw(folder);
  dump.name = raw(name);
  return bytesOf(dump.dumpPath());
}

// Checks what stands around the stamp and gives the stamp.
std::string stampIn(const std::string& path, const std::string& before) {
  EXPECT_EQ(path.substr(0, before.size()), before);
  EXPECT_EQ(path.size(), before.size() + std::string("YYYYMMDD_HHMMSS_mmm.dmp").size()) << path;
  EXPECT_EQ(path.substr(path.size() - 4), ".dmp");
  return path.substr(before.size(), 19);
}

class FixedDump : public RawThreadDump {
 public:
  RawString fixed;
  [[nodiscard]] RawString dumpPath() const override { return fixed; }
};

int entriesIn(const TestFolder& folder, const std::string& name) {
  int count = 0;
  std::error_code error;
  const std::filesystem::path path(bytesOf(folder.file(name)));
  for (const auto& entry : std::filesystem::directory_iterator(path, error))
    count += entry.path().extension() == ".dmp" ? 1 : 0;
  return count;
}

} // namespace

TEST(RawThreadDump, ThePathNamesFolderProductAndMoment) {
  const std::string earliest = stampNow();
  const std::string stamp = stampIn(pathIn("C:\\Temp\\Dump"), "C:\\Temp\\Dump\\Tarvellon_Dump_");
  const std::string latest = stampNow();
  EXPECT_LE(earliest, stamp);
  EXPECT_LE(stamp, latest);
}

TEST(RawThreadDump, AFolderThatEndsInASeparatorGetsNoOther) {
  stampIn(pathIn("C:\\"), "C:\\Tarvellon_Dump_");
  stampIn(pathIn("C:/x/"), "C:/x/Tarvellon_Dump_");
}

TEST(RawThreadDump, AnEmptyFolderGetsOne) {
  stampIn(pathIn("", "x"), "\\x_Dump_");
}

#ifndef _WIN32
// A real dump holds the whole memory of this runner, which takes long under Wine; on
// Windows RawThreadWin_test has them made by small programs instead.
TEST(RawThreadDump, MakesTheFolderAndWritesADump) {
  const TestFolder folder;
  RawThreadDump dump;
  dump.folder = joinPath(folder.path(), "A\\Dump"_text);
  dump.name = "Tarvellon"_text;
  dump.onException(nullptr);
  EXPECT_EQ(entriesIn(folder, "A/Dump"), 1);
}

TEST(RawThreadDump, WritesToThePathThatItIsGiven) {
  const TestFolder folder;
  FixedDump dump;
  dump.fixed = joinPath(folder.path(), "Here\\x.dmp"_text);
  dump.onException(nullptr);
  EXPECT_EQ(folder.read("Here/x.dmp").substr(0, 4), "MDMP");
}

TEST(RawThreadDump, IsAHandlerOfTheHook) {
  const TestFolder folder;
  FixedDump dump;
  dump.fixed = joinPath(folder.path(), "y.dmp"_text);
  RawThreadHook::install(&dump);
  RawThreadHook::raise(nullptr);
  RawThreadHook::install(nullptr);
  EXPECT_TRUE(folder.has("y.dmp"));
}

TEST(RawThreadDump, AFailureOfAnyPlatformCallIsIgnored) {
  const TestFolder folder;
  for (int32_t call = 1; call <= 20; ++call) {
    const std::string name = std::to_string(call) + "/x.dmp";
    FixedDump dump;
    dump.fixed = folder.file(name);
    HostFaults::Scope faults;
    faults.failFrom(call);
    dump.onException(nullptr);
    const bool complete = faults.calls() < call;
    EXPECT_EQ(folder.read(name), complete ? "MDMP" : "") << call;
    if (complete) return;
  }
  ADD_FAILURE() << "no run was complete";
}
#endif

TEST(RawThreadDump, AnEmptyPathWritesNothing) {
  const TestFolder folder;
  FixedDump dump;
  dump.folder = joinPath(folder.path(), "Dump"_text);
  dump.name = "Tarvellon"_text;
  dump.onException(nullptr);
  EXPECT_FALSE(folder.has("Dump"));
}

TEST(RawThreadDump, AFolderThatCannotBeMadeIsIgnored) {
  const TestFolder folder;
  folder.write("Dump", "a file stands where the folder should be");
  RawThreadDump dump;
  dump.folder = joinPath(folder.path(), "Dump"_text);
  dump.name = "Tarvellon"_text;
  dump.onException(nullptr);
  EXPECT_EQ(folder.read("Dump"), "a file stands where the folder should be");
}
