#include "SaveKillModes.h"
#include "SaveKillProcess.h"
#include "TestFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <thread>

using SaveKill::Mode;
using SaveKill::Process;
using std::string;
using Clock = std::chrono::steady_clock;

namespace {

constexpr const char* childName = "SaveKillChild";
constexpr const char* fileName = "a.ini";
constexpr int32_t killsPerMode = 200;
constexpr int32_t versionsPerChild = 100000; // more than one will ever save

class SavedFile {
 public:
  explicit SavedFile(const Mode& mode) : mode_(mode) {
    folder_.write(fileName, SaveKill::fileOf(mode, 0));
  }
  // -1 for a file that is not whole.
  [[nodiscard]] int32_t version() const {
    return SaveKill::versionOf(mode_, folder_.read(fileName));
  }
  // The same while somebody saves: the file may be held for a moment.
  [[nodiscard]] int32_t versionInUse() const {
    string bytes;
    for (int32_t i = 0; i < 1000 && bytes.empty(); ++i) bytes = folder_.read(fileName);
    return SaveKill::versionOf(mode_, bytes);
  }
  [[nodiscard]] bool hasTemporary() const { return folder_.has("a.ini.tmp"); }
  [[nodiscard]] std::vector<string> arguments(int32_t first, int32_t count) const {
    const RawLayer::RawString path = folder_.file(fileName);
    return {mode_.name, path.text(), std::to_string(first), std::to_string(count)};
  }

 private:
  const Mode& mode_;
  TestFolder folder_;
};

// To the microsecond, which a sleep is not.
void waitMicroseconds(uint32_t count) {
  const auto end = Clock::now() + std::chrono::microseconds(count);
  while (Clock::now() < end) std::this_thread::yield();
}

void expectWholeFileAfterKills(const Mode& mode, std::mt19937& random) {
  const SavedFile file(mode);
  int32_t inTheMiddle = 0;
  for (int32_t kill = 0; kill < killsPerMode; ++kill) {
    const int32_t before = file.version();
    Process child(childName, file.arguments(kill * versionsPerChild + 1, versionsPerChild));
    ASSERT_TRUE(child.hasStarted());
    while (file.versionInUse() == before && child.isRunning())
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    ASSERT_TRUE(child.isRunning()) << "it saved nothing";
    waitMicroseconds(random() % 5000);
    child.kill();
    ASSERT_GT(file.version(), kill * versionsPerChild) << mode.name;
    if (file.hasTemporary()) ++inTheMiddle;
  }
  EXPECT_GT(inTheMiddle, 0) << "no kill met a save: this proves nothing";
}

} // namespace

TEST(SaveKill, VersionsAreTold) {
  for (const Mode& mode : SaveKill::modes()) {
    const string file = SaveKill::fileOf(mode, 7);
    EXPECT_GT(file.size(), 2u * 8192);
    EXPECT_EQ(SaveKill::versionOf(mode, file), 7);
    string mixed = file;
    mixed[file.rfind('7')] = '8';
    EXPECT_EQ(SaveKill::versionOf(mode, mixed), -1);
    EXPECT_EQ(SaveKill::versionOf(mode, file.substr(0, 20000)), -1);
    EXPECT_EQ(SaveKill::versionOf(mode, ""), -1);
  }
}

TEST(SaveKill, KilledSaversLeaveTheOldOrTheNewFile) {
  std::mt19937 random(4711);
  for (const Mode& mode : SaveKill::modes()) expectWholeFileAfterKills(mode, random);
}

#ifdef _WIN32

// The host knows the sharing of files within one process only.
TEST(SaveKill, TwoProcessesSavingAtOnceLeaveAWholeFile) {
  for (const Mode& mode : SaveKill::modes()) {
    const SavedFile file(mode);
    Process first(childName, file.arguments(1, 200));
    Process second(childName, file.arguments(1001, 200));
    while (first.isRunning() || second.isRunning()) ASSERT_GE(file.versionInUse(), 0) << mode.name;
    EXPECT_EQ(first.waitForEnd(), 0);
    EXPECT_EQ(second.waitForEnd(), 0);
    EXPECT_GT(file.version(), 0);
  }
}

#endif
