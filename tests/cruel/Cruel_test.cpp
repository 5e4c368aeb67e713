// The engine over the sample configuration while the platform lets it down: every n-th call fails,
// reads give one byte at a time, buffers hold hardly a line. Under the address sanitizer, so that
// what is lost or touched too late shows; there a region gives each entry a piece of memory of its
// own, too, so nothing rests on the room that growth leaves.

#include "JobTrees.h"
#include "TestDiary.h"
#include "TestFolder.h"
#include "TourBed.h"
#include "host/HostClipboard.h"
#include "host/HostFaults.h"
#include "host/HostPath.h"
#include "host/HostProcesses.h"
#include "host/HostShell.h"
#include "host/HostSystem.h"
#include "job/JobDataSaver.h"
#include "raw/RawProfile.h"

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>

using namespace JobLayer;
using RawLayer::RawLineFile;
using RawLayer::RawParameterList;
using RawLayer::RawProfile;
using RawLayer::RawString;
using std::string;

namespace {

constexpr std::size_t TinyBuffer = 23;   // bytes
constexpr std::size_t BufferReserve = 6; // what a line has to leave free of its buffer

string readAll(const char* path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

const string& sampleBytes() {
  static const string bytes = readAll(TARVELLON_SAMPLE);
  return bytes;
}

// The sample's lines without their indentation, and of them those that a tiny buffer holds; first
// and last lines of blocks are among these. An action of such lines alone stands behind them.
string shortLines() {
  string text;
  for (std::size_t start = 0, next = 0; start < sampleBytes().size(); start = next) {
    next = std::min(sampleBytes().find('\n', start), sampleBytes().size() - 1) + 1;
    start = sampleBytes().find_first_not_of(" \t", start);
    if (next - start + BufferReserve < TinyBuffer)
      text += sampleBytes().substr(start, next - start);
  }
  return text + "[Action:Short]\r\n"
                "Define {\r\nn=a,b,c\r\nw=$(Body:ab.c)\r\n}\r\n"
                "Foreach {\r\nParameter=$(n)\r\n"
                "Define {\r\nl=$(Each)\r\n}\r\n"
                "Expand {\r\nm=$(l)\r\nDefine {\r\nk=$(m)$(m)\r\n}\r\n}\r\n}\r\n"
                "While {\r\nCondition=1\r\nBreak\r\n}\r\n"
                "PutMessage {\r\nParameter=$(k)\r\n}\r\n";
}

std::size_t openHandles() {
  std::error_code error;
  std::size_t count = 0;
  for (std::filesystem::directory_iterator i("/proc/self/fd", error), end; i != end; ++i) ++count;
  return count;
}

string treesOfAll() {
  string text;
  for (const JobSelectorUnit& unit : TourBed::data().selectors.elements())
    text += "S:" + bytesOf(unit.name) + treeText(unit.params) + "\n";
  for (const JobButtonUnit& unit : TourBed::data().buttons.elements())
    text += "B:" + bytesOf(unit.name) + treeText(unit.params) + "\n";
  for (const JobActionUnit& unit : TourBed::data().actions.elements())
    text += "A:" + bytesOf(unit.name) + treeText(unit.params) + "\n";
  return text + treeText(TourBed::data().selectors.templateUnit.params) +
         treeText(TourBed::data().buttons.templateUnit.params);
}

// The machine that the launcher believes in, the same in each round.
class Machine {
 public:
  HostFaults::Scope faults;
  HostShell::Scope shell;

  explicit Machine(const TestFolder& folder) {
    faults.failNone(0);
    system_.facts().tempFolder = folder.file("Temp");
    system_.facts().userFolder = folder.file("User");
    system_.facts().desktop = folder.file("Desktop");
    clipboard_.put(RawString::fromWide(u"C:\\some\\text"));
    processes_.add("notepad.exe", 17);
    for (uintptr_t window = 1; window <= 12; ++window)
      processes_.addWindow(window, "Notepad", window == 12 ? "a - Notepad" : "b");
  }
  HostClipboard::Scope& clipboard() { return clipboard_; }

 private:
  HostSystem::Scope system_;
  HostClipboard::Scope clipboard_;
  HostProcesses::Scope processes_;
};

class CruelTour : public testing::Test {
 protected:
  TestFolder folder;
  TourBed bed{folder.file("Sample.ini"), folder.file("Log")};
  JobButtonList kept; // what the saves write: the sample's buttons, one of them renamed
  string saved;       // the file that they make

  CruelTour() {
    for (const char* name : {"Temp", "User", "Desktop"}) folder.makeFolder(name);
    folder.write("Sample.ini", sampleBytes());
    JobSelectorList selectors;
    JobActionList actions;
    JobConfigFile::load(folder.file("Sample.ini"), selectors, kept, actions);
    kept.element(kept.first())->rename(raw("Renamed"));
  }

  bool save() {
    return JobDataSaver::save(folder.file("Sample.ini"), kept, JobButtonList::sectionPrefix());
  }
  // One life of a launcher; whether the save said that it replaced the file.
  bool live(bool pressesAll) {
    bed.start();
    if (pressesAll) bed.pressAll();
    TourBed::runAction("Tour");
    const bool result = save();
    bed.end();
    return result;
  }
  std::vector<string> diaryOfLog() {
    return diaryOf(readAll(hostPath(JobLogServer::instance().path()).c_str()));
  }
  // Lives again and again, another call failing each time, until no call is left that could fail.
  // `step` calls are passed over from one life to the next.
  void liveUnderFaults(bool pressesAll, bool forGood, int32_t step);
};

void CruelTour::liveUnderFaults(bool pressesAll, bool forGood, int32_t step) {
  int32_t cleanCalls = 0;
  {
    Machine machine(folder);
    machine.faults.failNone();
    ASSERT_TRUE(live(pressesAll));
    cleanCalls = machine.faults.calls();
    saved = folder.read("Sample.ini");
    ASSERT_NE(saved, sampleBytes());
    ASSERT_NE(saved.find("[Button:Renamed]"), string::npos);
  }
  const std::size_t handles = openHandles();
  int32_t rounds = 0;
  int32_t replaced = 0;
  bool isTouched = true;
  for (int32_t number = 1; isTouched; number += step, ++rounds) {
    SCOPED_TRACE("call " + std::to_string(number));
    folder.write("Sample.ini", sampleBytes());
    Machine machine(folder);
    forGood ? machine.faults.failFrom(number) : machine.faults.failNth(number);
    const bool isSaved = live(pressesAll);
    isTouched = machine.faults.calls() >= number;
    machine.faults.failNone(0);
    ASSERT_EQ(folder.read("Sample.ini") == (isSaved ? saved : sampleBytes()), true);
    ASSERT_EQ(machine.shell.openProcesses(), 0);
    ASSERT_EQ(openHandles(), handles);
    replaced += isSaved ? 1 : 0;
  }
  std::printf("%d rounds, %d calls of the platform in a clean one, %d saves made\n", rounds,
              cleanCalls, replaced);
  EXPECT_GT(rounds, 200);
  EXPECT_GT(replaced, 0);
  if (step == 1) EXPECT_LT(replaced, rounds);
}

} // namespace

TEST_F(CruelTour, CleanRunIsWhatTheOthersAreMeasuredBy) {
  Machine machine(folder);
  machine.faults.failNone();
  bed.start();
  EXPECT_GT(TourBed::data().selectors.count(), 5);
  EXPECT_GT(TourBed::data().buttons.count(), 20);
  EXPECT_TRUE(TourBed::runAction("Tour"));
  EXPECT_EQ(bed.dialogs.reports, 0);
  bed.end();
  EXPECT_EQ(machine.shell.takeLaunches().size(), 2U); // a program and a folder
  EXPECT_EQ(machine.clipboard().changes(), 4);        // three greetings and the end
  EXPECT_GT(diaryOfLog().size(), 100U);
  EXPECT_GT(machine.faults.calls(), 100);
}

TEST_F(CruelTour, OneFailingCallOfTheTourLosesNothing) {
  liveUnderFaults(false, false, 1);
}

TEST_F(CruelTour, FailingForGoodFromAnyCallOfTheTourLosesNothing) {
  liveUnderFaults(false, true, 1);
}

TEST_F(CruelTour, OneFailingCallOfAllButtonsLosesNothing) {
  liveUnderFaults(true, false, 5); // each of them would take minutes
}

// Apart from the process's own, so that its event and its thread are made under the faults, too.
TEST_F(CruelTour, LogThatFailsAnywhereIsOffOrWhole) {
  int32_t whole = 0;
  for (int32_t number = 1, calls = number; calls >= number; ++number) {
    Machine machine(folder);
    const std::size_t handles = openHandles();
    machine.faults.failNth(number);
    {
      JobLogServer log;
      log.start(folder.file("Apart"), 1);
      const bool isOn = log.storer().isAccepting();
      for (int32_t line = 0; line < 3; ++line) log.post(raw("a line\r\n"));
      log.stop();
      calls = machine.faults.calls();
      machine.faults.failNone(0);
      const string text = readAll(hostPath(log.path()).c_str());
      if (!isOn) EXPECT_EQ(text.find("a line"), string::npos) << "call " << number;
      if (text.ends_with("a line\r\na line\r\na line\r\n")) ++whole;
    }
    EXPECT_EQ(openHandles(), handles) << "call " << number;
  }
  EXPECT_GT(whole, 3);
}

TEST_F(CruelTour, ReadsOfOneByteChangeNothing) {
  Machine machine(folder);
  live(false);
  const std::vector<string> diary = diaryOfLog();
  bed.start();
  const string trees = treesOfAll();
  bed.end();
  const string file = folder.read("Sample.ini");

  folder.write("Sample.ini", sampleBytes());
  machine.faults.limitReads(1);
  EXPECT_TRUE(live(false));
  EXPECT_EQ(diaryOfLog(), diary);
  EXPECT_TRUE(folder.read("Sample.ini") == file);
  bed.start();
  EXPECT_EQ(treesOfAll(), trees);
}

TEST_F(CruelTour, BufferOfTwentyThreeBytesChangesNothing) {
  Machine machine(folder);
  folder.write("Sample.ini", shortLines());
  const auto run = [&](int32_t bufferSize) {
    bed.bufferSize = bufferSize;
    bed.start();
    string trees = treesOfAll();
    TourBed::runAction("Tour");
    EXPECT_TRUE(TourBed::runAction("Short"));
    bed.end();
    return std::make_pair(trees, diaryOfLog());
  };
  const auto normal = run(RawLineFile::DefaultBufferSize);
  const auto tiny = run(TinyBuffer);
  EXPECT_GT(std::count(normal.first.begin(), normal.first.end(), '\n'), 20);
  EXPECT_EQ(tiny.first, normal.first);
  EXPECT_GT(normal.second.size(), 60U);
  EXPECT_EQ(tiny.second, normal.second);
}

TEST_F(CruelTour, BufferThatJustHoldsTheLongestLineChangesNothing) {
  std::size_t longest = 0;
  for (std::size_t start = 0, end; start < sampleBytes().size(); start = end + 1) {
    end = std::min(sampleBytes().find('\n', start), sampleBytes().size());
    longest = std::max(longest, end + 1 - start);
  }
  Machine machine(folder);
  bed.start();
  const string trees = treesOfAll();
  EXPECT_TRUE(TourBed::runAction("Tour"));
  bed.end();
  const std::vector<string> diary = diaryOfLog();

  bed.bufferSize = static_cast<int32_t>(longest + BufferReserve);
  bed.start();
  EXPECT_EQ(treesOfAll(), trees);
  EXPECT_TRUE(TourBed::runAction("Tour"));
  bed.end();
  EXPECT_EQ(diaryOfLog(), diary);
}

TEST_F(CruelTour, ProfilesReadTheSameThroughTwentyThreeBytes) {
  const RawString path = folder.write("Short.ini", shortLines());
  for (const char* section : {"Option", "Initialize", "Action:Tour", "Action:Short"}) {
    RawProfile normal(path);
    RawProfile tiny(path);
    tiny.bufferSize = TinyBuffer;
    RawParameterList expected;
    RawParameterList list;
    EXPECT_TRUE(normal.loadSection(expected, raw(section)));
    EXPECT_TRUE(tiny.loadSection(list, raw(section)));
    EXPECT_EQ(tiny.readState, RawLineFile::Closed);
    ASSERT_EQ(list.count(), expected.count());
    auto other = expected.first();
    for (auto node = list.first(); !list.isEnd(node);
         node = list.next(node), other = expected.next(other)) {
      EXPECT_EQ(list.element(node)->key, expected.element(other)->key);
      EXPECT_EQ(list.element(node)->value, expected.element(other)->value);
    }
  }
}

TEST_F(CruelTour, LineThatIsTooLongForTheBufferEndsTheReading) {
  bed.bufferSize = TinyBuffer;
  bed.start(); // the first line of the sample is longer
  EXPECT_EQ(treesOfAll(), "");
  EXPECT_FALSE(TourBed::runAction("Tour"));
}
