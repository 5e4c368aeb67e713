#include "job/JobLog.h"

#include "TestFolder.h"
#include "TestText.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#ifndef _WIN32
#include "host/HostFaults.h"
#include "host/HostSystem.h"
#endif

using namespace JobLayer;

namespace {

// The bytes of all files in the folder, in the order of their names.
std::vector<std::string> filesOf(const TestFolder& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (const auto& entry :
       std::filesystem::directory_iterator(std::filesystem::path(bytesOf(folder.path())), error))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  std::vector<std::string> files;
  for (const std::string& name : names) files.push_back(folder.read(name));
  return files;
}

class Head : public JobLogStorer::Separater {
 public:
  explicit Head(JobLogStorer& storer) : storer_(storer) { storer.separater = this; }
  void onNewFile() override {
    ++files;
    storer_.writeDirect("head\r\n"_text);
  }
  int files = 0;

 private:
  JobLogStorer& storer_;
};

void prepare(JobLogStorer& storer, const TestFolder& folder) {
  storer.folder = folder.path();
  storer.stem = "Test"_text;
  storer.extension = "log"_text;
}

} // namespace

TEST(JobLogStorer, WritesLinesInTheOrderOfQueuing) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  ASSERT_TRUE(storer.open());
  storer.post("one\r\n"_text);
  storer.post("two\r\n"_text);
  storer.stop();
  EXPECT_EQ(filesOf(folder), std::vector<std::string>{"one\r\ntwo\r\n"});
}

TEST(JobLogStorer, NamesTheFileByItsStart) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  const RawLayer::RawMoment before = RawLayer::localTime();
  ASSERT_TRUE(storer.open());
  storer.stop();
  const std::string path = bytesOf(storer.path());
  const std::string name = path.substr(path.find_last_of("\\/") + 1);
  ASSERT_EQ(name.size(), std::string("Test_20241007_181530_042.log").size());
  EXPECT_EQ(name.substr(0, 5), "Test_");
  EXPECT_EQ(name.substr(5, 4), std::to_string(before.year));
  EXPECT_EQ(name[13], '_');
  EXPECT_EQ(name[20], '_');
  EXPECT_EQ(name.substr(24), ".log");
  for (const std::size_t i : {9U, 10U, 11U, 12U, 14U, 19U, 21U, 23U}) EXPECT_TRUE(isdigit(name[i]));
  EXPECT_TRUE(folder.has(name));
}

TEST(JobLogStorer, KeepsLinesQueuedBeforeTheStart) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  Head head(storer);
  EXPECT_TRUE(storer.isAccepting());
  storer.post("early\r\n"_text);
  ASSERT_TRUE(storer.open());
  storer.post("late\r\n"_text);
  storer.stop();
  EXPECT_EQ(filesOf(folder), std::vector<std::string>{"head\r\nearly\r\nlate\r\n"});
}

TEST(JobLogStorer, WritesWhatIsLeftInTheQueueBeforeItStops) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  ASSERT_TRUE(storer.open());
  std::string all;
  for (int i = 0; i < 5000; ++i) {
    const std::string line = "line " + std::to_string(i) + "\r\n";
    all += line;
    storer.post(raw(line));
  }
  storer.stop();
  EXPECT_EQ(filesOf(folder), std::vector<std::string>{all});
}

TEST(JobLogStorer, DropsLinesQueuedBehindTheStop) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  ASSERT_TRUE(storer.open());
  storer.post("one\r\n"_text);
  storer.stop();
  EXPECT_FALSE(storer.isAccepting());
  storer.post("two\r\n"_text);
  storer.stop();
  EXPECT_EQ(filesOf(folder), std::vector<std::string>{"one\r\n"});
}

TEST(JobLogStorer, StaysOffWhenTheFileCannotBeMade) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  storer.folder = folder.file("missing");
  storer.post("early\r\n"_text);
  EXPECT_FALSE(storer.open());
  EXPECT_FALSE(storer.isAccepting());
  EXPECT_FALSE(storer.isRunning());
  storer.post("late\r\n"_text);
  storer.stop();

  // A later start begins with nothing of that.
  storer.folder = folder.path();
  ASSERT_TRUE(storer.open());
  storer.stop();
  EXPECT_EQ(filesOf(folder), std::vector<std::string>{""});
}

TEST(JobLogStorer, StopsWithoutHavingBeenStarted) {
  JobLogStorer storer;
  storer.stop();
  EXPECT_FALSE(storer.isAccepting());
  EXPECT_TRUE(storer.path().isEmpty());
}

TEST(JobLogStorer, MayBeStartedAgain) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  ASSERT_TRUE(storer.open());
  storer.post("one\r\n"_text);
  storer.stop();
  ASSERT_TRUE(storer.open());
  storer.post("two\r\n"_text);
  storer.stop();
  EXPECT_EQ(filesOf(folder), (std::vector<std::string>{"one\r\n", "two\r\n"}));
}

TEST(JobLogStorer, AStartWhileItRunsFinishesTheFileFirst) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  ASSERT_TRUE(storer.open());
  storer.post("one\r\n"_text);
  ASSERT_TRUE(storer.open());
  storer.post("two\r\n"_text);
  storer.stop();
  EXPECT_EQ(filesOf(folder), (std::vector<std::string>{"one\r\n", "two\r\n"}));
}

TEST(JobLogStorer, StoresACopyOfTheLine) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  char bytes[] = "view\r\n";
  storer.post(RawString::viewOf(RawLayer::EncodingUtf8, bytes, 6));
  bytes[0] = 'x';
  RawString line = raw("text\r\n");
  storer.post(line);
  line.appendChar('x');
  ASSERT_TRUE(storer.open());
  storer.stop();
  EXPECT_EQ(filesOf(folder), std::vector<std::string>{"view\r\ntext\r\n"});
}

TEST(JobLogStorer, WritesTheBytesOfALineAsTheyStand) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  ASSERT_TRUE(storer.open());
  storer.post(RawString::fromBytes(RawLayer::EncodingShiftJis, "\x82\xA0\n", 3));
  storer.post(raw(std::string("a\0b", 3)));
  storer.post(RawString::fromWide(u"\u3042"));
  storer.post(RawString());
  storer.stop();
  EXPECT_EQ(filesOf(folder), std::vector<std::string>{std::string("\x82\xA0\na\0b\x42\x30", 8)});
}

TEST(JobLogStorer, WakesForALineAfterALongSleep) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  ASSERT_TRUE(storer.open());
  std::this_thread::sleep_for(std::chrono::milliseconds(250));
  storer.post("one\r\n"_text);
  for (int i = 0; i < 2000 && filesOf(folder)[0].empty(); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  EXPECT_EQ(filesOf(folder), std::vector<std::string>{"one\r\n"});
  storer.stop();
}

TEST(JobLogStorer, ChangesTheFileAtTheLineLimit) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  Head head(storer);
  storer.lineLimit = 2;
  ASSERT_TRUE(storer.open());
  for (int i = 1; i <= 5; ++i) storer.post(raw(std::to_string(i) + "\r\n"));
  for (int i = 0; i < 5000 && filesOf(folder).back() != "head\r\n5\r\n"; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  storer.stop();
  EXPECT_EQ(filesOf(folder), (std::vector<std::string>{"head\r\n1\r\n2\r\n", "head\r\n3\r\n4\r\n",
                                                       "head\r\n5\r\n"}));
  EXPECT_EQ(head.files, 3);
}

TEST(JobLogStorer, ChangesTheFileAtTheByteLimit) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  Head head(storer);
  storer.byteLimit = 7; // the first line has five bytes, so the second still goes to its file
  ASSERT_TRUE(storer.open());
  for (int i = 1; i <= 3; ++i) storer.post(raw("abc\r\n"));
  const std::vector<std::string> expected = {"head\r\nabc\r\nabc\r\n", "head\r\nabc\r\n"};
  for (int i = 0; i < 5000 && filesOf(folder) != expected; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  storer.stop();
  EXPECT_EQ(filesOf(folder), expected);
}

TEST(JobLogStorer, TheStopZeroesTheLimits) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  storer.byteLimit = 1000;
  storer.lineLimit = 1000;
  ASSERT_TRUE(storer.open());
  storer.stop();
  EXPECT_EQ(storer.byteLimit, 0U);
  EXPECT_EQ(storer.lineLimit, 0U);
}

#ifndef _WIN32
TEST(JobLogStorer, GoesOnWhenAFileOfTheChangeCannotBeMade) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  Head head(storer);
  storer.lineLimit = 1;
  ASSERT_TRUE(storer.open());
  storer.post("one\r\n"_text);
  {
    HostFaults::Scope faults;
    faults.failAll(HostFaults::Open);
    const std::string first = bytesOf(storer.path());
    storer.post("two\r\n"_text); // has no file to go to
    for (int i = 0; i < 5000 && bytesOf(storer.path()) == first; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    for (int i = 0; i < 5000 && faults.calls() == 0; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  storer.post("three\r\n"_text);
  for (int i = 0; i < 5000 && filesOf(folder).size() < 2; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  storer.stop();
  EXPECT_EQ(filesOf(folder), (std::vector<std::string>{"head\r\none\r\n", "head\r\nthree\r\n"}));
  EXPECT_EQ(head.files, 2);
}

TEST(JobLogStorer, AWriteThatFailsIsNotNoticed) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  ASSERT_TRUE(storer.open());
  {
    HostFaults::Scope faults;
    faults.failAll(HostFaults::Write);
    storer.post("one\r\n"_text);
    for (int i = 0; i < 5000 && faults.calls() == 0; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  EXPECT_TRUE(storer.isAccepting());
  storer.post("two\r\n"_text);
  storer.stop();
  EXPECT_EQ(filesOf(folder), std::vector<std::string>{"two\r\n"});
}

// As two processes that start in the same millisecond.
TEST(JobLogStorer, TheSecondOfOneMomentStaysOffAndSpoilsNothing) {
  HostSystem::Scope system;
  system.fixClock({2024, 10, 7, 18, 15, 30, 42}, 0);
  const TestFolder folder;
  JobLogStorer first;
  JobLogStorer second;
  prepare(first, folder);
  prepare(second, folder);
  ASSERT_TRUE(first.open());
  first.post("one\r\n"_text);
  EXPECT_FALSE(second.open());
  EXPECT_EQ(second.path(), first.path());
  EXPECT_FALSE(second.isAccepting());
  second.post("lost\r\n"_text);
  second.stop();
  first.post("two\r\n"_text);
  first.stop();
  EXPECT_EQ(folder.read("Test_20241007_181530_042.log"), "one\r\ntwo\r\n");
}

TEST(JobLogStorer, StaysOffWhenTheThreadCannotBeMade) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  {
    HostFaults::Scope faults;
    faults.failAll(HostFaults::Thread);
    EXPECT_FALSE(storer.open());
  }
  EXPECT_FALSE(storer.isAccepting());
  storer.stop();
}
#endif

TEST(JobLogStorer, KeepsLinesFromSeveralThreadsWholeAndInOrder) {
  constexpr int Threads = 4;
  constexpr int Lines = 500;
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  ASSERT_TRUE(storer.open());
  std::vector<std::thread> threads;
  for (int t = 0; t < Threads; ++t)
    threads.emplace_back([&storer, t] {
      for (int i = 0; i < Lines; ++i)
        storer.post(raw("thread " + std::to_string(t) + " line " + std::to_string(i) + " " +
                        std::string(60, 'x') + "\r\n"));
    });
  for (std::thread& thread : threads) thread.join();
  storer.stop();

  const std::string text = filesOf(folder)[0];
  int next[Threads] = {};
  int count = 0;
  for (std::size_t start = 0, end; (end = text.find("\r\n", start)) != std::string::npos;
       start = end + 2, ++count) {
    const int t = text[start + 7] - '0';
    ASSERT_TRUE(t >= 0 && t < Threads);
    ASSERT_EQ(text.substr(start, end - start), "thread " + std::to_string(t) + " line " +
                                                   std::to_string(next[t]++) + " " +
                                                   std::string(60, 'x'));
  }
  EXPECT_EQ(count, Threads * Lines);
}

TEST(JobLogStorer, StopsWhileOthersStillQueue) {
  const TestFolder folder;
  JobLogStorer storer;
  prepare(storer, folder);
  ASSERT_TRUE(storer.open());
  std::thread producer([&storer] {
    for (int i = 0; i < 20000; ++i) storer.post("line\r\n"_text);
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(2));
  storer.stop();
  producer.join();
  const std::string text = filesOf(folder)[0];
  EXPECT_EQ(text.size() % 6, 0U); // whole lines, however many
}
